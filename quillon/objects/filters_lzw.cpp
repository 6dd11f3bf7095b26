// LZWDecode (ISO 32000-1, 7.4.4.2): codes of 9 to 12 bits, 256 clears the table, 257 ends.
#include <array>
#include <cstdint>
#include <optional>

#include "quillon/objects/filters.h"

namespace quillon::objects {
namespace {

constexpr std::uint32_t kClear = 256;
constexpr std::uint32_t kEnd = 257;
constexpr std::uint32_t kFirstFree = 258;
constexpr std::uint32_t kTableSize = 4096;

struct BitReader {
  std::string_view data;
  std::size_t at = 0;
  std::uint32_t bits = 0;
  int count = 0;
};

std::optional<std::uint32_t> TakeBits(BitReader& reader, int width) {
  while (reader.count < width) {
    if (reader.at == reader.data.size()) return std::nullopt;
    reader.bits = reader.bits << 8 | static_cast<unsigned char>(reader.data[reader.at++]);
    reader.count += 8;
  }
  reader.count -= width;
  return reader.bits >> reader.count & ((1u << width) - 1);
}

// A sequence of the table is a piece of the output that was already written.
struct Sequence {
  std::size_t start;
  std::size_t length;
};

int WidthFor(std::uint32_t next, bool earlyChange) {
  const std::uint32_t reached = next + (earlyChange ? 1 : 0);
  if (reached >= 2048) return 12;
  if (reached >= 1024) return 11;
  return reached >= 512 ? 10 : 9;
}

}  // namespace

std::string DecodeLzw(std::string_view data, bool earlyChange) {
  std::array<Sequence, kTableSize> table{};
  std::string out;
  BitReader reader{data};
  std::uint32_t next = kFirstFree;
  Sequence previous{0, 0};  // none while its length is 0
  while (const auto code = TakeBits(reader, WidthFor(next, earlyChange))) {
    if (*code == kEnd) break;
    if (*code == kClear) {
      next = kFirstFree;
      previous.length = 0;
      continue;
    }
    const std::size_t start = out.size();
    if (*code < kClear) {
      out.push_back(static_cast<char>(*code));
    } else {
      // The code being defined right now: the previous sequence and its own first byte.
      const bool defining = *code == next && previous.length != 0;
      if (!defining && *code >= next) FailDecoding("LZW data are damaged");
      const Sequence source =
          defining ? Sequence{previous.start, previous.length + 1} : table[*code];
      CheckDecodedSize(out.size() + source.length);
      for (std::size_t i = 0; i < source.length; ++i) out.push_back(out[source.start + i]);
    }
    // The new sequence is the previous one and the byte after it, which now follows it in `out`.
    if (previous.length != 0 && next < kTableSize) {
      table[next++] = {previous.start, previous.length + 1};
    }
    previous = {start, out.size() - start};
  }
  return out;
}

}  // namespace quillon::objects
