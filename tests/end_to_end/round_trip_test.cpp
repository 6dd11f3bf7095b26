// The whole way through forms of other producers and the example: what was set is seen by
// independent programs; exported, reset and imported, it is what had been set.
#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <sstream>

#include "tests/end_to_end/fields_of.h"

namespace quillon::test {
namespace {

// The forms of other producers are there when their folder is.
std::vector<std::string> Documents() {
  std::vector<std::string> files = {ExampleForm()};
  const char* named = std::getenv("QUILLFORM_SAMPLES");
  std::error_code missing;
  for (const auto& entry :
       std::filesystem::directory_iterator(named != nullptr ? named : SAMPLES_FOLDER, missing)) {
    if (entry.path().extension() == ".pdf") files.push_back(entry.path().string());
  }
  std::sort(files.begin() + 1, files.end());
  return files;
}

std::string NameOfDocument(const testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path(info.param).stem().string();
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
  return name;
}

// What a reset leaves: the default value; of a choice without one, its first option.
Json ResetValueOf(const Json& field) {
  const Json& options = field["options"];
  if (!field["defaultValue"].is_null() || options.empty()) return field["defaultValue"];
  return options[0]["export"];
}

// Short enough for one line and unlike anything in the document; cut to what the field takes.
Json TextFor(std::size_t number, const Json& field) {
  std::string text = "q" + std::to_string(100 + number) + "z";
  if (!field["maxLength"].is_null()) text = text.substr(0, field["maxLength"]);
  return text;
}

// A state that a reset does not leave; null, which is off, when there is no other one.
Json StateFor(const Json& field) {
  for (const Json& state : field["states"]) {
    if (state != ResetValueOf(field)) return state;
  }
  return nullptr;
}

// The last options, which a reset leaves least often.
Json OptionsFor(const Json& field) {
  const Json& options = field["options"];
  if (options.empty()) return nullptr;
  const Json& last = options[options.size() - 1]["export"];
  if (!HasFlag(field, "multi-select") || options.size() < 2) return last;
  return Json::array({options[options.size() - 2]["export"], last});
}

bool TakesValues(const Json& field) {
  return field["kind"] != "push button" && field["kind"] != "other";
}

Json ValueFor(std::size_t number, const Json& field) {
  const std::string kind = field["kind"];
  if (kind == "text") return TextFor(number, field);
  return kind == "check box" || kind == "radio button" ? StateFor(field) : OptionsFor(field);
}

// A text that was set whole, and can be seen.
bool IsShown(const Json& field) {
  const Json& widgets = field["widgets"];
  return field["kind"] == "text" && field["value"].is_string() &&
         field["value"].get<std::string>().ends_with("z") &&
         std::any_of(widgets.begin(), widgets.end(),
                     [](const Json& widget) { return widget["visible"].get<bool>(); });
}

// What qpdf finds wrong, without the file's name.
std::set<std::string> Findings(const std::string& file) {
  std::istringstream lines(RunProcess({"qpdf", "--check", file}).err);
  std::set<std::string> findings;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t name = line.find(file);
    if (name != std::string::npos) line.erase(name, file.size());
    findings.insert(line);
  }
  return findings;
}

struct RoundTrip : testing::TestWithParam<std::string> {
  void Run(const std::vector<std::string>& arguments) {
    const ProcessResult result = Quillon(arguments);
    // Files of other producers may deserve a warning; so does a password that is not kept.
    ASSERT_TRUE(result.status == 0 || result.status == 3) << result.err;
  }

  // Read-only fields too: --force fills them.
  void Fill() {
    const Json fields = FieldsOf(GetParam());
    ASSERT_FALSE(fields.empty());
    std::map<std::string, Json> given;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (TakesValues(fields[i])) given[fields[i]["name"]] = ValueFor(i, fields[i]);
    }
    WriteFile(folder.File("values.json"), Json(given).dump());
    ASSERT_NO_FATAL_FAILURE(
        Run({"fill", GetParam(), "--force", "--values", folder.File("values.json"), "-o", filled}));
    filledFields = FieldsOf(filled);
    ASSERT_EQ(filledFields.size(), fields.size());
    for (const Json& field : filledFields) {
      if (!TakesValues(field)) continue;
      const Json kept = HasFlag(field, "password") ? Json(nullptr) : given[field["name"]];
      EXPECT_EQ(field["value"], kept) << field["name"];
    }
  }

  void ExpectShownByOtherPrograms() {
    if (HasTool("qpdf")) {
      const std::set<std::string> known = Findings(GetParam());
      for (const std::string& finding : Findings(filled)) {
        EXPECT_TRUE(known.contains(finding)) << finding;
      }
    }
    const std::vector<std::string> readers[] = {{"pdftotext", filled, "-"},
                                                {"mutool", "draw", "-q", "-F", "txt", filled}};
    for (const std::vector<std::string>& reader : readers) {
      if (!HasTool(reader[0])) continue;
      std::string text = RunProcess(reader).out;
      std::erase_if(text, [](unsigned char c) { return std::isspace(c) != 0; });
      for (const Json& field : filledFields) {
        if (!IsShown(field)) continue;
        EXPECT_NE(text.find(field["value"].get<std::string>()), std::string::npos)
            << reader[0] << " does not show " << field["name"];
      }
    }
  }

  void Reset() {
    ASSERT_NO_FATAL_FAILURE(Run({"reset", filled, "-o", reset}));
    resetFields = FieldsOf(reset);
    ASSERT_EQ(resetFields.size(), filledFields.size());
    for (const Json& field : resetFields) {
      if (!TakesValues(field) || HasFlag(field, "password")) continue;
      EXPECT_EQ(field["value"], ResetValueOf(field)) << field["name"];
    }
    EXPECT_NE(resetFields, filledFields);
  }

  // Fields that are not exported stay reset.
  void ExpectBackThrough(const std::string& format) {
    SCOPED_TRACE(format);
    const std::string data = folder.File("data." + format);
    const std::string back = folder.File("back-" + format + ".pdf");
    ASSERT_NO_FATAL_FAILURE(Run({"export", filled, "-o", data}));
    ASSERT_NO_FATAL_FAILURE(Run({"import", reset, data, "--force", "-o", back}));
    const Json fields = FieldsOf(back);
    ASSERT_EQ(fields.size(), filledFields.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
      Json expected = filledFields[i];
      if (HasFlag(expected, "no-export")) expected["value"] = resetFields[i]["value"];
      EXPECT_EQ(fields[i], expected);
    }
  }

  TemporaryFolder folder;
  std::string filled = folder.File("filled.pdf");
  std::string reset = folder.File("reset.pdf");
  Json filledFields;
  Json resetFields;
};

TEST_P(RoundTrip, WhatIsSetIsShownExportedAndResetComesBackEqual) {
  ASSERT_NO_FATAL_FAILURE(Fill());
  ExpectShownByOtherPrograms();
  ASSERT_NO_FATAL_FAILURE(Reset());
  for (const char* format : {"fdf", "json", "csv"}) ExpectBackThrough(format);
}

INSTANTIATE_TEST_SUITE_P(Documents, RoundTrip, testing::ValuesIn(Documents()), NameOfDocument);

}  // namespace
}  // namespace quillon::test
