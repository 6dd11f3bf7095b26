// The plug-in "Hopline": forms that are read from and sent to the web.
#include "quillon/link/answers.h"
#include "quillon/link/http_exchange.h"
#include "quillon/link/link_host.h"
#include "quillon/link/open_url.h"
#include "quillon/link/url_files.h"

namespace quillon::link {
namespace {

TableHandle linkTable = nullptr;

template <typename Routine>
Callback ToHost(Routine* routine) {
  return host.core->MakeCallback(host.extension, reinterpret_cast<Callback>(routine));
}

// Null when the host is too old to have the table or the slots of it that are needed.
template <typename Table>
Table* TableOf(const char* name, std::uint32_t version, std::uintptr_t slots) {
  auto* table = static_cast<Table*>(host.core->GetTable(host.core->AtomFromName(name), version));
  return table != nullptr && table->slotCount >= slots ? table : nullptr;
}

TableHandle ProvideLinkTable(TableServer server, std::uint32_t version, void*) {
  if (version != kLinkVersion) return nullptr;
  CodeOf([&] {
    if (linkTable != nullptr) return kErrorNone;
    const TableHandle made = host.support->NewTable(server, kLinkTableSlots);
    const Callback routines[] = {ToHost(&OpenURL), ToHost(&SetWatcher),
                                 ToHost(&SetRequestTimeLimit)};
    static_assert(std::size(routines) == kLinkTableSlots);
    std::uint32_t slot = 0;
    for (const Callback routine : routines) host.support->SetSlot(made, ++slot, routine, 0);
    linkTable = made;
    return kErrorNone;
  });
  return linkTable;
}

Boolean ExportTables() {
  linkTable = nullptr;  // a host that starts again has tables of its own
  const auto provider = reinterpret_cast<TableProviderProc>(ToHost(&ProvideLinkTable));
  return host.support->RegisterTableProvider(kLinkTableName, provider, nullptr, 0);
}

Boolean ImportTables() { return 1; }

Boolean Initialise() {
  StartHttp();
  bool registered = false;
  CodeOf([&] {
    registered = RegisterUrlFiles();
    return kErrorNone;
  });
  return registered ? 1 : 0;
}

Boolean Unload() {
  SetWatcher(nullptr);
  ForgetFetched();
  StopHttp();
  return 1;
}

Boolean Handshake(std::uint32_t version, HandshakeRecord* record) {
  if (version != kHandshakeVersion) return 0;
  record->extensionName = host.core->AtomFromName(kLinkTableName);
  record->exportTables = ToHost(&ExportTables);
  record->importTables = ToHost(&ImportTables);
  record->initialise = ToHost(&Initialise);
  record->unload = ToHost(&Unload);
  return 1;
}

Boolean Setup(std::uint32_t version, SetupRecord* record) {
  if (version != kSetupVersion) return 0;
  host = {record->extension, record->core, nullptr, nullptr};
  host.support = TableOf<SupportTable>(kSupportTableName, kSupportVersion, kSupportTableSlots);
  host.viewer = TableOf<ViewerTable>(kViewerTableName, kViewerVersion, kViewerTableSlots);
  if (host.support == nullptr || host.viewer == nullptr) return 0;
  record->handshake = ToHost(&Handshake);
  return 1;
}

}  // namespace
}  // namespace quillon::link

QUILLON_PLUGIN_EXPORT quillon::Boolean PlugInMain(std::uint32_t /*offeredVersion*/,
                                                  std::uint32_t* chosenVersion,
                                                  quillon::SetupRoutine* setup,
                                                  const quillon::PlatformData* /*platform*/) {
  *chosenVersion = quillon::kHandshakeVersion;
  *setup = &quillon::link::Setup;
  return 1;
}
