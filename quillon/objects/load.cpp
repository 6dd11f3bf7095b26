#include "quillon/objects/load.h"

#include <algorithm>
#include <optional>

#include "quillon/objects/limits.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/scanner.h"
#include "quillon/objects/security_handler.h"
#include "quillon/objects/unlisted.h"

namespace quillon::objects {
namespace {

struct LoadingMark {
  ObjectSlot& slot;
  explicit LoadingMark(ObjectSlot& marked) : slot(marked) { slot.loading = true; }
  ~LoadingMark() { slot.loading = false; }
  LoadingMark(const LoadingMark&) = delete;
  LoadingMark& operator=(const LoadingMark&) = delete;
};

// What stands in the file is not copied into the next one.
void MarkMended(Document& doc, std::uint32_t number) {
  if (ObjectSlot* slot = FindSlot(doc.objects, number)) slot->mended = true;
}

// Past the end of the line that the keyword "stream" stands on. A lone CR is what some producers
// write; it is taken as the line end.
const char* DataStart(const Cursor& afterKeyword) {
  const char* at = afterKeyword.at;
  if (at < afterKeyword.end && *at == '\r') ++at;
  if (at < afterKeyword.end && *at == '\n') ++at;
  return at;
}

Value MakeStream(Document& doc, Cursor& cursor, const Value& dict, std::uint32_t parent) {
  const char* start = DataStart(cursor);
  if (start == cursor.at || start[-1] != '\n') {
    Warn(doc, "The data of a stream do not start on a line of their own.", cursor.object,
         OffsetOf(cursor));
    MarkMended(doc, cursor.object);
  }
  const std::uint32_t number = NewCell(doc.cells, CellKind::kStream);
  Cell& cell = CellAt(doc.cells, number);
  auto* body = AllocateArray<StreamBody>(doc.pool, 1);
  *body = StreamBody{start, 0, false, false};
  cell.parent = parent;
  cell.capacity = dict.payload;
  cell.data = body;
  CellAt(doc.cells, dict.payload).parent = number;
  return CellValue(number);
}

// The generation in the object's own header; none when it does not stand where the
// cross-references say.
std::optional<std::uint16_t> GenerationInFile(const Document& doc, std::uint32_t number,
                                              const ObjectSlot& slot) {
  Cursor cursor = CursorAt(doc, slot.position, number);
  std::uint16_t generation = 0;
  if (TakeObjectHeader(cursor, &generation) != number) return std::nullopt;
  return generation;
}

void WarnOfGeneration(Document& doc, std::uint32_t number, const ObjectSlot& slot) {
  Warn(doc,
       "Object " + std::to_string(number) +
           " has another generation than the cross-references give it.",
       number, FileOffset(doc, slot.position));
}

// Whether a reference with this generation means the object: its own header may say so where the
// cross-references do not.
bool HasGeneration(Document& doc, std::uint32_t number, ObjectSlot& slot,
                   std::uint16_t generation) {
  if (slot.generation == generation) return true;
  if (slot.state != SlotState::kInFile || slot.loaded || slot.changed) return false;
  if (GenerationInFile(doc, number, slot) != generation) return false;
  WarnOfGeneration(doc, number, slot);
  slot.generation = generation;
  // Readers that look for what the table lists find nothing: an update could not mend it.
  doc.startXref.reset();
  return true;
}

// False when another object, or none, stands where the cross-references say.
bool ParseInFile(Document& doc, std::uint32_t number, ObjectSlot& slot, Value* value) {
  std::uint32_t found = 0;
  Value parsed = kNullValue;
  const auto generation = GenerationInFile(doc, number, slot);
  if (!generation || !ParseObjectAt(doc, slot.position, &found, &parsed)) return false;
  if (*generation != slot.generation) {
    WarnOfGeneration(doc, number, slot);
    // No reference decided, and they name the first generation almost always.
    slot.generation = std::min(slot.generation, *generation);
    slot.mended = slot.misplaced = true;
  }
  *value = parsed;
  return true;
}

// An update that is cut off leaves half an object behind the whole one.
bool ParseNewest(Document& doc, std::uint32_t number, ObjectSlot& slot, Value* value) {
  try {
    return ParseInFile(doc, number, slot, value);
  } catch (const HostFailure& failure) {
    const auto older = doc.older.find(number);
    if (failure.code != kErrorBadObject || older == doc.older.end()) throw;
    Warn(doc, std::string(failure.what()) + " The version before it was taken.", number,
         failure.offset);
    slot.position = older->second.position;
    slot.generation = older->second.generation;
    doc.older.erase(older);
  }
  return ParseInFile(doc, number, slot, value);
}

std::size_t MemberIndex(Document& doc, std::uint32_t number, std::uint32_t container,
                        ObjectSlot& slot) {
  const auto& members = ObjectStreamOf(doc, container).members;
  const auto index = static_cast<std::uint32_t>(slot.position);
  if (index < members.size() && members[index].number == number) return index;
  // The last one counts, as among the objects of a file.
  const auto found = std::find_if(members.rbegin(), members.rend(),
                                  [number](const auto& member) { return member.number == number; });
  const std::int64_t offset = ObjectOffset(doc, container);
  if (found == members.rend()) {
    Fail(kErrorBadObject,
         "Object " + std::to_string(number) + " is not in the object stream " +
             std::to_string(container) + " that should hold it.",
         number, offset);
  }
  Warn(doc,
       "Object " + std::to_string(number) + " has another place in the object stream " +
           std::to_string(container) + " than the cross-references give it.",
       number, offset);
  const auto place = static_cast<std::size_t>(members.rend() - found - 1);
  slot.position = std::uint64_t{container} << 32 | place;
  slot.misplaced = true;
  return place;
}

Cursor MemberCursor(Document& doc, std::uint32_t number, ObjectSlot& slot) {
  const auto container = static_cast<std::uint32_t>(slot.position >> 32);
  const std::size_t index = MemberIndex(doc, number, container, slot);
  const ObjectStream& stream = ObjectStreamOf(doc, container);
  return {stream.bytes.data() + stream.members[index].start,
          stream.bytes.data() + stream.bytes.size(), number, nullptr, ObjectOffset(doc, container)};
}

Value ParseObject(Document& doc, std::uint32_t number, ObjectSlot& slot) {
  Value value = kNullValue;
  if (slot.state == SlotState::kInFile && !ParseNewest(doc, number, slot, &value)) {
    const std::int64_t offset = FileOffset(doc, slot.position);
    const std::string text = "Object " + std::to_string(number) + " is not at byte " +
                             std::to_string(offset) + ", where the cross-references have it.";
    Warn(doc, text, number, offset);
    if (!doc.scanned) ScanDocument(doc);
    if (slot.state == SlotState::kInFile) ParseNewest(doc, number, slot, &value);
  }
  if (slot.state == SlotState::kCompressed) {
    Cursor cursor = MemberCursor(doc, number, slot);
    value = ParseValue(doc, cursor, kIndirectParent | number);
  }
  // An object that is only a reference is not allowed; following it could go in circles.
  return value.tag == ValueTag::kReference ? kNullValue : value;
}

// One object that cannot be read must not keep all others from being used.
Value ParseIfReadable(Document& doc, std::uint32_t number, ObjectSlot& slot) {
  const LoadingMark mark(slot);
  try {
    return ParseObject(doc, number, slot);
  } catch (const HostFailure& failure) {
    const bool bad = failure.code == kErrorBadObject || failure.code == kErrorBadStream;
    // Before there is a trailer, the key that reading it takes may not be known yet.
    if (!bad || doc.trailer == 0) throw;
    Warn(doc,
         std::string(failure.what()) + " Object " + std::to_string(number) + " is read as null.",
         failure.objectNumber, failure.offset);
    slot.unreadable = true;
    return kNullValue;
  }
}

void WarnOfMissingEnd(Document& doc, std::uint32_t number, std::uint64_t position) {
  Warn(doc, "Object " + std::to_string(number) + " has no end of its own.", number,
       FileOffset(doc, position));
}

std::string_view TextInFile(Document& doc, std::uint32_t number, const ObjectSlot& slot) {
  Cursor cursor = CursorAt(doc, slot.position, number);
  const char* start = cursor.at;
  std::uint16_t generation = 0;
  if (TakeObjectHeader(cursor, &generation) != number) return {};
  std::string_view word;
  try {
    word = SkipToKeyword(cursor);
  } catch (const HostFailure&) {
    // The object has been read: what is wrong stands behind its value.
    Spend(doc, static_cast<std::uint64_t>(cursor.at - start));
    WarnOfMissingEnd(doc, number, slot.position);
    return {};
  }
  if (word == "stream") {
    // Its end takes reading its dictionary.
    const std::uint32_t cell = CellOf(doc, LoadObject(doc, number), CellKind::kStream);
    if (cell == 0) {  // the word stands behind the end of something that is no stream
      WarnOfMissingEnd(doc, number, slot.position);
      return {};
    }
    const std::string_view data = FileBytes(doc, cell, number);
    if (BodyOf(CellAt(doc.cells, cell)).lengthWrong) return {};
    cursor.at = data.data() + data.size();
    TakeKeyword(cursor, "endstream");
  }
  if (!TakeKeyword(cursor, "endobj")) {
    WarnOfMissingEnd(doc, number, slot.position);
    return {};
  }
  Spend(doc, static_cast<std::uint64_t>(cursor.at - start));
  return {start, static_cast<std::size_t>(cursor.at - start)};
}

std::string_view MemberText(Document& doc, std::uint32_t number, ObjectSlot& slot) {
  Cursor cursor = MemberCursor(doc, number, slot);
  const char* start = cursor.at;
  SkipOneValue(cursor);
  Spend(doc, static_cast<std::uint64_t>(cursor.at - start));
  return {start, static_cast<std::size_t>(cursor.at - start)};
}

}  // namespace

Value LoadObject(Document& doc, std::uint32_t number) {
  ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot == nullptr || !InUse(*slot)) return kNullValue;
  if (slot->loaded) return slot->value;
  if (slot->loading) {
    Fail(kErrorBadObject, "Object " + std::to_string(number) + " is needed to read itself.", number,
         ObjectOffset(doc, number));
  }
  slot->value = ParseIfReadable(doc, number, *slot);
  if (doc.protection) DecryptStrings(doc, number, slot->value);
  slot->loaded = true;
  return slot->value;
}

Value ReadAnew(Document& doc, std::uint32_t number) {
  ObjectSlot& slot = *FindSlot(doc.objects, number);
  const Value value = ParseObject(doc, number, slot);
  if (doc.protection) DecryptStrings(doc, number, value);
  return value;
}

bool ParseObjectAt(Document& doc, std::uint64_t position, std::uint32_t* number, Value* value) {
  Cursor cursor = CursorAt(doc, position, 0);
  std::uint16_t generation = 0;
  const auto found = TakeObjectHeader(cursor, &generation);
  if (!found) return false;
  *number = cursor.object = *found;
  *value = kNullValue;
  // An object without a value is read as null; some producers write them.
  if (TakeKeyword(cursor, "endobj")) {
    Warn(doc, "Object " + std::to_string(*found) + " is empty and read as null.", *found,
         FileOffset(doc, position));
    MarkMended(doc, *found);
    return true;
  }
  const std::uint32_t parent = kIndirectParent | *found;
  *value = ParseValue(doc, cursor, parent);
  if (value->tag == ValueTag::kCell && CellAt(doc.cells, value->payload).kind == CellKind::kDict &&
      TakeKeyword(cursor, "stream")) {
    *value = MakeStream(doc, cursor, *value, parent);
  } else if (!TakeKeyword(cursor, "endobj")) {
    WarnOfMissingEnd(doc, *found, position);
    MarkMended(doc, *found);
  }
  return true;
}

Value Dereference(Document& doc, const Value& value) {
  if (value.tag != ValueTag::kReference) return value;
  const std::uint32_t number = value.payload;
  ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot == nullptr || !InUse(*slot)) {
    if (!AdoptObject(doc, number)) return kNullValue;
    slot = FindSlot(doc.objects, number);
  }
  if (!HasGeneration(doc, number, *slot, value.generation)) return kNullValue;
  return LoadObject(doc, number);
}

std::string_view ObjectText(Document& doc, std::uint32_t number) {
  ObjectSlot* slot = FindSlot(doc.objects, number);
  const bool loadedBefore = slot->loaded;
  // Reading it tells whether it can be read.
  LoadObject(doc, number);
  std::string_view text;
  const bool copied = !slot->mended && !slot->unreadable;
  if (copied && slot->state == SlotState::kCompressed) {
    text = MemberText(doc, number, *slot);
  } else if (copied && slot->state == SlotState::kInFile) {
    text = TextInFile(doc, number, *slot);
  }
  if (!loadedBefore && slot->loaded) {
    // A save of a large file must not keep all of it in memory.
    if (slot->value.tag == ValueTag::kCell) FreeCellTree(doc.cells, doc.pool, slot->value.payload);
    slot->value = kNullValue;
    slot->loaded = false;
  }
  return text;
}

}  // namespace quillon::objects
