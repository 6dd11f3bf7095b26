#include "quillon/objects/dictionary.h"

#include <algorithm>
#include <cstring>

namespace quillon::objects {
namespace {

void SetParent(Document& doc, const Value& value, std::uint32_t parent) {
  if (value.tag == ValueTag::kCell) CellAt(doc.cells, value.payload).parent = parent;
}

bool IsCell(const Value& value, std::uint32_t cell) {
  return value.tag == ValueTag::kCell && value.payload == cell;
}

}  // namespace

DictEntry* FindEntry(Cell& dict, NameCode key) {
  DictEntry* entries = EntriesOf(dict);
  for (std::uint32_t i = dict.size; i > 0; --i) {
    if (entries[i - 1].key == key) return &entries[i - 1];
  }
  return nullptr;
}

void SetEntry(Document& doc, std::uint32_t dictCell, NameCode key, const Value& value) {
  Cell& dict = CellAt(doc.cells, dictCell);
  DictEntry* entry = FindEntry(dict, key);
  if (entry != nullptr) {
    SetParent(doc, entry->value, 0);
    entry->value = value;
  } else {
    GrowDict(doc.pool, dict);
    EntriesOf(dict)[dict.size++] = {key, value};
  }
  SetParent(doc, value, dictCell);
}

bool RemoveEntry(Document& doc, std::uint32_t dictCell, NameCode key) {
  Cell& dict = CellAt(doc.cells, dictCell);
  bool removed = false;
  while (DictEntry* entry = FindEntry(dict, key)) {
    SetParent(doc, entry->value, 0);
    const DictEntry* end = EntriesOf(dict) + dict.size;
    std::memmove(entry, entry + 1, static_cast<std::size_t>(end - entry - 1) * sizeof(DictEntry));
    --dict.size;
    removed = true;
  }
  return removed;
}

void SetElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index, const Value& value) {
  Cell& array = CellAt(doc.cells, arrayCell);
  if (index >= array.size) {
    GrowArray(doc.pool, array, index + 1);
    while (array.size <= index) ElementsOf(array)[array.size++] = kNullValue;
  }
  SetParent(doc, ElementsOf(array)[index], 0);
  ElementsOf(array)[index] = value;
  SetParent(doc, value, arrayCell);
}

void InsertElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index,
                   const Value& value) {
  Cell& array = CellAt(doc.cells, arrayCell);
  if (index > array.size) index = array.size;
  GrowArray(doc.pool, array, array.size + 1);
  Value* place = ElementsOf(array) + index;
  std::memmove(place + 1, place, (array.size - index) * sizeof(Value));
  *place = value;
  ++array.size;
  SetParent(doc, value, arrayCell);
}

void RemoveElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index) {
  Cell& array = CellAt(doc.cells, arrayCell);
  if (index >= array.size) return;
  Value* place = ElementsOf(array) + index;
  SetParent(doc, *place, 0);
  std::memmove(place, place + 1, (array.size - index - 1) * sizeof(Value));
  --array.size;
}

std::uint32_t NewStringCell(Document& doc, std::string_view bytes) {
  if (bytes.size() > 0x7FFFFFFF) Fail(kErrorBadParameter, "A string is too long.");
  const std::uint32_t number = NewCell(doc.cells, CellKind::kString);
  auto* copy = AllocateArray<char>(doc.pool, bytes.size() + 1);
  std::copy(bytes.begin(), bytes.end(), copy);
  copy[bytes.size()] = '\0';
  Cell& cell = CellAt(doc.cells, number);
  cell.owned = true;
  cell.size = static_cast<std::uint32_t>(bytes.size());
  cell.capacity = cell.size + 1;
  cell.data = copy;
  return number;
}

void DetachCell(Document& doc, std::uint32_t cell) {
  const std::uint32_t parent = CellAt(doc.cells, cell).parent;
  if (parent == 0 || (parent & kIndirectParent) != 0) return;
  Cell& container = CellAt(doc.cells, parent);
  if (container.kind == CellKind::kDict) {
    for (std::uint32_t i = 0; i < container.size; ++i) {
      if (!IsCell(EntriesOf(container)[i].value, cell)) continue;
      RemoveEntry(doc, parent, EntriesOf(container)[i].key);
      return;
    }
  } else if (container.kind == CellKind::kArray) {
    for (std::uint32_t i = 0; i < container.size; ++i) {
      if (IsCell(ElementsOf(container)[i], cell)) SetElement(doc, parent, i, kNullValue);
    }
  }
}

}  // namespace quillon::objects
