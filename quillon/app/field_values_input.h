// Field values as the user gives them: NAME=VALUE on the command line and a JSON object in a file.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace quillon::app {

// JSON null asks for the field to be emptied.
struct GivenValue {
  std::string name;  // fully qualified, UTF-8
  nlohmann::json value;
};

// Values given so far, each name once; on the command line a name takes the place of the same name
// from a file. What is wrong is added to `problems`, one sentence each, and reading goes on, so
// that the user hears of everything at once.
struct ValueInput {
  std::vector<GivenValue> values;
  std::vector<std::string> problems;
};

// `json` is the text of the file `file`: an object of name and value. Call it before
// AddAssignments.
void AddValuesFile(const std::string& file, const std::string& json, ValueInput* input);

// The first "=" ends the name. A name that contains one can be given in a file.
void AddAssignments(const std::vector<std::string>& assignments, ValueInput* input);

}  // namespace quillon::app
