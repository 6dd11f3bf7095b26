#include "quillon/app/form_inspection.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "quillon/app/form_keys.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;

struct PlacedField {
  ObjectHandle holder;  // the field or the form that lists it
  VisitedField field;   // with what it inherits
};

struct FormTree {
  std::unordered_set<std::uint32_t> met{};
  std::vector<PlacedField> pending{};
};

void PushKids(FormTree& tree, ObjectHandle holder, Atom key, const VisitedField& above) {
  const ObjectHandle kids = EntryOf(holder, key);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = objects::ArrayLength(kids); i > 0; --i) {
    tree.pending.push_back({holder, {objects::ArrayGet(kids, i - 1), above.name, above.signature}});
  }
}

// Whether the field is one, met for the first time.
bool IsNewField(FormTree& tree, const PlacedField& placed) {
  const ObjectHandle dict = placed.field.dict;
  if (!IsKind(dict, ObjectKind::kDict)) {
    WarnOfPdf(placed.holder, "An entry of the field tree is no field.");
    return false;
  }
  const std::uint32_t number = ObjectNumberOf(dict);
  if (number == 0 || tree.met.insert(number).second) return true;
  WarnOfPdf(dict, "A field is listed twice in the field tree; it counts once.");
  return false;
}

void CheckParent(const PlacedField& placed) {
  const ObjectHandle parent = EntryOf(placed.field.dict, Keys().Parent);
  if (!document::IsNull(parent) && objects::Equal(parent, placed.holder) == 0) {
    WarnOfPdf(placed.field.dict, "A field names another parent than the one that lists it.");
  }
}

// Replaces what it inherits by what it has.
void CompleteField(VisitedField* field) {
  const Atom type = document::NameOr(EntryOf(field->dict, Keys().FT), kNoAtom);
  if (type != kNoAtom) field->signature = type == Keys().Sig;
  const ObjectHandle name = EntryOf(field->dict, Keys().T);
  if (!IsKind(name, ObjectKind::kString)) return;
  if (!field->name.empty()) field->name.push_back('.');
  field->name += PdfTextToUtf8(document::BytesOf(name));
}

}  // namespace

void WalkForm(DocHandle doc, const std::function<void(const VisitedField& field)>& visit) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  FormTree tree;
  PushKids(tree, EntryOf(catalog, Keys().QuillForm), Keys().Fields, {kNullObject, {}, false});
  while (!tree.pending.empty()) {
    PlacedField placed = std::move(tree.pending.back());
    tree.pending.pop_back();
    if (!IsNewField(tree, placed)) continue;
    CheckParent(placed);
    CompleteField(&placed.field);
    visit(placed.field);
    PushKids(tree, placed.field.dict, Keys().Kids, placed.field);
  }
}

void InspectForm(DocHandle doc) {
  WalkForm(doc, [](const VisitedField&) {});
}

}  // namespace quillon::app
