// How documents are opened and written: the options that commands share.
#pragma once

#include <string>

#include "quillon/objects/pdf_file.h"
#include "sdk/types.h"

namespace quillon::app {

// Reads the first line of the file, or of the standard input for "-": a password on the command
// line is seen by everybody who lists processes. Throws HostFailure.
std::string PasswordFromFile(const std::string& file);

// The password that every document is opened with from here on, UTF-8.
void UsePassword(const std::string& password);
OpenOptions OptionsForOpening();

// Walks the field tree. What is wrong with it becomes warnings of the document. Answers whether the
// form holds a signature: a signature field with a value, the form's flag that says it must only be
// appended to (SigFlags bit 2, ISO 32000-1, table 219), or permissions granted by a signature
// (Perms). A signature field that nobody signed is none.
bool InspectForm(DocHandle doc);

// Inspects the form and throws HostFailure when writing the document as told would make its
// signatures invalid.
void CheckSignatures(DocHandle doc, bool append, bool force);

// Has plug-ins put the view's document in order and writes it to the file, or to the standard
// output for "-"; its form is not live afterwards. `append` writes the changes behind the file's
// own bytes. Throws HostFailure.
void WriteDocument(DocView view, const std::string& target, bool append = false);

}  // namespace quillon::app
