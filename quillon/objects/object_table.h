// The indirect objects of a document by number: where each stands in the file and, once it was
// touched, its value.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "quillon/objects/value.h"

namespace quillon::objects {

// The highest object number that files in use reach (ISO 32000-1, Annex C).
inline constexpr std::uint32_t kMaxObjectNumber = 8388607;

// Stands for a form dictionary that is direct in the file (form_key.h). No file can have it.
inline constexpr std::uint32_t kLentNumber = kMaxObjectNumber + 1;

enum class SlotState : std::uint8_t {
  kUnknown,     // no cross-reference entry
  kFree,        // position: that of the cross-references that say so
  kInFile,      // position: byte offset of the object, from the header on
  kCompressed,  // position: object stream number << 32 | index in it
  kNew,         // made since the file was opened
};

struct ObjectSlot {
  std::uint64_t position;
  Value value;  // valid while `loaded`
  std::uint16_t generation;
  SlotState state;
  bool loaded : 1;
  bool loading : 1;     // being parsed: meeting it again is a cycle
  bool changed : 1;     // differs from the file
  bool mended : 1;      // read otherwise than it stands in the file: it is not copied
  bool structure : 1;   // a cross-reference stream: belongs to the file, not to the document
  bool unreadable : 1;  // reads null, because it cannot be read
  bool misplaced : 1;   // not as the cross-references have it: an update lists it anew
};

// Paged, so that a lone high number costs little and slots never move.
struct ObjectTable {
  static constexpr std::uint32_t kPageSize = 128;
  std::vector<std::unique_ptr<ObjectSlot[]>> pages;
  std::uint32_t count = 1;           // the highest number known + 1
  std::unique_ptr<ObjectSlot> lent;  // of kLentNumber, which no loop over the numbers meets
};

// Null for a number without a slot.
inline ObjectSlot* FindSlot(const ObjectTable& table, std::uint32_t number) {
  const std::size_t page = number / ObjectTable::kPageSize;
  if (number == kLentNumber) return table.lent.get();
  if (number == 0 || number >= table.count || !table.pages[page]) return nullptr;
  return &table.pages[page][number % ObjectTable::kPageSize];
}

// Makes the slot when there is none. REQUIRES 0 < number <= kMaxObjectNumber.
inline ObjectSlot& SlotFor(ObjectTable& table, std::uint32_t number) {
  const std::size_t page = number / ObjectTable::kPageSize;
  if (page >= table.pages.size()) table.pages.resize(page + 1);
  if (!table.pages[page]) {
    table.pages[page] = std::make_unique<ObjectSlot[]>(ObjectTable::kPageSize);
  }
  if (number >= table.count) table.count = number + 1;
  return table.pages[page][number % ObjectTable::kPageSize];
}

// The numbers that have a slot, the lowest first; few of the possible ones may.
inline std::vector<std::uint32_t> SlotNumbers(const ObjectTable& table) {
  std::vector<std::uint32_t> numbers;
  for (std::uint32_t page = 0; page < table.pages.size(); ++page) {
    if (!table.pages[page]) continue;
    const std::uint32_t first = page * ObjectTable::kPageSize;
    const std::uint32_t end = std::min(first + ObjectTable::kPageSize, table.count);
    for (std::uint32_t number = std::max(first, 1U); number < end; ++number) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

inline bool InUse(const ObjectSlot& slot) { return slot.state >= SlotState::kInFile; }

}  // namespace quillon::objects
