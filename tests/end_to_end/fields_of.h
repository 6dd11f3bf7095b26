// What the program says, and the fields of a file as it lists them.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <source_location>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"

namespace quillon::test {

using Json = nlohmann::ordered_json;

// The program ended with that status, and told each of the texts.
inline void ExpectEnd(const ProcessResult& result, int status,
                      const std::vector<std::string>& texts = {},
                      std::source_location where = std::source_location::current()) {
  const testing::ScopedTrace trace(where.file_name(), static_cast<int>(where.line()), "from here");
  EXPECT_EQ(result.status, status) << result.err;
  for (const std::string& text : texts) {
    EXPECT_NE(result.err.find(text), std::string::npos) << text << "\nin\n" << result.err;
  }
}

inline Json FieldsOf(const std::string& file) {
  const ProcessResult result = Quillon({"fields", file, "--json"});
  EXPECT_NE(result.status, 2) << result.err;
  return Json::parse(result.out, nullptr, false);
}

// null when there is no such field.
inline Json FieldNamed(const Json& fields, const std::string& name) {
  for (const Json& field : fields) {
    if (field["name"] == name) return field;
  }
  return nullptr;
}

inline Json ValueOf(const std::string& file, const std::string& name) {
  return FieldNamed(FieldsOf(file), name)["value"];
}

inline bool HasFlag(const Json& field, const std::string& word) {
  const Json& flags = field["flags"];
  return std::find(flags.begin(), flags.end(), word) != flags.end();
}

}  // namespace quillon::test
