// The operations of the `Platform` table as the host's own code calls them. sdk/platform_table.h
// tells what each does.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/platform_table.h"

namespace quillon::platform {

QUILLON_PLATFORM_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(PlatformTable* table);

}  // namespace quillon::platform
