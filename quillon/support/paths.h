// Paths as the host's own code uses them.
#pragma once

#include <cstddef>
#include <string>

#include "sdk/types.h"

namespace quillon {

// What a PathHandle stands for.
struct PathRecord {
  FileSystemHandle fileSystem;
  std::string text;  // full, UTF-8
};

// Throws HostFailure (kErrorBadParameter) for a handle that is not alive.
const PathRecord& PathRecordOf(PathHandle path);

// The full text, UTF-8.
std::string PathString(PathHandle path);

// A path in the default file system, released by the caller. Throws HostFailure (kErrorOpenFile)
// for a text that cannot name a file.
PathHandle PathOf(const std::string& utf8);

// For leak checks.
std::size_t LivePathCount();

}  // namespace quillon
