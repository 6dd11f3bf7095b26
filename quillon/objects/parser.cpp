#include "quillon/objects/parser.h"

#include <algorithm>
#include <unordered_map>

#include "quillon/objects/characters.h"
#include "quillon/objects/leaf_parser.h"
#include "quillon/objects/limits.h"

namespace quillon::objects {
namespace {

bool StandsAt(Cursor cursor, std::string_view word) { return TakeKeyword(cursor, word); }

// Takes one of the characters that end something which was not begun here.
bool TakeStray(Document& doc, Cursor& cursor, std::string_view stray) {
  if (cursor.at == cursor.end || stray.find(*cursor.at) == std::string_view::npos) return false;
  WarnOdd(doc, cursor, "A bracket, brace or parenthesis stands where it ends nothing.");
  ++cursor.at;
  SkipSpace(cursor);
  return true;
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
    if (*cursor.at == ']') {
      ++cursor.at;
      break;
    }
    if (StandsAt(cursor, ">>") || AtObjectEnd(cursor)) {
      WarnOdd(doc, start, "An array has no end; it was ended where its object ends.");
      break;
    }
    if (TakeStray(doc, cursor, ")}{>")) continue;
    const Value value = ParseNested(doc, cursor, number, depth + 1);
    doc.elementStack.push_back(value);
  }
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
  WarnOdd(doc, where,
          "A dictionary has the entry " + std::string(NameText(doc, entry.key)) + " twice.");
  stack[*known].value = entry.value;
}

void ParseEntry(Document& doc, Cursor& cursor, DictReading& dict, std::uint32_t parent, int depth) {
  const Cursor start = cursor;
  const NameCode key = ParseName(doc, cursor);
  SkipSpace(cursor);
  while (TakeStray(doc, cursor, ")]}{")) {
  }
  if (cursor.at < cursor.end && (*cursor.at == '>' || AtObjectEnd(cursor))) {
    return WarnOdd(doc, start, "An entry of a dictionary has no value.");
  }
  const Value value = ParseNested(doc, cursor, parent, depth);
  PushEntry(doc, dict, {key, value}, start);
}

// A value where a key should be. When the entry before has a name for its value, it is that one's
// value that is missing, and the name is the key of this one.
void ParseKeylessEntry(Document& doc, Cursor& cursor, DictReading& dict, std::uint32_t parent,
                       int depth) {
  if (TakeStray(doc, cursor, ")]}{")) return;
  const Cursor start = cursor;
  const Value value = ParseNested(doc, cursor, parent, depth);
  auto& stack = doc.entryStack;
  if (stack.size() == dict.first || stack.back().value.tag != ValueTag::kName) {
    return WarnOdd(doc, start, "A value in a dictionary has no key; it was left out.");
  }
  WarnOdd(doc, start, "An entry of a dictionary has no value.");
  const NameCode key = stack.back().value.payload;
  dict.places.erase(stack.back().key);
  stack.pop_back();
  PushEntry(doc, dict, {key, value}, start);
}

// At ">>", or at what else ends a dictionary.
void EndDict(Document& doc, Cursor& cursor, const Cursor& start) {
  if (TakeKeyword(cursor, ">>")) return;
  WarnOdd(doc, start,
          TakeKeyword(cursor, ">")
              ? "A dictionary ends with one \">\" instead of two."
              : "A dictionary has no end; it was ended where its object ends.");
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
    if (*cursor.at == '>' || AtObjectEnd(cursor)) break;
    if (*cursor.at == '/') {
      ParseEntry(doc, cursor, reading, number, depth + 1);
    } else {
      ParseKeylessEntry(doc, cursor, reading, number, depth + 1);
    }
  }
  EndDict(doc, cursor, start);
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
    case '+':
    case '-':
    case '.':
      return ParseNumberOrReference(doc, cursor, parent);
    default:
      if (!IsRegular(*cursor.at)) FailAt(cursor, "A character is where no object can start");
      if (IsDecimalDigit(*cursor.at)) return ParseNumberOrReference(doc, cursor, parent);
      return ParseWord(doc, cursor);
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
    CheckCells(doc);  // what was made up to there stays
    throw;
  }
}

}  // namespace quillon::objects
