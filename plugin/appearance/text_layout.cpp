#include "plugin/appearance/text_layout.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "plugin/appearance/fixed_math.h"

namespace quillform {

namespace {

constexpr Fixed kPlainSize = 12 * kFixedOne;  // for text of many lines without a size of its own
constexpr Fixed kProbeSize = 10 * kFixedOne;
constexpr Fixed kSmallestSize = 4 * kFixedOne;
constexpr Fixed kLargestSize = 144 * kFixedOne;
constexpr std::size_t kPieceBytes = 64;
constexpr std::size_t kLineBytes = 1024;  // of one operator line
constexpr std::size_t kShowBytes = std::size("() Tj") - 1;

void SelectFont(ContentWriter& writer, const TextAppearance& look) {
  writer.flags |= kWriterUsesFont;
  writer.font = FontMetricsOf(look.baseFont, look.fontSize);
  writer.fontResource = look.fontResource;
}

void BeginText(ContentWriter& writer, const TextAppearance& look) {
  WriteOp(writer, "BT %c", DAText(look, kStreamDACapacity).c_str());
}

Fixed StartOfLine(const ContentWriter& writer, const TextAppearance& look, Fixed margin,
                  Fixed width) {
  switch (look.quadding) {
    case 1:
      return FixedHalf(FixedSub(BoxWidth(writer), width));
    case 2:
      return FixedSub(FixedSub(writer.box.right, width), margin);
    default:
      return FixedAdd(writer.box.left, margin);
  }
}

std::size_t EscapedLength(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 32 || byte > 126) return 4;
  return std::strchr("()\\[]", c) != nullptr ? 2 : 1;
}

// Takes one line up to (and over) the next line break.
void TakeLine(const char* text, std::string* line, std::size_t* position) {
  const std::size_t length = std::strcspn(text + *position, "\r\n");
  line->assign(text + *position, length);
  *position += length;
  if (text[*position] != '\0') ++*position;
}

}  // namespace

std::size_t ShowableBytes(const char* text, std::size_t otherBytes) {
  std::size_t line = otherBytes;
  std::size_t count = 0;
  while (text[count] != '\0') {
    line += EscapedLength(text[count]);
    if (line > kLineBytes) break;
    ++count;
  }
  return count;
}

Fixed AutoFontSize(const ContentWriter& writer, Atom baseFont, Fixed margin) {
  const Fixed lineHeight = FontMetricsOf(baseFont, kProbeSize).lineHeight;
  const Fixed space = Support->FixedMul(FixedSub(BoxHeight(writer), margin), kProbeSize);
  const Fixed nineTenths = Support->FixedDiv(9 * kFixedOne, 10 * kFixedOne);
  const Fixed size = Support->FixedMul(Support->FixedDiv(space, lineHeight), nineTenths);
  return std::clamp(size, kSmallestSize, kLargestSize);
}

void WriteSingleLine(ContentWriter& writer, Fixed margin, const TextAppearance& look,
                     const char* text) {
  const bool hasText = text != nullptr && text[0] != '\0';
  if (!TextAppearanceIsValid(look) || !hasText || look.fillColour.space == kNoColour.space) return;
  TextAppearance sized = look;
  if (sized.fontSize == 0) sized.fontSize = AutoFontSize(writer, sized.baseFont, margin);
  BeginText(writer, sized);
  SelectFont(writer, sized);

  const FontMetrics& font = writer.font;
  const Fixed y = FixedSub(FixedHalf(FixedSub(BoxHeight(writer), font.lineHeight)), font.descent);
  const Fixed x = StartOfLine(writer, sized, margin, TextWidth(font, text));
  WriteOp(writer, "1 0 0 1 %f %f Tm", x, y);
  const std::size_t length = std::strlen(text);
  for (std::size_t at = 0; at < length; at += kPieceBytes) {
    const std::string piece(text + at, std::min(kPieceBytes, length - at));
    WriteOp(writer, "%s Tj", piece.c_str());
  }
  WriteOp(writer, "ET");
}

LineLayout NewLineLayout(ContentWriter& writer, Fixed margin, const TextAppearance& look) {
  LineLayout layout{&writer, look, margin, false, 0};
  if (layout.look.fontSize == 0) layout.look.fontSize = kPlainSize;
  SelectFont(writer, layout.look);
  return layout;
}

void LayoutLine(LineLayout& layout, const char* text) {
  ContentWriter& writer = *layout.writer;
  const FontMetrics& font = writer.font;
  if (!layout.started) {
    BeginText(writer, layout.look);
    const Fixed top = FixedSub(FixedSub(BoxHeight(writer), font.descent), layout.margin);
    WriteOp(writer, "1 0 0 1 0 %f Tm", top);
    layout.started = true;
  }
  if (text == nullptr) return;
  const Fixed x = StartOfLine(writer, layout.look, layout.margin, TextWidth(font, text));
  WriteOp(writer, "%f %f Td", FixedSub(x, layout.lastX), FixedSub(0, font.lineHeight));
  layout.lastX = x;
  // A line that one operator cannot show goes on with the next one.
  do {
    const std::string shown(text, ShowableBytes(text, kShowBytes));
    WriteOp(writer, "%s Tj", shown.c_str());
    text += shown.size();
  } while (*text != '\0');
}

void EndLineLayout(LineLayout& layout) {
  // Without a line there is no text object to end.
  if (layout.started) WriteOp(*layout.writer, "ET");
}

std::int32_t VisibleLineCount(const LineLayout& layout) {
  const ContentWriter& writer = *layout.writer;
  const Fixed space = FixedSub(FixedSub(BoxHeight(writer), layout.margin), layout.margin);
  return WholePart(FixedAdd(Support->FixedDiv(space, writer.font.lineHeight), kFixedOne));
}

Fixed WrapLine(const FontMetrics& metrics, Fixed maxWidth, const char* text, std::string* line,
               std::size_t* position) {
  const std::size_t start = *position;
  Fixed width = 0;
  std::size_t blank = 0;  // the last break point; 0 for none
  Fixed widthBeforeBlank = 0;
  std::size_t at = start;
  for (; text[at] != '\0'; ++at) {
    const char c = text[at];
    if (c == '\r' || c == '\n') {
      line->assign(text + start, at - start);
      *position = at + 1;
      return width;
    }
    const Fixed wider = FixedAdd(width, metrics.widths[static_cast<unsigned char>(c)]);
    if (wider > maxWidth) {
      if (blank == 0) break;
      line->assign(text + start, blank - start);
      *position = blank + 1;
      return widthBeforeBlank;
    }
    if (c == ' ') {
      blank = at;
      widthBeforeBlank = width;
    }
    width = wider;
  }
  line->assign(text + start, at - start);
  *position = at;
  return width;
}

void WriteMultiLine(ContentWriter& writer, bool wrap, Fixed margin, const TextAppearance& look,
                    const char* text) {
  if (!TextAppearanceIsValid(look) || text == nullptr || text[0] == '\0') return;
  SetColour(writer, look.fillColour, true);
  LineLayout layout = NewLineLayout(writer, margin, look);
  const Fixed lineWidth = FixedSub(FixedSub(BoxWidth(writer), margin), margin);
  std::string line;
  std::size_t position = 0;
  for (std::int32_t left = VisibleLineCount(layout); left > 0 && text[position] != '\0'; --left) {
    if (wrap) {
      WrapLine(writer.font, lineWidth, text, &line, &position);
    } else {
      TakeLine(text, &line, &position);
    }
    LayoutLine(layout, line.c_str());
  }
  EndLineLayout(layout);
}

}  // namespace quillform
