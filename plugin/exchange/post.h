// Form data on its way to a URL.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Sends the bytes of an open file, from its position on, to the URL that the action's file
// specification names (relative to the document's own file): a block of header lines, then the
// file. The request is made when the URL's file is closed. Raises ownErrors.openUrlFailed when the
// URL cannot be opened, and what the link plug-in says when the server cannot be asked.
void PostFormData(DocView view, ActionHandle action, FileHandle file, const char* contentType);

}  // namespace quillform
