#include "quillon/app/form_keys.h"

#include "quillon/core/operations.h"

namespace quillon::app {

const FormKeys& Keys() {
#define QUILLON_APP_KEY_VALUE(name) core::AtomFromName(#name),
  static const FormKeys keys = {QUILLON_APP_FORM_KEYS(QUILLON_APP_KEY_VALUE)};
#undef QUILLON_APP_KEY_VALUE
  return keys;
}

}  // namespace quillon::app
