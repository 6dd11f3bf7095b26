// Choosing a file to open.
#pragma once

#include <cstddef>

#include "plugin/host/win32.h"

namespace quillform {

// What is asked for. Texts are host text; the extension stands without a point.
struct OpenFileQuestion {
  HWND owner;
  const char* title;
  const char* initialFolder;  // null: the platform chooses
  const char* fileType;       // for people, such as "Quillon Files"
  const char* extension;
  bool offerAllFiles;
};

// Puts the path chosen into `path` (size bytes). False, and an empty path, when the user cancels.
bool AskOpenFileName(const OpenFileQuestion& question, char* path, std::size_t size);

}  // namespace quillform
