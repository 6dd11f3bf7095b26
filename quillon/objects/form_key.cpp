#include "quillon/objects/form_key.h"

#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

// A dictionary with an array of fields.
bool IsForm(Document& doc, const Value& value) {
  const std::uint32_t dict = CellOf(doc, value, CellKind::kDict);
  return dict != 0 && CellOf(doc, EntryValue(doc, dict, "Fields"), CellKind::kArray) != 0;
}

// A dictionary that has lost its fields, but not what else only forms have.
bool WasForm(Document& doc, const Value& value) {
  const std::uint32_t dict = CellOf(doc, value, CellKind::kDict);
  if (dict == 0) return false;
  const auto has = [&](std::string_view key) { return EntryValue(doc, dict, key) != kNullValue; };
  return (has("DA") && has("DR")) || has("NeedAppearances") || has("SigFlags");
}

using IsWanted = bool (*)(Document& doc, const Value& value);

// The only entry that looks like a form; null when there is none or more than one.
DictEntry* OnlyForm(Document& doc, Cell& catalog, IsWanted isWanted) {
  DictEntry* only = nullptr;
  for (std::uint32_t i = 0; i < catalog.size; ++i) {
    DictEntry& entry = EntriesOf(catalog)[i];
    if (!isWanted(doc, entry.value)) continue;
    if (only != nullptr) return nullptr;
    only = &entry;
  }
  return only;
}

DictEntry* LostForm(Document& doc, Cell& catalog) {
  DictEntry* lost = OnlyForm(doc, catalog, &WasForm);
  if (lost == nullptr) return nullptr;
  Warn(doc, "The form has no list of its fields; it gets an empty one.", doc.root,
       ObjectOffset(doc, doc.root));
  const std::uint32_t form = CellOf(doc, lost->value, CellKind::kDict);
  SetEntry(doc, form, NameFromText(doc, "Fields"), CellValue(NewCell(doc.cells, CellKind::kArray)));
  const bool indirect = lost->value.tag == ValueTag::kReference;
  FindSlot(doc.objects, indirect ? lost->value.payload : doc.root)->mended = true;
  return lost;
}

void LendNumber(Document& doc, DictEntry* entry) {
  if (entry->value.tag != ValueTag::kCell) return;
  Cell& form = CellAt(doc.cells, entry->value.payload);
  if (form.kind != CellKind::kDict) return;
  doc.objects.lent = std::make_unique<ObjectSlot>();
  ObjectSlot& slot = *doc.objects.lent;
  slot.state = SlotState::kNew;
  slot.value = entry->value;
  slot.loaded = true;
  form.parent = kIndirectParent | kLentNumber;
  entry->value = ReferenceTo(kLentNumber, 0);
}

}  // namespace

void PrepareCatalog(Document& doc) {
  if (!doc.isPdf) return;
  const std::uint32_t cell = CellOf(doc, LoadObject(doc, doc.root), CellKind::kDict);
  if (cell == 0) return;
  Cell& catalog = CellAt(doc.cells, cell);
  const NameCode shown = NameFromText(doc, kFormKey);
  DictEntry* entry = FindEntry(catalog, shown);
  if (entry == nullptr) {
    entry = OnlyForm(doc, catalog, &IsForm);
    if (entry == nullptr) entry = LostForm(doc, catalog);
    if (entry == nullptr) return;
    doc.formKey = entry->key;
    entry->key = shown;
  }
  LendNumber(doc, entry);
}

void SpreadFormChange(Document& doc, std::uint32_t number) {
  if (number == kLentNumber) MarkObjectChanged(doc, doc.root);
}

std::uint32_t KeepLentForm(Document& doc) {
  const std::uint32_t catalog = LoadObject(doc, doc.root).payload;
  DictEntry* entry = FindEntry(CellAt(doc.cells, catalog), NameFromText(doc, kFormKey));
  const Value form = doc.objects.lent->value;
  const std::uint32_t parent = CellAt(doc.cells, form.payload).parent;
  if (parent != (kIndirectParent | kLentNumber)) return parent & ~kIndirectParent;
  const std::uint32_t number = AddObject(doc, form);
  if (entry != nullptr && entry->value == ReferenceTo(kLentNumber, 0)) {
    entry->value = ReferenceTo(number, 0);
    MarkObjectChanged(doc, doc.root);
  }
  return number;
}

NameCode WrittenCatalogKey(Document& doc, NameCode key) {
  if (doc.formKey == kNoAtom || key != NameFromText(doc, kFormKey)) return key;
  return doc.formKey;
}

}  // namespace quillon::objects
