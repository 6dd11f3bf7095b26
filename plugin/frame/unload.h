// The end: what initialisation made is released, whether or not it came to its end.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Always 1.
Boolean PlugInUnload();

}  // namespace quillform
