#include "quillon/app/form_inspection.h"

#include <deque>
#include <unordered_set>
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

// Of a full name: forms have no fields of more than 254 characters, nor of more levels.
constexpr std::size_t kMaxNameBytes = 4 * 254;
constexpr int kMaxNameLevels = 256;

struct PlacedField {
  ObjectHandle holder;  // the field or the form that lists it
  VisitedField field;   // with what it inherits
};

struct FormTree {
  std::unordered_set<std::uint32_t> met{};  // fields and lists of them
  std::vector<PlacedField> pending{};
  std::deque<VisitedField> above{};  // those that have fields below them
};

void PushKids(FormTree& tree, ObjectHandle holder, Atom key, const VisitedField* above) {
  const ObjectHandle kids = EntryOf(holder, key);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  const std::uint32_t number = ObjectNumberOf(kids);
  if (number != 0 && !tree.met.insert(number).second) {
    return WarnOfPdf(holder, "A list of fields stands twice in the field tree; it counts once.");
  }
  const bool signature = above != nullptr && above->signature;
  for (std::uint32_t i = objects::ArrayLength(kids); i > 0; --i) {
    tree.pending.push_back({holder, {objects::ArrayGet(kids, i - 1), signature, above}});
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

}  // namespace

std::string FullNameOf(const VisitedField& field) {
  std::string name;
  int levels = 0;
  for (const VisitedField* part = &field; part != nullptr; part = part->above) {
    const ObjectHandle own = EntryOf(part->dict, Keys().T);
    std::uint32_t length = 0;
    if (IsKind(own, ObjectKind::kString)) objects::StringValue(own, &length);
    if (++levels > kMaxNameLevels || name.size() + length > kMaxNameBytes) return {};
    if (length == 0) continue;
    if (!name.empty()) name.insert(0, 1, '.');
    name.insert(0, PdfTextToUtf8(document::BytesOf(own)));
  }
  return name;
}

void WalkForm(DocHandle doc, const std::function<void(const VisitedField& field)>& visit) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  FormTree tree;
  PushKids(tree, EntryOf(catalog, Keys().QuillForm), Keys().Fields, nullptr);
  while (!tree.pending.empty()) {
    PlacedField placed = tree.pending.back();
    tree.pending.pop_back();
    if (!IsNewField(tree, placed)) continue;
    CheckParent(placed);
    const Atom type = document::NameOr(EntryOf(placed.field.dict, Keys().FT), kNoAtom);
    if (type != kNoAtom) placed.field.signature = type == Keys().Sig;
    visit(placed.field);
    if (document::IsNull(EntryOf(placed.field.dict, Keys().Kids))) continue;
    tree.above.push_back(placed.field);
    PushKids(tree, placed.field.dict, Keys().Kids, &tree.above.back());
  }
}

void InspectForm(DocHandle doc) {
  WalkForm(doc, [](const VisitedField&) {});
}

}  // namespace quillon::app
