#include "plugin/appearance/da_parser.h"

#include <array>
#include <cstring>
#include <string_view>

#include "plugin/appearance/fixed_math.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr std::size_t kMaxTokens = 30;
constexpr std::size_t kMaxPending = 4;

struct Parser {
  std::array<const char*, kMaxTokens> tokens;
  std::size_t tokenCount;
  std::array<Fixed, kMaxPending> pending;
  std::size_t pendingCount;
  bool sizeFound;
  TextAppearance* look;
};

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Ends each token in `buffer` with a NUL.
void CutIntoTokens(std::string& buffer, Parser& parser) {
  std::size_t at = 0;
  while (parser.tokenCount < kMaxTokens) {
    while (at < buffer.size() && IsSpace(buffer[at])) ++at;
    if (at == buffer.size()) return;
    const std::size_t start = at;
    while (at < buffer.size() && !IsSpace(buffer[at])) ++at;
    if (at < buffer.size()) buffer[at++] = '\0';
    parser.tokens[parser.tokenCount++] = buffer.data() + start;
  }
}

// The empty text after the last token.
const char* TokenAt(const Parser& parser, std::size_t index) {
  return index < parser.tokenCount ? parser.tokens[index] : "";
}

struct Operand {
  char letter;  // of the operator, after its T
  Fixed TextAppearance::*target;
};
constexpr Operand kOperands[] = {
    {'L', &TextAppearance::leading},     {'c', &TextAppearance::charSpacing},
    {'f', &TextAppearance::fontSize},    {'s', &TextAppearance::rise},
    {'w', &TextAppearance::wordSpacing}, {'z', &TextAppearance::horizScaling},
};

void TakeTextOperand(Parser& parser, const char* token, char letter) {
  const Fixed value = Support->TextToFixed(token);
  if (letter == 'r') {
    parser.look->renderMode = static_cast<std::uint16_t>(WholePart(value));
    return;
  }
  for (const Operand& operand : kOperands) {
    if (operand.letter != letter) continue;
    parser.look->*operand.target = value;
    if (letter == 'f') parser.sizeFound = true;
  }
}

bool AddPending(Parser& parser, Fixed value) {
  if (parser.pendingCount == kMaxPending) return false;
  parser.pending[parser.pendingCount++] = value;
  return true;
}

struct ColourOperator {
  const char* name;
  std::int16_t space;
  std::size_t operands;
  ColourRec TextAppearance::*target;
};
constexpr ColourOperator kColourOperators[] = {
    {"g", 0, 1, &TextAppearance::fillColour},  {"G", 0, 1, &TextAppearance::strokeColour},
    {"rg", 1, 3, &TextAppearance::fillColour}, {"RG", 1, 3, &TextAppearance::strokeColour},
    {"k", 2, 4, &TextAppearance::fillColour},  {"K", 2, 4, &TextAppearance::strokeColour},
};

// Operators are told by how they begin; false when the operands do not fit or there is none.
bool TakeColour(Parser& parser, const char* token) {
  for (const ColourOperator& op : kColourOperators) {
    if (std::strncmp(token, op.name, std::strlen(op.name)) != 0) continue;
    if (parser.pendingCount != op.operands) return false;
    ColourRec colour{op.space, 0, 0, 0, 0};
    Fixed* const parts[] = {&colour.c1, &colour.c2, &colour.c3, &colour.c4};
    for (std::size_t i = 0; i < op.operands; ++i) *parts[i] = parser.pending[i];
    parser.look->*op.target = colour;
    parser.pendingCount = 0;
    return true;
  }
  return false;
}

bool TakeToken(Parser& parser, const char* token) {
  switch (token[0]) {
    case '.':
    case '0':
      return AddPending(parser, Support->TextToFixed(token));
    case '1':
      // A component beyond full intensity counts as full.
      return AddPending(parser, kFixedOne);
    case 'g':
    case 'G':
    case 'r':
    case 'R':
    case 'k':
    case 'K':
      return TakeColour(parser, token);
    default:
      return true;
  }
}

bool ReadTokens(Parser& parser) {
  for (std::size_t i = 0; i < parser.tokenCount; ++i) {
    const char* token = parser.tokens[i];
    const char* next = TokenAt(parser, i + 1);
    if (token[0] == '/' && std::strcmp(TokenAt(parser, i + 2), "Tf") == 0) {
      parser.look->fontResource = Core->AtomFromName(token + 1);
    } else if (next[0] == 'T') {
      TakeTextOperand(parser, token, next[1]);
      ++i;
    } else if (!TakeToken(parser, token)) {
      return false;
    }
  }
  return true;
}

// Texts parsed before. Fields of a form mostly share a handful of texts, and every appearance that
// is built parses one.
struct ParsedText {
  std::string text;
  std::string resource;  // interned again when used, so that no atom is kept here
  TextAppearance look;
};
constexpr std::size_t kParsedTexts = 64;
constexpr std::size_t kLongestKept = 255;
std::array<ParsedText, kParsedTexts> parsedTexts;

ParsedText& PlaceOf(std::string_view text) {
  return parsedTexts[std::hash<std::string_view>{}(text) % kParsedTexts];
}

bool TakeParsed(std::string_view text, TextAppearance* look) {
  const ParsedText& place = PlaceOf(text);
  if (text.empty() || place.text != text) return false;
  *look = place.look;
  look->baseFont = key::Helvetica;
  look->fontResource =
      place.resource.empty() ? kNoAtom : Core->AtomFromName(place.resource.c_str());
  return true;
}

void KeepParsed(std::string_view text, const TextAppearance& look) {
  if (text.size() > kLongestKept) return;
  const bool named = look.fontResource != kNoAtom;
  ParsedText kept{std::string(text), named ? Core->NameFromAtom(look.fontResource) : "", look};
  // A font named by the empty name cannot be told from none.
  if (named && kept.resource.empty()) return;
  PlaceOf(text) = std::move(kept);
}

}  // namespace

DAResult ParseDAText(const std::string& text, TextAppearance* look) {
  *look = DefaultTextAppearance();
  std::string buffer = text;
  Parser parser{};
  parser.look = look;
  CutIntoTokens(buffer, parser);
  if (!ReadTokens(parser)) {
    *look = NoTextAppearance();
    return DAResult::kMalformed;
  }
  return parser.sizeFound ? DAResult::kParsed : DAResult::kNoFont;
}

void ParseDA(ObjectHandle da, TextAppearance* look) {
  if (!IsKind(da, ObjectKind::kString)) Raise(quillon::kErrorBadParameter);
  std::uint32_t length = 0;
  const char* bytes = Objects->StringValue(da, &length);
  const std::string_view text(bytes, strnlen(bytes, length));
  if (TakeParsed(text, look)) return;
  const DAResult result = ParseDAText(std::string(text), look);
  if (result != DAResult::kParsed) Raise(quillon::kErrorBadObject);
  KeepParsed(text, *look);
}

}  // namespace quillform
