// Opening, saving and closing documents, for the host's own rooms and the program. The operations
// of the `Document` table work on the documents opened here.
//
// Saving sends no notification. Plug-ins may keep working entries in a document until its view
// closes; viewer/open_view.h tells how to have them put in order first.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "quillon/objects/pdf_file.h"
#include "sdk/types.h"

namespace quillon {

// They throw HostFailure when the bytes are no PDF file or cannot be read. Paths are UTF-8.
DocHandle OpenDocumentFile(const std::string& file, const OpenOptions& options = {});
DocHandle OpenDocumentBytes(std::string bytes, const OpenOptions& options = {});

// A document that was read from an open file of any file system; the file is the document's from
// here on.
DocHandle OpenDocumentStream(FileHandle file);

// Writes the whole document, replacing the file only when everything is written. The document then
// counts as not modified.
void SaveDocumentFile(DocHandle doc, const std::string& file, const SaveOptions& options = {});

// The document as SaveDocumentFile would write it; its flags stay.
std::string DocumentToBytes(DocHandle doc, const SaveOptions& options = {});

// Frees the document and every handle that belongs to it. Sends nothing: CloseView does.
void CloseDocument(DocHandle doc);

// What was wrong with the file but could be lived with, as far as it has been read.
const std::vector<FileWarning>& DocumentWarnings(DocHandle doc);

// The path it was opened from, empty when there is none.
const std::string& DocumentPath(DocHandle doc);

// Newest first.
std::vector<DocHandle> OpenDocuments();

// Replaces the permission word (bits of quillon::Permission) and sends kNotePermissionsChanged.
void SetPermissions(DocHandle doc, std::uint32_t permissions);

// Pages that were acquired and not released yet, in all documents. For leak checks.
std::size_t AcquiredPageCount();

}  // namespace quillon
