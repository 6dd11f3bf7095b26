// Cross-reference tables (ISO 32000-1, 7.5.4).
#include "quillon/objects/characters.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/xref_reader.h"

namespace quillon::objects {
namespace {

struct TableEntry {
  std::uint64_t position;
  std::uint64_t generation;
  bool inUse;
};

// Entries have a fixed form of 20 bytes: "nnnnnnnnnn ggggg n" and two bytes of line end.
constexpr std::ptrdiff_t kEntryLength = 20;

bool TakeFixedNumber(const char* at, int digits, std::uint64_t* number) {
  std::uint64_t value = 0;
  for (int i = 0; i < digits; ++i) {
    if (!IsDecimalDigit(at[i])) return false;
    value = value * 10 + static_cast<std::uint64_t>(at[i] - '0');
  }
  *number = value;
  return true;
}

bool TakeFixedEntry(Cursor& cursor, TableEntry* entry) {
  const char* at = cursor.at;
  if (cursor.end - at < kEntryLength || at[10] != ' ' || at[16] != ' ' ||
      (at[17] != 'n' && at[17] != 'f') || !IsSpace(at[18]) || !IsSpace(at[19]) ||
      !TakeFixedNumber(at, 10, &entry->position) ||
      !TakeFixedNumber(at + 11, 5, &entry->generation)) {
    return false;
  }
  entry->inUse = at[17] == 'n';
  cursor.at += kEntryLength;
  return true;
}

// The same fields with other spacing, such as line ends of one byte.
bool TakeLooseEntry(Cursor& cursor, TableEntry* entry) {
  const auto position = TakeUnsigned(cursor);
  const auto generation = TakeUnsigned(cursor);
  if (!position || !generation) return false;
  entry->position = *position;
  entry->generation = *generation;
  entry->inUse = TakeKeyword(cursor, "n");
  return entry->inUse || TakeKeyword(cursor, "f");
}

void EnterEntry(Document& doc, std::uint64_t number, const TableEntry& entry,
                std::vector<FreeEntry>* freed) {
  const auto generation = static_cast<std::uint16_t>(entry.generation);
  // Offset 0 is the header's: producers use it for objects that are not there.
  if (entry.inUse && entry.position != 0) {
    EnterObject(doc, number, SlotState::kInFile, entry.position, generation);
  } else if (number <= kMaxObjectNumber) {
    freed->push_back({static_cast<std::uint32_t>(number), generation});
  }
}

void ReadSubsection(Document& doc, Cursor& cursor, std::uint64_t first, std::uint64_t count,
                    std::vector<FreeEntry>* freed) {
  SkipSpace(cursor);
  for (std::uint64_t i = 0; i < count; ++i) {
    TableEntry entry{};
    if (!TakeFixedEntry(cursor, &entry) && !TakeLooseEntry(cursor, &entry)) {
      FailAt(cursor, "A cross-reference table has an entry that cannot be read");
    }
    // Some producers count from 1 although their first entry is that of object 0.
    if (i == 0 && first == 1 && !entry.inUse && entry.generation == 0xFFFF) {
      FailAt(cursor, "A cross-reference table counts from 1 instead of 0");
    }
    EnterEntry(doc, first + i, entry, freed);
  }
}

}  // namespace

void ReadXrefTable(Document& doc, XrefSection* section, std::vector<FreeEntry>* freed) {
  Cursor cursor = CursorAt(doc, section->position, 0);
  if (!TakeKeyword(cursor, "xref") || cursor.at == cursor.end || !IsSpace(*cursor.at)) {
    FailXref(doc, section->position, "The cross-reference table is not where the file says");
  }
  while (!TakeKeyword(cursor, "trailer")) {
    const auto first = TakeUnsigned(cursor);
    const auto count = TakeUnsigned(cursor);
    if (!first || !count) FailAt(cursor, "A cross-reference table has no trailer");
    ReadSubsection(doc, cursor, *first, *count, freed);
  }
  const Value trailer = ParseValue(doc, cursor, kIndirectParent);
  section->dict = CellOf(doc, trailer, CellKind::kDict);
  if (section->dict == 0) FailAt(cursor, "A trailer is no dictionary");
}

}  // namespace quillon::objects
