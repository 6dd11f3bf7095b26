// Object streams (ISO 32000-1, 7.5.7). Their Extends entry needs no following: every member has a
// cross-reference entry of its own.
#include <limits>
#include <set>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"
#include "quillon/objects/stream_data.h"

namespace quillon::objects {
namespace {

[[noreturn]] void FailStream(Document& doc, std::uint32_t number, const std::string& what) {
  Fail(kErrorBadStream, "The object stream " + std::to_string(number) + " " + what + ".", number,
       ObjectOffset(doc, number));
}

void MendCount(Document& doc, std::uint32_t number, std::uint32_t dict, std::int32_t listed) {
  Warn(doc,
       "The object stream " + std::to_string(number) +
           " has another number of objects than it says.",
       number, ObjectOffset(doc, number));
  SetEntry(doc, dict, NameFromText(doc, "N"), IntegerOf(listed));
  FindSlot(doc.objects, number)->mended = true;
}

std::unique_ptr<ObjectStream> ReadObjectStream(Document& doc, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  // Only streams of the file: a stream in an object stream could be made to hold itself.
  if (slot == nullptr || slot->state != SlotState::kInFile) FailStream(doc, number, "is missing");
  const std::uint32_t cell = CellOf(doc, LoadObject(doc, number), CellKind::kStream);
  if (cell == 0) FailStream(doc, number, "is no stream");
  auto stream = std::make_unique<ObjectStream>();
  stream->bytes = DecodedBytes(doc, cell, number, &stream->spoiled);
  if (stream->spoiled) {
    Warn(doc, "The data of the object stream " + std::to_string(number) + " are cut off.", number,
         ObjectOffset(doc, number));
  }
  CheckKept(doc, stream->bytes.size());
  Spend(doc, stream->bytes.size());
  if (stream->bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
    FailStream(doc, number, "is too long");
  }
  const std::uint32_t dict = CellAt(doc.cells, cell).capacity;
  const std::int32_t count = IntegerEntry(doc, dict, "N", 0);
  const std::int32_t first = IntegerEntry(doc, dict, "First", -1);
  const char* start = stream->bytes.data();
  if (first < 0 || static_cast<std::size_t>(first) > stream->bytes.size()) {
    FailStream(doc, number, "has no place for its objects");
  }
  Cursor cursor{start, start + first, number, nullptr, FileOffset(doc, slot->position)};
  std::int32_t listed = 0;
  for (;; ++listed) {
    const auto member = TakeUnsigned(cursor);
    const auto offset = TakeUnsigned(cursor);
    if (!member || !offset) break;
    const std::uint64_t place = *offset + static_cast<std::uint64_t>(first);
    if (*member > kMaxObjectNumber || place > stream->bytes.size()) continue;
    stream->members.push_back(
        {static_cast<std::uint32_t>(*member), static_cast<std::uint32_t>(place)});
  }
  if (listed != count) MendCount(doc, number, dict, listed);
  return stream;
}

}  // namespace

const ObjectStream& ObjectStreamOf(Document& doc, std::uint32_t number) {
  const auto known = doc.objectStreams.find(number);
  if (known != doc.objectStreams.end()) return *known->second;
  auto stream = ReadObjectStream(doc, number);
  return *(doc.objectStreams[number] = std::move(stream));
}

void ReadObjectStreams(Document& doc) {
  std::set<std::uint32_t> streams;
  for (const std::uint32_t number : SlotNumbers(doc.objects)) {
    const ObjectSlot* slot = FindSlot(doc.objects, number);
    if (slot->state != SlotState::kCompressed) continue;
    streams.insert(static_cast<std::uint32_t>(slot->position >> 32));
  }
  for (const std::uint32_t number : streams) {
    try {
      ObjectStreamOf(doc, number);
    } catch (const HostFailure& failure) {
      // Told when one of its objects is asked for.
      if (failure.code != kErrorBadObject && failure.code != kErrorBadStream) throw;
    }
  }
}

}  // namespace quillon::objects
