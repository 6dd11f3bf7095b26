// Texts of the host's paths.
#pragma once

#include <string>

#include "plugin/host/host.h"

namespace quillform {

// The full text, and the text relative to the folder of the file `base`.
std::string TextOfPath(PathHandle path);
std::string RelativeTextOfPath(PathHandle path, PathHandle base);

// The path of the file that a document was read from; null for a new document. The caller
// releases it.
PathHandle AcquireDocumentPath(DocHandle doc);

// The same as text; empty for a new document.
std::string DocumentPathText(DocHandle doc);

// The text that a file specification (ISO 32000-1, 7.11) has under F or DOS, or is; empty for none.
std::string TextOfFileSpec(ObjectHandle spec);

}  // namespace quillform
