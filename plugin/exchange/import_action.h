// ImportData actions (ISO 32000-1, 12.7.5.4).
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Imports the file that the action names. It is looked for beside the document; else, and always in
// a browser, by its name along the platform's search path; when it is nowhere, the user is asked.
void PerformImportData(ActionHandle action, DocView view);

// Has the user choose the action's file, until it is an FDF or the user cancels.
void EditImportData(ActionHandle action, DocView view);

}  // namespace quillform
