// The objects that need more room than a value: strings, dictionaries, arrays, streams, and numbers
// with a text of their own. Cells are numbered per document and reused after they were freed.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "quillon/objects/pool.h"
#include "quillon/objects/value.h"

namespace quillon::objects {

enum class CellKind : std::uint8_t { kFree, kString, kDict, kArray, kStream, kInteger, kFixed };

struct DictEntry {
  NameCode key;
  Value value;
};

// The data of a stream as stored, before any filter is undone.
struct StreamBody {
  const char* bytes;
  std::uint64_t length;
  bool lengthKnown;             // false until the Length entry was followed and checked
  bool owned;                   // the bytes are the pool's
  bool lengthWrong = false;     // the data end elsewhere than Length says
  bool decrypted = false;       // `plain` is what the bytes say
  const char* plain = nullptr;  // the pool's
  std::uint64_t plainLength = 0;
};

//               size             capacity            data
// kString       bytes            owned bytes, 0 for  the bytes followed by NUL; as written in the
//                                borrowed ones       file, delimiters included, while `raw`
// kDict         entries          room for entries    DictEntry[]
// kArray        elements         room for elements   Value[]
// kStream       0                its dictionary's    StreamBody
//                                cell number
// kInteger,     bytes of text    the value           the text (borrowed, or owned when `owned`)
// kFixed
struct Cell {
  CellKind kind;
  bool raw;
  bool owned;
  std::uint16_t generation;  // counts the uses of the cell, to tell stale handles
  std::uint32_t parent;      // the container's cell, kIndirectParent | object number, or 0
  std::uint32_t size;
  std::uint32_t capacity;
  void* data;
};

inline constexpr std::uint32_t kIndirectParent = 0x80000000u;
inline constexpr std::uint32_t kCellsPerPage = 512;

struct CellTable {
  std::vector<std::unique_ptr<Cell[]>> pages;
  std::uint32_t used = 1;  // cell 0 is never given out
  std::uint32_t firstFree = 0;
};

inline Cell& CellAt(CellTable& cells, std::uint32_t number) {
  return cells.pages[number / kCellsPerPage][number % kCellsPerPage];
}

// The references that CellAt gives stay valid until the cell is freed.
std::uint32_t NewCell(CellTable& cells, CellKind kind);

inline DictEntry* EntriesOf(Cell& cell) { return static_cast<DictEntry*>(cell.data); }
inline Value* ElementsOf(Cell& cell) { return static_cast<Value*>(cell.data); }
inline const char* TextOf(const Cell& cell) { return static_cast<const char*>(cell.data); }
inline StreamBody& BodyOf(Cell& cell) { return *static_cast<StreamBody*>(cell.data); }

// Frees a cell with everything below it.
void FreeCellTree(CellTable& cells, Pool& pool, std::uint32_t number);

// Makes room for one more entry or element.
void GrowDict(Pool& pool, Cell& dict);
void GrowArray(Pool& pool, Cell& array, std::uint32_t needed);

}  // namespace quillon::objects
