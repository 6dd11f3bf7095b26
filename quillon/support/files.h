// Open files as the host's own code uses them.
#pragma once

#include <cstddef>
#include <string>

#include "sdk/types.h"

namespace quillon {

// Every byte from the file's position to its end.
std::string ReadToEnd(FileHandle file);

// For leak checks.
std::size_t LiveFileCount();

}  // namespace quillon
