#include "quillon/objects/parser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

#include "quillon/objects/characters.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/numbers.h"

namespace quillon::objects {
namespace {

std::string_view RegularText(const Cursor& cursor) {
  const char* end = cursor.at;
  while (end < cursor.end && IsRegular(*end)) ++end;
  return {cursor.at, static_cast<std::size_t>(end - cursor.at)};
}

// Undoes #xx (ISO 32000-1, 7.3.5). A number sign that is no escape stands for itself, as in files
// from before escapes; so does #00, which no name may contain.
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

Value ParseNumberOrReference(Document& doc, Cursor& cursor, std::uint32_t parent) {
  const std::string_view text = RegularText(cursor);
  if (text.find_first_not_of("0123456789+-.") != std::string_view::npos) {
    FailAt(cursor, "Something that is no number stands where one should");
  }
  cursor.at += text.size();
  const ParsedNumber number = ParseNumber(text);
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
  const char* start = cursor.at;
  SkipOneValue(cursor);
  const std::string_view text(start, static_cast<std::size_t>(cursor.at - start));
  if (text.size() > 0x7FFFFFFF) FailAt(cursor, "A string is too long");
  const std::uint32_t cell = NewTextCell(doc, CellKind::kString, text, parent, 0);
  CellAt(doc.cells, cell).raw = true;
  return CellValue(cell);
}

Value ParseKeyword(Cursor& cursor) {
  const std::string_view word = RegularText(cursor);
  cursor.at += word.size();
  if (word == "true") return BooleanOf(true);
  if (word == "false") return BooleanOf(false);
  if (word == "null") return kNullValue;
  cursor.at -= word.size();
  FailAt(cursor, "A word that is no object stands where one should");
}

Value ParseNested(Document& doc, Cursor& cursor, std::uint32_t parent, int depth);

// The elements gather on a stack that all levels share, then move into a block of the right size.
template <typename Item>
void MoveFromStack(Document& doc, std::vector<Item>* stack, std::size_t start, Cell& cell) {
  const std::size_t count = stack->size() - start;
  if (count == 0) return;
  auto* items = AllocateArray<Item>(doc.pool, count);
  std::copy(stack->begin() + static_cast<std::ptrdiff_t>(start), stack->end(), items);
  stack->resize(start);
  cell.data = items;
  cell.size = cell.capacity = static_cast<std::uint32_t>(count);
}

Value ParseArray(Document& doc, Cursor& cursor, std::uint32_t parent, int depth) {
  const Cursor start = cursor;
  ++cursor.at;
  const std::uint32_t number = NewCell(doc.cells, CellKind::kArray);
  Cell& cell = CellAt(doc.cells, number);
  cell.parent = parent;
  const std::size_t first = doc.elementStack.size();
  for (;;) {
    SkipSpace(cursor);
    if (cursor.at == cursor.end) FailAt(start, "An array has no end");
    if (*cursor.at == ']') break;
    const Value value = ParseNested(doc, cursor, number, depth + 1);
    doc.elementStack.push_back(value);
  }
  ++cursor.at;
  MoveFromStack(doc, &doc.elementStack, first, cell);
  return CellValue(number);
}

// Dictionaries of usual sizes are looked through; larger ones get an index.
constexpr std::size_t kSearched = 64;

struct DictReading {
  std::size_t first;                                 // of its entries, on the stack
  std::unordered_map<NameCode, std::size_t> places;  // on the stack, once there are many
};

std::optional<std::size_t> PlaceOfKey(const std::vector<DictEntry>& stack, DictReading& dict,
                                      NameCode key) {
  if (stack.size() - dict.first < kSearched) {
    for (std::size_t i = dict.first; i < stack.size(); ++i) {
      if (stack[i].key == key) return i;
    }
    return std::nullopt;
  }
  if (dict.places.empty()) {
    for (std::size_t i = dict.first; i < stack.size(); ++i) dict.places.emplace(stack[i].key, i);
  }
  const auto [place, isNew] = dict.places.emplace(key, stack.size());
  return isNew ? std::nullopt : std::optional(place->second);
}

// The last of several entries with one key counts, as most readers have it.
void PushEntry(Document& doc, DictReading& dict, const DictEntry& entry, const Cursor& where) {
  auto& stack = doc.entryStack;
  const auto known = PlaceOfKey(stack, dict, entry.key);
  if (!known) return stack.push_back(entry);
  Warn(doc, "A dictionary has the entry " + std::string(NameText(doc, entry.key)) + " twice.",
       where.object, OffsetOf(where));
  if (ObjectSlot* slot = FindSlot(doc.objects, where.object)) slot->mended = true;
  stack[*known].value = entry.value;
}

Value ParseDict(Document& doc, Cursor& cursor, std::uint32_t parent, int depth) {
  const Cursor start = cursor;
  cursor.at += 2;
  const std::uint32_t number = NewCell(doc.cells, CellKind::kDict);
  Cell& cell = CellAt(doc.cells, number);
  cell.parent = parent;
  DictReading reading{doc.entryStack.size(), {}};
  for (;;) {
    SkipSpace(cursor);
    if (cursor.at == cursor.end) FailAt(start, "A dictionary has no end");
    if (*cursor.at == '>') break;
    if (*cursor.at != '/') FailAt(cursor, "A dictionary has an entry without a name");
    const Cursor entry = cursor;
    const NameCode key = ParseName(doc, cursor);
    const Value value = ParseNested(doc, cursor, number, depth + 1);
    PushEntry(doc, reading, {key, value}, entry);
  }
  cursor.at += cursor.end - cursor.at > 1 && cursor.at[1] == '>' ? 2 : 1;
  MoveFromStack(doc, &doc.entryStack, reading.first, cell);
  return CellValue(number);
}

Value ParseNested(Document& doc, Cursor& cursor, std::uint32_t parent, int depth) {
  SkipSpace(cursor);
  if (cursor.at == cursor.end) FailAt(cursor, "The text of an object ends too early");
  if (depth > kMaxNesting) FailAt(cursor, "Arrays and dictionaries are nested too deep");
  switch (*cursor.at) {
    case '/':
      return NameOf(ParseName(doc, cursor));
    case '(':
      return ParseString(doc, cursor, parent);
    case '<':
      if (cursor.end - cursor.at > 1 && cursor.at[1] == '<') {
        return ParseDict(doc, cursor, parent, depth);
      }
      return ParseString(doc, cursor, parent);
    case '[':
      return ParseArray(doc, cursor, parent, depth);
    case 't':
    case 'f':
    case 'n':
      return ParseKeyword(cursor);
    default:
      if (!IsRegular(*cursor.at)) FailAt(cursor, "A character is where no object can start");
      return ParseNumberOrReference(doc, cursor, parent);
  }
}

}  // namespace

Cursor CursorAt(const Document& doc, std::uint64_t position, std::uint32_t object) {
  const auto start = static_cast<std::size_t>(std::min<std::uint64_t>(position, doc.text.size()));
  return {doc.text.data() + start, doc.text.data() + doc.text.size(), object, doc.text.data(),
          FileOffset(doc, 0)};
}

std::int64_t OffsetOf(const Cursor& cursor) {
  if (cursor.fileStart == nullptr) return cursor.offset;
  return cursor.offset + (cursor.at - cursor.fileStart);
}

void FailAt(const Cursor& cursor, const std::string& what) {
  Fail(kErrorBadObject, what + ".", cursor.object, OffsetOf(cursor));
}

Value ParseValue(Document& doc, Cursor& cursor, std::uint32_t parent) {
  doc.elementStack.clear();
  doc.entryStack.clear();
  const char* start = cursor.at;
  try {
    const Value value = ParseNested(doc, cursor, parent, 0);
    Spend(doc, static_cast<std::uint64_t>(cursor.at - start));
    CheckCells(doc);
    return value;
  } catch (const HostFailure&) {
    Spend(doc, static_cast<std::uint64_t>(cursor.at - start));
    throw;
  }
}

}  // namespace quillon::objects
