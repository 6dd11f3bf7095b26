// `quillon pages`.
#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct PagesCommand : testing::Test {
  // The example with values, and twice as many pages of the same fields.
  void SetUp() override {
    ASSERT_EQ(Quillon({"fill", ExampleForm(), "applicant.name=First", "-o", filled}).status, 0);
    const ProcessResult result = Quillon({"pages", "insert", filled, ExampleForm(), "-o", doubled});
    ASSERT_EQ(result.status, 0) << result.err;
  }

  static void ExpectSound(const std::string& file) {
    if (!HasTool("qpdf")) return;
    const ProcessResult result = RunProcess({"qpdf", "--check", file});
    EXPECT_EQ(result.status, 0) << result.out << result.err;
  }

  void ExpectRefused(std::vector<std::string> arguments, const std::string& text) {
    const std::string out = folder.File("refused.pdf");
    arguments.insert(arguments.begin(), "pages");
    arguments.insert(arguments.end(), {"-o", out});
    const ProcessResult result = Quillon(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find(text), std::string::npos) << result.err;
    EXPECT_FALSE(std::filesystem::exists(out));
  }

  TempFolder folder;
  std::string filled = folder.File("filled.pdf");
  std::string doubled = folder.File("doubled.pdf");
};

TEST_F(PagesCommand, InsertedFieldsShareTheValuesOfTheirNames) {
  const Json before = FieldsOf(filled);
  const Json after = FieldsOf(doubled);
  EXPECT_EQ(after.size(), before.size()) << "no field came to be twice";
  const Json name = FieldNamed(after, "applicant.name");
  EXPECT_EQ(name["value"], "First");
  EXPECT_EQ(name["pages"], Json::array({1, 2}));
  ExpectSound(doubled);
  const std::string refilled = folder.File("refilled.pdf");
  ASSERT_EQ(Quillon({"fill", doubled, "applicant.name=Second", "-o", refilled}).status, 0);
  if (HasTool("pdftotext")) {
    const std::string text = RunProcess({"pdftotext", "-f", "2", refilled, "-"}).out;
    EXPECT_NE(text.find("Second"), std::string::npos) << text;
  }
}

TEST_F(PagesCommand, ExtractedPagesKeepTheirFieldsAndValues) {
  const std::string out = folder.File("extracted.pdf");
  const ProcessResult result = Quillon({"pages", "extract", doubled, "2", "-o", out});
  ASSERT_EQ(result.status, 0) << result.err;
  ExpectSound(out);
  const Json fields = FieldsOf(out);
  EXPECT_EQ(fields.size(), FieldsOf(filled).size());
  const Json name = FieldNamed(fields, "applicant.name");
  EXPECT_EQ(name["value"], "First");
  EXPECT_EQ(name["pages"], Json::array({1}));
  EXPECT_TRUE(HasFlag(name, "required"));
}

TEST_F(PagesCommand, DeletedPagesTakeTheirWidgetsAlong) {
  const std::string out = folder.File("deleted.pdf");
  const ProcessResult result = Quillon({"pages", "delete", doubled, "1-1", "-o", "-"});
  ASSERT_EQ(result.status, 0) << result.err;
  WriteFile(out, result.out);
  ExpectSound(out);
  const Json name = FieldNamed(FieldsOf(out), "applicant.name");
  EXPECT_EQ(name["value"], "First");
  EXPECT_EQ(name["pages"], Json::array({1}));
}

TEST_F(PagesCommand, WhatCannotBeDoneIsSaidAndNothingIsWritten) {
  ExpectRefused({"delete", doubled, "1-2"}, "without pages");
  ExpectRefused({"extract", doubled, "2-1"}, "no pages 2-1");
  ExpectRefused({"extract", doubled, "x"}, "no range");
  ExpectRefused({"insert", doubled, filled, "--after", "3"}, "no page 3");
  ExpectRefused({"insert", doubled, folder.File("absent.pdf")}, "absent.pdf");
}

}  // namespace
}  // namespace quillon::test
