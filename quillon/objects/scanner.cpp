#include "quillon/objects/scanner.h"

#include <optional>

#include "quillon/objects/characters.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/xref_reader.h"

namespace quillon::objects {
namespace {

constexpr std::string_view kEndStream = "endstream";

struct FoundObject {
  std::uint32_t number;
  std::uint16_t generation;
  std::uint64_t position;
};

struct Findings {
  std::vector<FoundObject> objects;
  std::vector<FoundObject> objectStreams;
  std::vector<FoundObject> xrefStreams;
  std::vector<std::uint64_t> trailers;  // after the keyword
};

// Backwards over an unsigned number and the white space before it.
bool StepBackOverNumber(std::string_view text, std::size_t* at) {
  std::size_t end = *at;
  while (end > 0 && IsSpace(text[end - 1])) --end;
  std::size_t start = end;
  while (start > 0 && IsDecimalDigit(text[start - 1])) --start;
  if (start == end) return false;
  *at = start;
  return true;
}

std::optional<FoundObject> HeaderEndingAt(const Document& doc, std::size_t keyword) {
  std::size_t start = keyword;
  if (!StepBackOverNumber(doc.text, &start) || !StepBackOverNumber(doc.text, &start)) {
    return std::nullopt;
  }
  Cursor cursor = CursorAt(doc, start, 0);
  std::uint16_t generation = 0;
  const auto number = TakeObjectHeader(cursor, &generation);
  if (!number) return std::nullopt;
  return FoundObject{*number, generation, start};
}

bool IsAt(std::string_view text, std::size_t at, std::string_view word) {
  return text.compare(at, word.size(), word) == 0;
}

// Where the data of a stream end by a direct Length in `dict`; npos when that leads nowhere.
std::size_t DataEndByLength(const Document& doc, std::string_view dict, std::size_t data) {
  const std::size_t key = dict.rfind("/Length");
  if (key == std::string_view::npos) return key;
  Cursor cursor =
      CursorAt(doc, static_cast<std::size_t>(dict.data() - doc.text.data()) + key + 7, 0);
  const auto length = TakeUnsigned(cursor);
  if (!length || *length > doc.text.size() - data) return std::string_view::npos;
  const std::size_t after = data + static_cast<std::size_t>(*length);
  Cursor end = CursorAt(doc, after, 0);
  while (end.at < end.end && IsSpace(*end.at)) ++end.at;
  return TakeKeyword(end, kEndStream) ? after : std::string_view::npos;
}

// At the keyword "stream": notes what kind of stream it is; answers where to go on.
std::size_t PassStream(const Document& doc, std::size_t keyword, Findings* findings) {
  const std::size_t after = keyword + 6;
  if (findings->objects.empty() || after >= doc.text.size() ||
      (doc.text[after] != '\r' && doc.text[after] != '\n')) {
    return after;
  }
  const FoundObject& object = findings->objects.back();
  const auto start = static_cast<std::size_t>(object.position);
  const std::string_view dict = doc.text.substr(start, keyword - start);
  if (dict.find("/ObjStm") != std::string_view::npos) findings->objectStreams.push_back(object);
  if (dict.find("/XRef") != std::string_view::npos) findings->xrefStreams.push_back(object);
  const bool crLf = doc.text[after] == '\r' && IsAt(doc.text, after + 1, "\n");
  const std::size_t data = after + (crLf ? 2 : 1);
  std::size_t end = DataEndByLength(doc, dict, data);
  if (end == std::string_view::npos) end = data;
  end = doc.text.find(kEndStream, end);
  return end == std::string_view::npos ? data : end + kEndStream.size();
}

Findings ReadThrough(const Document& doc) {
  Findings findings;
  const std::string_view text = doc.text;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (c == 'o' && IsAt(text, at, "obj")) {
      if (const auto found = HeaderEndingAt(doc, at)) findings.objects.push_back(*found);
      at += 3;
    } else if (c == 's' && IsAt(text, at, "stream")) {
      at = PassStream(doc, at, &findings);
    } else if (c == 't' && IsAt(text, at, "trailer")) {
      at += 7;
      findings.trailers.push_back(at);
    } else {
      ++at;
    }
  }
  return findings;
}

// What was read or changed already stays what it is.
bool IsSettled(const ObjectSlot& slot) {
  return slot.loaded || slot.loading || slot.changed || slot.state == SlotState::kNew;
}

void ForgetEntries(Document& doc) {
  for (std::uint32_t number = 1; number < doc.objects.count; ++number) {
    ObjectSlot* slot = FindSlot(doc.objects, number);
    if (slot == nullptr || (IsSettled(*slot) && !slot->loading)) continue;
    slot->state = SlotState::kUnknown;
  }
}

void EnterFound(Document& doc, const FoundObject& found) {
  ObjectSlot& slot = SlotFor(doc.objects, found.number);
  if (IsSettled(slot) && !slot.loading) return;
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
    slot.state = SlotState::kCompressed;
    slot.position = std::uint64_t{container.number} << 32 | i;
    slot.generation = 0;
  }
}

void EnterObjects(Document& doc, const Findings& findings) {
  for (const FoundObject& found : findings.objects) EnterFound(doc, found);
  for (const FoundObject& found : findings.xrefStreams) {
    ObjectSlot& slot = SlotFor(doc.objects, found.number);
    if (slot.position == found.position) slot.structure = true;
  }
  for (const FoundObject& container : findings.objectStreams) {
    try {
      EnterMembers(doc, container);
    } catch (const HostFailure& failure) {
      Warn(doc, failure.what(), container.number, FileOffset(doc, container.position));
    }
  }
}

// The dictionary at a place, when it names a catalog; 0 otherwise.
std::uint32_t TrailerAt(Document& doc, std::uint64_t position) {
  try {
    Cursor cursor = CursorAt(doc, position, 0);
    std::uint32_t number = 0;
    Value value = kNullValue;
    std::uint32_t dict = 0;
    if (ParseObjectAt(doc, position, &number, &value)) {
      const std::uint32_t stream = CellOf(doc, value, CellKind::kStream);
      if (stream != 0) dict = CellAt(doc.cells, stream).capacity;
    } else {
      dict = CellOf(doc, ParseValue(doc, cursor, kIndirectParent), CellKind::kDict);
    }
    if (dict == 0 || EntryValue(doc, dict, "Root").tag == ValueTag::kNull) return 0;
    return dict;
  } catch (const HostFailure& failure) {
    Warn(doc, failure.what(), failure.objectNumber, failure.offset);
    return 0;
  }
}

bool LooksLikeCatalog(Document& doc, std::uint32_t number) {
  try {
    const std::uint32_t dict = CellOf(doc, LoadObject(doc, number), CellKind::kDict);
    if (dict == 0) return false;
    if (!doc.isPdf) return CellOf(doc, EntryValue(doc, dict, "FDF"), CellKind::kDict) != 0;
    const Value type = Dereference(doc, EntryValue(doc, dict, "Type"));
    return type.tag == ValueTag::kName && NameText(doc, type.payload) == "Catalog";
  } catch (const HostFailure&) {
    return false;
  }
}

std::uint32_t TrailerForCatalog(Document& doc) {
  for (std::uint32_t number = doc.objects.count - 1; number > 0; --number) {
    if (!LooksLikeCatalog(doc, number)) continue;
    const std::uint32_t dict = NewCell(doc.cells, CellKind::kDict);
    const std::uint16_t generation = FindSlot(doc.objects, number)->generation;
    SetEntry(doc, dict, NameFromText(doc, "Root"), ReferenceTo(number, generation));
    return dict;
  }
  return 0;
}

void FindTrailer(Document& doc, const Findings& findings) {
  std::uint32_t dict = 0;
  auto trailer = findings.trailers.rbegin();
  for (; dict == 0 && trailer != findings.trailers.rend(); ++trailer) {
    dict = TrailerAt(doc, *trailer);
  }
  auto stream = findings.xrefStreams.rbegin();
  for (; dict == 0 && stream != findings.xrefStreams.rend(); ++stream) {
    dict = TrailerAt(doc, stream->position);
  }
  if (dict == 0) dict = TrailerForCatalog(doc);
  if (dict == 0) {
    Fail(kErrorBadFile, "The file has no catalog: nothing says where its contents start.");
  }
  AdoptTrailer(doc, dict);
}

}  // namespace

void ScanDocument(Document& doc) {
  doc.scanned = true;
  ForgetEntries(doc);
  const Findings findings = ReadThrough(doc);
  EnterObjects(doc, findings);
  if (doc.trailer == 0) FindTrailer(doc, findings);
  for (const FoundObject& found : findings.objectStreams) {
    const ObjectSlot* slot = FindSlot(doc.objects, found.number);
    if (slot != nullptr && InUse(*slot)) doc.xrefStream = true;
  }
}

}  // namespace quillon::objects
