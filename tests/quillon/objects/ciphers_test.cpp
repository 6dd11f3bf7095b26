// The ciphers against the examples of the publications that define them, on each system's library.
#include "quillon/objects/ciphers.h"

#include <gtest/gtest.h>

namespace quillon::test {
namespace {

using objects::Digest;

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

// RFC 1321, A.5, and FIPS 180-4 with its published examples: the text "abc".
TEST(Ciphers, Digests) {
  struct Case {
    Digest digest;
    const char* hex;
  };
  for (const Case& one : {
           Case{Digest::kMd5, "900150983cd24fb0d6963f7d28e17f72"},
           Case{Digest::kSha256,
                "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
           Case{Digest::kSha384,
                "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed"
                "8086072ba1e7cc2358baeca134c825a7"},
           Case{Digest::kSha512,
                "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
       }) {
    EXPECT_EQ(DigestOf(one.digest, "abc"), FromHex(one.hex));
  }
  EXPECT_EQ(DigestOf(Digest::kMd5, ""), FromHex("d41d8cd98f00b204e9800998ecf8427e"));
}

// RFC 6229, 2: the first bytes of the key stream.
TEST(Ciphers, Rc4) {
  const std::string zeros(16, '\0');
  EXPECT_EQ(objects::ApplyRc4(FromHex("0102030405"), zeros),
            FromHex("b2396305f03dc027ccc3524a0a1118a8"));
  EXPECT_EQ(objects::ApplyRc4(FromHex("0102030405060708090a0b0c0d0e0f10"), zeros),
            FromHex("9ac7cc9a609d1ef7b2932899cde41b97"));
  EXPECT_EQ(objects::ApplyRc4("key", ""), "");
}

// NIST SP 800-38A, F.2.1 and F.2.5: two blocks, so that they are chained.
TEST(Ciphers, AesInChainedBlocks) {
  const std::string iv = FromHex("000102030405060708090a0b0c0d0e0f");
  const std::string plain =
      FromHex("6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51");
  struct Case {
    const char* key;
    const char* cipher;
  };
  for (const Case& one :
       {Case{"2b7e151628aed2a6abf7158809cf4f3c",
             "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"},
        Case{"603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4",
             "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"}}) {
    EXPECT_EQ(objects::EncryptAes(FromHex(one.key), iv, plain), FromHex(one.cipher));
    EXPECT_EQ(objects::DecryptAes(FromHex(one.key), iv, FromHex(one.cipher)), plain);
  }
}

}  // namespace
}  // namespace quillon::test
