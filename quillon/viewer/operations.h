// The operations of the `Viewer` table as the host's own code calls them. sdk/viewer_table.h tells
// what each does; here they throw HostFailure where the table raises.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/viewer_table.h"

namespace quillon::viewer {

QUILLON_VIEWER_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(ViewerTable* table);

}  // namespace quillon::viewer
