// `quillon pages`.
#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

struct PagesCommand : testing::Test {
  // The example with values, and twice as many pages of the same fields.
  void SetUp() override {
    ExpectEnd(Quillon({"fill", ExampleForm(), "applicant.name=First", "-o", filled}), 0);
    ExpectEnd(Quillon({"pages", "insert", filled, ExampleForm(), "-o", doubled}), 0);
  }

  // Sound, with each field once, and the first of them with its value on those pages.
  static void ExpectFields(const std::string& file, const std::vector<int>& pages) {
    const Json fields = FieldsOf(file), name = FieldNamed(fields, "applicant.name");
    EXPECT_EQ(fields.size(), FieldsOf(ExampleForm()).size());
    EXPECT_EQ(name["value"], "First");
    EXPECT_EQ(name["pages"], Json(pages));
    EXPECT_TRUE(HasFlag(name, "required"));
    if (HasTool("qpdf")) ExpectEnd(RunProcess({"qpdf", "--check", file}), 0);
  }

  void ExpectRefused(std::vector<std::string> arguments, const std::string& text) {
    const std::string out = folder.File("refused.pdf");
    arguments.insert(arguments.begin(), "pages");
    arguments.insert(arguments.end(), {"-o", out});
    ExpectEnd(Quillon(arguments), 2, {text});
    EXPECT_FALSE(std::filesystem::exists(out));
  }

  TemporaryFolder folder;
  std::string filled = folder.File("filled.pdf");
  std::string doubled = folder.File("doubled.pdf");
};

TEST_F(PagesCommand, InsertedFieldsShareTheValuesOfTheirNames) {
  ExpectFields(doubled, {1, 2});
  const std::string refilled = folder.File("refilled.pdf");
  ExpectEnd(Quillon({"fill", doubled, "applicant.name=Second", "-o", refilled}), 0);
  if (!HasTool("pdftotext")) return;
  const std::string text = RunProcess({"pdftotext", "-f", "2", refilled, "-"}).out;
  EXPECT_NE(text.find("Second"), std::string::npos) << text;
}

TEST_F(PagesCommand, ExtractedAndRemainingPagesKeepTheirFieldsAndValues) {
  const std::string out = folder.File("out.pdf");
  ExpectEnd(Quillon({"pages", "extract", doubled, "2", "-o", out}), 0);
  ExpectFields(out, {1});
  const ProcessResult result = Quillon({"pages", "delete", doubled, "1-1", "-o", "-"});
  WriteFile(out, result.out);
  ExpectFields(out, {1});
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
