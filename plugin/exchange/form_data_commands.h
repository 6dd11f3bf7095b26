// The commands that move form data between the active document and a file.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Has the user choose the file, ends a text edit in progress and writes the FDF. Nothing happens
// when the user cancels or no document is active. Raises what goes wrong; no file is left then.
void ExportFormData();

// Has the user choose the FDF and imports it (fdf_reader.h). Nothing happens when the user cancels
// or no document is active.
void ImportFormData();

// Adds "Quillform:ImportFDF" to the host's menu "Import" and "Quillform:ExportFDF" to its menu
// "Export".
void AddFormDataItems();

}  // namespace quillform
