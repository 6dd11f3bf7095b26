#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

TEST(FieldsCommand, ListsEachFieldOnceInTheOrderOfTheTree) {
  std::vector<std::string> names;
  for (const Json& field : FieldsOf(ExampleForm())) names.push_back(field["name"]);
  const std::vector<std::string> expected = {
      "applicant.name",      "applicant.born",   "applicant.email",
      "applicant.address",   "applicant.phone",  "applicant.city",
      "membership.number",   "membership.kind",  "membership.fee",
      "membership.password", "membership.motto", "office.stamp",
      "office.clerk",        "remarks"};
  EXPECT_EQ(names, expected);
}

TEST(FieldsCommand, JsonCarriesWhatTheFileSays) {
  const Json fields = FieldsOf(ExampleForm());
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
  const ProcessResult result = Quillon({"fields", ExampleForm()});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("membership.number\n  kind      text\n  value     \"2024-0117\"\n"),
            std::string::npos)
      << result.out;
  EXPECT_NE(result.out.find("  length    up to 10\n"), std::string::npos);
}

TEST(FieldsCommand, FilesThatAreNoFormsAreRefusedByName) {
  const TempFolder folder;
  const std::string text = folder.File("text.pdf"), empty = folder.File("empty.pdf");
  WriteFile(text, "this is no document\n");
  WriteFile(empty, "");
  for (const std::string& file : {text, empty, folder.File("missing.pdf")}) {
    const ProcessResult result = Quillon({"fields", file});
    EXPECT_EQ(result.status, 2) << file;
    EXPECT_EQ(result.out, "") << file;
    EXPECT_EQ(result.err.rfind("quillon: " + file + ": ", 0), 0u) << result.err;
  }
}

TEST(CommandLine, TellsUsageAndVersion) {
  EXPECT_EQ(Quillon({"--help"}).status, 0);
  EXPECT_NE(Quillon({"fill", "--help"}).out.find("--in-place"), std::string::npos);
  EXPECT_EQ(Quillon({"--version"}).out.rfind("quillon ", 0), 0u);
}

TEST(CommandLine, MistakesAreErrors) {
  const std::vector<std::vector<std::string>> mistakes = {
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
    EXPECT_EQ(result.status, 2) << result.err;
    EXPECT_EQ(result.err.rfind("quillon: ", 0), 0u) << result.err;
  }
}

}  // namespace
}  // namespace quillon::test
