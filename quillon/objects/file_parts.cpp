#include "quillon/objects/file_parts.h"

#include <algorithm>
#include <optional>

#include "quillon/objects/characters.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/stream_extent.h"

namespace quillon::objects {
namespace {

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

// The entry Length, not Length1 and the like; npos when there is none.
std::size_t FindLength(std::string_view dict) {
  constexpr std::string_view kKey = "/Length";
  std::size_t key = dict.rfind(kKey);
  while (key != std::string_view::npos && key != 0 && key + kKey.size() < dict.size() &&
         IsRegular(dict[key + kKey.size()])) {
    key = dict.rfind(kKey, key - 1);
  }
  return key == std::string_view::npos ? key : key + kKey.size();
}

// A number, or the object of the file that holds it.
std::optional<std::uint64_t> TakeLength(const Document& doc, Cursor cursor) {
  const auto number = TakeUnsigned(cursor);
  if (!number || !TakeUnsigned(cursor) || !TakeKeyword(cursor, "R")) return number;
  const ObjectSlot* slot = FindSlot(doc.objects, static_cast<std::uint32_t>(*number));
  if (slot == nullptr || slot->state != SlotState::kInFile) return std::nullopt;
  Cursor holder = CursorAt(doc, slot->position, 0);
  std::uint16_t generation = 0;
  if (TakeObjectHeader(holder, &generation) != *number) return std::nullopt;
  return TakeUnsigned(holder);
}

// Where the data of a stream end by the Length in `dict`; npos when that leads nowhere.
std::size_t DataEndByLength(const Document& doc, std::string_view dict, std::size_t data) {
  const std::size_t place = FindLength(dict);
  if (place == std::string_view::npos) return place;
  const auto start = static_cast<std::size_t>(dict.data() - doc.text.data());
  const auto length = TakeLength(doc, CursorAt(doc, start + place, 0));
  if (!length || *length > doc.text.size() - data) return std::string_view::npos;
  const std::size_t after = data + static_cast<std::size_t>(*length);
  return EndStreamFollows(doc, after) ? after : std::string_view::npos;
}

// Whether "stream" is the keyword: "endstream" ends like it.
bool IsStreamKeyword(const Document& doc, std::size_t keyword) {
  const std::size_t after = keyword + 6;
  return after < doc.text.size() && (doc.text[after] == '\r' || doc.text[after] == '\n') &&
         (keyword == 0 || !IsRegular(doc.text[keyword - 1]));
}

// At the keyword "stream": notes what kind of stream it is; answers where to go on. An object has
// one stream: the word in data whose end was not found is none.
std::size_t PassStream(Document& doc, std::size_t keyword, FileParts* parts) {
  const std::size_t after = keyword + 6;
  if (!IsStreamKeyword(doc, keyword) || parts->objects.empty() || parts->objects.back().hasStream) {
    return after;
  }
  FoundObject& object = parts->objects.back();
  object.hasStream = true;
  const auto start = static_cast<std::size_t>(object.position);
  const std::string_view dict = doc.text.substr(start, keyword - start);
  const bool crLf = doc.text[after] == '\r' && IsAt(doc.text, after + 1, "\n");
  const std::size_t data = after + (crLf ? 2 : 1);
  std::size_t end = DataEndByLength(doc, dict, data);
  if (end == std::string_view::npos) {
    const StreamEnd found = SearchStreamEnd(doc, data);
    object.cutOff = !found.found;
    end = found.found ? found.data : data;
  }
  if (dict.find("/ObjStm") != std::string_view::npos) parts->objectStreams.push_back(object);
  if (dict.find("/XRef") != std::string_view::npos) parts->xrefStreams.push_back(object);
  return end;
}

// `at` is that of an "R".
void NoteReferenceEndingAt(std::string_view text, std::size_t at, std::vector<bool>* named) {
  std::size_t start = at;
  if (!StepBackOverNumber(text, &start) || !StepBackOverNumber(text, &start)) return;
  std::size_t number = 0;
  for (; number <= kMaxObjectNumber && IsDecimalDigit(text[start]); ++start) {
    number = number * 10 + static_cast<std::size_t>(text[start] - '0');
  }
  if (number > kMaxObjectNumber) return;
  if (number >= named->size()) named->resize(number + 1);
  (*named)[number] = true;
}

// Answers where to go on.
std::size_t PassCharacter(Document& doc, std::size_t at, FileParts* parts) {
  const std::string_view text = doc.text;
  switch (text[at]) {
    case 'o':
      if (!IsAt(text, at, "obj")) break;
      if (const auto found = HeaderEndingAt(doc, at)) parts->objects.push_back(*found);
      return at + 3;
    case 's':
      if (!IsAt(text, at, "stream")) break;
      return PassStream(doc, at, parts);
    case 't':
      if (!IsAt(text, at, "trailer")) break;
      parts->trailers.push_back(at + 7);
      return at + 7;
    case 'R':
      NoteReferenceEndingAt(text, at, &parts->named);
      break;
    default:
      break;
  }
  return at + 1;
}

}  // namespace

FileParts ReadThrough(Document& doc) {
  FileParts parts;
  for (std::size_t at = 0; at < doc.text.size();) at = PassCharacter(doc, at, &parts);
  return parts;
}

void NoteReferences(std::string_view text, std::vector<bool>* named) {
  for (std::size_t at = text.find('R'); at != std::string_view::npos; at = text.find('R', at + 1)) {
    NoteReferenceEndingAt(text, at, named);
  }
}

bool ObjectStartsAfter(const Document& doc, std::uint64_t position) {
  std::size_t at = doc.text.find("obj", static_cast<std::size_t>(position));
  for (; at != std::string_view::npos; at = doc.text.find("obj", at + 3)) {
    const auto found = HeaderEndingAt(doc, at);
    if (found && found->position >= position) return true;
  }
  return false;
}

}  // namespace quillon::objects
