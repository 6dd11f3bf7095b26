// Documents that come from no file.
#pragma once

#include "sdk/types.h"

namespace quillon::objects {

// An FDF document with an empty root dictionary.
ObjectDoc NewFdf();

}  // namespace quillon::objects
