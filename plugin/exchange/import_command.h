// The command that fills the active document's form from a file.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Has the user choose the FDF and imports it (fdf_reader.h). Nothing happens when the user cancels
// or no document is active.
void ImportFormData();

// Adds "Quillform:ImportFDF" to the host's menu "Import".
void AddImportItem();

}  // namespace quillform
