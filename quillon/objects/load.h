// Reading objects when they are first touched.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillon/objects/document.h"

namespace quillon::objects {

// The value of an object; null for a number not in use, and with a warning for an object that
// cannot be read. Throws HostFailure while the document is being opened instead, and when too much
// was read.
Value LoadObject(Document& doc, std::uint32_t number);

// The value that an object has in the file, whatever became of it since. It stands in no container.
Value ReadAnew(Document& doc, std::uint32_t number);

// Follows a reference; other values are their own. A reference to nothing is null.
Value Dereference(Document& doc, const Value& value);

// Parses the indirect object at a place in doc.text, streams included; false when none stands
// there. What it makes counts as standing in object *number.
bool ParseObjectAt(Document& doc, std::uint64_t position, std::uint32_t* number, Value* value);

// A stream's bytes as stored, decrypted. `number` is the stream's object number.
std::string_view StoredBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number);

// The same as the file has them, or as they were made (stream_extent.cpp).
std::string_view FileBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number);

// The text of an object in the file, from its number to its "endobj", both included; of a member
// of an object stream, the value alone. Empty when no such object stands where it should, when it
// has no end of its own, and when something in it is wrong: such objects are written anew.
std::string_view ObjectText(Document& doc, std::uint32_t number);

// The members of an object stream (ISO 32000-1, 7.5.7). `number` must name one.
const ObjectStream& ObjectStreamOf(Document& doc, std::uint32_t number);

// Decodes all that hold objects, but for those that cannot be read.
void ReadObjectStreams(Document& doc);

// Dictionary look-up by name: null when missing; references are not followed.
Value EntryValue(Document& doc, std::uint32_t dictCell, NameCode key);
Value EntryValue(Document& doc, std::uint32_t dictCell, std::string_view key);

// Whether a dictionary's Type, references followed, is that name.
bool TypeIs(Document& doc, std::uint32_t dictCell, std::string_view name);

// The same with references followed and integers wanted; `otherwise` for everything else.
std::int32_t IntegerEntry(Document& doc, std::uint32_t dictCell, std::string_view key,
                          std::int32_t otherwise);

// The first string of a trailer's ID, which a file keeps for good; empty when there is none.
std::string FirstFileId(Document& doc, std::uint32_t trailer);

// The cell when a value (references followed) is one of that kind, else 0.
std::uint32_t CellOf(Document& doc, const Value& value, CellKind kind);

// The integer that a direct value is.
bool ReadInteger(Document& doc, const Value& value, std::int32_t* integer);

// The bytes of a string cell, decoded now if they were not.
std::string_view StringBytes(Document& doc, std::uint32_t stringCell);

}  // namespace quillon::objects
