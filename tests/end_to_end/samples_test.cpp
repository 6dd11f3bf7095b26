// The whole way through forms of other producers (and the example): list, fill every text field,
// and have independent programs look at the result.
#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "tests/end_to_end/fields_of.h"
#include "tests/end_to_end/sample_documents.h"

namespace quillon::test {
namespace {

// Short enough for one line and unlike anything in the document; cut to what the field takes.
std::string ValueFor(std::size_t number, const Json& field) {
  std::string value = "q" + std::to_string(100 + number) + "z";
  if (!field["maxLength"].is_null()) value = value.substr(0, field["maxLength"]);
  return value;
}

std::string WithoutBlanks(std::string text) {
  text.erase(std::remove_if(text.begin(), text.end(),
                            [](unsigned char c) { return std::isspace(c) != 0; }),
             text.end());
  return text;
}

// What qpdf finds wrong, without the file's name.
std::set<std::string> Findings(const std::string& file) {
  const ProcessResult result = RunProcess({"qpdf", "--check", file});
  std::set<std::string> findings;
  std::istringstream lines(result.err);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t name = line.find(file);
    if (name != std::string::npos) line.erase(name, file.size());
    findings.insert(line);
  }
  return findings;
}

bool IsVisible(const Json& field) {
  const Json& widgets = field["widgets"];
  return std::any_of(widgets.begin(), widgets.end(),
                     [](const Json& widget) { return widget["visible"].get<bool>(); });
}

struct Samples : testing::TestWithParam<std::string> {
  // Values for every text field that takes one and keeps it.
  void PlanValues() {
    const Json fields = FieldsOf(GetParam());
    ASSERT_TRUE(fields.is_array());
    ASSERT_FALSE(fields.empty());
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Json& field = fields[i];
      const bool fillable =
          field["kind"] == "text" && !HasFlag(field, "read-only") && !HasFlag(field, "password");
      if (!fillable) continue;
      values[field["name"]] = ValueFor(i, field);
      const bool whole = values[field["name"]].ends_with("z");
      if (whole && IsVisible(field)) shown.push_back(values[field["name"]]);
    }
    if (values.empty()) GTEST_SKIP() << "no text fields to fill";
  }

  void Fill() {
    WriteFile(folder.File("values.json"), Json(values).dump());
    const ProcessResult result =
        Quillon({"fill", GetParam(), "--values", folder.File("values.json"), "-o", filled});
    ASSERT_TRUE(result.status == 0 || result.status == 3) << result.err;
  }

  TempFolder folder;
  std::string filled = folder.File("filled.pdf");
  std::map<std::string, std::string> values;
  std::vector<std::string> shown;
};

TEST_P(Samples, EveryTextFieldTakesAValueThatOtherProgramsShow) {
  PlanValues();
  if (IsSkipped() || HasFatalFailure()) return;
  ASSERT_NO_FATAL_FAILURE(Fill());

  const Json fields = FieldsOf(filled);
  for (const auto& [name, value] : values) {
    EXPECT_EQ(FieldNamed(fields, name)["value"], value) << name;
  }
  if (HasTool("qpdf")) {
    const std::set<std::string> known = Findings(GetParam());
    for (const std::string& finding : Findings(filled)) {
      EXPECT_TRUE(known.contains(finding)) << finding;
    }
  }
  struct Reader {
    const char* tool;
    std::vector<std::string> command;
  };
  const Reader readers[] = {{"pdftotext", {"pdftotext", filled, "-"}},
                            {"mutool", {"mutool", "draw", "-q", "-F", "txt", filled}}};
  for (const Reader& reader : readers) {
    if (!HasTool(reader.tool)) continue;
    const std::string text = WithoutBlanks(RunProcess(reader.command).out);
    for (const std::string& value : shown) {
      EXPECT_NE(text.find(value), std::string::npos) << reader.tool << " does not show " << value;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Documents, Samples, testing::ValuesIn(SampleDocuments()), SampleName);

}  // namespace
}  // namespace quillon::test
