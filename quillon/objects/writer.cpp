#include "quillon/objects/writer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <random>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/numbers.h"
#include "quillon/objects/serializer.h"

namespace quillon::objects {
namespace {

constexpr std::size_t kPieceSize = std::size_t{256} * 1024;

// Tells programs that move files that this one is not text (ISO 32000-1, 7.5.2).
constexpr std::string_view kBinaryComment = "\n%\xE2\xE3\xCF\xD3\n";

// Numbers nobody uses are listed as free up to this many in a row; larger gaps are left out.
constexpr std::uint32_t kMaxListedGap = 1024;

std::string RandomId() {
  std::random_device device;
  const auto now = std::chrono::system_clock::now().time_since_epoch().count();
  std::mt19937_64 mixer(static_cast<std::uint64_t>(now) ^
                        (std::uint64_t{device()} << 32 | device()));
  const std::array<std::uint64_t, 2> words = {mixer(), mixer()};
  std::string id(sizeof words, '\0');
  std::memcpy(id.data(), words.data(), sizeof words);
  return id;
}

FileIds IdsFor(Document& doc) {
  if (!doc.isPdf) return {};
  FileIds ids{RandomId(), {}};
  const std::uint32_t array = CellOf(doc, EntryValue(doc, doc.trailer, "ID"), CellKind::kArray);
  if (array != 0 && CellAt(doc.cells, array).size > 0) {
    const Value first = ElementsOf(CellAt(doc.cells, array))[0];
    const std::uint32_t string = CellOf(doc, first, CellKind::kString);
    if (string != 0) ids.permanent = StringBytes(doc, string);
  }
  // A file that never had an ID gets the same one twice: nothing was changed under it.
  ids.changing = array != 0 ? RandomId() : ids.permanent;
  return ids;
}

// Objects in the order in which the file has them, then the new ones.
std::vector<std::uint32_t> WritingOrder(const Document& doc) {
  std::vector<std::pair<std::uint64_t, std::uint32_t>> order;
  constexpr std::uint64_t kAfterAll = ~std::uint64_t{0};
  for (std::uint32_t number = 1; number < doc.objects.count; ++number) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (slot == nullptr || !InUse(*slot) || slot->structure) continue;
    order.emplace_back(slot->state == SlotState::kInFile ? slot->position : kAfterAll, number);
  }
  std::sort(order.begin(), order.end());
  std::vector<std::uint32_t> numbers;
  numbers.reserve(order.size());
  for (const auto& [position, number] : order) numbers.push_back(number);
  return numbers;
}

// Object streams cannot be found by readers of a table: their members become objects of their own.
bool IsObjectStream(const Document& doc, std::string_view text) {
  const std::string_view dict = text.substr(0, text.find("stream"));
  return !doc.xrefStream && dict.find("/ObjStm") != std::string_view::npos;
}

void WriteMember(Document& doc, Output& out, std::uint32_t number) {
  const std::string_view text = ObjectText(doc, number);
  AppendInteger(&out.pending, number);
  out.pending += " 0 obj\n";
  out.pending += text;
  out.pending += "\nendobj\n";
}

// Copies an object as it stands in the file; false when it is not to be written.
bool CopyFromFile(Document& doc, Output& out, std::uint32_t number) {
  const std::string_view text = ObjectText(doc, number);
  if (IsObjectStream(doc, text)) return false;
  if (!text.empty()) {
    out.pending += text;
    out.pending.push_back('\n');
    return true;
  }
  // Reading it has the file scanned when something else stands in its place.
  LoadObject(doc, number);
  if (!InUse(*FindSlot(doc.objects, number))) return false;
  AppendObject(doc, &out.pending, number);
  return true;
}

// Writes one object; false when it is left out.
bool WriteObject(Document& doc, Output& out, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot->changed) {
    AppendObject(doc, &out.pending, number);
    return true;
  }
  // A number lent to a part of another object that did not change either.
  if (slot->state == SlotState::kNew) return false;
  if (slot->state == SlotState::kInFile) return CopyFromFile(doc, out, number);
  WriteMember(doc, out, number);
  return true;
}

std::vector<XrefEntry> WriteObjects(Document& doc, Output& out) {
  using Kind = XrefEntry::Kind;
  std::vector<XrefEntry> entries;
  for (const std::uint32_t number : WritingOrder(doc)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (doc.xrefStream && slot->state == SlotState::kCompressed && !slot->changed) {
      entries.push_back({number, Kind::kCompressed, 0, slot->position});
      continue;
    }
    const std::uint64_t position = PositionOf(out);
    if (WriteObject(doc, out, number)) {
      entries.push_back({number, Kind::kInFile, slot->generation, position});
    }
    if (out.pending.size() >= kPieceSize) FlushOutput(out);
  }
  std::sort(entries.begin(), entries.end(),
            [](const XrefEntry& a, const XrefEntry& b) { return a.number < b.number; });
  return entries;
}

// Adds object 0 and the free numbers between the others.
std::vector<XrefEntry> WithFreeEntries(const Document& doc, const std::vector<XrefEntry>& used) {
  using Kind = XrefEntry::Kind;
  std::vector<XrefEntry> all{{0, Kind::kFree, 0xFFFF, 0}};
  for (const XrefEntry& entry : used) {
    const std::uint32_t next = all.back().number + 1;
    for (std::uint32_t n = next; entry.number - next <= kMaxListedGap && n < entry.number; ++n) {
      const ObjectSlot* slot = FindSlot(doc.objects, n);
      const bool known = slot != nullptr && slot->state == SlotState::kFree;
      all.push_back({n, Kind::kFree, known ? slot->generation : std::uint16_t{0}, 0});
    }
    all.push_back(entry);
  }
  return all;
}

}  // namespace

void FlushOutput(Output& out) {
  if (out.pending.empty()) return;
  out.pass(out.pending);
  out.passed += out.pending.size();
  out.pending.clear();
}

FileIds WriteDocument(Document& doc, const std::string& header, Output& out) {
  if (!doc.changed && header == doc.header && !doc.source.bytes.empty()) {
    out.pass(doc.source.bytes);
    return {};
  }
  FileIds ids = IdsFor(doc);
  out.pending += header;
  out.pending += kBinaryComment;
  std::vector<XrefEntry> entries = WithFreeEntries(doc, WriteObjects(doc, out));
  if (doc.xrefStream) {
    WriteXrefStream(doc, out, std::move(entries), ids);
  } else {
    WriteXrefTable(doc, out, std::move(entries), ids);
  }
  FlushOutput(out);
  return ids;
}

void SetFileIds(Document& doc, const FileIds& ids) {
  if (ids.permanent.empty() && ids.changing.empty()) return;
  const std::uint32_t array = NewCell(doc.cells, CellKind::kArray);
  for (const std::string* id : {&ids.permanent, &ids.changing}) {
    InsertElement(doc, array, 2, CellValue(NewStringCell(doc, *id)));
  }
  SetEntry(doc, doc.trailer, NameFromText(doc, "ID"), CellValue(array));
}

}  // namespace quillon::objects
