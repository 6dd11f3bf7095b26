// The fields of a file as the program lists them.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/end_to_end/process.h"

namespace quillon::test {

using Json = nlohmann::ordered_json;

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

inline bool HasFlag(const Json& field, const std::string& word) {
  const Json& flags = field["flags"];
  return std::find(flags.begin(), flags.end(), word) != flags.end();
}

}  // namespace quillon::test
