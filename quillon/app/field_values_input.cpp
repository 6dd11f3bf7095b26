#include "quillon/app/field_values_input.h"

#include <unordered_map>
#include <unordered_set>

#include "quillon/app/console.h"

namespace quillon::app {
namespace {

using nlohmann::json;

// Objects and arrays in an object are values that some kinds of fields may take one day.
constexpr int kNamesDepth = 1;

// Parses, and notices a name that stands twice in the object: the parser would keep the last.
json ParseValues(const std::string& file, const std::string& text, ValueInput* input) {
  std::unordered_set<std::string> seen;
  const auto notice = [&](int depth, json::parse_event_t event, json& parsed) {
    if (event == json::parse_event_t::key && depth == kNamesDepth) {
      auto name = parsed.get<std::string>();
      if (!seen.insert(name).second) {
        input->problems.push_back(file + ": the name " + Printable(name) + " is given twice");
      }
    }
    return true;
  };
  return json::parse(text, notice);
}

}  // namespace

void AddValuesFile(const std::string& file, const std::string& text, ValueInput* input) {
  try {
    const json values = ParseValues(file, text, input);
    if (!values.is_object()) {
      input->problems.push_back(file + ": this is no JSON object of field names and values");
      return;
    }
    for (const auto& [name, value] : values.items()) input->values.push_back({name, value});
  } catch (const json::exception& error) {
    input->problems.push_back(file + ": the JSON cannot be read: " + error.what());
  }
}

void AddAssignments(const std::vector<std::string>& assignments, ValueInput* input) {
  std::unordered_map<std::string, std::size_t> placeOf;
  for (std::size_t i = 0; i < input->values.size(); ++i) placeOf[input->values[i].name] = i;
  std::unordered_set<std::string> seen;
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    if (equals == std::string::npos || equals == 0) {
      input->problems.push_back(Printable(assignment) + ": this is not of the form NAME=VALUE");
      continue;
    }
    if (!IsUtf8(assignment)) {
      input->problems.push_back(Printable(assignment) + ": this is not UTF-8");
      continue;
    }
    const std::string name = assignment.substr(0, equals);
    if (!seen.insert(name).second) {
      input->problems.push_back(Printable(name) + ": the name is given twice");
      continue;
    }
    const auto [place, isNew] = placeOf.try_emplace(name, input->values.size());
    if (isNew) input->values.push_back({name, {}});
    input->values[place->second].value = assignment.substr(equals + 1);
  }
}

}  // namespace quillon::app
