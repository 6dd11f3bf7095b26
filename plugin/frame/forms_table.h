// The module's own table, "Forms": how it is offered to other plug-ins, and what stands in it.
#pragma once

#include "plugin/host/host.h"
#include "sdk/forms_table.h"

namespace quillform {

// Offers the table by name; 1 when the host takes the offer. It is made at the first request.
Boolean PlugInExportTables();

// Nothing is imported: the link plug-in's table is asked for when everything else stands.
Boolean PlugInImportTables();

// The one table, the same for every request; null for any other version than kFormsVersion. As a
// callback it answers null when the host raises while the table is made; the next request then
// tries again.
quillon::TableHandle ProvideFormsTable(quillon::TableServer server, std::uint32_t version,
                                       void* clientData);

}  // namespace quillform
