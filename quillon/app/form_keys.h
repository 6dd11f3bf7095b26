// The names that the program reads forms by, as atoms.
#pragma once

#include "sdk/types.h"

// clang-format off
#define QUILLON_APP_FORM_KEYS(X)                                                                 \
  X(AP)                                                                                          \
  X(Btn)                                                                                         \
  X(Ch)                                                                                          \
  X(DA) X(DR) X(DV)                                                                              \
  X(FT) X(Fields) X(Font) X(Kids) X(MaxLen) X(N) X(NeedAppearances) X(Off) X(Opt) X(Parent)      \
  X(QuillForm) X(Sig) X(Subtype) X(T) X(Tx) X(V) X(Widget) X(XFA)
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
