#include "plugin/frame/forms_table.h"

#include "plugin/frame/forms_slots.h"

namespace quillform {

namespace {

// Lives until the process ends, as other plug-ins keep it.
quillon::TableHandle formsTable = nullptr;

quillon::TableHandle CreateFormsTable(quillon::TableServer server) {
  const quillon::TableHandle table = Support->NewTable(server, kFormsTableSlots);
#define QUILLFORM_FILL_SLOT(slot, Return, Name, Params) \
  Support->SetSlot(table, slot, MakeHostCallback<&forms_slots::Name>(), 0);
  QUILLFORM_FORMS_TABLE(QUILLFORM_FILL_SLOT)
#undef QUILLFORM_FILL_SLOT
  return table;
}

}  // namespace

Boolean PlugInExportTables() {
  // A host that starts again in the same process has tables of its own.
  formsTable = nullptr;
  const auto provider = reinterpret_cast<quillon::TableProviderProc>(
      MakeHostCallback<&ProvideFormsTable, OnFailure::kDrop>());
  return Support->RegisterTableProvider(kFormsTableName, provider, nullptr, 0) != 0 ? 1 : 0;
}

Boolean PlugInImportTables() { return 1; }

quillon::TableHandle ProvideFormsTable(quillon::TableServer server, std::uint32_t version, void*) {
  if (version != kFormsVersion) return nullptr;
  if (formsTable == nullptr) formsTable = CreateFormsTable(server);
  return formsTable;
}

}  // namespace quillform
