#include "plugin/frame/setup.h"

#include "plugin/frame/forms_table.h"
#include "plugin/frame/initialise.h"
#include "plugin/frame/unload.h"
#include "plugin/host/form_events.h"

namespace quillform {

TableVersions tableVersions{};

namespace {

// A host's table, and the newest version that it is asked for.
struct TableRequest {
  const char* name;
  std::uint32_t newest;
  void (*store)(void* table);
  std::uint32_t TableVersions::*version;
};

template <auto* Global>
void Store(void* table) {
  using Pointer = std::remove_pointer_t<decltype(Global)>;
  *Global = static_cast<Pointer>(table);
}

constexpr TableRequest kTableRequests[] = {
    {quillon::kSupportTableName, quillon::kSupportVersion, &Store<&Support>,
     &TableVersions::support},
    {quillon::kObjectsTableName, quillon::kObjectsVersion, &Store<&Objects>,
     &TableVersions::objects},
    {quillon::kDocumentTableName, quillon::kDocumentVersion, &Store<&Document>,
     &TableVersions::document},
    {quillon::kViewerTableName, quillon::kViewerVersion, &Store<&Viewer>, &TableVersions::viewer},
    {quillon::kPlatformTableName, quillon::kPlatformVersion, &Store<&Platform>,
     &TableVersions::platform},
};

bool ObtainTable(const TableRequest& request) {
  const Atom name = Core->AtomFromName(request.name);
  for (std::uint32_t version = request.newest; version >= quillon::kOldestTableVersion; --version) {
    void* table = Core->GetTable(name, version);
    if (table == nullptr) continue;
    request.store(table);
    tableVersions.*request.version = version;
    return true;
  }
  return false;
}

bool ObtainTables() {
  for (const TableRequest& request : kTableRequests) {
    if (!ObtainTable(request)) return false;
  }
  return true;
}

}  // namespace

Boolean PlugInSetup(std::uint32_t version, quillon::SetupRecord* record) {
  if (version != quillon::kSetupVersion || record->version != quillon::kSetupVersion) return 0;
  Extension = record->extension;
  Core = record->core;
  tableVersions = {};
  tableVersions.core = quillon::kCoreVersion;

  bool complete = false;
  DropFailures([&] {
    if (!ObtainTables()) return;
    record->handshake = MakeHostCallback<&PlugInHandshake, OnFailure::kDrop>();
    complete = true;
  });
  return complete ? 1 : 0;
}

Boolean PlugInHandshake(std::uint32_t version, quillon::HandshakeRecord* record) {
  if (version != quillon::kHandshakeVersion) return 0;
  ForgetFormEventLists();
  record->extensionName = Core->AtomFromName(kFormsTableName);
  record->exportTables = MakeHostCallback<&PlugInExportTables, OnFailure::kDrop>();
  // What initialisation raises tells the host why it failed.
  record->initialise = MakeHostCallback<&PlugInInit, OnFailure::kRaise>();
  record->unload = MakeHostCallback<&PlugInUnload, OnFailure::kDrop>();
  record->importTables = MakeHostCallback<&PlugInImportTables, OnFailure::kDrop>();
  return 1;
}

}  // namespace quillform
