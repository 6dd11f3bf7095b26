#include <algorithm>
#include <cstring>

#include "quillon/core/guard.h"
#include "quillon/support/handles.h"
#include "quillon/support/operations.h"
#include "quillon/support/stream.h"

namespace quillon {
namespace {

HandleTable<StreamHandle, ByteStream>& Streams() {
  static HandleTable<StreamHandle, ByteStream> streams;
  return streams;
}

}  // namespace

StreamHandle GiveStream(std::unique_ptr<ByteStream> stream) {
  return GiveHandle(Streams(), std::move(stream));
}

ByteStream& StreamOf(StreamHandle handle) { return FollowHandle(Streams(), handle, "stream"); }

std::size_t LiveStreamCount() { return Streams().records.size(); }

namespace support {

StreamHandle OpenMemoryStream(const void* bytes, std::uint32_t length) {
  if (bytes == nullptr && length > 0) Fail(kErrorBadParameter, "a stream's bytes are missing");
  auto stream = std::make_unique<ByteStream>();
  stream->read = [place = static_cast<const char*>(bytes), left = length](
                     void* buffer, std::uint32_t size) mutable {
    const std::uint32_t count = std::min(size, left);
    if (count == 0) return count;
    std::memcpy(buffer, place, count);
    place += count;
    left -= count;
    return count;
  };
  return GiveStream(std::move(stream));
}

StreamHandle OpenProcStream(StreamProc proc, void* clientData) {
  if (proc == nullptr) Fail(kErrorBadParameter, "a stream's routine is missing");
  auto stream = std::make_unique<ByteStream>();
  stream->read = [proc, clientData](void* buffer, std::uint32_t size) {
    const std::uint32_t count = CallGuarded([&] { return proc(buffer, size, clientData); });
    if (count > size) Fail(kErrorBadStream, "a stream's routine gave more than was asked for");
    return count;
  };
  return GiveStream(std::move(stream));
}

StreamHandle OpenFileStream(FileHandle file) {
  FilePosition(file);  // a file that is not open fails now and not at the first byte
  auto stream = std::make_unique<ByteStream>();
  stream->read = [file](void* buffer, std::uint32_t size) { return ReadFile(file, buffer, size); };
  stream->write = [file](const void* bytes, std::uint32_t size) {
    return WriteFile(file, bytes, size);
  };
  return GiveStream(std::move(stream));
}

std::uint32_t ReadStream(StreamHandle stream, void* buffer, std::uint32_t size) {
  const ByteStream& source = StreamOf(stream);
  if (!source.read) Fail(kErrorReadFile, "the stream can only be written");
  return source.read(buffer, size);
}

std::uint32_t WriteStream(StreamHandle stream, const void* bytes, std::uint32_t size) {
  const ByteStream& target = StreamOf(stream);
  if (!target.write) Fail(kErrorWriteFile, "the stream can only be read");
  return target.write(bytes, size);
}

void CloseStream(StreamHandle stream) {
  if (stream == nullptr) return;
  if (TakeHandle(Streams(), stream) == nullptr) {
    Fail(kErrorBadParameter, "a stream was closed that is not open");
  }
}

}  // namespace support
}  // namespace quillon
