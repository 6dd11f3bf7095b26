#include "plugin/appearance/content_writer.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "plugin/appearance/fixed_math.h"
#include "plugin/appearance/form_parts.h"

namespace quillform {

namespace {

constexpr std::size_t kLineLimit = 1024;
constexpr std::size_t kNumberCapacity = 32;  // "-32768.9999" and its NUL fit
constexpr std::uint16_t kDecimals = 4;

// Most appearances fit, so that they take one block from the host.
constexpr std::size_t kFirstCapacity = 512;

// One operator line on the stack. The bytes are left unset: this runs for every operator.
struct Line {
  char bytes[kLineLimit + 1];
  std::size_t length;
};

void PutChar(Line& line, char byte) {
  if (line.length < kLineLimit) line.bytes[line.length++] = byte;
}

void PutBytes(Line& line, const char* bytes, std::size_t count) {
  count = std::min(count, kLineLimit - line.length);
  std::memcpy(line.bytes + line.length, bytes, count);
  line.length += count;
}

void PutText(Line& line, const char* text) {
  if (text != nullptr) PutBytes(line, text, std::strlen(text));
}

void PutFixed(Line& line, Fixed value) {
  char number[kNumberCapacity];
  PutBytes(line, number, Support->FixedToText(value, number, kNumberCapacity, kDecimals));
}

void PutInteger(Line& line, std::int32_t value) {
  char number[kNumberCapacity];
  const std::to_chars_result end = std::to_chars(number, number + kNumberCapacity, value);
  PutBytes(line, number, static_cast<std::size_t>(end.ptr - number));
}

void PutLiteralString(Line& line, const char* text) {
  char escaped[kLineLimit];
  PutChar(line, '(');
  PutBytes(line, escaped, EscapeLiteralString(text, escaped, sizeof escaped));
  PutChar(line, ')');
}

void PutName(Line& line, Atom name) {
  PutChar(line, '/');
  PutText(line, Core->NameFromAtom(name));
}

bool TakesArgument(char conversion) { return std::strchr("fdscnb", conversion) != nullptr; }

void PutArgument(Line& line, char conversion, const WriteArg& arg) {
  switch (conversion) {
    case 'f':
      PutFixed(line, arg.number);
      break;
    case 'd':
      PutInteger(line, arg.number);
      break;
    case 's':
      PutLiteralString(line, arg.text);
      break;
    case 'c':
      PutText(line, arg.text);
      break;
    case 'n':
      PutName(line, static_cast<Atom>(arg.number & 0xFFFF));
      break;
    default:
      PutText(line, (arg.number & 0xFFFF) != 0 ? "true" : "false");
      break;
  }
}

void AppendLine(ContentWriter& writer, const Line& line) {
  try {
    if (writer.text.empty()) {
      writer.text.reserve(std::max(kFirstCapacity, line.length));
    } else {
      writer.text.push_back(' ');
    }
    writer.text.append(line.bytes, line.length);
  } catch (const std::bad_alloc&) {
    HostString().swap(writer.text);
    writer.lost = true;
  }
}

bool IsTurned(std::uint16_t rotation) { return rotation == 90 || rotation == 270; }

}  // namespace

ContentWriter NewContentWriter(const FixedRect& rect, std::uint16_t rotation) {
  ContentWriter writer;  // the widths stay unset until a font is selected
  const Fixed width = FixedDistance(rect.right, rect.left);
  const Fixed height = FixedDistance(rect.top, rect.bottom);
  writer.box = IsTurned(rotation) ? FixedRect{0, width, height, 0} : FixedRect{0, height, width, 0};
  writer.flags = 0;
  writer.font.baseFont = 0;
  writer.font.size = 0;
  writer.fontResource = kNoAtom;
  writer.icon = kNullObject;
  writer.rotation = rotation;
  writer.lost = false;
  return writer;
}

void WriteLine(ContentWriter& writer, const char* format, const WriteArg* args,
               std::size_t argCount) {
  Line line;
  line.length = 0;
  std::size_t nextArg = 0;
  for (const char* at = format; *at != '\0'; ++at) {
    if (*at != '%') {
      PutChar(line, *at);
      continue;
    }
    ++at;
    if (*at == '\0') break;
    if (!TakesArgument(*at)) {
      PutChar(line, *at);
    } else if (nextArg < argCount) {
      PutArgument(line, *at, args[nextArg++]);
    }
  }
  AppendLine(writer, line);
}

void AppendWriter(ContentWriter& target, const ContentWriter& source) {
  try {
    const std::size_t blank = target.text.empty() ? 0 : 1;
    target.text.reserve(target.text.size() + blank + source.text.size());
    target.text.append(blank, ' ').append(source.text);
  } catch (const std::bad_alloc&) {
    target.lost = true;
    return;
  }
  target.lost = target.lost || source.lost;
  target.flags |= source.flags;
  if ((source.flags & kWriterUsesIcon) != 0) target.icon = source.icon;
  if ((source.flags & kWriterUsesFont) != 0) {
    target.font = source.font;
    target.fontResource = source.fontResource;
  }
}

void SetColour(ContentWriter& writer, const ColourRec& colour, bool filling) {
  switch (colour.space) {
    case 1:
      if (colour.c1 != colour.c2 || colour.c1 != colour.c3) {
        WriteOp(writer, filling ? "%f %f %f rg" : "%f %f %f RG", colour.c1, colour.c2, colour.c3);
        break;
      }
      [[fallthrough]];  // equal components are a grey, which is shorter
    case 0:
      WriteOp(writer, filling ? "%f g" : "%f G", colour.c1);
      break;
    case 2:
      WriteOp(writer, filling ? "%f %f %f %f k" : "%f %f %f %f K", colour.c1, colour.c2, colour.c3,
              colour.c4);
      break;
    default:
      break;
  }
}

void BeginMarkedContent(ContentWriter& writer, Atom tag) {
  if (tag == kNoAtom) {
    WriteOp(writer, "EMC");
  } else {
    WriteOp(writer, "/%c BMC", Core->NameFromAtom(tag));
  }
}

void EndMarkedContent(ContentWriter& writer) { BeginMarkedContent(writer, kNoAtom); }

void WriteClip(ContentWriter& writer, const FixedRect& rect) {
  const Fixed width = FixedDistance(rect.right, rect.left);
  const Fixed height = FixedDistance(rect.top, rect.bottom);
  WriteOp(writer, "q");
  if (IsTurned(writer.rotation)) {
    WriteRect(writer, rect.bottom, rect.left, height, width, 'W');
  } else {
    WriteRect(writer, rect.left, rect.bottom, width, height, 'W');
  }
  WriteOp(writer, "n");
}

void WriteRestore(ContentWriter& writer) { WriteOp(writer, "Q"); }

std::size_t EscapeLiteralString(const char* text, char* output, std::size_t capacity) {
  if (capacity == 0) return 0;
  std::size_t length = 0;
  for (const char* at = text; at != nullptr && *at != '\0'; ++at) {
    const unsigned byte = static_cast<unsigned char>(*at);
    char form[4] = {'\\', *at, 0, 0};
    std::size_t count = 1;
    if (byte < 32 || byte > 126) {
      form[1] = static_cast<char>('0' + (byte >> 6));
      form[2] = static_cast<char>('0' + ((byte >> 3) & 7));
      form[3] = static_cast<char>('0' + (byte & 7));
      count = 4;
    } else if (byte == '(' || byte == ')' || byte == '\\' || byte == '[' || byte == ']') {
      count = 2;
    } else {
      form[0] = *at;
    }
    if (length + count >= capacity) break;
    std::memcpy(output + length, form, count);
    length += count;
  }
  output[length] = '\0';
  return length;
}

ColourRec ColourOfArray(ObjectHandle array) {
  if (!IsKind(array, ObjectKind::kArray)) return kNoColour;
  ColourRec colour = kBlack;
  const std::uint32_t count = Objects->ArrayLength(array);
  switch (count) {
    case 1:
      colour.space = 0;
      break;
    case 3:
      colour.space = 1;
      break;
    case 4:
      colour.space = 2;
      break;
    default:
      return kNoColour;
  }
  Fixed* const components[] = {&colour.c1, &colour.c2, &colour.c3, &colour.c4};
  for (std::uint32_t i = 0; i < count; ++i) {
    const ObjectHandle element = Objects->ArrayGet(array, i);
    // Anything but a number, in a damaged file, counts as 0 rather than ending the build.
    if (IsNumber(element)) {
      *components[i] = Objects->FixedValue(element);
    }
  }
  return colour;
}

}  // namespace quillform
