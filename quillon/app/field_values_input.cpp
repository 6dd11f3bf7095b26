#include "quillon/app/field_values_input.h"

#include <unordered_map>
#include <unordered_set>

#include "quillon/app/console.h"

namespace quillon::app {
namespace {

using nlohmann::json;

// Builds the values, with two differences. A name that stands twice in the object is noticed: the
// parser would keep the last. A number with decimals stays as it is written: made a number and
// written again, 48.00 and long numbers would be other texts.
struct ValuesReader : nlohmann::detail::json_sax_dom_parser<json> {
  using Base = nlohmann::detail::json_sax_dom_parser<json>;
  explicit ValuesReader(json* values) : Base(*values) {}

  bool number_float(double, const std::string& written) {
    std::string text = written;
    return string(text);
  }
  bool start_object(std::size_t size) {
    ++depth;
    return Base::start_object(size);
  }
  bool end_object() {
    --depth;
    return Base::end_object();
  }
  bool start_array(std::size_t size) {
    ++depth;
    return Base::start_array(size);
  }
  bool end_array() {
    --depth;
    return Base::end_array();
  }
  bool key(std::string& name) {
    if (depth == 1 && !seen.insert(name).second) twice.push_back(name);
    return Base::key(name);
  }

  int depth = 0;
  std::unordered_set<std::string> seen;
  std::vector<std::string> twice;
};

json ParseValues(const std::string& file, const std::string& text, ValueInput* input) {
  json values;
  ValuesReader reader(&values);
  json::sax_parse(text, &reader);  // throws what is wrong
  for (const std::string& name : reader.twice) {
    input->problems.push_back(file + ": the name " + Printable(name) + " is given twice");
  }
  return values;
}

// Without the library's mark before the sentence; it may quote bytes that are no UTF-8.
std::string Sentence(const json::exception& error) {
  const std::string text = error.what();
  const std::size_t mark = text.find("] ");
  return Printable(mark == std::string::npos ? text : text.substr(mark + 2));
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
    input->problems.push_back(file + ": the JSON cannot be read: " + Sentence(error));
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
