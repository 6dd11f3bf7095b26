// Moving through the text of a file without making objects.
#include <algorithm>
#include <cstring>

#include "quillon/objects/characters.h"
#include "quillon/objects/parser.h"

namespace quillon::objects {
namespace {

// Past the parenthesis that closes as many as were opened, or just the first one; false when there
// is none, with the cursor at the end.
bool PassClosing(Cursor& cursor, bool first) {
  int depth = 0;
  for (; cursor.at < cursor.end; ++cursor.at) {
    if (*cursor.at == '\\') {
      if (++cursor.at == cursor.end) break;
    } else if (*cursor.at == '(') {
      ++depth;
    } else if (*cursor.at == ')' && (--depth == 0 || first)) {
      ++cursor.at;
      return true;
    }
  }
  return false;
}

// Where parentheses do not match up to the end of the text, one too many was opened: the first that
// closes ends the string, so that the least of what follows is taken for a part of it.
bool SkipLiteralString(Cursor& cursor) {
  const Cursor start = cursor;
  if (PassClosing(cursor, false)) return true;
  const std::string_view text(start.at, static_cast<std::size_t>(start.end - start.at));
  Cursor own = start;
  own.end = start.at + std::min(text.find("endobj"), text.size());
  if (!PassClosing(own, true)) FailAt(start, "A string has no end");
  cursor.at = own.at;
  return false;
}

// A delimiter other than the closing one ends the string too: what follows is no part of it.
bool SkipHexString(Cursor& cursor) {
  const Cursor start = cursor;
  bool whole = true;
  for (++cursor.at; cursor.at < cursor.end; ++cursor.at) {
    if (*cursor.at == '>') {
      ++cursor.at;
      return whole;
    }
    if (HexValue(*cursor.at) >= 0 || IsSpace(*cursor.at)) continue;
    whole = false;
    if (!IsRegular(*cursor.at)) return false;
  }
  FailAt(start, "A hexadecimal string has no end");
}

void SkipRegular(Cursor& cursor) {
  while (cursor.at < cursor.end && IsRegular(*cursor.at)) ++cursor.at;
}

bool StartsKeyword(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Moves over one token; answers by how much it changes the nesting.
int SkipToken(Cursor& cursor) {
  const char c = *cursor.at;
  const bool doubled = cursor.end - cursor.at > 1 && cursor.at[1] == c;
  switch (c) {
    case '(':
      SkipString(cursor);
      return 0;
    case '<':
      if (!doubled) {
        SkipString(cursor);
        return 0;
      }
      cursor.at += 2;
      return 1;
    case '>':
      cursor.at += doubled ? 2 : 1;
      return -1;
    case '[':
    case ']':
      ++cursor.at;
      return c == '[' ? 1 : -1;
    case '/':
      ++cursor.at;
      SkipRegular(cursor);
      return 0;
    default:
      ++cursor.at;
      if (IsRegular(c)) SkipRegular(cursor);
      return 0;
  }
}

}  // namespace

bool EndsObject(std::string_view word) {
  return word == "endobj" || word == "stream" || word == "obj" || word == "xref" ||
         word == "trailer" || word == "startxref";
}

bool SkipString(Cursor& cursor) {
  return *cursor.at == '(' ? SkipLiteralString(cursor) : SkipHexString(cursor);
}

void SkipSpace(Cursor& cursor) {
  for (; cursor.at < cursor.end; ++cursor.at) {
    if (*cursor.at == '%') {
      while (cursor.at < cursor.end && *cursor.at != '\n' && *cursor.at != '\r') ++cursor.at;
      if (cursor.at == cursor.end) return;
    } else if (!IsSpace(*cursor.at)) {
      return;
    }
  }
}

std::optional<std::uint64_t> TakeUnsigned(Cursor& cursor) {
  Cursor ahead = cursor;
  SkipSpace(ahead);
  const char* start = ahead.at;
  std::uint64_t value = 0;
  constexpr std::uint64_t kCeiling = std::uint64_t{1} << 48;
  for (; ahead.at < ahead.end && IsDecimalDigit(*ahead.at); ++ahead.at) {
    value = std::min(kCeiling, value * 10 + static_cast<std::uint64_t>(*ahead.at - '0'));
  }
  if (ahead.at == start || (ahead.at < ahead.end && IsRegular(*ahead.at))) return std::nullopt;
  cursor = ahead;
  return value;
}

bool TakeKeyword(Cursor& cursor, std::string_view keyword) {
  Cursor ahead = cursor;
  SkipSpace(ahead);
  const auto left = static_cast<std::size_t>(ahead.end - ahead.at);
  if (left < keyword.size() || std::memcmp(ahead.at, keyword.data(), keyword.size()) != 0) {
    return false;
  }
  ahead.at += keyword.size();
  cursor = ahead;
  return true;
}

std::optional<std::uint32_t> TakeObjectHeader(Cursor& cursor, std::uint16_t* generation) {
  Cursor ahead = cursor;
  const auto number = TakeUnsigned(ahead);
  const auto counted = TakeUnsigned(ahead);
  if (!number || !counted || *number == 0 || *number > kMaxObjectNumber || *counted > 0xFFFF ||
      !TakeKeyword(ahead, "obj")) {
    return std::nullopt;
  }
  *generation = static_cast<std::uint16_t>(*counted);
  cursor = ahead;
  return static_cast<std::uint32_t>(*number);
}

std::string_view SkipToKeyword(Cursor& cursor) {
  for (SkipSpace(cursor); cursor.at < cursor.end; SkipSpace(cursor)) {
    if (StartsKeyword(*cursor.at)) {
      Cursor word = cursor;
      SkipRegular(word);
      const std::string_view text(cursor.at, static_cast<std::size_t>(word.at - cursor.at));
      if (EndsObject(text)) return text;
      cursor = word;
    } else {
      SkipToken(cursor);
    }
  }
  return {};
}

void SkipOneValue(Cursor& cursor) {
  int depth = 0;
  do {
    SkipSpace(cursor);
    if (cursor.at == cursor.end) return;
    depth += SkipToken(cursor);
  } while (depth > 0);
}

}  // namespace quillon::objects
