// The operations of the `Core` table as the host's own code calls them. sdk/core_table.h tells what
// each does; here they throw HostFailure where the table raises.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/core_table.h"

namespace quillon::core {

QUILLON_CORE_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(CoreTable* table);

}  // namespace quillon::core
