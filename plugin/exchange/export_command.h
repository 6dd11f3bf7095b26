// The command that writes the active document's form data into a file.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Has the user choose the file, ends a text edit in progress and writes the FDF. Nothing happens
// when the user cancels or no document is active. Raises what goes wrong; no file is left then.
void ExportFormData();

// Adds "Quillform:ExportFDF" to the host's menu "Export".
void AddExportItem();

}  // namespace quillform
