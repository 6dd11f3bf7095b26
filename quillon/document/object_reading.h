// Reading objects whose kind the file does not promise: what does not fit counts as missing.
#pragma once

#include <optional>
#include <string>

#include "sdk/objects_table.h"
#include "sdk/types.h"

namespace quillon::document {

bool IsKind(ObjectHandle object, ObjectKind kind);
bool IsNull(ObjectHandle object);

// A dictionary or a stream.
bool HasEntries(ObjectHandle object);

// The entry, or the null object when `dict` has no entries.
ObjectHandle EntryOf(ObjectHandle dict, Atom key);

std::optional<Fixed> NumberOf(ObjectHandle object);
Atom NameOr(ObjectHandle object, Atom otherwise);
std::int32_t IntegerOr(ObjectHandle object, std::int32_t otherwise);
std::string BytesOf(ObjectHandle string);

// An array of four numbers, normalised: left <= right and bottom <= top (ISO 32000-1, 7.9.5).
std::optional<FixedRect> RectOf(ObjectHandle object);

// A new direct array [left bottom right top].
ObjectHandle NewRect(ObjectDoc doc, const FixedRect& rect);

}  // namespace quillon::document
