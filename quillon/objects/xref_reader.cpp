#include "quillon/objects/xref_reader.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/file_parts.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"

namespace quillon::objects {
namespace {

// "startxref" stands in the last lines; some files have junk after them.
constexpr std::size_t kTailLength = 2048;

// Each update adds a section. Nobody updates a file this often without rewriting it.
constexpr std::size_t kMaxSections = 4096;

// How far Size may lie beyond the last entry and still be believed.
constexpr std::uint32_t kMaxUnlisted = 65536;

struct Reading {
  std::unordered_set<std::uint64_t> positions;
  std::vector<XrefSection> streams;
  std::uint32_t newest = 0;    // dictionary of the newest section
  std::uint32_t withRoot = 0;  // of the newest section that names a catalog
  bool newestIsStream = false;
};

std::uint64_t StartPosition(const Document& doc) {
  const std::size_t tail = doc.text.size() > kTailLength ? doc.text.size() - kTailLength : 0;
  const std::size_t found = doc.text.rfind("startxref");
  if (found == std::string_view::npos || found < tail) {
    FailXref(doc, doc.text.size(), "The file does not end with a startxref");
  }
  Cursor cursor = CursorAt(doc, found, 0);
  TakeKeyword(cursor, "startxref");
  const auto position = TakeUnsigned(cursor);
  if (!position || *position >= doc.text.size()) {
    FailXref(doc, found, "The startxref points nowhere");
  }
  if (ObjectStartsAfter(doc, found)) {
    FailXref(doc, found, "An update behind the last startxref is cut off");
  }
  return *position;
}

void ReadHybridPart(Document& doc, const XrefSection& table, Reading* reading) {
  if (EntryValue(doc, table.dict, "XRefStm") == kNullValue) return;
  const std::int32_t position = IntegerEntry(doc, table.dict, "XRefStm", 0);
  if (position <= 0 || !reading->positions.insert(static_cast<std::uint64_t>(position)).second) {
    FailXref(doc, table.position, "The hidden cross-references have no place");
  }
  XrefSection hidden{static_cast<std::uint64_t>(position), 0, 0};
  ReadXrefStream(doc, &hidden);
  reading->streams.push_back(hidden);
}

XrefSection ReadSection(Document& doc, std::uint64_t position, Reading* reading) {
  XrefSection section{position, 0, 0};
  Cursor cursor = CursorAt(doc, position, 0);
  if (!TakeKeyword(cursor, "xref")) {
    ReadXrefStream(doc, &section);
    reading->streams.push_back(section);
    return section;
  }
  std::vector<FreeEntry> freed;
  ReadXrefTable(doc, &section, &freed);
  ReadHybridPart(doc, section, reading);
  for (const FreeEntry& entry : freed) {
    EnterObject(doc, entry.number, SlotState::kFree, position, entry.generation);
  }
  return section;
}

bool HasRoot(Document& doc, std::uint32_t dict) {
  return EntryValue(doc, dict, "Root").tag != ValueTag::kNull;
}

void ReadSections(Document& doc, Reading* reading) {
  std::uint64_t position = StartPosition(doc);
  while (reading->positions.insert(position).second && reading->positions.size() < kMaxSections) {
    const XrefSection section = ReadSection(doc, position, reading);
    if (reading->newest == 0) {
      reading->newest = section.dict;
      reading->newestIsStream = section.stream != 0;
    }
    if (reading->withRoot == 0 && HasRoot(doc, section.dict)) reading->withRoot = section.dict;
    doc.sections.push_back(position);
    if (EntryValue(doc, section.dict, "Prev") == kNullValue) break;
    const std::int32_t previous = IntegerEntry(doc, section.dict, "Prev", -1);
    if (previous < 0) FailXref(doc, position, "The older cross-references have no place");
    position = static_cast<std::uint64_t>(previous);
    if (reading->positions.contains(position)) {
      Warn(doc, "The cross-references lead back to where they were.", 0, FileOffset(doc, position));
    }
  }
}

void MarkStructure(Document& doc, const Reading& reading) {
  for (const XrefSection& section : reading.streams) {
    ObjectSlot* slot = FindSlot(doc.objects, section.stream);
    if (slot != nullptr && slot->state == SlotState::kInFile &&
        slot->position == section.position) {
      slot->structure = true;
    }
  }
}

}  // namespace

void FailXref(const Document& doc, std::uint64_t position, const std::string& what) {
  Fail(kErrorBadFile, what + ".", 0, FileOffset(doc, position));
}

void EnterObject(Document& doc, std::uint64_t number, SlotState state, std::uint64_t position,
                 std::uint16_t generation) {
  SpendEntries(doc, 1);
  if (number == 0 || number > kMaxObjectNumber) return;
  ObjectSlot& slot = SlotFor(doc.objects, static_cast<std::uint32_t>(number));
  if (slot.state != SlotState::kUnknown) return;
  slot.state = state;
  slot.position = position;
  slot.generation = generation;
}

void AdoptTrailer(Document& doc, std::uint32_t dictCell) {
  constexpr std::array<std::string_view, 10> kFileOnly = {
      "Type", "Size", "W", "Index", "Length", "Filter", "DecodeParms", "Prev", "XRefStm", "DL"};
  const auto size = static_cast<std::uint32_t>(IntegerEntry(doc, dictCell, "Size", 0));
  // New numbers start at Size: references to unlisted numbers below it must stay null.
  if (size > doc.objects.count && size - doc.objects.count <= kMaxUnlisted) {
    SlotFor(doc.objects, size - 1);
  }
  for (const std::string_view key : kFileOnly) RemoveEntry(doc, dictCell, NameFromText(doc, key));
  doc.trailer = dictCell;
  CellAt(doc.cells, dictCell).parent = kIndirectParent;
  const Value root = EntryValue(doc, dictCell, "Root");
  doc.root = root.tag == ValueTag::kReference ? root.payload : 0;
}

bool ReadCrossReferences(Document& doc) {
  Reading reading;
  try {
    ReadSections(doc, &reading);
    if (reading.withRoot == 0) FailXref(doc, StartPosition(doc), "No trailer names the catalog");
  } catch (const HostFailure& failure) {
    Warn(doc, std::string(failure.what()) + " The objects were searched for.", failure.objectNumber,
         failure.offset);
    doc.objects = ObjectTable{};
    doc.sections.clear();
    doc.costs = ReadingCosts{};
    return false;
  }
  MarkStructure(doc, reading);
  doc.xrefStream = reading.newestIsStream;
  doc.startXref = StartPosition(doc);
  AdoptTrailer(doc, reading.withRoot);
  return true;
}

}  // namespace quillon::objects
