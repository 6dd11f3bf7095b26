#include "quillon/objects/load.h"

#include <cstring>

#include "quillon/objects/characters.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/scanner.h"
#include "quillon/objects/security_handler.h"

namespace quillon::objects {
namespace {

struct LoadingMark {
  ObjectSlot& slot;
  explicit LoadingMark(ObjectSlot& marked) : slot(marked) { slot.loading = true; }
  ~LoadingMark() { slot.loading = false; }
  LoadingMark(const LoadingMark&) = delete;
  LoadingMark& operator=(const LoadingMark&) = delete;
};

// Past the end of the line that the keyword "stream" stands on. A lone CR is what some producers
// write; it is taken as the line end.
const char* DataStart(const Cursor& afterKeyword) {
  const char* at = afterKeyword.at;
  if (at < afterKeyword.end && *at == '\r') ++at;
  if (at < afterKeyword.end && *at == '\n') ++at;
  return at;
}

Value MakeStream(Document& doc, Cursor& cursor, const Value& dict, std::uint32_t parent) {
  const std::uint32_t number = NewCell(doc.cells, CellKind::kStream);
  Cell& cell = CellAt(doc.cells, number);
  auto* body = AllocateArray<StreamBody>(doc.pool, 1);
  *body = StreamBody{DataStart(cursor), 0, false, false};
  cell.parent = parent;
  cell.capacity = dict.payload;
  cell.data = body;
  CellAt(doc.cells, dict.payload).parent = number;
  return CellValue(number);
}

// False when another object, or none, stands where the cross-references say.
bool ParseInFile(Document& doc, std::uint32_t number, const ObjectSlot& slot, Value* value) {
  std::uint32_t found = 0;
  Value parsed = kNullValue;
  Cursor cursor = CursorAt(doc, slot.position, number);
  std::uint16_t generation = 0;
  if (TakeObjectHeader(cursor, &generation) != number) return false;
  if (!ParseObjectAt(doc, slot.position, &found, &parsed)) return false;
  *value = parsed;
  return true;
}

Cursor MemberCursor(Document& doc, std::uint32_t number, const ObjectSlot& slot) {
  const auto container = static_cast<std::uint32_t>(slot.position >> 32);
  const auto index = static_cast<std::uint32_t>(slot.position);
  const ObjectStream& stream = ObjectStreamOf(doc, container);
  const ObjectStream::Member* member = nullptr;
  if (index < stream.members.size() && stream.members[index].number == number) {
    member = &stream.members[index];
  } else {
    for (const ObjectStream::Member& other : stream.members) {
      if (other.number == number) member = &other;
    }
  }
  const std::int64_t offset = ObjectOffset(doc, container);
  if (member == nullptr) {
    Fail(kErrorBadObject,
         "Object " + std::to_string(number) + " is not in the object stream " +
             std::to_string(container) + " that should hold it.",
         number, offset);
  }
  return {stream.bytes.data() + member->start, stream.bytes.data() + stream.bytes.size(), number,
          nullptr, offset};
}

Value ParseObject(Document& doc, std::uint32_t number, ObjectSlot& slot) {
  Value value = kNullValue;
  if (slot.state == SlotState::kInFile && !ParseInFile(doc, number, slot, &value)) {
    const std::int64_t offset = FileOffset(doc, slot.position);
    const std::string text = "Object " + std::to_string(number) + " is not at byte " +
                             std::to_string(offset) + ", where the cross-references have it.";
    Warn(doc, text, number, offset);
    if (!doc.scanned) ScanDocument(doc);
    if (slot.state == SlotState::kInFile) ParseInFile(doc, number, slot, &value);
  }
  if (slot.state == SlotState::kCompressed) {
    Cursor cursor = MemberCursor(doc, number, slot);
    value = ParseValue(doc, cursor, kIndirectParent | number);
  }
  // An object that is only a reference is not allowed; following it could go in circles.
  return value.tag == ValueTag::kReference ? kNullValue : value;
}

// What stands in the file is not copied into the next one.
void MarkMended(Document& doc, std::uint32_t number) {
  if (ObjectSlot* slot = FindSlot(doc.objects, number)) slot->mended = true;
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

std::string_view MemberText(Document& doc, std::uint32_t number, const ObjectSlot& slot) {
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
  {
    const LoadingMark mark(*slot);
    slot->value = ParseObject(doc, number, *slot);
  }
  if (doc.protection) DecryptStrings(doc, number, slot->value);
  slot->loaded = true;
  return slot->value;
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
  const ObjectSlot* slot = FindSlot(doc.objects, value.payload);
  if (slot == nullptr || !InUse(*slot) || slot->generation != value.generation) return kNullValue;
  return LoadObject(doc, value.payload);
}

std::string_view ObjectText(Document& doc, std::uint32_t number) {
  ObjectSlot* slot = FindSlot(doc.objects, number);
  const bool loadedBefore = slot->loaded;
  // Reading it tells whether it can be read.
  LoadObject(doc, number);
  std::string_view text;
  if (!slot->mended && slot->state == SlotState::kCompressed) {
    text = MemberText(doc, number, *slot);
  } else if (!slot->mended && slot->state == SlotState::kInFile) {
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

Value EntryValue(Document& doc, std::uint32_t dictCell, NameCode key) {
  Cell& dict = CellAt(doc.cells, dictCell);
  const DictEntry* entries = EntriesOf(dict);
  for (std::uint32_t i = dict.size; i > 0; --i) {
    if (entries[i - 1].key == key) return entries[i - 1].value;
  }
  return kNullValue;
}

Value EntryValue(Document& doc, std::uint32_t dictCell, std::string_view key) {
  return EntryValue(doc, dictCell, NameFromText(doc, key));
}

bool ReadInteger(Document& doc, const Value& value, std::int32_t* integer) {
  if (value.tag == ValueTag::kInteger) {
    *integer = static_cast<std::int32_t>(value.payload);
    return true;
  }
  if (value.tag != ValueTag::kCell) return false;
  const Cell& cell = CellAt(doc.cells, value.payload);
  if (cell.kind != CellKind::kInteger) return false;
  *integer = static_cast<std::int32_t>(cell.capacity);
  return true;
}

std::int32_t IntegerEntry(Document& doc, std::uint32_t dictCell, std::string_view key,
                          std::int32_t otherwise) {
  std::int32_t integer = otherwise;
  ReadInteger(doc, Dereference(doc, EntryValue(doc, dictCell, key)), &integer);
  return integer;
}

std::uint32_t CellOf(Document& doc, const Value& value, CellKind kind) {
  const Value target = Dereference(doc, value);
  if (target.tag != ValueTag::kCell) return 0;
  return CellAt(doc.cells, target.payload).kind == kind ? target.payload : 0;
}

// Those of encrypted objects were decrypted when the object was read.
std::string_view StringBytes(Document& doc, std::uint32_t stringCell) {
  Cell& cell = CellAt(doc.cells, stringCell);
  if (cell.raw) {
    const std::string decoded = DecodeStringText({TextOf(cell), cell.size});
    auto* bytes = AllocateArray<char>(doc.pool, decoded.size() + 1);
    std::memcpy(bytes, decoded.c_str(), decoded.size() + 1);
    cell.raw = false;
    cell.owned = true;
    cell.size = static_cast<std::uint32_t>(decoded.size());
    cell.capacity = cell.size + 1;
    cell.data = bytes;
  }
  return {TextOf(cell), cell.size};
}

std::string FirstFileId(Document& doc, std::uint32_t trailer) {
  const std::uint32_t array = CellOf(doc, EntryValue(doc, trailer, "ID"), CellKind::kArray);
  if (array == 0 || CellAt(doc.cells, array).size == 0) return {};
  const Value first = ElementsOf(CellAt(doc.cells, array))[0];
  const std::uint32_t string = CellOf(doc, first, CellKind::kString);
  return string == 0 ? std::string() : std::string(StringBytes(doc, string));
}

}  // namespace quillon::objects
