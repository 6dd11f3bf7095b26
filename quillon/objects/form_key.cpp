#include "quillon/objects/form_key.h"

#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

// A dictionary with an array of fields. What cannot be read is none.
bool IsForm(Document& doc, const Value& value) {
  try {
    const std::uint32_t dict = CellOf(doc, value, CellKind::kDict);
    return dict != 0 && CellOf(doc, EntryValue(doc, dict, "Fields"), CellKind::kArray) != 0;
  } catch (const HostFailure& failure) {
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
    return false;
  }
}

// The only entry that looks like a form; null when there is none or more than one.
DictEntry* OnlyForm(Document& doc, Cell& catalog) {
  DictEntry* only = nullptr;
  for (std::uint32_t i = 0; i < catalog.size; ++i) {
    DictEntry& entry = EntriesOf(catalog)[i];
    if (!IsForm(doc, entry.value)) continue;
    if (only != nullptr) return nullptr;
    only = &entry;
  }
  return only;
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
    entry = OnlyForm(doc, catalog);
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
