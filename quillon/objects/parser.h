// From the text of a file to objects (ISO 32000-1, 7.3).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "quillon/objects/document.h"

namespace quillon::objects {

// A place in a text, and what to call it in errors.
struct Cursor {
  const char* at;
  const char* end;
  std::uint32_t object;   // 0 when the text is of no one object
  const char* fileStart;  // the byte of file offset `offset`; null when the text is not the
  std::int64_t offset;    // file's: `offset` then stands for all of it
};

// A cursor in doc.text.
Cursor CursorAt(const Document& doc, std::uint64_t position, std::uint32_t object);

std::int64_t OffsetOf(const Cursor& cursor);
[[noreturn]] void FailAt(const Cursor& cursor, const std::string& what);

// White space and comments.
void SkipSpace(Cursor& cursor);

// Each skips white space first and leaves the cursor alone when something else follows.
std::optional<std::uint64_t> TakeUnsigned(Cursor& cursor);
bool TakeKeyword(Cursor& cursor, std::string_view keyword);

// "N G obj": its number, and generation in *generation.
std::optional<std::uint32_t> TakeObjectHeader(Cursor& cursor, std::uint16_t* generation);

// Parses one object; containers become cells below `parent`. What it makes borrows the text. What
// is no PDF but leaves no doubt about the rest is read as best it can be, with a warning, and the
// object counts as mended. Throws HostFailure (kErrorBadObject) for the rest.
Value ParseValue(Document& doc, Cursor& cursor, std::uint32_t parent);

// Moves to the next word that ends an object or a file's part: "endobj", "stream", "obj", "xref",
// "trailer", "startxref"; or to the end. Answers the word, which the cursor then stands at.
std::string_view SkipToKeyword(Cursor& cursor);

// Whether no object contains the word: at one of them an object has ended, even when its brackets
// do not match.
bool EndsObject(std::string_view word);

// Moves over one object.
void SkipOneValue(Cursor& cursor);

// Moves over a string, from its first delimiter on; false when its end is a guess or something in
// it is no part of a string. Throws HostFailure when there is none.
bool SkipString(Cursor& cursor);

// What a string object as written, with its delimiters, says (ISO 32000-1, 7.3.4).
std::string DecodeStringText(std::string_view written);

}  // namespace quillon::objects
