#include <array>
#include <string_view>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

namespace {

constexpr std::size_t kGrowthStep = 255;
constexpr std::size_t kLargestText = 65535;
constexpr std::uint16_t kPrecision = 4;
constexpr std::uint32_t kStateCapacity = 12;
constexpr std::uint32_t kComponentCapacity = 6;

bool Append(GrowingText& text, std::string_view piece) {
  const std::size_t needed = text.bytes.size() + piece.size() + 1;
  if (needed > text.capacity) {
    const std::size_t grown = (needed / kGrowthStep + 1) * kGrowthStep;
    if (grown > kLargestText) return false;
    text.capacity = static_cast<std::uint16_t>(grown);
    text.bytes.reserve(grown);
  }
  text.bytes.append(piece);
  return true;
}

std::string FixedText(Fixed value, std::uint32_t capacity) {
  std::array<char, kStateCapacity> buffer{};
  const std::uint32_t length = Support->FixedToText(value, buffer.data(), capacity, kPrecision);
  return std::string(buffer.data(), length);
}

std::string StateText(Fixed value) {
  return IsWhole(value) ? std::to_string(WholePart(value)) : FixedText(value, kStateCapacity);
}

struct StateOperator {
  Fixed TextAppearance::*value;
  Fixed unwritten;  // the value that needs no operator
  const char* name;
};
constexpr StateOperator kStateOperators[] = {
    {&TextAppearance::charSpacing, 0, "Tc "},
    {&TextAppearance::wordSpacing, 0, "Tw "},
    {&TextAppearance::horizScaling, 100 * kFixedOne, "Tz "},
    {&TextAppearance::leading, 0, "TL "},
    {&TextAppearance::rise, 0, "Ts "},
};

bool AppendState(GrowingText& text, const TextAppearance& look) {
  for (const StateOperator& op : kStateOperators) {
    const Fixed value = look.*op.value;
    if (value == op.unwritten) continue;
    if (!Append(text, StateText(value) + " " + op.name)) return false;
  }
  return true;
}

struct ColourForm {
  std::size_t components;
  const char* filling;
  const char* stroking;
};

ColourForm FormOfSpace(std::int16_t space) {
  switch (space) {
    case 0:
      return {1, "g ", "G "};
    case 1:
      return {3, "rg ", "RG "};
    default:
      return {4, "k ", "K "};
  }
}

bool AppendColour(GrowingText& text, const ColourRec& colour, bool filling) {
  const ColourForm form = FormOfSpace(colour.space);
  const Fixed parts[] = {colour.c1, colour.c2, colour.c3, colour.c4};
  std::string piece;
  for (std::size_t i = 0; i < form.components; ++i) {
    piece += FixedText(parts[i], kComponentCapacity);
    piece += ' ';
  }
  piece += filling ? form.filling : form.stroking;
  return Append(text, piece);
}

bool AppendFont(GrowingText& text, const TextAppearance& look) {
  const char* name = Core->NameFromAtom(look.fontResource);
  if (name == nullptr) return false;
  return Append(text, std::string("/") + name + " " + StateText(look.fontSize) + " Tf ");
}

}  // namespace

std::uint32_t WriteDA(TextAppearance& look, GrowingText& text) {
  if (!TextAppearanceIsValid(look)) return 1;
  NormaliseColours(look);
  if (look.fontResource == kNoAtom) look.fontResource = ShortNameOf(look.baseFont);

  bool written = AppendFont(text, look) && AppendState(text, look);
  if (written && look.renderMode != 0) {
    written = Append(text, std::to_string(look.renderMode) + " Tr ") &&
              AppendColour(text, look.strokeColour, false);
  }
  if (written && look.renderMode != 1) written = AppendColour(text, look.fillColour, true);
  return written ? 0 : 1;
}

std::string DAText(TextAppearance look, std::uint16_t capacity) {
  GrowingText text{{}, capacity};
  text.bytes.reserve(capacity);
  if (WriteDA(look, text) != 0) Raise(quillon::kErrorBadParameter);
  return std::move(text.bytes);
}

}  // namespace quillform
