// The content of one appearance, written operator by operator (ISO 32000-1, 7.8.2).
#pragma once

#include <string>

#include "plugin/appearance/font_metrics.h"
#include "plugin/host/host.h"

namespace quillform {

using HostString = std::basic_string<char, std::char_traits<char>, HostAllocator<char>>;

enum WriterFlag : std::uint32_t {
  kWriterUsesFont = 1,   // `font` must appear in the resources
  kWriterUsesIcon = 16,  // the form FRM is drawn and must appear in the resources
};

// One appearance being built. Made and freed by its builder, never shared.
struct ContentWriter {
  FixedRect box;           // in form space; left and bottom are 0
  HostString text;         // operator lines, one blank between them
  std::uint32_t flags;     // WriterFlag
  FontMetrics font;        // the font selected last
  Atom fontResource;       // the name by which the content selects it; kNoAtom: the font's own key
  ObjectHandle icon;       // the form drawn as FRM, or the null object
  std::uint16_t rotation;  // 0, 90, 180 or 270
  bool lost;               // memory ran out once: `text` is not the whole appearance
};

// width and height of `rect` become the box, exchanged for 90 and 270.
ContentWriter NewContentWriter(const FixedRect& rect, std::uint16_t rotation);

// Formats one line and appends it: %f Fixed, %d std::int32_t, %s text as a literal string, %c text
// as it is, %n Atom as a name, %b truth value; a line is cut at 1024 bytes. When memory runs out
// the writer is empty again, and what it gets from then on is never installed. The typed arguments
// below are what the conversions take.
struct WriteArg {
  enum class Kind : std::uint8_t { kNumber, kText } kind;
  std::int32_t number;
  const char* text;
  WriteArg(std::int32_t value) : kind(Kind::kNumber), number(value), text(nullptr) {}
  WriteArg(const char* value) : kind(Kind::kText), number(0), text(value) {}
};
void WriteLine(ContentWriter& writer, const char* format, const WriteArg* args,
               std::size_t argCount);
template <typename... Args>
void WriteOp(ContentWriter& writer, const char* format, Args... args) {
  if constexpr (sizeof...(Args) == 0) {
    WriteLine(writer, format, nullptr, 0);
  } else {
    const WriteArg list[] = {WriteArg(args)...};
    WriteLine(writer, format, list, sizeof...(Args));
  }
}

void AppendWriter(ContentWriter& target, const ContentWriter& source);
void SetColour(ContentWriter& writer, const ColourRec& colour, bool filling);
void WriteRect(ContentWriter& writer, Fixed x, Fixed y, Fixed width, Fixed height, char op);
void WriteCircle(ContentWriter& writer, Fixed cx, Fixed cy, Fixed r, char op);
void WriteHalfCircle(ContentWriter& writer, Fixed cx, Fixed cy, Fixed r, bool upperLeft);
void WriteBevelPolygon(ContentWriter& writer, const FixedRect& rect, Fixed depth, bool upperLeft);
void BeginMarkedContent(ContentWriter& writer, Atom tag);
void EndMarkedContent(ContentWriter& writer);
// q, the rectangle (given unrotated) as clip, n.
void WriteClip(ContentWriter& writer, const FixedRect& rect);
void WriteRestore(ContentWriter& writer);

// Escapes text for a literal string (ISO 32000-1, 7.3.4.2) into `output`, at most capacity - 1
// bytes and a NUL; a byte whose escaped form does not fit ends the text. Answers the length.
std::size_t EscapeLiteralString(const char* text, char* output, std::size_t capacity);

inline constexpr ColourRec kNoColour{255, 0, 0, 0, 0};
inline constexpr ColourRec kBlack{0, 0, 0, 0, 0};
// By element count: 1 grey, 3 RGB, 4 CMYK, anything else none.
ColourRec ColourOfArray(ObjectHandle array);

inline Fixed BoxWidth(const ContentWriter& writer) { return writer.box.right - writer.box.left; }
inline Fixed BoxHeight(const ContentWriter& writer) { return writer.box.top - writer.box.bottom; }

}  // namespace quillform
