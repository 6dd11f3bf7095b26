// Objects: streams.
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include "quillon/objects/copy.h"
#include "quillon/objects/load.h"
#include "quillon/objects/operands.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/stream_data.h"
#include "quillon/support/stream.h"

namespace quillon::objects {
namespace {

std::string ReadAll(StreamHandle source) {
  const ByteStream& stream = StreamOf(source);
  if (!stream.read) Fail(kErrorBadParameter, "A stream cannot be read.");
  std::array<char, 4096> piece;
  std::string bytes;
  while (const std::uint32_t count = stream.read(piece.data(), piece.size())) {
    bytes.append(piece.data(), std::min<std::size_t>(count, piece.size()));
  }
  return bytes;
}

// The dictionary that a new stream takes over.
std::uint32_t AttributesCell(Document& doc, ObjectHandle attributes) {
  const Target target = TargetOf(attributes);
  if (target.value == kNullValue) return NewCell(doc.cells, CellKind::kDict);
  const std::uint32_t dict = target.doc == &doc ? CellOf(doc, target.value, CellKind::kDict) : 0;
  if (dict == 0) FailKind(target, "a dictionary of the stream's document");
  if (target.number == 0 && CellAt(doc.cells, dict).parent == 0) return dict;
  return CopyValue(doc, target.value, doc).payload;
}

}  // namespace

ObjectHandle NewStream(ObjectDoc handle, StreamHandle source, ObjectHandle attributes) {
  Document& doc = DocumentOfHandle(handle);
  const std::string bytes = ReadAll(source);
  const std::uint32_t dict = AttributesCell(doc, attributes);
  const std::uint32_t stream = MakeStreamCell(doc, bytes, dict);
  return HandleOfObject(doc, AddObject(doc, CellValue(stream)));
}

ObjectHandle StreamDict(ObjectHandle stream) {
  const Container container = StreamOperand(stream);
  return HandleOfCell(container.doc, CellAt(container.doc.cells, container.cell).capacity);
}

StreamHandle OpenStream(ObjectHandle object, std::uint16_t mode) {
  const Container stream = StreamOperand(object);
  const std::uint32_t number = TargetOf(object).number;
  // The reader keeps the bytes: the object may be destroyed while somebody still reads.
  auto bytes = std::make_shared<const std::string>(
      mode == kStreamRaw ? std::string(StoredBytes(stream.doc, stream.cell, number))
                         : ReadStream(stream.doc, stream.cell, number));
  auto reader = std::make_unique<ByteStream>();
  reader->read = [bytes, at = std::size_t{0}](void* buffer, std::uint32_t size) mutable {
    const std::size_t count = std::min<std::size_t>(size, bytes->size() - at);
    if (count != 0) std::memcpy(buffer, bytes->data() + at, count);
    at += count;
    return static_cast<std::uint32_t>(count);
  };
  return GiveStream(std::move(reader));
}

}  // namespace quillon::objects
