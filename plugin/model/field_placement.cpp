#include "plugin/model/field_placement.h"

#include <string_view>
#include <unordered_set>

#include "plugin/model/field_dicts.h"
#include "plugin/model/field_making.h"
#include "plugin/model/field_name_text.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

constexpr char kSeparator = '.';
constexpr std::uint32_t kLevelCapacity = 5;

struct Placing {
  FormRecord& record;
  ObjectHandle widget;
  ObjectHandle form = kNullObject;
  ObjectHandle level = kNullObject;  // the field below which things go; null: the top
  ObjectHandle made = kNullObject;   // the deepest level that was made for this
};

using SeenArrays = std::unordered_set<std::uint64_t>;

// The last field of the name in an array. What has no name of its own is looked through.
ObjectHandle FindNamed(ObjectHandle array, std::string_view name, ObjectHandle except,
                       SeenArrays& seen) {
  if (!IsKind(array, ObjectKind::kArray) || seen.size() > kMaxFieldDepth ||
      !seen.insert(IdentityOf(array)).second) {
    return kNullObject;
  }
  for (std::uint32_t i = Objects->ArrayLength(array); i-- > 0;) {
    const ObjectHandle element = Objects->ArrayGet(array, i);
    if (!IsKind(element, ObjectKind::kDict) || Objects->Equal(element, except)) continue;
    std::string partial;
    if (PartialNameOf(element, &partial)) {
      if (partial == name) return element;
      continue;
    }
    const ObjectHandle found = FindNamed(Objects->DictGet(element, key::Kids), name, except, seen);
    if (!IsNull(found)) return found;
  }
  return kNullObject;
}

// False when the index does not tell.
bool LookUpNamed(const ArrayNames& names, std::string_view name, ObjectHandle except,
                 ObjectHandle* found) {
  if (names.nameless > 0) return false;
  const auto bearers = names.bearersOf.find(std::string(name));
  if (bearers == names.bearersOf.end()) return true;
  for (auto at = bearers->second.rbegin(); at != bearers->second.rend(); ++at) {
    if (Objects->Equal(at->element, except)) continue;
    // Whom a change is announced to can have given the element another name since.
    std::string partial;
    if (!PartialNameOf(at->element, &partial) || partial != name) return false;
    *found = at->element;
    return true;
  }
  return true;
}

ObjectHandle FindOnLevel(const Placing& placing, std::string_view name) {
  const ObjectHandle array = IsNull(placing.level) ? Objects->DictGet(placing.form, key::Fields)
                                                   : Objects->DictGet(placing.level, key::Kids);
  if (!IsKind(array, ObjectKind::kArray)) return kNullObject;
  ObjectHandle found = kNullObject;
  const ArrayNames* names = NamesOnLevel(placing.record, array);
  if (names != nullptr && LookUpNamed(*names, name, placing.widget, &found)) return found;
  SeenArrays seen;
  return FindNamed(array, name, placing.widget, seen);
}

// Whether fields can stand below the level: it is no widget and has no widgets for kids.
bool TakesFields(ObjectHandle level) {
  if (IsNull(level)) return true;
  if (DictIsWidget(level)) return false;
  NodePin field(FieldNodeOf(level));
  if (field.node == nullptr) return false;
  if ((field.node->status & kNodeNonTerminal) != 0) return true;
  LoadKids(field.node);
  if (field.node == nullptr) return false;
  return field.node->firstKid == nullptr || !FieldNodeIsTerminal(field.node);
}

void PutText(ObjectHandle dict, Atom key, std::string_view text) {
  const ObjectDoc doc = Objects->DocumentOf(dict);
  const auto length = static_cast<std::uint32_t>(text.size());
  Objects->DictPut(dict, key, Objects->NewString(doc, false, text.data(), length));
}

// A field for one level, empty as yet; the null object when none can stand there.
ObjectHandle MakeLevel(Placing& placing, std::string_view name) {
  if (!TakesFields(placing.level)) return kNullObject;
  const ObjectDoc doc = placing.record.objectDoc;
  const ObjectHandle made = Objects->NewDict(doc, true, kLevelCapacity);
  PutText(made, key::T, name);
  Objects->DictPut(made, key::Kids, Objects->NewArray(doc, false, 1));
  if (!IsNull(placing.level)) Objects->DictPut(made, key::Parent, placing.level);
  MoveToEnd(ContainerOf(made, placing.form), made);
  placing.made = made;
  FieldNode node = FieldNodeOf(made);
  if (node == nullptr) return kNullObject;
  node->status |= kNodeNonTerminal;
  return made;
}

// Out of the place that the widget has now.
void Detach(const Placing& placing) {
  const ObjectHandle widget = placing.widget;
  RemoveFromArray(Objects->DictGet(placing.form, key::Fields), widget);
  const ObjectHandle parent = Objects->DictGet(widget, key::Parent);
  if (IsKind(parent, ObjectKind::kDict)) RemoveFromArray(KidsOf(parent), widget);
  RemoveEntry(widget, key::Parent);
}

FieldNode PlaceLast(Placing& placing, const std::string& name) {
  const ObjectHandle widget = placing.widget;
  const ObjectHandle same = FindOnLevel(placing, name);
  if (!IsNull(same)) {
    FieldNode field = FieldNodeOf(same);
    if (field == nullptr || MergeWidgetIntoField(field, widget) != 0) return nullptr;
    return InitFieldDict(widget, nullptr);
  }
  if (!TakesFields(placing.level)) return nullptr;
  if (!IsNull(placing.level)) Objects->DictPut(widget, key::Parent, placing.level);
  MoveToEnd(ContainerOf(widget, placing.form), widget);
  return InitFieldDict(widget, name.c_str());
}

FieldNode Place(Placing& placing, std::string_view name) {
  if (IsNull(CatalogFormOf(placing.record.objectDoc))) CreateFormDict(placing.record.doc);
  placing.form = FormDictOfObjects(placing.record.objectDoc);
  if (IsNull(placing.form) || name.size() > kMaxNameLength) return nullptr;
  Detach(placing);
  for (auto dot = name.find(kSeparator); dot != std::string_view::npos;
       dot = name.find(kSeparator)) {
    const std::string_view segment = name.substr(0, dot);
    name.remove_prefix(dot + 1);
    const ObjectHandle found = FindOnLevel(placing, segment);
    placing.level = IsNull(found) ? MakeLevel(placing, segment) : found;
    if (IsNull(placing.level)) return nullptr;
  }
  return PlaceLast(placing, std::string(name));
}

// Leaves the widget without a place, and no empty fields behind.
void TakeBack(const Placing& placing) {
  // Whom a split was announced to may have met the widget in the place that it loses again.
  if (FieldNode met = ExistingNodeOf(placing.widget)) ForgetNodes(met);
  if (!IsNull(placing.form)) DropFailures([&] { Detach(placing); });
  DropFailures([&] { RemoveEntry(placing.widget, key::Parent); });
  DropFailures([&] { RemoveEntry(placing.widget, key::T); });
  if (IsNull(placing.made)) return;
  DropFailures([&] {
    const ObjectHandle kids = KidsOf(placing.made);
    if (IsNull(kids) || Objects->ArrayLength(kids) == 0) {
      DeleteFieldNode(ExistingNodeOf(placing.made));
    }
  });
}

}  // namespace

FieldNode AddWidgetUnderName(ObjectHandle widget, const char* name) {
  if (!IsKind(widget, ObjectKind::kDict) || !Objects->IsIndirect(widget) || name == nullptr ||
      *name == '\0') {
    return nullptr;
  }
  FormRecord* record = LiveFormRecord(Objects->DocumentOf(widget));
  if (record == nullptr) return nullptr;
  const std::string path(name);  // the caller's may be the text of a node that goes
  Placing placing{*record, widget};
  FieldNode placed = nullptr;
  const FailureCode failure = CatchFailure([&] { placed = Place(placing, path); });
  if (failure == quillon::kErrorNone && FieldNodeIsValid(placed)) return placed;
  TakeBack(placing);
  if (failure != quillon::kErrorNone) Raise(failure);
  return nullptr;
}

void ConnectFieldPlacement() {
  fieldPlacement = {&AddWidgetUnderName, &MergeWidgetIntoField, &ReparentKids, &RenameWidgetField,
                    &ChangeFieldType};
}

}  // namespace quillform
