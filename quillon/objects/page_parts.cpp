#include "quillon/objects/page_parts.h"

#include <algorithm>
#include <array>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

// A page needs none of them: it may inherit what it does not have.
constexpr std::array<std::string_view, 6> kPageKeys = {"MediaBox",  "CropBox", "Contents",
                                                       "Resources", "Annots",  "Rotate"};
constexpr std::array<std::string_view, 3> kFormKeys = {"Subtype", "FT", "T"};

template <typename Keys>
bool HasAny(Document& doc, std::uint32_t dict, const Keys& keys) {
  return std::any_of(keys.begin(), keys.end(), [&](std::string_view key) {
    return EntryValue(doc, dict, key) != kNullValue;
  });
}

bool IsNode(Document& doc, const Value& value) {
  const std::uint32_t dict = CellOf(doc, value, CellKind::kDict);
  return dict != 0 && PagePartOf(doc, dict) == PagePart::kNode;
}

std::uint32_t CatalogOf(Document& doc) {
  return CellOf(doc, EntryValue(doc, doc.trailer, "Root"), CellKind::kDict);
}

Value PagesEntry(Document& doc) {
  const std::uint32_t catalog = CatalogOf(doc);
  return catalog == 0 ? kNullValue : EntryValue(doc, catalog, "Pages");
}

void PutTree(Document& doc, std::uint32_t number) {
  const std::uint32_t catalog = CatalogOf(doc);
  // The old entry's cell may be the tree itself.
  const NameCode key = NameFromText(doc, "Pages");
  DictEntry* old = FindEntry(CellAt(doc.cells, catalog), key);
  if (old != nullptr) old->value = kNullValue;
  SetEntry(doc, catalog, key, ReferenceTo(number, 0));
  MarkCellChanged(doc, catalog);
}

}  // namespace

PagePart PagePartOf(Document& doc, std::uint32_t dict) {
  if (TypeIs(doc, dict, "Page")) return PagePart::kPage;
  const bool hasKids = CellOf(doc, EntryValue(doc, dict, "Kids"), CellKind::kArray) != 0;
  if (TypeIs(doc, dict, "Pages")) return hasKids ? PagePart::kNode : PagePart::kNone;
  if (HasAny(doc, dict, kFormKeys)) return PagePart::kNone;
  if (hasKids) return PagePart::kNode;
  const bool untyped = EntryValue(doc, dict, "Type") == kNullValue;
  return untyped || HasAny(doc, dict, kPageKeys) ? PagePart::kPage : PagePart::kNone;
}

std::uint32_t MakePageTree(Document& doc, const std::string& reason) {
  const std::uint32_t kids = NewCell(doc.cells, CellKind::kArray);
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (!InUse(*slot)) continue;
    const Value value = ReferenceTo(number, slot->generation);
    const std::uint32_t dict = CellOf(doc, value, CellKind::kDict);
    if (dict != 0 && TypeIs(doc, dict, "Page")) {
      InsertElement(doc, kids, CellAt(doc.cells, kids).size, value);
    }
  }
  const std::uint32_t count = CellAt(doc.cells, kids).size;
  if (count == 0) return 0;
  const std::uint32_t tree = NewCell(doc.cells, CellKind::kDict);
  SetEntry(doc, tree, NameFromText(doc, "Type"), NameOf(NameFromText(doc, "Pages")));
  SetEntry(doc, tree, NameFromText(doc, "Kids"), CellValue(kids));
  SetEntry(doc, tree, NameFromText(doc, "Count"), IntegerOf(static_cast<std::int32_t>(count)));
  const std::uint32_t number = AddObject(doc, CellValue(tree));
  Warn(doc, reason + " It was made of the pages there are.", doc.root, ObjectOffset(doc, doc.root));
  PutTree(doc, number);
  return number;
}

std::uint32_t PageTreeRoot(Document& doc) {
  const Value entry = PagesEntry(doc);
  if (!IsNode(doc, entry)) return MakePageTree(doc, "The page tree was missing.");
  if (entry.tag == ValueTag::kReference) return entry.payload;
  Warn(doc, "The page tree had no object number of its own.", doc.root,
       ObjectOffset(doc, doc.root));
  const std::uint32_t number = AddObject(doc, entry);
  PutTree(doc, number);
  return number;
}

}  // namespace quillon::objects

namespace quillon {

PagePart PagePartOf(ObjectHandle dict) {
  const objects::Target target = objects::TargetOf(dict);
  if (target.doc == nullptr) return PagePart::kNone;
  const std::uint32_t cell = objects::CellOf(*target.doc, target.value, objects::CellKind::kDict);
  return cell == 0 ? PagePart::kNone : objects::PagePartOf(*target.doc, cell);
}

ObjectHandle PageTreeRoot(ObjectDoc handle) {
  objects::Document& doc = objects::DocumentOfHandle(handle);
  const objects::Value entry = objects::PagesEntry(doc);
  if (objects::IsNode(doc, entry)) return HandleOf(doc, entry);
  const std::uint32_t number = objects::PageTreeRoot(doc);
  return number == 0 ? kNullObject : objects::HandleOfObject(doc, number);
}

}  // namespace quillon
