#include "quillon/objects/writer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <random>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/numbers.h"
#include "quillon/objects/repair_lists.h"
#include "quillon/objects/repair_pages.h"
#include "quillon/objects/security_handler.h"
#include "quillon/objects/serializer.h"
#include "quillon/objects/unlisted.h"

namespace quillon::objects {
namespace {

// For a file whose own header names no version.
constexpr std::string_view kUsualHeader = "%PDF-1.7";

constexpr std::size_t kPieceSize = std::size_t{256} * 1024;

// Tells programs that move files that this one is not text (ISO 32000-1, 7.5.2).
constexpr std::string_view kBinaryComment = "\n%\xE2\xE3\xCF\xD3\n";

// Numbers nobody uses are listed as free up to this many in a row; larger gaps are left out.
constexpr std::uint32_t kMaxListedGap = 32;

// A key of this size, in bytes, is made without the ID (ISO 32000-2, 7.6.4.4).
constexpr std::size_t kIndependentKey = 32;

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
  const std::string permanent = FirstFileId(doc, doc.trailer);
  // Its key was made without an ID and would be another one with it.
  const bool takesId = doc.protection && doc.protection->key.size() < kIndependentKey;
  if (permanent.empty() && takesId) return {};
  const std::string fresh = RandomId();
  // A file that never had an ID gets the same one twice: nothing was changed under it.
  return {permanent.empty() ? fresh : permanent, fresh};
}

// Objects in the order in which the file has them, then the new ones.
std::vector<std::uint32_t> WritingOrder(const Document& doc) {
  std::vector<std::pair<std::uint64_t, std::uint32_t>> order;
  constexpr std::uint64_t kAfterAll = ~std::uint64_t{0};
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (!InUse(*slot) || slot->structure) continue;
    order.emplace_back(slot->state == SlotState::kInFile ? slot->position : kAfterAll, number);
  }
  std::sort(order.begin(), order.end());
  std::vector<std::uint32_t> numbers;
  numbers.reserve(order.size());
  for (const auto& [position, number] : order) numbers.push_back(number);
  return numbers;
}

// Object streams cannot be found by readers of a table: their members become objects of their own.
bool IsObjectStream(Document& doc, std::uint32_t number, std::string_view text) {
  const std::string_view start = text.substr(0, text.find("stream"));
  if (doc.xrefStream || start.find("/ObjStm") == std::string_view::npos) return false;
  const std::uint32_t stream = CellOf(doc, LoadObject(doc, number), CellKind::kStream);
  if (stream == 0) return false;
  const std::uint32_t dict = CellAt(doc.cells, stream).capacity;
  return TypeIs(doc, dict, "ObjStm");
}

void WriteMember(Document& doc, Output& out, std::uint32_t number) {
  // What stands in an object stream is not encrypted by itself.
  if (doc.protection) return AppendObject(doc, &out.pending, number);
  const std::string_view text = ObjectText(doc, number);
  if (text.empty()) return AppendObject(doc, &out.pending, number);
  AppendInteger(&out.pending, number);
  out.pending += " 0 obj\n";
  out.pending += text;
  out.pending += "\nendobj\n";
}

bool IsSpoiled(const Document& doc, std::uint32_t number) {
  const auto stream = doc.objectStreams.find(number);
  return stream != doc.objectStreams.end() && stream->second->spoiled;
}

std::uint32_t ContainerOf(const ObjectSlot& slot) {
  return static_cast<std::uint32_t>(slot.position >> 32);
}

// Copies an object as it stands in the file; false when it is not to be written.
bool CopyFromFile(Document& doc, Output& out, std::uint32_t number) {
  if (IsSpoiled(doc, number)) return false;
  const std::string_view text = ObjectText(doc, number);
  if (IsObjectStream(doc, number, text)) return false;
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
  if (slot->state == SlotState::kInFile) return CopyFromFile(doc, out, number);
  WriteMember(doc, out, number);
  return true;
}

// An object that cannot be read is left out, and references to it read null.
void LeaveOut(Document& doc, const Output& out, std::uint32_t number) {
  const std::string which = "Object " + std::to_string(number);
  const std::int64_t offset = ObjectOffset(doc, number);
  if (out.keepAll) {
    Fail(
        kErrorBadObject,
        which +
            " cannot be read, and writing the file anew in its place would lose it for good. Write "
            "to another file, or append the changes.",
        number, offset);
  }
  Warn(doc, which + " cannot be read; it was left out.", number, offset);
}

// False when it was left out.
bool WriteIfReadable(Document& doc, Output& out, std::uint32_t number) {
  const std::size_t before = out.pending.size();
  try {
    const bool written = WriteObject(doc, out, number);
    if (!FindSlot(doc.objects, number)->unreadable) return written;
  } catch (const HostFailure& failure) {
    const bool unread = failure.code == kErrorBadObject || failure.code == kErrorBadStream;
    if (!unread || FindSlot(doc.objects, number)->changed) throw;
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
  }
  out.pending.resize(before);
  LeaveOut(doc, out, number);
  return false;
}

// An object stream with a member that cannot stay in it as it is would be copied with its damage.
void FindSpoiledStreams(Document& doc) {
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (slot->state != SlotState::kCompressed || slot->changed) continue;
    // Reading it may have had the file scanned, and the object found elsewhere.
    if (!ObjectText(doc, number).empty() || slot->state != SlotState::kCompressed) continue;
    std::unique_ptr<ObjectStream>& stream = doc.objectStreams[ContainerOf(*slot)];
    // One that cannot be read has no members any more.
    if (!stream) stream = std::make_unique<ObjectStream>();
    stream->spoiled = true;
  }
}

std::vector<XrefEntry> WriteObjects(Document& doc, Output& out) {
  using Kind = XrefEntry::Kind;
  std::vector<XrefEntry> entries;
  for (const std::uint32_t number : WritingOrder(doc)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (doc.xrefStream && slot->state == SlotState::kCompressed && !slot->changed &&
        !IsSpoiled(doc, ContainerOf(*slot))) {
      entries.push_back({number, Kind::kCompressed, 0, slot->position});
      continue;
    }
    const std::uint64_t position = PositionOf(out);
    if (WriteIfReadable(doc, out, number)) {
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

void WriteXref(Document& doc, Output& out, XrefPart part) {
  if (doc.xrefStream) {
    WriteXrefStream(doc, out, std::move(part));
  } else {
    WriteXrefTable(doc, out, std::move(part));
  }
  FlushOutput(out);
}

void CheckCanAppend(const Document& doc) {
  if (doc.startXref && !doc.scanned) return;
  Fail(kErrorNotOffered,
       "The file's cross-references are damaged, so nothing can be appended to it; it can only be "
       "written anew.");
}

// Writes what changed; answers its lines of the cross-references.
std::vector<XrefEntry> WriteChanges(Document& doc, Output& out) {
  using Kind = XrefEntry::Kind;
  std::vector<XrefEntry> entries;
  bool freed = false;
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (!slot->changed && !slot->misplaced && !slot->mended) continue;
    if (!slot->changed && !slot->mended && slot->state == SlotState::kInFile) {
      entries.push_back({number, Kind::kInFile, slot->generation, slot->position});
    } else if (InUse(*slot)) {
      entries.push_back({number, Kind::kInFile, slot->generation, PositionOf(out)});
      AppendObject(doc, &out.pending, number);
      if (out.pending.size() >= kPieceSize) FlushOutput(out);
    } else {
      entries.push_back({number, Kind::kFree, slot->generation, 0});
      freed = true;
    }
  }
  // The list of free objects starts at object 0.
  if (freed) entries.insert(entries.begin(), {0, Kind::kFree, 0xFFFF, 0});
  return entries;
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
  StartSpendingAnew(doc);
  RepairPages(doc);
  RepairFields(doc);
  AdoptNamedObjects(doc);
  if (doc.xrefStream) FindSpoiledStreams(doc);
  FileIds ids = IdsFor(doc);
  out.pending += HasVersion(header) ? header : kUsualHeader;
  out.pending += kBinaryComment;
  std::vector<XrefEntry> entries = WithFreeEntries(doc, WriteObjects(doc, out));
  const std::uint32_t size = entries.back().number + 1;
  WriteXref(doc, out, {std::move(entries), ids, size, std::nullopt});
  return ids;
}

FileIds WriteUpdate(Document& doc, Output& out) {
  if (!doc.changed) {
    out.pass(doc.source.bytes);
    return {};
  }
  StartSpendingAnew(doc);
  CheckCanAppend(doc);
  RepairPages(doc);
  RepairFields(doc);
  AdoptNamedObjects(doc);
  // Offsets count from the header on.
  out.pass(doc.source.bytes);
  out.passed = doc.text.size();
  if (doc.text.back() != '\n' && doc.text.back() != '\r') out.pending.push_back('\n');
  FileIds ids = IdsFor(doc);
  std::vector<XrefEntry> entries = WriteChanges(doc, out);
  // Something that was read just now may have been elsewhere than the cross-references said.
  CheckCanAppend(doc);
  WriteXref(doc, out, {std::move(entries), ids, doc.objects.count, doc.startXref});
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
