// The operations of the `Objects` table as the host's own code calls them. sdk/objects_table.h
// tells what each does; here they throw HostFailure where the table raises.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/objects_table.h"

namespace quillon::objects {

QUILLON_OBJECTS_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(ObjectsTable* table);

}  // namespace quillon::objects
