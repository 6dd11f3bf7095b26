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
  if (form.kind != CellKind::kDict || doc.objects.count > kMaxObjectNumber) return;
  const std::uint32_t number = doc.objects.count;
  ObjectSlot& slot = SlotFor(doc.objects, number);
  slot.state = SlotState::kNew;
  slot.value = entry->value;
  slot.loaded = true;
  form.parent = kIndirectParent | number;
  entry->value = ReferenceTo(number, 0);
  doc.lentForm = number;
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
  if (doc.lentForm == 0) return;
  if (number == doc.lentForm) MarkObjectChanged(doc, doc.root);
  if (number == doc.root) MarkObjectChanged(doc, doc.lentForm);
}

NameCode WrittenCatalogKey(Document& doc, NameCode key) {
  if (doc.formKey == kNoAtom || key != NameFromText(doc, kFormKey)) return key;
  return doc.formKey;
}

}  // namespace quillon::objects
