// The operations of the `Support` table as the host's own code calls them. sdk/support_table.h
// tells what each does; here they throw HostFailure where the table raises.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/support_table.h"

namespace quillon::support {

QUILLON_SUPPORT_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(SupportTable* table);

}  // namespace quillon::support
