#include "winlet/strings.h"

#include <compare>
#include <string>
#include <vector>

#include "winlet/code_page.h"

namespace {

// An accented letter: its letter and which accent it bears. Letters that stand for two are ordered
// as the two.
struct Accented {
  char16_t character;
  const char* letters;
  int accent;
};

enum Accent {
  kPlain,
  kAcute,
  kGrave,
  kCircumflex,
  kDieresis,
  kTilde,
  kRing,
  kCedilla,
  kStroke,
  kCaron,
  kLigature
};

constexpr Accented kAccented[] = {
    {0x00C0, "A", kGrave},      {0x00C1, "A", kAcute},      {0x00C2, "A", kCircumflex},
    {0x00C3, "A", kTilde},      {0x00C4, "A", kDieresis},   {0x00C5, "A", kRing},
    {0x00C6, "AE", kLigature},  {0x00C7, "C", kCedilla},    {0x00C8, "E", kGrave},
    {0x00C9, "E", kAcute},      {0x00CA, "E", kCircumflex}, {0x00CB, "E", kDieresis},
    {0x00CC, "I", kGrave},      {0x00CD, "I", kAcute},      {0x00CE, "I", kCircumflex},
    {0x00CF, "I", kDieresis},   {0x00D0, "D", kStroke},     {0x00D1, "N", kTilde},
    {0x00D2, "O", kGrave},      {0x00D3, "O", kAcute},      {0x00D4, "O", kCircumflex},
    {0x00D5, "O", kTilde},      {0x00D6, "O", kDieresis},   {0x00D8, "O", kStroke},
    {0x00D9, "U", kGrave},      {0x00DA, "U", kAcute},      {0x00DB, "U", kCircumflex},
    {0x00DC, "U", kDieresis},   {0x00DD, "Y", kAcute},      {0x00DE, "TH", kLigature},
    {0x00DF, "ss", kLigature},  {0x00E0, "a", kGrave},      {0x00E1, "a", kAcute},
    {0x00E2, "a", kCircumflex}, {0x00E3, "a", kTilde},      {0x00E4, "a", kDieresis},
    {0x00E5, "a", kRing},       {0x00E6, "ae", kLigature},  {0x00E7, "c", kCedilla},
    {0x00E8, "e", kGrave},      {0x00E9, "e", kAcute},      {0x00EA, "e", kCircumflex},
    {0x00EB, "e", kDieresis},   {0x00EC, "i", kGrave},      {0x00ED, "i", kAcute},
    {0x00EE, "i", kCircumflex}, {0x00EF, "i", kDieresis},   {0x00F0, "d", kStroke},
    {0x00F1, "n", kTilde},      {0x00F2, "o", kGrave},      {0x00F3, "o", kAcute},
    {0x00F4, "o", kCircumflex}, {0x00F5, "o", kTilde},      {0x00F6, "o", kDieresis},
    {0x00F8, "o", kStroke},     {0x00F9, "u", kGrave},      {0x00FA, "u", kAcute},
    {0x00FB, "u", kCircumflex}, {0x00FC, "u", kDieresis},   {0x00FD, "y", kAcute},
    {0x00FE, "th", kLigature},  {0x00FF, "y", kDieresis},   {0x0152, "OE", kLigature},
    {0x0153, "oe", kLigature},  {0x0160, "S", kCaron},      {0x0161, "s", kCaron},
    {0x0178, "Y", kDieresis},   {0x017D, "Z", kCaron},      {0x017E, "z", kCaron},
};

// What a text is ordered by, the most important first.
struct SortKey {
  std::vector<int> signs;  // letters without case and accent, digits, other signs
  std::vector<int> accents;
  std::vector<int> cases;            // 0 small, 1 capital
  std::vector<std::size_t> ignored;  // where hyphens and apostrophes stand, and which
};

// Classes of signs, with room for every character in each.
constexpr int kDigits = 0x10000;
constexpr int kLetters = 0x20000;

void AddSign(SortKey& key, int sign, int accent, bool capital) {
  key.signs.push_back(sign);
  key.accents.push_back(accent);
  key.cases.push_back(capital ? 1 : 0);
}

void AddLetter(SortKey& key, char16_t letter, int accent) {
  const bool capital = letter >= u'A' && letter <= u'Z';
  AddSign(key, kLetters + (capital ? letter : letter - u'a' + u'A'), accent, capital);
}

void AddCharacter(SortKey& key, char16_t character) {
  if (character == u'-' || character == u'\'') {
    key.ignored.push_back(key.signs.size());
    key.ignored.push_back(character);
    return;
  }
  for (const Accented& accented : kAccented) {
    if (accented.character != character) continue;
    for (const char* letter = accented.letters; *letter != '\0'; ++letter) {
      AddLetter(key, static_cast<char16_t>(*letter), accented.accent);
    }
    return;
  }
  const bool letter =
      (character >= u'A' && character <= u'Z') || (character >= u'a' && character <= u'z');
  if (letter) return AddLetter(key, character, kPlain);
  const bool digit = character >= u'0' && character <= u'9';
  AddSign(key, (digit ? kDigits : 0) + character, kPlain, false);
}

SortKey SortKeyOf(LPCSTR text) {
  SortKey key;
  for (; *text != '\0'; ++text) AddCharacter(key, winlet::FromWindows1252(*text));
  return key;
}

int Compare(LPCSTR a, LPCSTR b, bool withCase) {
  if (a == nullptr || b == nullptr) return (a != nullptr) - (b != nullptr);
  // What both begin with decides nothing: each character has the same part in both keys.
  for (; *a != '\0' && *a == *b; ++a, ++b) {
  }
  const SortKey keyA = SortKeyOf(a);
  const SortKey keyB = SortKeyOf(b);
  std::strong_ordering order = keyA.signs <=> keyB.signs;
  if (std::is_eq(order)) order = keyA.accents <=> keyB.accents;
  if (std::is_eq(order) && withCase) order = keyA.cases <=> keyB.cases;
  if (std::is_eq(order)) order = keyA.ignored <=> keyB.ignored;
  return static_cast<int>(std::is_gt(order)) - static_cast<int>(std::is_lt(order));
}

}  // namespace

int lstrcmpA(LPCSTR a, LPCSTR b) { return Compare(a, b, true); }

int lstrcmpiA(LPCSTR a, LPCSTR b) { return Compare(a, b, false); }
