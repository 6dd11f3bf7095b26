// Objects: dictionaries and arrays.
#include <vector>

#include "quillon/core/guard.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/operands.h"
#include "quillon/objects/operations.h"

namespace quillon::objects {
namespace {

// Files have no larger arrays; a number this large as an index is a mistake.
constexpr std::uint32_t kMaxArrayLength = 1u << 26;

struct Listed {
  NameCode key;
  Value value;
  std::uint16_t generation;  // of a direct container's or string's cell when it was listed
};

Listed ListValue(Document& doc, NameCode key, const Value& value) {
  const bool isCell = value.tag == ValueTag::kCell;
  return {key, value, isCell ? CellAt(doc.cells, value.payload).generation : std::uint16_t{0}};
}

// Null for a direct object that was destroyed since it was listed.
ObjectHandle HandleOfListed(Document& doc, const Listed& listed) {
  if (listed.value.tag == ValueTag::kCell) {
    const Cell& cell = CellAt(doc.cells, listed.value.payload);
    if (cell.kind == CellKind::kFree || cell.generation != listed.generation) return kNullObject;
  }
  return HandleOf(doc, listed.value);
}

void EnumEntries(const Container& dict, EnumProc proc, void* clientData) {
  Cell& cell = CellAt(dict.doc.cells, dict.cell);
  std::vector<Listed> list;
  list.reserve(cell.size);
  for (std::uint32_t i = 0; i < cell.size; ++i) {
    const DictEntry& entry = EntriesOf(cell)[i];
    if (entry.value != kNullValue) list.push_back(ListValue(dict.doc, entry.key, entry.value));
  }
  CallGuarded([&] {
    for (const Listed& listed : list) {
      const ObjectHandle value = HandleOfListed(dict.doc, listed);
      if (value.first == 0) continue;
      if (proc(HandleOf(dict.doc, NameOf(listed.key)), value, clientData) == 0) return;
    }
  });
}

void EnumElements(const Container& array, EnumProc proc, void* clientData) {
  Cell& cell = CellAt(array.doc.cells, array.cell);
  std::vector<Listed> list;
  list.reserve(cell.size);
  for (std::uint32_t i = 0; i < cell.size; ++i) {
    list.push_back(ListValue(array.doc, 0, ElementsOf(cell)[i]));
  }
  CallGuarded([&] {
    for (const Listed& listed : list) {
      if (proc(kNullObject, HandleOfListed(array.doc, listed), clientData) == 0) return;
    }
  });
}

// Whether `stored`, what a container has at a place, is the object already.
bool IsThere(Document& doc, const Value& stored, ObjectHandle object) {
  if (stored.tag == ValueTag::kReference) {
    const Target target = TargetOf(object);
    return target.doc == &doc && target.number == stored.payload;
  }
  if (stored.tag != ValueTag::kCell) return false;
  const ObjectHandle handle = HandleOfCell(doc, stored.payload);
  return handle.first == object.first && handle.second == object.second;
}

}  // namespace

ObjectHandle DictGet(ObjectHandle dict, Atom key) {
  const Container container = DictOperand(dict);
  return HandleOf(container.doc, EntryValue(container.doc, container.cell, key));
}

void DictPut(ObjectHandle dict, Atom key, ObjectHandle value) {
  if (value.first == 0) return DictRemove(dict, key);
  const Container container = DictOperand(dict);
  if (NameText(container.doc, key).data() == nullptr) {
    Fail(kErrorBadParameter, "An atom names nothing.");
  }
  if (IsThere(container.doc, EntryValue(container.doc, container.cell, key), value)) return;
  SetEntry(container.doc, container.cell, key, StoredValue(container, value));
  MarkCellChanged(container.doc, container.cell);
}

void DictRemove(ObjectHandle dict, Atom key) {
  const Container container = DictOperand(dict);
  if (RemoveEntry(container.doc, container.cell, key)) {
    MarkCellChanged(container.doc, container.cell);
  }
}

Boolean DictKnown(ObjectHandle dict, Atom key) { return DictGet(dict, key).first != 0 ? 1 : 0; }

void EnumDict(ObjectHandle object, EnumProc proc, void* clientData) {
  if (proc == nullptr) Fail(kErrorBadParameter, "No routine is given to call.");
  if (TypeOf(object) == ObjectKind::kArray) {
    EnumElements(ArrayOperand(object), proc, clientData);
  } else {
    EnumEntries(DictOperand(object), proc, clientData);
  }
}

ObjectHandle ArrayGet(ObjectHandle array, std::uint32_t index) {
  const Container container = ArrayOperand(array);
  Cell& cell = CellAt(container.doc.cells, container.cell);
  if (index >= cell.size) return kNullObject;
  return HandleOf(container.doc, ElementsOf(cell)[index]);
}

void ArrayPut(ObjectHandle array, std::uint32_t index, ObjectHandle value) {
  const Container container = ArrayOperand(array);
  if (index >= kMaxArrayLength) Fail(kErrorBadParameter, "An array cannot be that long.");
  Cell& cell = CellAt(container.doc.cells, container.cell);
  if (index < cell.size && IsThere(container.doc, ElementsOf(cell)[index], value)) return;
  SetElement(container.doc, container.cell, index, StoredValue(container, value));
  MarkCellChanged(container.doc, container.cell);
}

void ArrayInsert(ObjectHandle array, std::uint32_t index, ObjectHandle value) {
  const Container container = ArrayOperand(array);
  InsertElement(container.doc, container.cell, index, StoredValue(container, value));
  MarkCellChanged(container.doc, container.cell);
}

void ArrayRemove(ObjectHandle array, std::uint32_t index) {
  const Container container = ArrayOperand(array);
  if (index >= CellAt(container.doc.cells, container.cell).size) return;
  RemoveElement(container.doc, container.cell, index);
  MarkCellChanged(container.doc, container.cell);
}

std::uint32_t ArrayLength(ObjectHandle array) {
  const Container container = ArrayOperand(array);
  return CellAt(container.doc.cells, container.cell).size;
}

}  // namespace quillon::objects
