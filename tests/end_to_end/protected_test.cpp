// Encrypted and signed documents, made and judged by an independent program.
#include "tests/breaker/file_edit.h"
#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct Encryption {
  const char* name;
  const char* user;                   // the user's password; the owner's is "owner"
  std::vector<std::string> options;   // of qpdf, the number of bits first
  std::vector<std::string> settings;  // what qpdf then says of the file
  const char* streams = "--object-streams=preserve";
};

const std::vector<Encryption>& Encryptions() {
  static const std::string aes = "--use-aes=y", rc4 = "--use-aes=n";
  static const std::string method = "stream encryption method: ";
  const char* const streams = "--object-streams=generate";
  static const std::vector<Encryption> all = {
      {"EmptyPassword", "", {"40"}, {"R = 2"}},
      {"Rc4Of40Bits", "user", {"40"}, {"R = 2"}},
      {"Rc4Of128Bits", "user", {"128", rc4}, {"R = 3"}},
      {"Rc4AsCryptFilter", "user", {"128", rc4, "--force-V4"}, {"R = 4", method + "RC4"}},
      {"PlainMetadata",
       "user",
       {"128", aes, "--cleartext-metadata"},
       {"R = 4", method + "AESv2"},
       streams},
      {"Revision5", "user", {"256", "--force-R5"}, {"R = 5"}},
      {"AesOf256Bits", "pässwört", {"256"}, {"R = 6", method + "AESv3"}, streams},
  };
  return all;
}

struct Encrypted : testing::TestWithParam<Encryption> {
  void SetUp() override {
    if (!HasTool("qpdf")) GTEST_SKIP() << "qpdf is not installed";
    std::vector<std::string> command = {
        "qpdf",      "--allow-weak-crypto", ExampleForm(), file, GetParam().streams,
        "--encrypt", GetParam().user,       "owner"};
    command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
    command.emplace_back("--");
    ASSERT_EQ(RunProcess(command).status, 0);
    WriteFile(passwordFile, std::string(GetParam().user) + "\nanother line\n");
  }

  // What qpdf says of a written file; the text in it once it is decrypted.
  std::string Judge(const std::string& written) {
    const std::string password = std::string("--password=") + GetParam().user;
    ExpectEnd(RunProcess({"qpdf", "--check", password, written}), 0);
    const ProcessResult shown = RunProcess({"qpdf", "--show-encryption", password, written});
    for (const std::string& setting : GetParam().settings) {
      EXPECT_NE(shown.out.find(setting), std::string::npos) << shown.out;
    }
    const ProcessResult plain = RunProcess(
        {"qpdf", password, "--decrypt", "--qdf", "--object-streams=disable", written, "-"});
    EXPECT_EQ(plain.status, 0);
    return plain.out;
  }

  TemporaryFolder folder;
  std::string file = folder.File("encrypted.pdf");
  std::string written = folder.File("written.pdf");
  std::string passwordFile = folder.File("password.txt");
};

TEST_P(Encrypted, OpensByItsPasswordsIsFilledAndStaysEncryptedTheSameWay) {
  const std::vector<std::string> secrets[] = {{"--password", "owner"},
                                              {"--password-file", passwordFile},
                                              {"--password-file", passwordFile, "--append"}};
  for (const std::vector<std::string>& secret : secrets) {
    std::vector<std::string> command = {"fill", file, "applicant.city=Quayside", "-o", written};
    command.insert(command.end(), secret.begin(), secret.end());
    ExpectEnd(Quillon(command), 0);
    const std::string bytes = ReadFile(written);
    EXPECT_EQ(bytes.find("Quayside"), std::string::npos) << "the value is not encrypted";
    const std::string plain = Judge(written);
    EXPECT_NE(plain.find("Quayside"), std::string::npos);
    EXPECT_NE(plain.find("Helv 11 Tf"), std::string::npos) << "another string was lost";
    EXPECT_EQ(bytes.starts_with(ReadFile(file)), secret.back() == "--append");
  }
  ExpectEnd(Quillon({"render", written, "--password", "owner", "-o", folder.File("page.png")}), 0);
  if (*GetParam().user == '\0') return;
  ExpectEnd(Quillon({"fields", file}), 2, {"takes a password"});
  ExpectEnd(Quillon({"fields", file, "--password", "wrong"}), 2, {"another password"});
}

std::string NameOfEncryption(const testing::TestParamInfo<Encryption>& info) {
  return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Ways, Encrypted, testing::ValuesIn(Encryptions()), NameOfEncryption);

TEST(Permissions, FillingIsPermittedByItsOwnBit) {
  if (!HasTool("qpdf")) GTEST_SKIP() << "qpdf is not installed";
  const TemporaryFolder folder;
  const std::string file = folder.File("restricted.pdf");
  const std::string out = folder.File("out.pdf");
  const auto fill = [&](const char* permitted, const char* password) {
    RunProcess({"qpdf", "--encrypt", "", "owner", "256", permitted, "--", ExampleForm(), file});
    return Quillon({"fill", file, "remarks=x", "-o", out, "--password", password}).status;
  };
  EXPECT_EQ(fill("--modify=form", ""), 0);
  EXPECT_EQ(fill("--modify=none", ""), 2);
  EXPECT_EQ(fill("--modify=none", "owner"), 0);
  EXPECT_EQ(ValueOf(file, "applicant.city"), nullptr);
  ExpectEnd(Quillon({"export", file, "-o", out}), 0);
  EXPECT_NE(ReadFile(out).find("/T(membership)"), std::string::npos) << "reading takes no right";
}

// The example with a signature field that has a value, with these entries.
std::string SignedForm(const std::string& entries = "") {
  std::string form = ReadFile(ExampleForm());
  const int number = FindObject(form, {"/Fields"});
  std::string text = ObjectText(form, number);
  text.insert(text.find(']', text.find("/Fields")),
              " <</FT/Sig/T(signed)/V<</Type/Sig/Contents<00>" + entries + ">>>>");
  EXPECT_TRUE(AppendObjects(form, {{number, text}}));
  return form;
}

TEST(Signed, IsAppendedToOrForcedNeverRewrittenUnasked) {
  const TemporaryFolder folder;
  const std::string file = folder.File("signed.pdf");
  const std::string out = folder.File("out.pdf");
  WriteFile(file, SignedForm());
  ExpectEnd(Quillon({"fill", file, "remarks=x", "-o", out}), 2,
            {"the document is signed", "--append"});
  ExpectEnd(Quillon({"pages", "insert", file, file, "-o", out}), 2);
  EXPECT_FALSE(std::filesystem::exists(out));
  ExpectEnd(Quillon({"fill", file, "remarks=x", "--append", "-o", out}), 0);
  EXPECT_TRUE(ReadFile(out).starts_with(SignedForm())) << "what was signed is not as it was";
  ExpectEnd(Quillon({"fill", file, "remarks=x", "--force", "-o", out}), 0);
  EXPECT_FALSE(ReadFile(out).starts_with(SignedForm()));
}

std::string Reference(const std::string& method, const std::string& params) {
  return "/Reference[<</TransformMethod/" + method + "/TransformParams<<" + params + ">>>>]";
}

TEST(Signed, WhatASignatureForbidsIsNotAppendedEither) {
  const TemporaryFolder folder;
  const std::string file = folder.File("signed.pdf");
  const std::string out = folder.File("out.pdf");
  struct Rule {
    std::string entries, refused, permitted;  // assignments; empty: none
  };
  const std::vector<Rule> rules = {
      {Reference("DocMDP", "/P 1"), "remarks=x", ""},
      {Reference("DocMDP", ""), "", "remarks=x"},
      {Reference("FieldMDP", "/Action/All"), "remarks=x", ""},
      {Reference("FieldMDP", "/Action/Include/Fields[(applicant)]"), "applicant.city=x",
       "remarks=x"},
      {Reference("FieldMDP", "/Action/Exclude/Fields[(applicant)]"), "remarks=x",
       "applicant.city=x"},
  };
  for (const Rule& rule : rules) {
    SCOPED_TRACE(rule.entries);
    WriteFile(file, SignedForm(rule.entries));
    if (!rule.refused.empty()) {
      ExpectEnd(Quillon({"fill", file, rule.refused, "--append", "-o", out}), 2, {"--force"});
      EXPECT_FALSE(std::filesystem::exists(out));
      ExpectEnd(Quillon({"fill", file, rule.refused, "--append", "--force", "-o", out}), 0);
      EXPECT_TRUE(ReadFile(out).starts_with(ReadFile(file)));
      std::filesystem::remove(out);
    }
    if (rule.permitted.empty()) continue;
    ExpectEnd(Quillon({"fill", file, rule.permitted, "--append", "-o", out}), 0);
    std::filesystem::remove(out);
  }
  WriteFile(file, SignedForm(Reference("DocMDP", "")));
  ExpectEnd(Quillon({"pages", "insert", file, file, "--append", "-o", out}), 2, {"its pages"});
}

TEST(Appended, TenTimesGrowsByWhatChanged) {
  const TemporaryFolder folder;
  const std::string file = folder.File("form.pdf");
  std::string bytes = ReadFile(ExampleForm());
  WriteFile(file, bytes);
  std::vector<double> growths;
  for (int i = 0; i < 10; ++i) {
    const std::string before = bytes;
    const std::string value = "remarks=round " + std::to_string(i);
    ExpectEnd(Quillon({"fill", file, value, "--append", "--in-place"}), 0);
    bytes = ReadFile(file);
    EXPECT_TRUE(bytes.starts_with(before));
    growths.push_back(static_cast<double>(bytes.size() - before.size()));
  }
  EXPECT_LT(growths[9], static_cast<double>(ReadFile(ExampleForm()).size()) / 2);
  EXPECT_NEAR(growths[9], growths[2], 100);
  EXPECT_EQ(ValueOf(file, "remarks"), "round 9");
  if (HasTool("qpdf")) ExpectEnd(RunProcess({"qpdf", "--check", file}), 0);
}

}  // namespace
}  // namespace quillon::test
