// Encrypted and signed documents, made and judged by an independent program.
#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct Encryption {
  const char* name;
  std::vector<std::string> options;   // of qpdf, the user's and the owner's password among them
  std::string password;               // that it is opened with here
  std::vector<std::string> settings;  // what qpdf then says of the file
};

const std::vector<Encryption>& Encryptions() {
  static const std::string encrypt = "--encrypt", aes = "--use-aes=y", rc4 = "--use-aes=n";
  static const std::string method = "stream encryption method: ";
  static const std::vector<Encryption> all = {
      {"EmptyPassword", {encrypt, "", "owner", "40"}, "", {"R = 2"}},
      {"Rc4Of40Bits", {encrypt, "user", "owner", "40"}, "user", {"R = 2"}},
      {"Owner40", {encrypt, "user", "owner", "40"}, "owner", {"R = 2"}},
      {"Rc4Of128Bits", {encrypt, "user", "owner", "128", rc4}, "user", {"R = 3"}},
      {"Owner128", {encrypt, "user", "owner", "128", rc4}, "owner", {"R = 3"}},
      {"Rc4AsCryptFilter",
       {encrypt, "user", "owner", "128", rc4, "--force-V4"},
       "user",
       {"R = 4", method + "RC4"}},
      {"PlainMetadata",
       {"--object-streams=generate", encrypt, "user", "owner", "128", aes, "--cleartext-metadata"},
       "user",
       {"R = 4", method + "AESv2"}},
      {"Revision5", {encrypt, "user", "owner", "256", "--force-R5"}, "user", {"R = 5"}},
      {"AesOf256Bits",
       {"--object-streams=generate", encrypt, "pässwört", "owner", "256"},
       "pässwört",
       {"R = 6", method + "AESv3"}},
      {"Owner256", {encrypt, "user", "owner", "256"}, "owner", {"R = 6"}},
  };
  return all;
}

struct Encrypted : testing::TestWithParam<Encryption> {
  void SetUp() override {
    if (!HasTool("qpdf")) GTEST_SKIP() << "qpdf is not installed";
    std::vector<std::string> command = {"qpdf", "--allow-weak-crypto"};
    command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
    command.insert(command.end(), {"--", ExampleForm(), file});
    ASSERT_EQ(RunProcess(command).status, 0);
    WriteFile(passwordFile, GetParam().password + "\nanother line\n");
  }

  // What qpdf says of a written file; the text in it once it is decrypted.
  std::string Judge(const std::string& written) {
    const std::string password = "--password=" + GetParam().password;
    const ProcessResult check = RunProcess({"qpdf", "--check", password, written});
    EXPECT_EQ(check.status, 0) << check.err;
    const ProcessResult shown = RunProcess({"qpdf", "--show-encryption", password, written});
    for (const std::string& setting : GetParam().settings) {
      EXPECT_NE(shown.out.find(setting), std::string::npos) << shown.out;
    }
    const ProcessResult plain = RunProcess(
        {"qpdf", password, "--decrypt", "--qdf", "--object-streams=disable", written, "-"});
    EXPECT_EQ(plain.status, 0);
    return plain.out;
  }

  TempFolder folder;
  std::string file = folder.File("encrypted.pdf");
  std::string written = folder.File("written.pdf");
  std::string passwordFile = folder.File("password.txt");
};

TEST_P(Encrypted, OpensIsFilledAndStaysEncryptedTheSameWay) {
  const std::vector<std::string> secrets[] = {{"--password", GetParam().password},
                                              {"--password-file", passwordFile}};
  for (const std::vector<std::string>& secret : secrets) {
    for (const char* append : {"", "--append"}) {
      std::vector<std::string> command = {"fill", file, "applicant.city=Quayside", "-o", written};
      command.insert(command.end(), secret.begin(), secret.end());
      if (*append != '\0') command.emplace_back(append);
      const ProcessResult filled = Quillon(command);
      ASSERT_EQ(filled.status, 0) << filled.err;
      const std::string bytes = ReadFile(written);
      EXPECT_EQ(bytes.find("Quayside"), std::string::npos) << "the value is not encrypted";
      const std::string plain = Judge(written);
      EXPECT_NE(plain.find("Quayside"), std::string::npos);
      EXPECT_NE(plain.find("Helv 11 Tf"), std::string::npos) << "another string was lost";
      if (*append != '\0') {
        EXPECT_EQ(bytes.rfind(ReadFile(file), 0), 0u);
      }
    }
  }
}

TEST_P(Encrypted, WrongPasswordIsRefused) {
  if (GetParam().password.empty()) GTEST_SKIP() << "the empty password opens it";
  EXPECT_NE(Quillon({"fields", file}).err.find("takes a password"), std::string::npos);
  const ProcessResult wrong = Quillon({"fields", file, "--password", "wrong"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_NE(wrong.err.find("another password"), std::string::npos) << wrong.err;
}

std::string NameOfEncryption(const testing::TestParamInfo<Encryption>& info) {
  return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Ways, Encrypted, testing::ValuesIn(Encryptions()), NameOfEncryption);

TEST(Permissions, FillingIsPermittedByItsOwnBit) {
  if (!HasTool("qpdf")) GTEST_SKIP() << "qpdf is not installed";
  const TempFolder folder;
  const std::string file = folder.File("restricted.pdf");
  const std::string out = folder.File("out.pdf");
  struct Case {
    const char* modify;
    const char* password;
    int status;
  };
  for (const Case& one : {Case{"--modify=form", "", 0}, Case{"--modify=none", "", 2},
                          Case{"--modify=none", "owner", 0}}) {
    SCOPED_TRACE(one.modify);
    ASSERT_EQ(
        RunProcess({"qpdf", "--encrypt", "", "owner", "256", one.modify, "--", ExampleForm(), file})
            .status,
        0);
    const ProcessResult filled =
        Quillon({"fill", file, "remarks=x", "-o", out, "--password", one.password});
    EXPECT_EQ(filled.status, one.status) << filled.err;
  }
}

// The example with a signature field that has a value.
std::string SignedForm() {
  std::string form = ReadFile(ExampleForm());
  const std::size_t start = std::stoul(form.substr(form.rfind("startxref") + 10));
  const std::size_t dict = form.find("28 0 obj");
  std::string text = form.substr(dict, form.find("endobj", dict) - dict);
  text.insert(text.find(']', text.find("/Fields")),
              " <</FT/Sig/T(signed)/V<</Type/Sig/Contents<00>>>>>");
  const std::size_t place = form.size();
  form += text + "endobj\n";
  const std::size_t table = form.size();
  std::string offset = std::to_string(place);
  offset.insert(0, 10 - offset.size(), '0');
  form += "xref\n28 1\n" + offset + " 00000 n\r\ntrailer\n<</Size 29/Root 1 0 R/Prev " +
          std::to_string(start) + ">>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
  return form;
}

TEST(Signed, IsAppendedToOrForcedNeverRewrittenUnasked) {
  const TempFolder folder;
  const std::string file = folder.File("signed.pdf");
  const std::string out = folder.File("out.pdf");
  WriteFile(file, SignedForm());
  const ProcessResult refused = Quillon({"fill", file, "remarks=x", "-o", out});
  EXPECT_EQ(refused.status, 2);
  EXPECT_NE(refused.err.find("the document is signed"), std::string::npos) << refused.err;
  EXPECT_NE(refused.err.find("--append"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_EQ(Quillon({"pages", "insert", file, file, "-o", out}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(out));
  const ProcessResult appended = Quillon({"fill", file, "remarks=x", "--append", "-o", out});
  EXPECT_EQ(appended.status, 0) << appended.err;
  EXPECT_EQ(ReadFile(out).rfind(SignedForm(), 0), 0u) << "what was signed is not as it was";
  EXPECT_EQ(Quillon({"fill", file, "remarks=x", "--force", "-o", out}).status, 0);
  EXPECT_NE(ReadFile(out).rfind(SignedForm(), 0), 0u);
}

TEST(Appended, TenTimesGrowsByWhatChanged) {
  const TempFolder folder;
  const std::string file = folder.File("form.pdf");
  WriteFile(file, ReadFile(ExampleForm()));
  std::vector<std::size_t> sizes;
  for (int i = 0; i < 10; ++i) {
    const std::string before = ReadFile(file);
    ASSERT_EQ(
        Quillon({"fill", file, "remarks=round " + std::to_string(i), "--append", "--in-place"})
            .status,
        0);
    EXPECT_EQ(ReadFile(file).rfind(before, 0), 0u);
    sizes.push_back(ReadFile(file).size());
  }
  EXPECT_LT(sizes[9] - sizes[8], ReadFile(ExampleForm()).size() / 2);
  EXPECT_NEAR(double(sizes[9] - sizes[8]), double(sizes[2] - sizes[1]), 100);
  EXPECT_EQ(FieldNamed(FieldsOf(file), "remarks")["value"], "round 9");
  if (!HasTool("qpdf")) return;
  EXPECT_EQ(RunProcess({"qpdf", "--check", file}).status, 0);
}

}  // namespace
}  // namespace quillon::test
