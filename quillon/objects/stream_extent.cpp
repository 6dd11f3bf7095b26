#include "quillon/objects/stream_extent.h"

#include <algorithm>

#include "quillon/objects/characters.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/security_handler.h"

namespace quillon::objects {
namespace {

constexpr std::string_view kEndStream = "endstream";
constexpr std::string_view kEndObject = "endobj";

std::size_t FindEndStream(Document& doc, std::size_t start) {
  if (!doc.lastEndStream) doc.lastEndStream = doc.text.rfind(kEndStream);
  if (*doc.lastEndStream == std::string_view::npos || start > *doc.lastEndStream) {
    return std::string_view::npos;
  }
  return doc.text.find(kEndStream, start);
}

// "endobj" that another object follows, or the end of the file's objects: data may hold the word
// alone.
bool EndsAnObject(const Document& doc, std::size_t place) {
  Cursor cursor = CursorAt(doc, place + kEndObject.size(), 0);
  std::uint16_t generation = 0;
  return TakeObjectHeader(cursor, &generation).has_value() || TakeKeyword(cursor, "xref") ||
         TakeKeyword(cursor, "trailer") || TakeKeyword(cursor, "startxref");
}

std::size_t FindObjectEnd(const Document& doc, std::size_t start, std::size_t end) {
  const std::string_view text = doc.text.substr(0, end);
  std::size_t place = text.find(kEndObject, start);
  while (place != std::string_view::npos && !EndsAnObject(doc, place)) {
    place = text.find(kEndObject, place + kEndObject.size());
  }
  return place;
}

std::size_t BeforeLineEnd(const Document& doc, std::size_t start, std::size_t end) {
  if (end > start && doc.text[end - 1] == '\n') --end;
  if (end > start && doc.text[end - 1] == '\r') --end;
  return end;
}

// The end by Length; npos when that leads nowhere.
std::size_t EndByLength(Document& doc, std::size_t start, std::uint32_t dict) {
  std::int32_t length = -1;
  try {
    length = IntegerEntry(doc, dict, "Length", -1);
  } catch (const HostFailure&) {
    // A length that takes reading this very stream, or that cannot be read, is none.
  }
  if (length < 0 || doc.text.size() - start < static_cast<std::size_t>(length)) {
    return std::string_view::npos;
  }
  const std::size_t end = start + static_cast<std::size_t>(length);
  return EndStreamFollows(doc, end) ? end : std::string_view::npos;
}

std::size_t EndBySearch(Document& doc, std::size_t start, std::uint32_t number) {
  const std::int64_t offset = FileOffset(doc, start);
  const StreamEnd end = SearchStreamEnd(doc, start);
  const std::string which = "the stream " + std::to_string(number);
  if (end.found) {
    Warn(doc, "The length of " + which + " is wrong.", number, offset);
  } else {
    Warn(doc, "The file is cut off in " + which + ".", number, offset);
  }
  return end.data;
}

}  // namespace

StreamEnd SearchStreamEnd(Document& doc, std::size_t start) {
  const std::size_t word = FindEndStream(doc, start);
  const std::size_t limit = std::min(word, doc.text.size());
  const std::size_t object = FindObjectEnd(doc, start, limit);
  const std::size_t end = std::min(object, word);
  Spend(doc, std::min(end, doc.text.size()) - start);
  if (end == std::string_view::npos) return {doc.text.size(), false};
  return {BeforeLineEnd(doc, start, end), true};
}

bool EndStreamFollows(const Document& doc, std::size_t place) {
  while (place < doc.text.size() && IsSpace(doc.text[place])) ++place;
  return doc.text.compare(place, kEndStream.size(), kEndStream) == 0;
}

std::string_view FileBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number) {
  const Cell& cell = CellAt(doc.cells, streamCell);
  auto& body = *static_cast<StreamBody*>(cell.data);
  if (!body.lengthKnown) {
    const auto start = static_cast<std::size_t>(body.bytes - doc.text.data());
    std::size_t end = EndByLength(doc, start, cell.capacity);
    if (end == std::string_view::npos) {
      end = EndBySearch(doc, start, number);
      body.lengthWrong = true;
    }
    body.length = end - start;
    body.lengthKnown = true;
  }
  return {body.bytes, static_cast<std::size_t>(body.length)};
}

std::string_view StoredBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number) {
  const std::string_view bytes = FileBytes(doc, streamCell, number);
  const Cell& cell = CellAt(doc.cells, streamCell);
  auto& body = *static_cast<StreamBody*>(cell.data);
  if (!doc.protection || body.owned) return bytes;
  if (!body.decrypted) {
    const std::uint32_t own = cell.parent & ~kIndirectParent;
    const std::string plain = DecryptedData(doc, own, cell.capacity, bytes);
    auto* copy = AllocateArray<char>(doc.pool, plain.size());
    std::copy(plain.begin(), plain.end(), copy);
    body.plain = copy;
    body.plainLength = plain.size();
    body.decrypted = true;
  }
  return {body.plain, static_cast<std::size_t>(body.plainLength)};
}

}  // namespace quillon::objects
