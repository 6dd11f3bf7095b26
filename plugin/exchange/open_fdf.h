// Opening a form data file: the form that it belongs to is found and opened.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// What stands in the place of Viewer.OpenDocument. A file that is no FDF is left to what stood
// there before. Otherwise: the view of the form with the data in it, or null; what went wrong, or
// that the form was not found, has then been told to the user.
DocView OpenFileWithFDF(PathHandle path, quillon::FileSystemHandle fileSystem, const char* title,
                        std::uint32_t flags);

// Puts it there.
void ReplaceOpenDocument();

}  // namespace quillform
