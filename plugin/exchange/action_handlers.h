// Which types of actions the plug-in performs, edits and describes, and the item for the actions of
// pages.
#pragma once

namespace quillform {

// The item for the actions of pages; Hide, in the place of the host's own handler for it if there
// is one; SetState, unless the host has one. Always true.
bool RegisterFormActionHandlers();

// SubmitForm (when the link plug-in's table was obtained), ResetForm and ImportData; then form data
// files are looked at before the viewer opens them (open_fdf.h). Always true.
bool RegisterDataActionHandlers();

}  // namespace quillform
