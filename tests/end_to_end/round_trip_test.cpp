// Values of every kind out of a form and in again: what was set, exported, reset and imported is
// what had been set, in forms of other producers as in the example.
#include <algorithm>
#include <map>

#include "tests/end_to_end/fields_of.h"
#include "tests/end_to_end/sample_documents.h"

namespace quillon::test {
namespace {

// What a reset leaves: the default value; of a choice without one, its first option.
Json ResetValueOf(const Json& field) {
  const Json& options = field["options"];
  if (!field["defaultValue"].is_null() || options.empty()) return field["defaultValue"];
  return options[0]["export"];
}

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

  // What an import into the reset form is to bring back: fields that are not exported stay reset.
  Json Expected() const {
    Json expected = filledFields;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      if (HasFlag(expected[i], "no-export")) expected[i]["value"] = resetFields[i]["value"];
    }
    return expected;
  }

  void ExpectBackThrough(const std::string& format) {
    SCOPED_TRACE(format);
    const std::string data = folder.File("data." + format);
    const std::string back = folder.File("back-" + format + ".pdf");
    ASSERT_NO_FATAL_FAILURE(Run({"export", filled, "-o", data}));
    ASSERT_NO_FATAL_FAILURE(Run({"import", reset, data, "--force", "-o", back}));
    const Json fields = FieldsOf(back), expected = Expected();
    ASSERT_EQ(fields.size(), expected.size());
    for (std::size_t i = 0; i < fields.size(); ++i) EXPECT_EQ(fields[i], expected[i]);
  }

  TempFolder folder;
  std::string filled = folder.File("filled.pdf");
  std::string reset = folder.File("reset.pdf");
  std::map<std::string, Json> given;
  Json filledFields;
  Json resetFields;
};

TEST_P(RoundTrip, WhatIsExportedAndResetComesBackEqual) {
  ASSERT_NO_FATAL_FAILURE(Fill());
  ASSERT_NO_FATAL_FAILURE(Reset());
  for (const char* format : {"fdf", "json", "csv"}) ExpectBackThrough(format);
}

INSTANTIATE_TEST_SUITE_P(Documents, RoundTrip, testing::ValuesIn(SampleDocuments()), SampleName);

}  // namespace
}  // namespace quillon::test
