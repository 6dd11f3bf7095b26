// The operations of the `Document` table as the host's own code calls them. sdk/document_table.h
// tells what each does; here they throw HostFailure where the table raises.
#pragma once

#include "quillon/core/slot.h"
#include "sdk/document_table.h"

namespace quillon::document {

QUILLON_DOCUMENT_TABLE(QUILLON_DECLARE_OPERATION)

// Fills the whole table. It stays valid until the process ends.
void FillTable(DocumentTable* table);

}  // namespace quillon::document
