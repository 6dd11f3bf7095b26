// The names that the program reads forms by, as atoms.
#pragma once

#include "sdk/types.h"

// clang-format off
#define QUILLON_APP_FORM_KEYS(X)                                                                 \
  X(AP) X(Action) X(All) X(Annots)                                                               \
  X(Btn)                                                                                         \
  X(Ch)                                                                                          \
  X(DA) X(DR) X(DV) X(DocMDP)                                                                    \
  X(FT) X(FieldMDP) X(Fields) X(Font)                                                            \
  X(Include)                                                                                     \
  X(Kids) X(Lock) X(MaxLen) X(N) X(NeedAppearances) X(Off) X(Opt)                                \
  X(P) X(Parent) X(Perms) X(QuillForm) X(Reference)                                              \
  X(Sig) X(SigFlags) X(Subtype)                                                                  \
  X(T) X(TransformMethod) X(TransformParams) X(Tx)                                               \
  X(UR) X(UR3) X(V) X(Widget) X(XFA)
// clang-format on

namespace quillon::app {

#define QUILLON_APP_KEY_FIELD(name) Atom name;
struct FormKeys {
  QUILLON_APP_FORM_KEYS(QUILLON_APP_KEY_FIELD)
};
#undef QUILLON_APP_KEY_FIELD

// Made at the first call; atoms live as long as the process.
const FormKeys& Keys();

}  // namespace quillon::app
