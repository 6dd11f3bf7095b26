#include "quillon/core/host.h"
#include "quillon/support/operations.h"
#include "quillon/support/plug_in_file_systems.h"
#include "quillon/support/plug_in_tables.h"

namespace quillon::support {

#define QUILLON_FILL_SUPPORT(slot, Return, Name, Params) \
  QUILLON_FILL_SLOT(::quillon::support, *table, Name);

void FillTable(SupportTable* table) {
  table->slotCount = kSupportTableSlots;
  QUILLON_SUPPORT_TABLE(QUILLON_FILL_SUPPORT)
  // Whoever fills the table offers it, and then plug-ins may replace its slots.
  AddStopStep(&RestoreSlots);
  AddStopStep(&RemovePlugInFileSystems);
}

#undef QUILLON_FILL_SUPPORT

}  // namespace quillon::support
