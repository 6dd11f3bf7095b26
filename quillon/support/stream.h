// Byte streams: what stands behind a StreamHandle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "sdk/types.h"

namespace quillon {

// One stream. `read` puts up to `size` bytes into the buffer and answers how many, 0 at the end;
// `write` answers how many it took. Either may be empty: reading or writing it then fails.
struct ByteStream {
  std::function<std::uint32_t(void* buffer, std::uint32_t size)> read;
  std::function<std::uint32_t(const void* bytes, std::uint32_t size)> write;
};

// Hands a stream out; support::CloseStream frees it.
StreamHandle GiveStream(std::unique_ptr<ByteStream> stream);

// The stream behind a handle; throws HostFailure (kErrorBadParameter) for one that is not open.
ByteStream& StreamOf(StreamHandle handle);

// For leak checks.
std::size_t LiveStreamCount();

}  // namespace quillon
