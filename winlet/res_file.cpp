#include "winlet/res_file.h"

#include <algorithm>

namespace winlet {

namespace {

constexpr std::size_t kFixedHeaderEnd = 16;  // version, flags and language
constexpr std::uint16_t kNumberMark = 0xFFFF;

// Reads words one after another; reading past the end gives zeros and leaves `ok` false.
struct Reader {
  ResBytes bytes;
  std::size_t position = 0;
  bool ok = true;

  std::uint16_t Word() {
    if (bytes.size() - position < 2) {
      ok = false;
      position = bytes.size();
      return 0;
    }
    const auto word = static_cast<std::uint16_t>(bytes[position] | bytes[position + 1] << 8);
    position += 2;
    return word;
  }
  std::uint32_t DoubleWord() {
    const std::uint32_t low = Word();
    return low | static_cast<std::uint32_t>(Word()) << 16;
  }
};

struct ResRecord {
  ResName type;
  ResName name;
  ResBytes data;
  std::size_t size;  // the whole record with its padding
};

ResName ReadName(Reader& reader) {
  std::uint16_t unit = reader.Word();
  if (unit == kNumberMark) return {reader.Word(), {}};
  ResName name{0, {}};
  for (; reader.ok && unit != 0; unit = reader.Word()) name.text.push_back(unit);
  return name;
}

std::size_t RoundUpToFour(std::size_t size) { return (size + 3) / 4 * 4; }

std::optional<ResRecord> ReadRecord(ResBytes rest) {
  Reader reader{rest};
  const std::size_t dataSize = reader.DoubleWord();
  const std::size_t headerSize = reader.DoubleWord();
  ResRecord record{};
  record.type = ReadName(reader);
  record.name = ReadName(reader);
  const bool fits = reader.ok && headerSize >= RoundUpToFour(reader.position) + kFixedHeaderEnd &&
                    headerSize <= rest.size() && dataSize <= rest.size() - headerSize;
  if (!fits) return std::nullopt;
  record.data = rest.subspan(headerSize, dataSize);
  record.size = std::min(RoundUpToFour(headerSize + dataSize), rest.size());
  return record;
}

char16_t UpperCase(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

bool SameName(const ResName& a, const ResName& b) {
  return a.number == b.number &&
         std::equal(a.text.begin(), a.text.end(), b.text.begin(), b.text.end(),
                    [](char16_t x, char16_t y) { return UpperCase(x) == UpperCase(y); });
}

}  // namespace

std::optional<ResBytes> FindResData(ResBytes file, const ResName& type, const ResName& name) {
  while (!file.empty()) {
    const std::optional<ResRecord> record = ReadRecord(file);
    if (!record) return std::nullopt;
    if (SameName(record->type, type) && SameName(record->name, name)) return record->data;
    file = file.subspan(record->size);
  }
  return std::nullopt;
}

std::u16string StringInBlock(ResBytes block, unsigned index) {
  Reader reader{block};
  for (unsigned skipped = 0; skipped < index; ++skipped) {
    for (std::uint16_t units = reader.Word(); units > 0 && reader.ok; --units) reader.Word();
  }
  std::u16string text;
  for (std::uint16_t units = reader.Word(); units > 0 && reader.ok; --units) {
    text.push_back(reader.Word());
  }
  return reader.ok ? text : std::u16string{};
}

}  // namespace winlet
