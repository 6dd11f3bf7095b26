// list_validator: lets only listed values into a field, and fills in other fields that follow from
// one. The file LIST_VALIDATOR_FILE names holds a rule a line; "#" begins a comment.
//
//   only COUNTRY: Austria; Germany; Italy
//   fill CITY from POSTCODE: 1010 = Vienna; 80331 = Munich
//
// Names and values are bytes in the document's encoding. A value that is not listed is refused, and
// the user is told which ones are. Emptying a field is always allowed.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "plug_in.h"

using host::Forms;
using host::Objects;
using quillform::FieldNode;
using quillform::FormEventRecord;

const char* const kExtensionName = "ListValidator";

namespace {

constexpr const char* kFileVariable = "LIST_VALIDATOR_FILE";

struct OnlyRule {
  std::string field;
  std::vector<std::string> values;
};

struct FillRule {
  std::string target;
  std::string source;
  std::vector<std::pair<std::string, std::string>> values;  // of the source, then of the target
};

std::vector<OnlyRule> onlyRules;
std::vector<FillRule> fillRules;
std::uint32_t beforeChange = 0, afterChange = 0;  // registrations, 0 for none

// Rules

std::string Trimmed(const std::string& text) {
  constexpr const char* kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// The trimmed parts on both sides of the first `separator`; the second is empty without one.
std::pair<std::string, std::string> SplitAt(const std::string& text, const std::string& separator) {
  const std::size_t place = text.find(separator);
  if (place == std::string::npos) return {Trimmed(text), ""};
  return {Trimmed(text.substr(0, place)), Trimmed(text.substr(place + separator.size()))};
}

std::vector<std::string> ListOf(std::string text) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    auto [part, rest] = SplitAt(text, ";");
    if (!part.empty()) parts.push_back(part);
    text = rest;
  }
  return parts;
}

// False for a line that is no rule.
bool AddRule(const std::string& line) {
  const auto [head, values] = SplitAt(line, ":");
  const auto [word, rest] = SplitAt(head, " ");
  if (word == "only" && !rest.empty()) {
    onlyRules.push_back({rest, ListOf(values)});
    return true;
  }
  const auto [target, source] = SplitAt(rest, " from ");
  if (word != "fill" || target.empty() || source.empty()) return false;
  FillRule rule{target, source, {}};
  for (const std::string& pair : ListOf(values)) rule.values.push_back(SplitAt(pair, "="));
  fillRules.push_back(rule);
  return true;
}

void Tell(const std::string& text) {
  host::Viewer->AnswerMessage("List Validator", text.c_str(), quillon::kMessageOk);
}

bool ReadRules(const char* name) {
  std::ifstream file(name);
  if (!file) {
    Tell(std::string(name) + ": the list file cannot be read");
    return false;
  }
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    const std::string text = SplitAt(line, "#").first;
    if (text.empty() || AddRule(text)) continue;
    Tell(std::string(name) + ": line " + std::to_string(number) + " is no rule");
    return false;
  }
  return true;
}

// What the rules say to a change

void ValueWillChange(FormEventRecord* record, void*) {
  const std::string value = host::TextOf(record->value);
  if (value.empty()) return;
  const std::string name = host::NameOf(record->node);
  for (const OnlyRule& rule : onlyRules) {
    if (rule.field != name) continue;
    if (std::find(rule.values.begin(), rule.values.end(), value) != rule.values.end()) continue;
    record->cancel = 1;
    std::string listed;
    for (const std::string& one : rule.values) listed += (listed.empty() ? "" : ", ") + one;
    Tell(name + ": \"" + value + "\" is not one of " + listed);
    return;
  }
}

// Setting a value announces the change of that field in turn, so that rules can build on each
// other. A field whose value is being set takes no other one meanwhile, which ends circles.
void FillFrom(const FormEventRecord& record, const FillRule& rule, const std::string& value) {
  const auto found = std::find_if(rule.values.begin(), rule.values.end(),
                                  [&](const auto& pair) { return pair.first == value; });
  if (found == rule.values.end()) return;
  Forms->LoadAllFields(record.document);
  const FieldNode target = Forms->FindFieldByName(record.document, rule.target.c_str());
  if (target == nullptr) return;
  const quillon::ObjectHandle text = host::NewText(record.document, found->second);
  const quillon::FailureCode failure = host::Try([&] { Forms->SetFieldValue(target, text); });
  Objects->Destroy(text);
  if (failure != quillon::kErrorNone) Tell(rule.target + ": the value could not be set");
}

void ValueChanged(FormEventRecord* record, void*) {
  const std::string name = host::NameOf(record->node);
  const std::string value = host::TextOf(record->value);
  for (const FillRule& rule : fillRules) {
    if (rule.source == name) FillFrom(*record, rule, value);
  }
}

void Forget(std::uint32_t event, std::uint32_t* registration) {
  if (Forms == nullptr || *registration == 0) return;
  const std::uint32_t identifier = std::exchange(*registration, 0);
  host::Try([=] { Forms->FormEventUnregister(event, identifier); });
}

}  // namespace

bool Start() {
  const char* file = std::getenv(kFileVariable);
  if (file == nullptr || !ReadRules(file)) return false;
  beforeChange = Forms->FormEventRegister(quillform::kEventValueWillChange,
                                          host::ToHost(&ValueWillChange), nullptr, nullptr);
  afterChange = Forms->FormEventRegister(quillform::kEventValueChanged, host::ToHost(&ValueChanged),
                                         nullptr, nullptr);
  return true;
}

void Stop() {
  Forget(quillform::kEventValueWillChange, &beforeChange);
  Forget(quillform::kEventValueChanged, &afterChange);
}
