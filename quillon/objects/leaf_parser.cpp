#include "quillon/objects/leaf_parser.h"

#include "quillon/objects/characters.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/numbers.h"

namespace quillon::objects {
namespace {

std::string_view RegularText(const Cursor& cursor) {
  const char* end = cursor.at;
  while (end < cursor.end && IsRegular(*end)) ++end;
  return {cursor.at, static_cast<std::size_t>(end - cursor.at)};
}

std::uint32_t NewTextCell(Document& doc, CellKind kind, std::string_view text, std::uint32_t parent,
                          std::uint32_t capacity) {
  const std::uint32_t number = NewCell(doc.cells, kind);
  Cell& cell = CellAt(doc.cells, number);
  cell.parent = parent;
  cell.size = static_cast<std::uint32_t>(text.size());
  cell.capacity = capacity;
  cell.data = const_cast<char*>(text.data());
  return number;
}

// The rest of "N G R" after N; leaves the cursor alone when it is only a number.
bool TakeReference(Cursor& cursor, std::uint64_t* generation) {
  Cursor ahead = cursor;
  const auto counted = TakeUnsigned(ahead);
  if (!counted) return false;
  SkipSpace(ahead);
  if (ahead.at == ahead.end || *ahead.at != 'R') return false;
  ++ahead.at;
  if (ahead.at < ahead.end && IsRegular(*ahead.at)) return false;
  *generation = *counted;
  cursor = ahead;
  return true;
}

Value MendedString(Document& doc, const Cursor& start, std::string_view text,
                   std::uint32_t parent) {
  WarnOdd(doc, start, "A string is malformed; it was mended.");
  // Its end was looked for in all of the file.
  if (text.front() == '(') Spend(doc, static_cast<std::uint64_t>(start.end - start.at));
  std::string closed(text);
  if (text.front() == '<' && text.back() != '>') closed.push_back('>');
  const std::uint32_t cell = NewStringCell(doc, DecodeStringText(closed));
  CellAt(doc.cells, cell).parent = parent;
  return CellValue(cell);
}

}  // namespace

void WarnOdd(Document& doc, const Cursor& where, std::string_view text) {
  // Files made to hurt have millions of them.
  if (!WarningsAreFull(doc)) Warn(doc, std::string(text), where.object, OffsetOf(where));
  if (ObjectSlot* slot = FindSlot(doc.objects, where.object)) slot->mended = true;
}

bool AtObjectEnd(const Cursor& cursor) {
  return IsRegular(*cursor.at) && !IsDecimalDigit(*cursor.at) && EndsObject(RegularText(cursor));
}

NameCode ParseName(Document& doc, Cursor& cursor) {
  ++cursor.at;
  const std::string_view text = RegularText(cursor);
  cursor.at += text.size();
  if (text.find('#') == std::string_view::npos && text.find('\0') == std::string_view::npos) {
    return NameFromText(doc, text);
  }
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '#' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 &&
        HexValue(text[i + 2]) >= 0) {
      const int value = HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]);
      if (value != 0) {
        name.push_back(static_cast<char>(value));
        i += 2;
        continue;
      }
    }
    name.push_back(text[i]);
  }
  return NameFromText(doc, name);
}

Value ParseNumberOrReference(Document& doc, Cursor& cursor, std::uint32_t parent) {
  const Cursor start = cursor;
  const std::string_view text = RegularText(cursor);
  cursor.at += text.size();
  const ParsedNumber number = ParseNumber(text);
  if (!number.wellFormed) {
    WarnOdd(doc, start, "A number is malformed; it is read as far as it is one.");
    return number.real ? FixedOf(number.value) : IntegerOf(number.value);
  }
  std::uint64_t generation = 0;
  if (!number.real && IsDecimalDigit(text[0]) && TakeReference(cursor, &generation)) {
    // What no object can be numbered is a reference to nothing.
    if (number.value <= 0 || static_cast<std::uint32_t>(number.value) > kMaxObjectNumber ||
        generation > 0xFFFF) {
      return kNullValue;
    }
    return ReferenceTo(static_cast<std::uint32_t>(number.value),
                       static_cast<std::uint16_t>(generation));
  }
  if (!number.canonical) {
    const CellKind kind = number.real ? CellKind::kFixed : CellKind::kInteger;
    return CellValue(
        NewTextCell(doc, kind, text, parent, static_cast<std::uint32_t>(number.value)));
  }
  return number.real ? FixedOf(number.value) : IntegerOf(number.value);
}

Value ParseString(Document& doc, Cursor& cursor, std::uint32_t parent) {
  const Cursor start = cursor;
  const bool whole = SkipString(cursor);
  const std::string_view text(start.at, static_cast<std::size_t>(cursor.at - start.at));
  if (text.size() > 0x7FFFFFFF) FailAt(cursor, "A string is too long");
  if (!whole) return MendedString(doc, start, text, parent);
  const std::uint32_t cell = NewTextCell(doc, CellKind::kString, text, parent, 0);
  CellAt(doc.cells, cell).raw = true;
  return CellValue(cell);
}

Value ParseWord(Document& doc, Cursor& cursor) {
  if (AtObjectEnd(cursor)) FailAt(cursor, "The text of an object ends too early");
  const Cursor start = cursor;
  const std::string_view word = RegularText(cursor);
  cursor.at += word.size();
  if (word == "true") return BooleanOf(true);
  if (word == "false") return BooleanOf(false);
  if (word != "null") {
    WarnOdd(doc, start, "A word that is no object stands where one should; it is read as null.");
  }
  return kNullValue;
}

}  // namespace quillon::objects
