#include "quillon/document/names.h"

#include "quillon/core/operations.h"

namespace quillon::document {

const DocumentNames& Names() {
#define QUILLON_DOCUMENT_NAME_ATOM(name) core::AtomFromName(#name),
  static const DocumentNames names = {QUILLON_DOCUMENT_NAMES(QUILLON_DOCUMENT_NAME_ATOM)};
#undef QUILLON_DOCUMENT_NAME_ATOM
  return names;
}

}  // namespace quillon::document
