#include "quillon/objects/scanner.h"

#include <algorithm>
#include <optional>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/file_parts.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/security_handler.h"
#include "quillon/objects/xref_reader.h"

namespace quillon::objects {
namespace {

// Each update of a file adds a trailer. Older ones than these tell nothing that the newest do not.
constexpr std::size_t kMaxTrailers = 32;

// What was read or changed already stays what it is.
bool IsSettled(const ObjectSlot& slot) {
  return slot.loaded || slot.loading || slot.changed || slot.state == SlotState::kNew;
}

void ForgetEntries(Document& doc) {
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    ObjectSlot* slot = FindSlot(doc.objects, number);
    if (IsSettled(*slot) && !slot->loading) continue;
    slot->state = SlotState::kUnknown;
  }
}

void EnterFound(Document& doc, const FoundObject& found) {
  ObjectSlot& slot = SlotFor(doc.objects, found.number);
  if (IsSettled(slot) && !slot.loading) return;
  if (slot.state == SlotState::kInFile) {
    if (found.cutOff) {
      return Warn(doc,
                  "The file is cut off in the stream " + std::to_string(found.number) +
                      "; the version before it was taken.",
                  found.number, FileOffset(doc, found.position));
    }
    doc.older.insert_or_assign(found.number, ObjectPlace{slot.position, slot.generation});
  }
  slot.state = SlotState::kInFile;
  slot.position = found.position;
  slot.generation = found.generation;
}

// Members of an object stream count unless the object was written again behind the stream.
void EnterMembers(Document& doc, const FoundObject& container) {
  const ObjectSlot* holder = FindSlot(doc.objects, container.number);
  if (holder == nullptr || holder->position != container.position) return;
  const ObjectStream& stream = ObjectStreamOf(doc, container.number);
  for (std::size_t i = 0; i < stream.members.size(); ++i) {
    const std::uint32_t number = stream.members[i].number;
    if (number == 0) continue;
    ObjectSlot& slot = SlotFor(doc.objects, number);
    if (IsSettled(slot) && !slot.loading) continue;
    if (slot.state == SlotState::kInFile && slot.position > container.position) continue;
    if (container.cutOff && InUse(slot)) continue;
    slot.state = SlotState::kCompressed;
    slot.position = std::uint64_t{container.number} << 32 | i;
    slot.generation = 0;
  }
}

void EnterAllMembers(Document& doc, const FileParts& parts) {
  for (const FoundObject& container : parts.objectStreams) {
    try {
      EnterMembers(doc, container);
    } catch (const HostFailure& failure) {
      if (failure.code == kErrorBadFile) throw;
      Warn(doc, failure.what(), container.number, FileOffset(doc, container.position));
    }
    const ObjectSlot* slot = FindSlot(doc.objects, container.number);
    if (slot != nullptr && InUse(*slot)) doc.xrefStream = true;
  }
}

// The dictionary at a place, a trailer's or a cross-reference stream's; 0 when none can be read.
std::uint32_t TrailerAt(Document& doc, std::uint64_t position) {
  try {
    Cursor cursor = CursorAt(doc, position, 0);
    std::uint32_t number = 0;
    Value value = kNullValue;
    if (!ParseObjectAt(doc, position, &number, &value)) {
      return CellOf(doc, ParseValue(doc, cursor, kIndirectParent), CellKind::kDict);
    }
    const std::uint32_t stream = CellOf(doc, value, CellKind::kStream);
    return stream == 0 ? 0 : CellAt(doc.cells, stream).capacity;
  } catch (const HostFailure& failure) {
    if (failure.code == kErrorBadFile) throw;
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
    return 0;
  }
}

bool IsXrefStream(Document& doc, const FoundObject& found) {
  const std::uint32_t dict = TrailerAt(doc, found.position);
  return dict != 0 && TypeIs(doc, dict, "XRef");
}

void EnterObjects(Document& doc, const FileParts& parts) {
  for (const FoundObject& found : parts.objects) EnterFound(doc, found);
  // They only looked like it: an object without an end of its own runs into the next one's text.
  for (const FoundObject& found : parts.xrefStreams) {
    ObjectSlot& slot = SlotFor(doc.objects, found.number);
    if (slot.position == found.position && IsXrefStream(doc, found)) slot.structure = true;
  }
}

// The newest first. In a file that has both kinds, the trailers come first: they are later or
// equal.
std::vector<std::uint32_t> ReadTrailers(Document& doc, const FileParts& parts) {
  std::vector<std::uint32_t> dicts;
  const auto add = [&](std::uint64_t position) {
    if (dicts.size() >= kMaxTrailers) return;
    const std::uint32_t dict = TrailerAt(doc, position);
    if (dict != 0) dicts.push_back(dict);
  };
  const std::size_t tried = std::min(parts.trailers.size(), kMaxTrailers);
  for (std::size_t i = 1; i <= tried; ++i) add(parts.trailers[parts.trailers.size() - i]);
  for (std::size_t i = parts.xrefStreams.size(); i > 0; --i) {
    add(parts.xrefStreams[i - 1].position);
  }
  return dicts;
}

// The dictionary that an object is; 0 for others and for what cannot be read.
std::uint32_t DictOf(Document& doc, std::uint32_t number) {
  try {
    return CellOf(doc, LoadObject(doc, number), CellKind::kDict);
  } catch (const HostFailure& failure) {
    if (failure.code == kErrorBadFile) throw;
    return 0;
  }
}

bool LooksLikeCatalog(Document& doc, std::uint32_t number) {
  const std::uint32_t dict = DictOf(doc, number);
  if (dict == 0) return false;
  if (!doc.isPdf) return EntryValue(doc, dict, "FDF") != kNullValue;
  return TypeIs(doc, dict, "Catalog");
}

std::uint32_t FindCatalog(Document& doc) {
  const std::vector<std::uint32_t> numbers = SlotNumbers(doc.objects);
  const auto found = std::find_if(numbers.rbegin(), numbers.rend(), [&doc](std::uint32_t number) {
    return LooksLikeCatalog(doc, number);
  });
  if (found != numbers.rend()) return *found;
  Fail(kErrorBadFile, "The file has no catalog: nothing says where its contents start.");
}

// A trailer for the last object that looks like a catalog, with what older ones say besides.
std::uint32_t MakeTrailer(Document& doc, const std::vector<std::uint32_t>& trailers) {
  const std::uint32_t number = FindCatalog(doc);
  Warn(doc, "No trailer names the catalog; object " + std::to_string(number) + " looks like one.",
       number, ObjectOffset(doc, number));
  const std::uint32_t dict = NewCell(doc.cells, CellKind::kDict);
  const std::uint16_t generation = FindSlot(doc.objects, number)->generation;
  SetEntry(doc, dict, NameFromText(doc, "Root"), ReferenceTo(number, generation));
  for (const std::string_view key : {"Encrypt", "ID", "Info"}) {
    for (const std::uint32_t trailer : trailers) {
      const Value value = EntryValue(doc, trailer, key);
      if (value == kNullValue) continue;
      SetEntry(doc, dict, NameFromText(doc, key), value);
      break;
    }
  }
  return dict;
}

// Of a trailer that is cut off, the file's ID may be left: an array whose first string is whole; 0
// when there is none.
std::uint32_t FindFileId(Document& doc) {
  constexpr std::string_view kKey = "/ID";
  const std::size_t place = doc.text.rfind(kKey);
  if (place == std::string_view::npos) return 0;
  Cursor cursor = CursorAt(doc, place + kKey.size(), 0);
  SkipSpace(cursor);
  if (cursor.at == cursor.end || *cursor.at != '[') return 0;
  ++cursor.at;
  try {
    const Value first = ParseValue(doc, cursor, kIndirectParent);
    if (CellOf(doc, first, CellKind::kString) == 0) return 0;
    const std::uint32_t array = NewCell(doc.cells, CellKind::kArray);
    InsertElement(doc, array, 0, first);
    return array;
  } catch (const HostFailure& failure) {
    if (failure.code == kErrorBadFile) throw;
    return 0;
  }
}

// Of an encrypted file whose trailer is lost, the encryption dictionary may still be there.
std::uint32_t FindEncryption(Document& doc, const FileParts& parts) {
  const std::size_t place = doc.text.rfind("/Standard");
  const FoundObject* holder = nullptr;
  for (const FoundObject& found : parts.objects) {
    if (place != std::string_view::npos && found.position < place) holder = &found;
  }
  if (holder == nullptr) return 0;
  const std::uint32_t object = DictOf(doc, holder->number);
  for (const std::string_view key : {"Filter", "O", "U", "P", "R"}) {
    if (object == 0 || EntryValue(doc, object, key) == kNullValue) return 0;
  }
  const std::uint32_t trailer = NewCell(doc.cells, CellKind::kDict);
  SetEntry(doc, trailer, NameFromText(doc, "Encrypt"),
           ReferenceTo(holder->number, holder->generation));
  const std::uint32_t id = FindFileId(doc);
  if (id != 0) SetEntry(doc, trailer, NameFromText(doc, "ID"), CellValue(id));
  return trailer;
}

std::uint32_t ChooseTrailer(Document& doc, const std::vector<std::uint32_t>& trailers) {
  for (const std::uint32_t trailer : trailers) {
    if (NamesCatalog(doc, trailer)) return trailer;
  }
  return MakeTrailer(doc, trailers);
}

// What is written is encrypted as what was read, so that the trailer must say how.
void TakeEncryption(Document& doc, std::uint32_t from, std::uint32_t to) {
  if (from == to) return;
  for (const char* name : {"Encrypt", "ID"}) {
    const NameCode key = NameFromText(doc, name);
    const Value value = EntryValue(doc, from, key);
    RemoveEntry(doc, to, key);
    if (value != kNullValue) SetEntry(doc, to, key, value);
  }
}

}  // namespace

bool NamesCatalog(Document& doc, std::uint32_t trailer) {
  try {
    const std::uint32_t root = CellOf(doc, EntryValue(doc, trailer, "Root"), CellKind::kDict);
    if (root == 0 || !doc.isPdf) return root != 0;
    return EntryValue(doc, root, "Pages") != kNullValue || TypeIs(doc, root, "Catalog");
  } catch (const HostFailure& failure) {
    if (failure.code == kErrorBadFile) throw;
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
    return false;
  }
}

void ScanDocument(Document& doc) {
  doc.scanned = true;
  ForgetEntries(doc);
  const FileParts parts = ReadThrough(doc);
  EnterObjects(doc, parts);
  if (doc.trailer != 0) return EnterAllMembers(doc, parts);
  // Object streams of an encrypted file cannot be read before its key is known.
  std::vector<std::uint32_t> trailers = ReadTrailers(doc, parts);
  if (trailers.empty()) {
    const std::uint32_t encryption = FindEncryption(doc, parts);
    if (encryption != 0) trailers.push_back(encryption);
  }
  std::uint32_t encrypted = 0;
  for (const std::uint32_t trailer : trailers) {
    if (encrypted == 0 && PrepareDecryption(doc, trailer)) encrypted = trailer;
  }
  EnterAllMembers(doc, parts);
  const std::uint32_t trailer = ChooseTrailer(doc, trailers);
  if (encrypted != 0) TakeEncryption(doc, encrypted, trailer);
  AdoptTrailer(doc, trailer);
}

}  // namespace quillon::objects
