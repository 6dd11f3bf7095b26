// The one place that chooses the library.
#include "quillon/objects/ciphers.h"

#include <limits>
#include <memory>

#include "quillon/core/failure.h"

#ifdef _WIN32

#include <windows.h>
// Need the types of the one above.
#include <bcrypt.h>
#include <wincrypt.h>

#include <cstring>

#else

// RC4 is what old files are encrypted with. The library offers it only through an interface that it
// advises against for new work.
#define OPENSSL_SUPPRESS_DEPRECATED
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <openssl/rc4.h>

#endif

namespace quillon::objects {
namespace {

[[noreturn]] void FailCipher() {
  Fail(kErrorGeneral, "The system's cipher library refuses what an encrypted file needs.");
}

std::size_t Checked(std::string_view data) {
  if (data.size() > std::size_t{std::numeric_limits<int>::max()} - 64) FailCipher();
  return data.size();
}

unsigned char* Bytes(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }
const unsigned char* Bytes(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

#ifdef _WIN32

namespace {

void Check(NTSTATUS status) {
  if (status < 0) FailCipher();
}
void CheckDone(BOOL done) {
  if (done == FALSE) FailCipher();
}

// BCrypt takes input as if it might write to it.
unsigned char* Input(std::string_view text) { return const_cast<unsigned char*>(Bytes(text)); }

ULONG Length(std::string_view text) { return static_cast<ULONG>(Checked(text)); }

struct Algorithm {
  BCRYPT_ALG_HANDLE handle = nullptr;
  explicit Algorithm(const wchar_t* name) {
    Check(BCryptOpenAlgorithmProvider(&handle, name, nullptr, 0));
  }
  ~Algorithm() { BCryptCloseAlgorithmProvider(handle, 0); }
  Algorithm(const Algorithm&) = delete;
  Algorithm& operator=(const Algorithm&) = delete;
};

struct Key {
  BCRYPT_KEY_HANDLE handle = nullptr;
  Key(const Algorithm& algorithm, std::string_view bytes) {
    Check(BCryptGenerateSymmetricKey(algorithm.handle, &handle, nullptr, 0, Input(bytes),
                                     Length(bytes), 0));
  }
  ~Key() { BCryptDestroyKey(handle); }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
};

// RC4 comes from the older of the system's two libraries, which Wine has whole, unlike the newer
// one.
struct OldProvider {
  HCRYPTPROV handle = 0;
  OldProvider() {
    CheckDone(CryptAcquireContextW(&handle, nullptr, MS_ENHANCED_PROV_W, PROV_RSA_FULL,
                                   CRYPT_VERIFYCONTEXT));
  }
  ~OldProvider() { CryptReleaseContext(handle, 0); }
  OldProvider(const OldProvider&) = delete;
  OldProvider& operator=(const OldProvider&) = delete;
};

struct Rc4Key {
  HCRYPTKEY handle = 0;
  Rc4Key(const OldProvider& provider, std::string_view bytes) {
    std::string key(bytes);
    // A key of 40 bits may be filled up with zeros; the same bytes twice mean the same to RC4.
    if (key.size() == 5) key += bytes;
    const BLOBHEADER header{PLAINTEXTKEYBLOB, CUR_BLOB_VERSION, 0, CALG_RC4};
    const DWORD length = Length(key);
    std::string blob(sizeof header + sizeof length, '\0');
    std::memcpy(blob.data(), &header, sizeof header);
    std::memcpy(blob.data() + sizeof header, &length, sizeof length);
    blob += key;
    CheckDone(CryptImportKey(provider.handle, Bytes(blob), Length(blob), 0, 0, &handle));
  }
  ~Rc4Key() { CryptDestroyKey(handle); }
  Rc4Key(const Rc4Key&) = delete;
  Rc4Key& operator=(const Rc4Key&) = delete;
};

const wchar_t* NameOfDigest(Digest digest) {
  switch (digest) {
    case Digest::kMd5:
      return BCRYPT_MD5_ALGORITHM;
    case Digest::kSha256:
      return BCRYPT_SHA256_ALGORITHM;
    case Digest::kSha384:
      return BCRYPT_SHA384_ALGORITHM;
    case Digest::kSha512:
      return BCRYPT_SHA512_ALGORITHM;
  }
  FailCipher();
}

std::string RunAes(std::string_view key, std::string_view iv, std::string_view data, bool encrypt) {
  const Algorithm aes(BCRYPT_AES_ALGORITHM);
  const std::wstring mode = BCRYPT_CHAIN_MODE_CBC;
  Check(BCryptSetProperty(aes.handle, BCRYPT_CHAINING_MODE,
                          reinterpret_cast<unsigned char*>(const_cast<wchar_t*>(mode.c_str())),
                          static_cast<ULONG>((mode.size() + 1) * sizeof(wchar_t)), 0));
  const Key schedule(aes, key);
  std::string chain(iv);
  std::string out(data.size(), '\0');
  ULONG written = 0;
  const auto run = encrypt ? BCryptEncrypt : BCryptDecrypt;
  Check(run(schedule.handle, Input(data), Length(data), nullptr, Bytes(chain), Length(chain),
            Bytes(out), Length(out), &written, 0));
  return out;
}

}  // namespace

std::string DigestOf(Digest digest, std::string_view data) {
  const Algorithm algorithm(NameOfDigest(digest));
  ULONG size = 0;
  ULONG written = 0;
  Check(BCryptGetProperty(algorithm.handle, BCRYPT_HASH_LENGTH,
                          reinterpret_cast<unsigned char*>(&size), sizeof size, &written, 0));
  BCRYPT_HASH_HANDLE hash = nullptr;
  Check(BCryptCreateHash(algorithm.handle, &hash, nullptr, 0, nullptr, 0, 0));
  const std::unique_ptr<void, decltype(&BCryptDestroyHash)> guard(hash, &BCryptDestroyHash);
  Check(BCryptHashData(hash, Input(data), Length(data), 0));
  std::string result(size, '\0');
  Check(BCryptFinishHash(hash, Bytes(result), size, 0));
  return result;
}

std::string ApplyRc4(std::string_view key, std::string_view data) {
  static const OldProvider provider;
  if (data.empty()) return {};
  const Rc4Key schedule(provider, key);
  std::string out(data);
  DWORD size = Length(data);
  CheckDone(CryptEncrypt(schedule.handle, 0, TRUE, 0, Bytes(out), &size, size));
  return out;
}

std::string EncryptAes(std::string_view key, std::string_view iv, std::string_view data) {
  return RunAes(key, iv, data, true);
}

std::string DecryptAes(std::string_view key, std::string_view iv, std::string_view data) {
  return RunAes(key, iv, data, false);
}

std::string RandomBytes(std::size_t count) {
  std::string bytes(count, '\0');
  Check(BCryptGenRandom(nullptr, Bytes(bytes), Length(bytes), BCRYPT_USE_SYSTEM_PREFERRED_RNG));
  return bytes;
}

#else

namespace {

const EVP_MD* MethodOf(Digest digest) {
  switch (digest) {
    case Digest::kMd5:
      return EVP_md5();
    case Digest::kSha256:
      return EVP_sha256();
    case Digest::kSha384:
      return EVP_sha384();
    case Digest::kSha512:
      return EVP_sha512();
  }
  FailCipher();
}

std::string RunAes(std::string_view key, std::string_view iv, std::string_view data, int encrypt) {
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(
      EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
  const EVP_CIPHER* cipher = key.size() == 32 ? EVP_aes_256_cbc() : EVP_aes_128_cbc();
  std::string out(Checked(data) + kAesBlock, '\0');
  int written = 0;
  if (context == nullptr ||
      EVP_CipherInit_ex(context.get(), cipher, nullptr, Bytes(key), Bytes(iv), encrypt) != 1 ||
      EVP_CIPHER_CTX_set_padding(context.get(), 0) != 1 ||
      EVP_CipherUpdate(context.get(), Bytes(out), &written, Bytes(data),
                       static_cast<int>(data.size())) != 1) {
    FailCipher();
  }
  out.resize(static_cast<std::size_t>(written));
  return out;
}

}  // namespace

std::string DigestOf(Digest digest, std::string_view data) {
  std::string result(EVP_MAX_MD_SIZE, '\0');
  unsigned size = 0;
  if (EVP_Digest(data.data(), data.size(), Bytes(result), &size, MethodOf(digest), nullptr) != 1) {
    FailCipher();
  }
  result.resize(size);
  return result;
}

std::string ApplyRc4(std::string_view key, std::string_view data) {
  RC4_KEY schedule;
  RC4_set_key(&schedule, static_cast<int>(key.size()), Bytes(key));
  std::string out(Checked(data), '\0');
  RC4(&schedule, data.size(), Bytes(data), Bytes(out));
  return out;
}

std::string EncryptAes(std::string_view key, std::string_view iv, std::string_view data) {
  return RunAes(key, iv, data, 1);
}

std::string DecryptAes(std::string_view key, std::string_view iv, std::string_view data) {
  return RunAes(key, iv, data, 0);
}

std::string RandomBytes(std::size_t count) {
  std::string bytes(count, '\0');
  if (RAND_bytes(Bytes(bytes), static_cast<int>(count)) != 1) FailCipher();
  return bytes;
}

#endif

}  // namespace quillon::objects
