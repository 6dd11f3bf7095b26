#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

TEST(FieldsCommand, JsonCarriesWhatTheFileSaysInTheOrderOfTheTree) {
  const Json fields = FieldsOf(ExampleForm());
  ASSERT_EQ(fields.size(), 14u);
  EXPECT_EQ(fields[0]["name"], "applicant.name");
  EXPECT_EQ(fields[1]["name"], "applicant.born");
  EXPECT_EQ(fields[13]["name"], "remarks");
  const Json number = FieldNamed(fields, "membership.number");
  EXPECT_EQ(number["kind"], "text");
  EXPECT_EQ(number["value"], "2024-0117");
  EXPECT_EQ(number["flags"], Json({"read-only"}));
  EXPECT_EQ(number["pages"], Json({1}));
  EXPECT_EQ(number["widgets"][0]["rect"], Json({50.0, 450.0, 200.0, 472.0}));
  EXPECT_EQ(number["maxLength"], nullptr);
  EXPECT_EQ(FieldNamed(fields, "applicant.born")["maxLength"], 10);
  EXPECT_EQ(FieldNamed(fields, "remarks")["defaultValue"], "None.");
  EXPECT_EQ(FieldNamed(fields, "remarks")["value"], nullptr);
  // One field that is shown twice on one page.
  EXPECT_EQ(FieldNamed(fields, "applicant.name")["widgets"].size(), 2u);
  EXPECT_EQ(FieldNamed(fields, "applicant.name")["pages"], Json({1}));
}

TEST(FieldsCommand, TextListsValuesAndLimits) {
  const std::string out = Quillon({"fields", ExampleForm()}).out;
  for (const char* text : {"membership.number\n  kind      text\n  value     \"2024-0117\"\n",
                           "  length    up to 10\n"}) {
    EXPECT_NE(out.find(text), std::string::npos) << out;
  }
}

TEST(FieldsCommand, FilesThatAreNoFormsAreRefusedByName) {
  const TemporaryFolder folder;
  const std::string text = folder.File("text.pdf");
  WriteFile(text, "this is no document\n");
  for (const std::string& file : {text, folder.File("missing.pdf")}) {
    const ProcessResult result = Quillon({"fields", file});
    ExpectEnd(result, 2);
    EXPECT_TRUE(result.err.starts_with("quillon: " + file + ": ")) << result.err;
    EXPECT_EQ(result.out, "") << file;
  }
}

TEST(CommandLine, TellsUsageAndVersion) {
  EXPECT_EQ(Quillon({"--help"}).status, 0);
  EXPECT_NE(Quillon({"fill", "--help"}).out.find("--in-place"), std::string::npos);
  EXPECT_EQ(Quillon({"--version"}).out.rfind("quillon ", 0), 0u);
}

TEST(CommandLine, MistakesAreErrors) {
  const std::vector<std::string> mistakes[] = {
      {},
      {"unknown"},
      {"fields"},
      {"fields", ExampleForm(), "--jsom"},
      {"fill", ExampleForm(), "applicant.city=London"},
      {"fill", "-", "applicant.city=London", "--in-place"},
      {"fill", ExampleForm(), "a=b", "--in-place", "-o", "x.pdf"},
      {"render", ExampleForm(), "--page", "0", "-o", "x.png"},
  };
  for (const auto& arguments : mistakes) {
    const ProcessResult result = Quillon(arguments);
    ExpectEnd(result, 2);
    EXPECT_TRUE(result.err.starts_with("quillon: ")) << result.err;
  }
}

}  // namespace
}  // namespace quillon::test
