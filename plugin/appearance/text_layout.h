// Laying out text in a writer: one line, many lines, automatic size, wrapping.
#pragma once

#include "plugin/appearance/content_writer.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

void WriteSingleLine(ContentWriter& writer, Fixed margin, const TextAppearance& look,
                     const char* text);
void WriteMultiLine(ContentWriter& writer, bool wrap, Fixed margin, const TextAppearance& look,
                    const char* text);

// 0.9 of the size at which a line fills the box less the margin; from 4 to 144 points.
Fixed AutoFontSize(const ContentWriter& writer, Atom baseFont, Fixed margin);

// Lines under each other; the writer must outlive it.
struct LineLayout {
  ContentWriter* writer;
  TextAppearance look;
  Fixed margin;
  bool started;
  Fixed lastX;
};
LineLayout NewLineLayout(ContentWriter& writer, Fixed margin, const TextAppearance& look);
void LayoutLine(LineLayout& layout, const char* text);
void EndLineLayout(LineLayout& layout);
std::int32_t VisibleLineCount(const LineLayout& layout);

// How many bytes from `text` (at least one, unless it is empty) one operator line can show whose
// other bytes are so many.
std::size_t ShowableBytes(const char* text, std::size_t otherBytes);

// Takes one line of at most `maxWidth` from `text` at *position; answers its width.
Fixed WrapLine(const FontMetrics& metrics, Fixed maxWidth, const char* text, std::string* line,
               std::size_t* position);

}  // namespace quillform
