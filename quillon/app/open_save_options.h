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

struct SavingMode {
  bool append = false;  // write the changes behind the file's own bytes
  bool force = false;   // whatever becomes of signatures
};

enum class DocumentChange { kFields, kPages };

// Throws HostFailure when such a change, written as told, would make
// signatures invalid.
void CheckSignatures(DocHandle doc, const SavingMode& mode,
                     DocumentChange change = DocumentChange::kFields);

// Has plug-ins put the view's document in order; its form is not live afterwards. Throws
// HostFailure when a field was changed that a signature locks.
void PrepareWriting(DocView view, const SavingMode& mode);

// Prepares the view's document and writes it to the file, or to the standard output for "-". An
// object that cannot be read is left out, but not when the file is the one that was read. Throws
// HostFailure.
void WriteDocument(DocView view, const std::string& target, const SavingMode& mode = {});

}  // namespace quillon::app
