// What a mouse sets off on a widget.
#pragma once

#include <string>

#include "sdk/types.h"

namespace quillon::app {

// The first action of a trigger (ISO 32000-1, table 194: U, D, E, X); null when there is none. A
// released button sets off the widget's own action or destination first of all (12.5.6.19);
// everything else stands in AA.
ActionHandle ActionOfWidget(ObjectHandle widget, const std::string& trigger);

}  // namespace quillon::app
