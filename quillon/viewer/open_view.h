// Opening and closing views.
//
// Saving and closing. Plug-ins keep working entries in a document while it is shown and take them
// out when its view closes, which is too late for a file written before. So a document that is
// saved and closed goes through
//     PrepareSave(view); SaveDocumentFile(doc, file); CloseView(view);
// and one that is saved and stays open through
//     PrepareSave(view); SaveDocumentFile(doc, file); ResumeAfterSave(view);
// Saving itself sends nothing, and nothing that CloseView brings about reaches the file any more.
#pragma once

#include <string>

#include "quillon/objects/pdf_file.h"
#include "sdk/types.h"

namespace quillon {

// Opens a document and shows it: makes the view, makes it active, sends kNoteDocOpened. Throws
// HostFailure when the file cannot be opened. This goes past what plug-ins put in the place of
// Viewer.OpenDocument; OfferedTables().viewer.OpenDocument (start.h) does not.
DocView OpenViewOfFile(const std::string& file, const OpenOptions& options = {});

// A view of a document that is open already; closing the last view closes the document.
DocView OpenViewOfDocument(DocHandle doc);

// Ends what is being edited in the view and has plug-ins put the document in order
// (kNoteDocChanged); its form is not live afterwards.
void PrepareSave(DocView view);

// Makes the form live again (kNotePermissionsChanged).
void ResumeAfterSave(DocView view);

// Closes every view, newest first.
void CloseAllViews();

}  // namespace quillon
