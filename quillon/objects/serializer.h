// From objects to the text of a file.
#pragma once

#include <string>
#include <string_view>

#include "quillon/objects/document.h"

namespace quillon::objects {

// Appends a value, nothing of it encrypted. A blank is put before it where it would run into what
// stands there. Strings and numbers that nobody read or changed keep their spelling.
void AppendValue(Document& doc, std::string* out, const Value& value);

void AppendName(std::string* out, std::string_view name);

// `asHex` decides the spelling; otherwise it depends on the bytes.
void AppendString(std::string* out, std::string_view bytes, bool asHex);

// Appends "N G obj ... endobj" and a line end; a stream's Length is made right.
// What an encrypted document encrypts is encrypted.
void AppendObject(Document& doc, std::string* out, std::uint32_t number);

}  // namespace quillon::objects
