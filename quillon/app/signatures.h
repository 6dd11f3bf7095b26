// What the signatures of a document forbid (ISO 32000-2, 12.7.5.5, 12.8.2 and 12.8.4). Nothing is
// verified: what a signature says counts, whoever made it.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "sdk/types.h"

namespace quillon::app {

// Fields that must keep their values.
struct FieldLock {
  std::string signer;                     // full name of the signature field
  bool allOthers;                         // all fields but those named, and not those named
  std::unordered_set<std::string> names;  // full names of fields and of groups of them
};

struct SignatureRules {
  // A signature field or a widget has a value, the form's flag says that it must only be appended
  // to (SigFlags bit 2), or a signature grants permissions (Perms). A field that nobody signed is
  // none.
  bool isSigned = false;
  bool permitsNothing = false;  // certified without any permission to change
  bool permitsNoPages = false;  // certified
  std::vector<FieldLock> locks;
};

// Walks the field tree, whose faults become warnings of the document, and the pages' annotations.
// Throws HostFailure (kErrorBadFile) when that takes too long.
SignatureRules RulesOfSignatures(DocHandle doc);

// Throws HostFailure when the value of a field that a signature locks differs from the file's.
void CheckLockedFields(DocHandle doc);

}  // namespace quillon::app
