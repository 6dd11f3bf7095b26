// Opening what an address leads to.
#pragma once

#include "quillon/link/link_host.h"

namespace quillon::link {

// LinkTable.OpenURL.
FailureCode OpenURL(DocView view, const char* url, std::uint32_t reserved);

}  // namespace quillon::link
