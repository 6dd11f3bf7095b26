// A form's values as a form data file (ISO 32000-1, 12.7.7): FDF.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// A new FDF document with the values of the selected fields (field_collection.h; the list may hold
// full names, too) and the name and identifiers of the document. `loadAll` loads all fields before.
// `basePath`, the platform's spelling of the path that the FDF will have, makes the document's name
// relative to it. Closed with Objects.CloseDocument, or given to WriteFDF.
ObjectDoc CreateFDFFromForm(DocHandle doc, ObjectHandle list, bool inclusion, bool includeEmpty,
                            bool exportCommand, bool loadAll, const char* basePath);

// Writes an FDF document and closes it, whatever comes of it. The file stays open, for the caller
// to close. Raises kErrorOpenFile when there can be no such file; when it cannot be written whole,
// it is deleted.
quillon::FileHandle WriteFDF(ObjectDoc fdf, PathHandle path);

}  // namespace quillform
