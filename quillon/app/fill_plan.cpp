#include "quillon/app/fill_plan.h"

#include <utility>

#include "quillon/app/console.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/form_fonts.h"
#include "quillon/app/form_keys.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/name_suggestions.h"
#include "quillon/app/session.h"
#include "quillon/app/value_watch.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"

namespace quillon::app {
namespace {

// A value in the document until it was copied into the field.
struct OwnedObject {
  ~OwnedObject() { objects::Destroy(object); }
  ObjectHandle object;
};

// The names in the document, read only when some name was not found.
struct KnownNames {
  explicit KnownNames(DocHandle document) : doc(document) {}

  const std::vector<FieldEntry>& Fields() {
    if (!read) {
      std::vector<std::string> ignored;
      fields = ListFields(doc, &ignored);
      read = true;
    }
    return fields;
  }

  DocHandle doc;
  bool read = false;
  std::vector<FieldEntry> fields;
};

FieldNode FindField(DocHandle doc, const std::string& name, KnownNames* known) {
  const std::string bytes = Utf8ToName(name);
  const FieldNode node = CallForms(&FormsTable::FindFieldByName, doc, bytes.c_str());
  if (node != nullptr) return node;
  // Bytes that stand for no character are shown as replacement characters; the name that was shown
  // finds its field all the same.
  for (const FieldEntry& entry : known->Fields()) {
    if (entry.name == name) return entry.node;
  }
  return nullptr;
}

std::string NoSuchField(const std::string& name, KnownNames* known) {
  std::vector<std::string> names;
  for (const FieldEntry& entry : known->Fields()) names.push_back(entry.name);
  std::string text = "there is no field of this name";
  const std::vector<std::string> suggestions = SuggestNames(name, names);
  for (std::size_t i = 0; i < suggestions.size(); ++i) {
    text += (i == 0 ? "; did you mean " : ", ") + Printable(suggestions[i]);
  }
  return suggestions.empty() ? text : text + "?";
}

std::string GroupProblem(FieldNode node) {
  if (CallForms(&FormsTable::FieldNodeIsTerminal, node) != 0) return {};
  return "this is a group of fields, which has no value of its own";
}

bool Holds(FieldNode node, const FieldValue& value) {
  return HoldsValue(CallForms(&FormsTable::GetFieldValue, node), value);
}

// What stands in a field that does not hold the value given.
std::string OtherValue(const PlannedFill& fill) {
  if (fill.password) return "another password";
  const FieldValueText value = ReadFieldValue(fill.node, fill.kind);
  if (!value.present) return "nothing";
  std::string text;
  for (const std::string& one : value.texts) {
    text += (text.empty() ? "\"" : ", \"") + Printable(one) + "\"";
  }
  return text;
}

// Empty when the value can go in.
std::string PlanOne(DocHandle doc, const GivenValue& given, bool force, KnownNames* known,
                    FillPlan* plan) {
  const FieldNode node = FindField(doc, given.name, known);
  if (node == nullptr) return NoSuchField(given.name, known);
  std::string problem = GroupProblem(node);
  if (!problem.empty()) return problem;
  const ObjectHandle dict = CallForms(&FormsTable::FieldNodeDict, node);
  const auto flags = CallForms(&FormsTable::GetFieldFlags, node, std::uint16_t{1});
  const FieldToFill field = ReadFieldToFill(dict, flags);
  std::optional<FieldValue> value = ConvertValue(field, given.value, &problem);
  if (!value) return problem;
  if ((flags & kFlagReadOnly) != 0 && !force) {
    // So that a form takes back what it gave.
    if (Holds(node, *value)) return {};
    return "the field is read-only (--force fills it nevertheless)";
  }
  const bool password = field.kind == FieldKind::kText && (flags & kFlagPassword) != 0;
  plan->fills.push_back({given.name, node, dict, field.kind, password, std::move(*value)});
  return {};
}

// Whether text in the field's default appearance shows its value.
bool IsWritten(FieldKind kind) {
  return kind == FieldKind::kText || kind == FieldKind::kListBox || kind == FieldKind::kComboBox;
}

// What a field could not be filled for is its default appearance, more often than not.
std::string AppearanceHint(const PlannedFill& fill) {
  const ObjectHandle appearance = InheritedFieldEntry(fill.dict, Keys().DA);
  if (!IsWritten(fill.kind) || document::IsNull(appearance)) return {};
  if (!document::IsKind(appearance, ObjectKind::kString)) {
    return " Its default appearance (DA) is no text.";
  }
  return " Its default appearance (DA) is \"" + Printable(document::BytesOf(appearance)) + "\".";
}

}  // namespace

FillPlan PlanFills(DocHandle doc, const ValueInput& input, bool force) {
  FillPlan plan;
  plan.problems = input.problems;
  plan.fills.reserve(input.values.size());
  KnownNames known(doc);
  Progress progress("checking values", input.values.size());
  for (const GivenValue& given : input.values) {
    std::string problem;
    try {
      problem = PlanOne(doc, given, force, &known, &plan);
    } catch (const HostFailure& failure) {
      problem = Describe(failure);
    }
    if (!problem.empty()) {
      const std::string name = given.name.empty() ? "\"\"" : Printable(given.name);
      plan.problems.push_back(name + ": " + problem);
    }
    progress.Step();
  }
  return plan;
}

std::string ProblemWithName(DocHandle doc, const std::string& name) {
  KnownNames known(doc);
  const FieldNode node = FindField(doc, name, &known);
  const std::string problem = node == nullptr ? NoSuchField(name, &known) : GroupProblem(node);
  return problem.empty() ? problem : Printable(name) + ": " + problem;
}

std::vector<std::string> SetValues(DocHandle doc, const std::vector<PlannedFill>& fills,
                                   std::vector<std::string>* warnings) {
  std::vector<std::string> problems;
  const ValueWatch watch;
  Progress progress("filling fields", fills.size());
  for (const PlannedFill& fill : fills) {
    try {
      if (IsWritten(fill.kind)) CompleteAppearance(doc, fill.dict);
      const OwnedObject value{NewValueObject(document::ObjectDocOf(doc), fill.value)};
      CallForms(&FormsTable::SetFieldValue, fill.node, value.object);
      if (WasRefused(watch, fill.node)) {
        problems.push_back(Printable(fill.name) + ": a plug-in did not let the value in");
      }
    } catch (const HostFailure& failure) {
      problems.push_back(Printable(fill.name) + ": " + Describe(failure) + AppearanceHint(fill));
    }
    progress.Step();
  }
  if (!problems.empty()) return problems;
  // Only now: setting one field can have a plug-in set another one of them.
  for (const PlannedFill& fill : fills) {
    if (Holds(fill.node, fill.value)) continue;
    warnings->push_back(Printable(fill.name) + ": a plug-in changed the value given; now " +
                        OtherValue(fill) + " stands there");
  }
  return problems;
}

void CheckHasForm(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  if (CallForms(&FormsTable::DocumentHasForm, doc) == 0) {
    const bool invalid = objects::DictKnown(catalog, Keys().QuillForm) != 0;
    const bool damaged = !FileWarnings(doc).empty();
    Fail(kErrorOpenDocument,
         std::string(invalid ? "the document's form dictionary cannot be used"
                             : "the document has no form") +
             (damaged ? "; the file is damaged, and what is missing may have been lost" : ""));
  }
}

void CheckFillable(DocHandle doc) {
  CheckHasForm(doc);
  if ((document::GetPermissions(doc) & (kPermitForms | kPermitEdit)) == 0) {
    Fail(kErrorOpenDocument,
         "the document's permissions do not allow filling its form; its owner's password does");
  }
  AddMissingFonts(doc);
}

// Plug-ins take passwords out before a document is saved (ISO 32000-1, table 228: they are never
// stored in the file).
void WarnOfPasswords(const std::vector<PlannedFill>& fills, std::vector<std::string>* warnings) {
  for (const PlannedFill& fill : fills) {
    const bool kept = !document::IsNull(InheritedFieldEntry(fill.dict, Keys().V));
    if (fill.password && fill.value.form != FieldValue::Form::kNone && !kept) {
      warnings->push_back(Printable(fill.name) + ": a password is not kept in a file");
    }
  }
}

}  // namespace quillon::app
