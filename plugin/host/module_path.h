// Where the module lies.
#pragma once

#include <cstddef>

namespace quillform {

// The folder of the module's file, followed by `fileName` when one is given. Folders are separated
// as the platform does it. False, and an empty path, when the module's file is not known or the
// path does not fit into `size` bytes.
bool ModuleDirectoryPath(char* path, std::size_t size, const char* fileName);

}  // namespace quillform
