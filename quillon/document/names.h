// The names that pages, annotations, actions and file specifications are read by, as atoms.
#pragma once

#include "sdk/types.h"

// clang-format off
#define QUILLON_DOCUMENT_NAMES(X)                                                         \
  X(AP) X(AS) X(Annot) X(Annots) X(B) X(BBox) X(Count) X(CropBox) X(D) X(DA) X(DOS) X(DR) \
  X(Encrypt) X(F) X(FS) X(Filespec) X(GoTo) X(ID) X(Kids) X(Mac) X(Matrix) X(MediaBox)    \
  X(N) X(P) X(Page) X(Pages) X(Parent) X(Q) X(QuillForm) X(R) X(Rect) X(Resources)        \
  X(Rotate) X(S) X(StructParent) X(StructParents) X(Subtype) X(Type) X(UF) X(URL) X(Unix) \
  X(Widget)
// clang-format on

namespace quillon::document {

#define QUILLON_DOCUMENT_NAME_FIELD(name) Atom name;
struct DocumentNames {
  QUILLON_DOCUMENT_NAMES(QUILLON_DOCUMENT_NAME_FIELD)
};
#undef QUILLON_DOCUMENT_NAME_FIELD

const DocumentNames& Names();

}  // namespace quillon::document
