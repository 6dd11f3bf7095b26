// Form data that waits for a form which is not open: FDF files, to be applied when a browser shows
// the form.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// A file is deleted when it has been used. One that never was is deleted in the end when it is the
// plug-in's own, and stays when it is the user's.
enum class FileOwner { kPlugIn, kUser };

// Takes `file` over. With a file and a document that something waits for already, the file is added
// to that; `detach` then makes it wait for the next time that the form opens. Otherwise something
// new waits: for the document (or null), and for what opens under `address` (the full text of its
// path, or null).
void AddPendingImport(DocHandle doc, const char* address, PathHandle file, bool detach,
                      FileOwner owner = FileOwner::kPlugIn);

// The form of a view has opened. In a browser, applies what waits for its address. A file that does
// more than setting values waits on, to be applied whenever the form opens; one that cannot be used
// is dropped.
void RunPendingImports(DocView view);

// A view is closing. Keeps the values of a changed form that a browser shows, until the same
// address opens again. What was kept before stays when they cannot be kept.
void KeepValuesOfClosing(DocView view);

// Lets go of every file that still waits, when the plug-in is unloaded.
void ReleasePendingImports();

// For exchangeHooks.
void ConnectPendingImports();

}  // namespace quillform
