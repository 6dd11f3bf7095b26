// Objects and streams as text, so that a test can state a whole dictionary in one line.
#pragma once

#include <string>

#include "plugin/host/host.h"

namespace quillform {

// As in a file, entries of dictionaries sorted by key; a stream shows its dictionary without
// Length.
std::string ShowObject(ObjectHandle object);

// The decoded bytes.
std::string StreamText(ObjectHandle stream);

}  // namespace quillform
