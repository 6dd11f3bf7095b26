#include "plugin/appearance/font_metrics.h"

#include <algorithm>
#include <cstring>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/font_resources.h"
#include "plugin/model/keys.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

// Metric resources, one per base font, little-endian, lengths in 1/1000 of the size:
//   offset size
//      0    64  font name, NUL-padded
//     64     2  flags as in the PDF font descriptor (ISO 32000-1, table 123); 1 is fixed pitch
//     68     8  bounding box: left, top, right, bottom
//     76     2  missing width; 0 stands for the width of the space
//     86     2  ascender
//     88     2  descender, negative
//     98     2  first character code of the entries
//    100     2  number of entries
//    102     2  1 when entries carry glyph names
//    104        entries: glyph identifier (2), width (2), and with names: length (2) and the name's
//               bytes padded to an even count
constexpr std::size_t kFlagsAt = 64;
constexpr std::size_t kBoxTopAt = 70;
constexpr std::size_t kBoxBottomAt = 74;
constexpr std::size_t kMissingWidthAt = 76;
constexpr std::size_t kAscenderAt = 86;
constexpr std::size_t kDescenderAt = 88;
constexpr std::size_t kFirstCodeAt = 98;
constexpr std::size_t kCountAt = 100;
constexpr std::size_t kNamesAt = 102;
constexpr std::size_t kEntriesAt = 104;
constexpr std::size_t kEntrySize = 4;
constexpr std::size_t kWidthInEntry = 2;
constexpr std::uint16_t kFixedPitch = 1;
constexpr std::size_t kSpace = 32;

// One font's metrics at the size of one point: what every size is a product of.
struct UnitMetrics {
  bool loaded;
  Fixed lineHeight;
  Fixed ascent;
  Fixed descent;
  std::array<Fixed, 256> widths;
};

constexpr std::size_t kRecentCount = 8;

std::array<UnitMetrics, 14> unitMetrics;
std::array<FontMetrics, kRecentCount> recent;
std::size_t recentUsed = 0;
std::size_t recentNext = 0;

// The resource's words; reading outside it raises.
std::uint16_t WordAt(const ResourceBytes& bytes, std::size_t offset) {
  if (offset + 2 > bytes.size) Raise(quillon::kErrorBadStructure);
  return static_cast<std::uint16_t>(bytes.data[offset] | bytes.data[offset + 1] << 8);
}

Fixed UnitAt(const ResourceBytes& bytes, std::size_t offset) {
  const auto thousandths = static_cast<std::int16_t>(WordAt(bytes, offset));
  return Support->FixedDiv(thousandths * kFixedOne, 1000 * kFixedOne);
}

Fixed UnitHeight(const ResourceBytes& bytes) {
  const std::int32_t height = static_cast<std::int16_t>(WordAt(bytes, kBoxTopAt)) -
                              static_cast<std::int16_t>(WordAt(bytes, kBoxBottomAt));
  return Support->FixedDiv(height * kFixedOne, 1000 * kFixedOne);
}

Fixed MissingWidth(const ResourceBytes& bytes, std::size_t firstCode) {
  if (WordAt(bytes, kMissingWidthAt) != 0) return UnitAt(bytes, kMissingWidthAt);
  const std::size_t space = firstCode <= kSpace ? kSpace - firstCode : 0;
  return UnitAt(bytes, kEntriesAt + space * kEntrySize + kWidthInEntry);
}

void ReadWidths(const ResourceBytes& bytes, std::array<Fixed, 256>& widths) {
  if ((WordAt(bytes, kFlagsAt) & kFixedPitch) != 0) {
    widths.fill(UnitAt(bytes, kEntriesAt + kWidthInEntry));
    return;
  }
  const std::size_t firstCode = WordAt(bytes, kFirstCodeAt);
  const std::size_t end = std::min<std::size_t>(firstCode + WordAt(bytes, kCountAt), widths.size());
  const bool named = WordAt(bytes, kNamesAt) != 0;
  widths.fill(MissingWidth(bytes, firstCode));
  std::size_t entry = kEntriesAt;
  for (std::size_t code = firstCode; code < end; ++code) {
    widths[code] = UnitAt(bytes, entry + kWidthInEntry);
    entry += kEntrySize;
    if (named) entry += 2 + ((WordAt(bytes, entry) + std::size_t{1}) & ~std::size_t{1});
  }
}

// Fonts of a document's own have no metrics here; Helvetica's come nearest to most of them.
std::size_t IndexOfFont(Atom baseFont) {
  const auto find = [](Atom base) {
    return std::find_if(baseFonts.begin(), baseFonts.end(),
                        [base](const BaseFont& font) { return font.base == base; });
  };
  auto font = find(baseFont);
  if (font == baseFonts.end()) font = find(key::Helvetica);
  return static_cast<std::size_t>(font - baseFonts.begin());
}

const UnitMetrics& UnitMetricsOf(Atom baseFont) {
  const std::size_t index = IndexOfFont(baseFont);
  UnitMetrics& unit = unitMetrics[index];
  if (unit.loaded) return unit;
  const ResourceBytes bytes = FindDataResource(Core->NameFromAtom(baseFonts[index].base));
  if (bytes.data == nullptr) Raise(quillon::kErrorBadStructure);
  unit.lineHeight = UnitHeight(bytes);
  unit.ascent = UnitAt(bytes, kAscenderAt);
  unit.descent = UnitAt(bytes, kDescenderAt);
  ReadWidths(bytes, unit.widths);
  unit.loaded = true;
  return unit;
}

}  // namespace

void LoadFontMetrics(Atom baseFont, Fixed size, FontMetrics* metrics) {
  const UnitMetrics& unit = UnitMetricsOf(baseFont);
  metrics->baseFont = baseFont;
  metrics->size = size;
  metrics->lineHeight = Support->FixedMul(unit.lineHeight, size);
  metrics->ascent = Support->FixedMul(unit.ascent, size);
  metrics->descent = Support->FixedMul(unit.descent, size);
  for (std::size_t code = 0; code < unit.widths.size(); ++code) {
    metrics->widths[code] = Support->FixedMul(unit.widths[code], size);
  }
}

const FontMetrics& FontMetricsOf(Atom baseFont, Fixed size) {
  for (std::size_t i = 0; i < recentUsed; ++i) {
    if (recent[i].size == size && recent[i].baseFont == baseFont) return recent[i];
  }
  FontMetrics& place = recent[recentNext];
  LoadFontMetrics(baseFont, size, &place);
  recentNext = (recentNext + 1) % kRecentCount;
  recentUsed = std::max(recentUsed, recentNext == 0 ? kRecentCount : recentNext);
  return place;
}

Fixed TextWidth(const FontMetrics& metrics, const char* text) {
  return text == nullptr ? 0 : TextWidth(metrics, text, std::strlen(text));
}

Fixed TextWidth(const FontMetrics& metrics, const char* text, std::size_t length) {
  // A very long text is as wide as Fixed can tell.
  std::int64_t width = 0;
  for (std::size_t i = 0; i < length; ++i) {
    width += metrics.widths[static_cast<unsigned char>(text[i])];
  }
  return HoldFixed(width);
}

}  // namespace quillform
