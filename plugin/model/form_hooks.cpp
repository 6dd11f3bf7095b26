#include "plugin/model/form_hooks.h"

namespace quillform {

FieldPlacement fieldPlacement{};
AppearanceHooks appearanceHooks{};
ExchangeHooks exchangeHooks{};

}  // namespace quillform
