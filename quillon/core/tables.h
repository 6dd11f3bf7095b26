// What GetTable finds: the host's own tables, and those that plug-ins provide.
#pragma once

#include "quillon/core/host.h"
#include "sdk/support_table.h"

namespace quillon {

// Takes a plug-in's offer to make a table. False when the name is taken already.
bool OfferProvider(Atom name, TableProviderProc provider, void* clientData);

// Whether the server is one that providers are called with.
bool IsTableServer(TableServer server);

// Whether the host offers this table itself.
bool IsHostTable(const void* table);

// At the end of the host: every offer is void.
void ForgetTables();

}  // namespace quillon
