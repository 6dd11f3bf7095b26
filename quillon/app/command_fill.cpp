// `quillon fill`: everything is checked before anything is changed, and nothing is written unless
// every value went in.
#include <algorithm>
#include <memory>
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/field_conversion.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/field_values_input.h"
#include "quillon/app/form_keys.h"
#include "quillon/app/name_suggestions.h"
#include "quillon/app/session.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/open_view.h"

namespace quillon::app {
namespace {

struct PlannedFill {
  std::string name;
  FieldNode node;
  ObjectHandle dict;
  bool password;
  FieldValue value;
};

struct FillPlan {
  std::vector<PlannedFill> fills;
  std::vector<std::string> problems;
};

// A value in the document until it was copied into the field.
struct OwnedObject {
  ~OwnedObject() { objects::Destroy(object); }
  ObjectHandle object;
};

ObjectHandle NewValue(DocHandle doc, const FieldValue& value) {
  if (!value.bytes) return kNullObject;
  return objects::NewString(document::ObjectDocOf(doc), 0, value.bytes->data(),
                            static_cast<std::uint32_t>(value.bytes->size()));
}

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

// Empty when the value can go in.
std::string PlanOne(DocHandle doc, const GivenValue& given, bool force, KnownNames* known,
                    FillPlan* plan) {
  const FieldNode node = FindField(doc, given.name, known);
  if (node == nullptr) return NoSuchField(given.name, known);
  if (CallForms(&FormsTable::FieldNodeIsTerminal, node) == 0) {
    return "this is a group of fields, which has no value of its own";
  }
  const ObjectHandle dict = CallForms(&FormsTable::FieldNodeDict, node);
  const auto flags = CallForms(&FormsTable::GetFieldFlags, node, std::uint16_t{1});
  if ((flags & kFlagReadOnly) != 0 && !force) {
    return "the field is read-only (--force fills it nevertheless)";
  }
  const FieldToFill field{KindOfField(dict, flags), flags, MaxLengthOfField(dict)};
  std::string problem;
  std::optional<FieldValue> value = ConvertValue(field, given.value, &problem);
  if (!value) return problem;
  const bool password = field.kind == FieldKind::kText && (flags & kFlagPassword) != 0;
  plan->fills.push_back({given.name, node, dict, password, std::move(*value)});
  return {};
}

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

// Plug-ins may replace or refuse a value while it is set, and say nothing.
bool Holds(FieldNode node, const FieldValue& value) {
  const ObjectHandle held = CallForms(&FormsTable::GetFieldValue, node);
  if (!value.bytes) return document::IsNull(held);
  return document::IsKind(held, ObjectKind::kString) && document::BytesOf(held) == *value.bytes;
}

std::vector<std::string> SetValues(DocHandle doc, const std::vector<PlannedFill>& fills) {
  std::vector<std::string> problems;
  Progress progress("filling fields", fills.size());
  for (const PlannedFill& fill : fills) {
    try {
      const OwnedObject value{NewValue(doc, fill.value)};
      CallForms(&FormsTable::SetFieldValue, fill.node, value.object);
      if (!Holds(fill.node, fill.value)) {
        problems.push_back(Printable(fill.name) + ": a plug-in did not let the value in");
      }
    } catch (const HostFailure& failure) {
      problems.push_back(Printable(fill.name) + ": " + Describe(failure));
    }
    progress.Step();
  }
  return problems;
}

void CheckFillable(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  if (CallForms(&FormsTable::DocumentHasForm, doc) == 0) {
    const bool invalid = objects::DictKnown(catalog, Keys().QuillForm) != 0;
    Fail(kErrorOpenDocument,
         invalid ? "the document's form dictionary cannot be used" : "the document has no form");
  }
  if ((document::GetPermissions(doc) & (kPermitForms | kPermitEdit)) == 0) {
    Fail(kErrorOpenDocument, "the document's permissions do not allow filling its form");
  }
}

// A second description of the form in XML, which other programs may show in its place.
bool HasXmlForm(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = objects::DictGet(catalog, Keys().QuillForm);
  return !document::IsNull(document::EntryOf(form, Keys().XFA));
}

// Plug-ins take passwords out before a document is saved (ISO 32000-1, table 228: they are never
// stored in the file).
void WarnOfPasswords(const std::vector<PlannedFill>& fills, std::vector<std::string>* warnings) {
  for (const PlannedFill& fill : fills) {
    const bool kept = !document::IsNull(InheritedFieldEntry(fill.dict, Keys().V));
    if (fill.password && fill.value.bytes && !kept) {
      warnings->push_back(Printable(fill.name) + ": a password is not kept in a file");
    }
  }
}

void WriteResult(const FillArguments& arguments, DocHandle doc) {
  const std::string& target = arguments.inPlace ? arguments.file : arguments.output;
  if (target == kStandardStream) {
    WriteStandardOutput(DocumentToBytes(doc));
  } else {
    SaveDocumentFile(doc, target);
  }
}

int FailWith(const std::string& file, const std::vector<std::string>& problems) {
  for (const std::string& problem : problems) PrintError(file, problem);
  PrintError(file, "nothing was written");
  return kExitError;
}

ValueInput ReadInput(const FillArguments& arguments) {
  ValueInput input;
  if (!arguments.valuesFile.empty()) {
    try {
      AddValuesFile(arguments.valuesFile, ReadWhole(arguments.valuesFile), &input);
    } catch (const HostFailure& failure) {
      input.problems.push_back(arguments.valuesFile + ": " + Describe(failure));
    }
  }
  AddAssignments(arguments.assignments, &input);
  if (input.values.empty() && input.problems.empty()) {
    input.problems.emplace_back("no values are given");
  }
  return input;
}

// What is wrong with the values is told even when the document is of no use.
std::unique_ptr<OpenedView> OpenToFill(const std::string& file, const ValueInput& input) {
  try {
    auto opened = std::make_unique<OpenedView>(file);
    CheckFillable(opened->doc);
    return opened;
  } catch (const HostFailure&) {
    for (const std::string& problem : input.problems) PrintError(file, problem);
    throw;
  }
}

}  // namespace

int RunFill(const FillArguments& arguments) {
  const ValueInput input = ReadInput(arguments);
  const std::unique_ptr<OpenedView> view = OpenToFill(arguments.file, input);
  const OpenedView& opened = *view;
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  const FillPlan plan = PlanFills(opened.doc, input, arguments.force);
  if (!plan.problems.empty()) return FailWith(arguments.file, plan.problems);
  const std::vector<std::string> refused = SetValues(opened.doc, plan.fills);
  if (!refused.empty()) return FailWith(arguments.file, refused);
  PrepareSave(opened.view);
  WriteResult(arguments, opened.doc);
  std::vector<std::string> warnings = FileWarnings(opened.doc);
  WarnOfPasswords(plan.fills, &warnings);
  for (std::string& warning : PlugInWarnings()) warnings.push_back(std::move(warning));
  if (HasXmlForm(opened.doc)) {
    warnings.emplace_back(
        "the form is also described in XML (XFA), which still has the old values");
  }
  return FinishWith(arguments.file, warnings);
}

}  // namespace quillon::app
