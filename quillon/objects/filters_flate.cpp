#include <zlib.h>

#include <algorithm>
#include <limits>

#include "quillon/core/failure.h"
#include "quillon/objects/filters.h"

namespace quillon::objects {
namespace {

constexpr std::size_t kFirstOutput = 4096;

struct Inflater {
  z_stream state{};
  Inflater() {
    if (inflateInit(&state) != Z_OK) throw std::bad_alloc();
  }
  ~Inflater() { inflateEnd(&state); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
};

// Kept from one stream to the next: setting one up costs more than a small stream.
struct Deflater {
  z_stream state{};
  Deflater(int level, int windowBits, int memLevel) {
    if (deflateInit2(&state, level, Z_DEFLATED, windowBits, memLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::bad_alloc();
    }
  }
  ~Deflater() { deflateEnd(&state); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
};

// Resetting clears the hash table, so small streams get a small one.
constexpr std::size_t kSmallStream = 4096;
Deflater& DeflaterFor(std::size_t size) {
  static Deflater small(Z_BEST_SPEED, 12, 4);
  static Deflater large(Z_DEFAULT_COMPRESSION, 15, 8);
  return size <= kSmallStream ? small : large;
}

Bytef* ZlibBytes(std::string_view data) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
}

}  // namespace

std::string DecodeFlate(std::string_view data, std::size_t limit, bool* cutOff) {
  if (data.size() > std::numeric_limits<uInt>::max()) FailDecoding("A stream is too long");
  Inflater inflater;
  inflater.state.next_in = ZlibBytes(data);
  inflater.state.avail_in = static_cast<uInt>(data.size());
  std::string out;
  std::size_t size = 0;
  int result = Z_OK;
  while (result == Z_OK) {
    if (size == out.size()) {
      const std::size_t wanted = std::max({kFirstOutput, data.size() * 3, out.size() * 2});
      out.resize(std::min(wanted, limit + 1));
    }
    const auto room = static_cast<uInt>(std::min<std::size_t>(out.size() - size, 1u << 30));
    inflater.state.next_out = reinterpret_cast<Bytef*>(out.data()) + size;
    inflater.state.avail_out = room;
    result = inflate(&inflater.state, Z_NO_FLUSH);
    size += room - inflater.state.avail_out;
    CheckDecodedSize(size, limit);
  }
  // Z_BUF_ERROR: the input ended before the checksum, as in streams cut by their own producers.
  if (result != Z_STREAM_END && result != Z_BUF_ERROR) FailDecoding("Deflated data are damaged");
  if (cutOff != nullptr && result == Z_BUF_ERROR) *cutOff = true;
  out.resize(size);
  return out;
}

std::string EncodeFlate(std::string_view data) {
  if (data.size() > std::numeric_limits<uInt>::max()) FailDecoding("A stream is too long");
  z_stream& state = DeflaterFor(data.size()).state;
  deflateReset(&state);
  std::string out(deflateBound(&state, static_cast<uLong>(data.size())), '\0');
  state.next_in = ZlibBytes(data);
  state.avail_in = static_cast<uInt>(data.size());
  state.next_out = reinterpret_cast<Bytef*>(out.data());
  state.avail_out = static_cast<uInt>(out.size());
  if (deflate(&state, Z_FINISH) != Z_STREAM_END) {
    Fail(kErrorGeneral, "A stream cannot be compressed.");
  }
  out.resize(out.size() - state.avail_out);
  return out;
}

}  // namespace quillon::objects
