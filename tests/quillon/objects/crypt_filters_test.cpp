// Encrypted documents of which some parts are not, or are encrypted otherwise. What an independent
// program made of passwords (file key, O and U) is written down here; the parts are encrypted by
// the rule of the standard (ISO 32000-2, 7.6.3.2 and 7.6.3.3).
#include "quillon/objects/ciphers.h"
#include "quillon/objects/filters.h"
#include "tests/quillon/objects/file_text.h"

namespace quillon::test {
namespace {

enum class Method { kNone, kRc4, kAes, kAes256 };

// What one password leads to. All are under the same permissions and file identifier.
struct PasswordEntries {
  const char* key;
  const char* entries;  // of the encryption dictionary
};
constexpr const char* kFileId = "31415926535897932384626433832795";
constexpr PasswordEntries kEmptyPassword = {
    "abe32231c5baae9679dc306bb3a7427d",
    "/V 4/R 4/O<566fa873ee33c797cd3b904fdadf814afa34df9a38f6ed41b984e2c6da2aa6f5>"
    "/U<e21cc3d13b0faa9934db7d20f11e333e0122456a91bae5134273a6db134c87c4>"};
constexpr PasswordEntries kPlainMetadata = {
    "1108101ea597f1f35b9393c012b8e3fe",
    "/EncryptMetadata false/V 4/R 4"
    "/O<566fa873ee33c797cd3b904fdadf814afa34df9a38f6ed41b984e2c6da2aa6f5>"
    "/U<b7ae61ae5fe831ccd7979c155d4f926c0122456a91bae5134273a6db134c87c4>"};
constexpr PasswordEntries kPasswordUser = {
    "55831911f0f2b9a08ac3cbcc766166db",
    "/V 4/R 4/O<0ba3835f88f90388e74e54584125ce142be0de24c6b0d37746e075b891756671>"
    "/U<763f954d16622015ee88b60b3eb8f7590122456a91bae5134273a6db134c87c4>"};
constexpr PasswordEntries kEmptyPassword256 = {
    "a3d533a959c4aa758ad6d6984b6952d5a16623b9c8faec997b787e1c7c5ca4d0",
    "/V 5/R 6/O<779b3ddad567070c191c857dd5ef13e08ddc3411b0989a0abf24a14f256586bb"
    "c7971ddc7012c59709366ec651499325>"
    "/OE<65daa625d0ad05fb52b4db0cf306e385419a6e05117d35b25fda488a94218f14>"
    "/Perms<1d070996f393d4061cb42a2abf184979>"
    "/U<fa1aec97e02f6c75e0cbe3939b87c174c0b2ceb9d2f616c444d9ca142bed9fac"
    "5ff504cc86e47d74f4eaa7ed9b3e6aa5>"
    "/UE<3edd379412a088dd85d02b38277a128873099903931daa745074dd2ef1ec9690>"};

struct Scheme {
  const char* name;
  PasswordEntries password;
  const char* filters;
  Method strings, streams, metadata, files;
  Method other;  // of the filter Other, which one stream asks for
};

constexpr Method kNone = Method::kNone, kRc4 = Method::kRc4, kAes = Method::kAes,
                 kAes256 = Method::kAes256;
const Scheme kSchemes[] = {
    {"PlainStreams", kEmptyPassword,
     "/CF<</Std<</CFM/AESV2>>/Other<</CFM/None>>>>/StmF/Identity/StrF/Std", kAes, kNone, kNone,
     kNone, kNone},
    {"FilesOnly", kEmptyPassword, "/CF<</Std<</CFM/AESV2>>/Other<</CFM/V2>>>>/EFF/Std", kNone,
     kNone, kNone, kAes, kRc4},
    {"EachItsOwn", kEmptyPassword,
     "/CF<</A<</CFM/AESV2>>/B<</CFM/V2>>/Other<</CFM/AESV2>>>>/StmF/A/StrF/B/EFF/B", kRc4, kAes,
     kAes, kRc4, kAes},
    {"PlainMetadata", kPlainMetadata,
     "/CF<</Std<</CFM/AESV2>>/Other<</CFM/V2>>>>/StmF/Std/StrF/Std", kAes, kAes, kNone, kAes, kRc4},
    {"PlainStringsOf256Bits", kEmptyPassword256,
     "/CF<</Std<</CFM/AESV3>>/Other<</CFM/AESV3>>>>/StmF/Std/StrF/Identity", kNone, kAes256,
     kAes256, kAes256, kAes256},
};

std::string Encrypt(const Scheme& scheme, Method method, int number, const std::string& plain) {
  if (method == kNone) return plain;
  std::string key = objects::DecodeAsciiHex(scheme.password.key);
  if (method != kAes256) {
    key += std::string{static_cast<char>(number), 0, 0, 0, 0};
    if (method == kAes) key += "sAlT";
    key = objects::DigestOf(objects::Digest::kMd5, key);
  }
  if (method == kRc4) return objects::ApplyRc4(key, plain);
  const std::size_t padding = 16 - plain.size() % 16;
  const std::string iv = "0123456789abcdef";
  return iv +
         objects::EncryptAes(key, iv, plain + std::string(padding, static_cast<char>(padding)));
}

// The parts of the document, by object number. Each has a string T and, if a stream, data.
struct Part {
  int number;
  const char* entries;     // null: it stands in an object stream
  const char* data;        // null: it is no stream
  const char* decoded;     // by the filters besides Crypt; null: as `data`
  Method Scheme::*method;  // of the data; null: not encrypted
};
const Part kParts[] = {
    {3, "", nullptr, nullptr, nullptr},
    {4, "", "a page's content", nullptr, &Scheme::streams},
    {5, "/Type/Metadata/Subtype/XML", "the metadata", nullptr, &Scheme::metadata},
    {6, "/Type/EmbeddedFile", "an attachment", nullptr, &Scheme::files},
    {7, "/Filter/Crypt", "identity by omission", nullptr, nullptr},
    {8, "/Type/EmbeddedFile/Filter[/Crypt]/DecodeParms[<</Name/Identity>>]", "a plain attachment",
     nullptr, nullptr},
    {9, "/Filter[/Crypt/ASCIIHexDecode]/DecodeParms[<</Name/Other>>null]", "6f74686572>", "other",
     &Scheme::other},
    {11, nullptr, nullptr, nullptr, nullptr},
};

Method MethodOf(const Scheme& scheme, const Part& part) {
  return part.method == nullptr ? kNone : scheme.*part.method;
}

std::string TextOf(const Part& part) { return "text of " + std::to_string(part.number); }

std::string DocumentUnder(const Scheme& scheme) {
  FileText file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  for (const Part& part : kParts) {
    if (part.entries == nullptr) continue;
    const std::string text =
        "/T<" + objects::EncodeAsciiHex(Encrypt(scheme, scheme.strings, part.number, TextOf(part)));
    if (part.data == nullptr) {
      file.Object(part.number, "<<" + text + ">>");
    } else {
      file.Stream(part.number, part.entries + text,
                  Encrypt(scheme, MethodOf(scheme, part), part.number, part.data));
    }
  }
  file.Stream(10, "/Type/ObjStm/N 1/First 5",
              Encrypt(scheme, scheme.streams, 10, "11 0 <</T(text of 11)>>"));
  file.Object(12, std::string("<</Filter/Standard/Length 128/P -4") + scheme.password.entries +
                      scheme.filters + ">>");
  const std::size_t start = file.bytes.size();
  file.offsets[13] = start;
  std::string fields;
  for (int number = 0; number <= 13; ++number) {
    if (number == 0) fields += XrefFields(0, 0, 0);
    if (number == 11) fields += XrefFields(2, 10, 0);
    if (number != 0 && number != 11) fields += XrefFields(1, file.offsets.at(number), 0);
  }
  file.Stream(13,
              std::string("/Type/XRef/W[1 2 1]/Size 14/Root 1 0 R/Encrypt 12 0 R/ID[<") + kFileId +
                  "><" + kFileId + ">]",
              fields);
  file.End(start);
  return file.bytes;
}

void ExpectAllReads(const OpenedDocument& file) {
  for (const Part& part : kParts) {
    SCOPED_TRACE(part.number);
    const ObjectHandle object = file.At(static_cast<std::uint32_t>(part.number));
    EXPECT_EQ(Text(Get(object, "T")), TextOf(part));
    if (part.data == nullptr) continue;
    EXPECT_EQ(DecodedStream(object), part.decoded == nullptr ? part.data : part.decoded);
  }
}

struct CryptFilters : testing::TestWithParam<Scheme> {};

TEST_P(CryptFilters, AreReadAndWrittenBackAsTheyWere) {
  const Scheme& scheme = GetParam();
  const std::string bytes = DocumentUnder(scheme);
  ExpectAllReads(OpenedDocument(bytes));
  for (const bool append : {false, true}) {
    SCOPED_TRACE(append);
    const OpenedDocument file(bytes);
    for (const Part& part : kParts) {
      PutText(file.doc, file.At(static_cast<std::uint32_t>(part.number)), "New", "added text");
    }
    const std::string saved = PdfToBytes(file.doc, {append});
    const OpenedDocument again(saved);
    ExpectAllReads(again);
    EXPECT_TRUE(PdfWarnings(again.doc).empty());
    const std::string written = append ? saved.substr(bytes.size()) : saved;
    EXPECT_EQ(written.find("added text") != std::string::npos, scheme.strings == kNone);
    for (const Part& part : kParts) {
      EXPECT_EQ(Text(Get(again.At(static_cast<std::uint32_t>(part.number)), "New")), "added text");
      if (part.data == nullptr) continue;
      const bool readable = written.find(part.data) != std::string::npos;
      EXPECT_EQ(readable, MethodOf(scheme, part) == kNone) << part.number;
    }
  }
}

std::string NameOfScheme(const testing::TestParamInfo<Scheme>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Schemes, CryptFilters, testing::ValuesIn(kSchemes), NameOfScheme);

// Nothing but the attachments is encrypted: the rest can be read and changed without the password.
TEST(CryptFilter, AttachmentsAloneNeedThePassword) {
  Scheme scheme = kSchemes[1];
  scheme.password = kPasswordUser;
  const std::string bytes = DocumentUnder(scheme);
  ExpectAllReads(OpenedDocument(OpenPdfBytes(bytes, {"%PDF-", "user"}, nullptr)));
  EXPECT_THROW(OpenPdfBytes(bytes, {"%PDF-", "wrong"}, nullptr), HostFailure);
  const OpenedDocument file(bytes);
  EXPECT_EQ(Text(Get(file.At(6), "T")), "text of 6");
  EXPECT_THROW(DecodedStream(file.At(6)), HostFailure);
  PutText(file.doc, file.At(3), "T", "changed");
  const OpenedDocument again(OpenPdfBytes(PdfToBytes(file.doc), {"%PDF-", "user"}, nullptr));
  EXPECT_EQ(Text(Get(again.At(3), "T")), "changed");
  EXPECT_EQ(DecodedStream(again.At(6)), "an attachment");
}

// Another document need not know the filters that a stream names.
TEST(CryptFilter, IsLeftBehindByCopies) {
  for (const Scheme& scheme : kSchemes) {
    SCOPED_TRACE(scheme.name);
    const OpenedDocument file(DocumentUnder(scheme));
    const OpenedDocument plain(FileWithObject("[]"));
    std::vector<const char*> expected;
    for (const Part& part : kParts) {
      if (part.data == nullptr) continue;
      const ObjectHandle copy =
          objects::CopyObject(file.At(static_cast<std::uint32_t>(part.number)), plain.doc);
      objects::ArrayInsert(plain.At(3), static_cast<std::uint32_t>(expected.size()), copy);
      expected.push_back(part.decoded == nullptr ? part.data : part.decoded);
    }
    const std::string saved = PdfToBytes(plain.doc);
    EXPECT_EQ(saved.find("/Crypt"), std::string::npos);
    const OpenedDocument again(saved);
    for (std::uint32_t i = 0; i < expected.size(); ++i) {
      EXPECT_EQ(DecodedStream(objects::ArrayGet(again.At(3), i)), expected[i]);
    }
  }
}

}  // namespace
}  // namespace quillon::test
