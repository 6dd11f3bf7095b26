#include "quillon/objects/cells.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace quillon::objects {
namespace {

void PushChildren(Cell& cell, std::vector<std::uint32_t>* pending) {
  const auto push = [pending](const Value& value) {
    if (value.tag == ValueTag::kCell) pending->push_back(value.payload);
  };
  if (cell.kind == CellKind::kDict) {
    for (std::uint32_t i = 0; i < cell.size; ++i) push(EntriesOf(cell)[i].value);
  } else if (cell.kind == CellKind::kArray) {
    for (std::uint32_t i = 0; i < cell.size; ++i) push(ElementsOf(cell)[i]);
  } else if (cell.kind == CellKind::kStream) {
    pending->push_back(cell.capacity);
  }
}

void ReleaseData(Pool& pool, Cell& cell) {
  switch (cell.kind) {
    case CellKind::kDict:
      Release(pool, cell.data, cell.capacity * sizeof(DictEntry));
      break;
    case CellKind::kArray:
      Release(pool, cell.data, cell.capacity * sizeof(Value));
      break;
    case CellKind::kString:
      if (cell.owned) Release(pool, cell.data, cell.capacity);
      break;
    case CellKind::kStream: {
      StreamBody& body = BodyOf(cell);
      if (body.owned) {
        Release(pool, const_cast<char*>(body.bytes), static_cast<std::size_t>(body.length));
      }
      if (body.decrypted) {
        Release(pool, const_cast<char*>(body.plain), static_cast<std::size_t>(body.plainLength));
      }
      Release(pool, cell.data, sizeof(StreamBody));
      break;
    }
    case CellKind::kInteger:
    case CellKind::kFixed:
      if (cell.owned) Release(pool, cell.data, cell.size);
      break;
    case CellKind::kFree:
      break;
  }
}

void FreeCell(CellTable& cells, Pool& pool, std::uint32_t number) {
  Cell& cell = CellAt(cells, number);
  ReleaseData(pool, cell);
  const auto generation = static_cast<std::uint16_t>(cell.generation + 1);
  cell = Cell{CellKind::kFree, false, false, generation, cells.firstFree, 0, 0, nullptr};
  cells.firstFree = number;
}

}  // namespace

std::uint32_t NewCell(CellTable& cells, CellKind kind) {
  std::uint32_t number = cells.firstFree;
  if (number != 0) {
    cells.firstFree = CellAt(cells, number).parent;
  } else {
    number = cells.used;
    if (number == kIndirectParent) throw std::bad_alloc();
    if (number / kCellsPerPage >= cells.pages.size()) {
      cells.pages.emplace_back(std::make_unique<Cell[]>(kCellsPerPage));
    }
    ++cells.used;
  }
  Cell& cell = CellAt(cells, number);
  cell = Cell{kind, false, false, cell.generation, 0, 0, 0, nullptr};
  return number;
}

void FreeCellTree(CellTable& cells, Pool& pool, std::uint32_t number) {
  // A list instead of recursion: what programs build may be deeper than any stack.
  std::vector<std::uint32_t> pending{number};
  while (!pending.empty()) {
    const std::uint32_t next = pending.back();
    pending.pop_back();
    PushChildren(CellAt(cells, next), &pending);
    FreeCell(cells, pool, next);
  }
}

void GrowDict(Pool& pool, Cell& dict) {
  if (dict.size < dict.capacity) return;
  const std::uint32_t capacity = std::max(4u, dict.capacity * 2);
  auto* entries = AllocateArray<DictEntry>(pool, capacity);
  if (dict.size != 0) std::memcpy(entries, dict.data, dict.size * sizeof(DictEntry));
  Release(pool, dict.data, dict.capacity * sizeof(DictEntry));
  dict.data = entries;
  dict.capacity = capacity;
}

void GrowArray(Pool& pool, Cell& array, std::uint32_t needed) {
  if (needed <= array.capacity) return;
  const std::uint32_t capacity = std::max({4u, needed, array.capacity * 2});
  auto* elements = AllocateArray<Value>(pool, capacity);
  if (array.size != 0) std::memcpy(elements, array.data, array.size * sizeof(Value));
  Release(pool, array.data, array.capacity * sizeof(Value));
  array.data = elements;
  array.capacity = capacity;
}

}  // namespace quillon::objects
