// Objects without parts: names, numbers, references, strings, words (ISO 32000-1, 7.3.2-5). Each
// starts where the cursor stands and leaves it behind.
#pragma once

#include <cstdint>
#include <string_view>

#include "quillon/objects/parser.h"

namespace quillon::objects {

// Undoes #xx (ISO 32000-1, 7.3.5). A number sign that is no escape stands for itself, as in files
// from before escapes; so does #00, which no name may contain.
NameCode ParseName(Document& doc, Cursor& cursor);

Value ParseNumberOrReference(Document& doc, Cursor& cursor, std::uint32_t parent);
Value ParseString(Document& doc, Cursor& cursor, std::uint32_t parent);

// A word that is no object is null. Throws HostFailure for one that ends an object.
Value ParseWord(Document& doc, Cursor& cursor);

// Whether a word that ends an object stands here. REQUIRES a character.
bool AtObjectEnd(const Cursor& cursor);

// For what is no PDF and was read as best it can be: the object is not copied as it stands.
void WarnOdd(Document& doc, const Cursor& where, std::string_view text);

}  // namespace quillon::objects
