#include "tests/plugin/frame/plug_in_life.h"

#include <cstdio>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/support/operations.h"

namespace quillform {

namespace {

using quillon::Atom;
using quillon::Callback;
using quillon::ExtensionId;

constexpr ExtensionId kExtension = 77;

PlugInLife* life = nullptr;

std::string Hex(std::uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "%x", value);
  return text;
}

void* GetTableLogged(Atom name, std::uint32_t version) {
  const std::string text = quillon::core::NameFromAtom(name);
  CallLog().push_back("table " + text + " " + Hex(version));
  for (const OfferedTable& offer : life->offers) {
    if (text != offer.name) continue;
    return version >= offer.lowest && version <= offer.highest ? offer.table : nullptr;
  }
  return quillon::core::GetTable(name, version);
}

// What is registered in the name of kExtension stays with the test.
void IgnoreNotification(std::uint32_t, ExtensionId, Callback, void*) {}
void IgnoreActionHandler(ExtensionId, Atom, const quillon::ActionHandlerRecord*, const char*) {}

// The host knows nothing of the copies that the plug-in works with here.
void SetSlotOfHost(quillon::TableHandle table, std::uint32_t slot, Callback routine,
                   std::uint32_t flag) {
  if (static_cast<void*>(table) != &life->viewer) {
    quillon::support::SetSlot(table, slot, routine, flag);
  }
}

template <typename Table>
Table* HostTable(const char* name, std::uint32_t version) {
  return static_cast<Table*>(quillon::core::GetTable(quillon::core::AtomFromName(name), version));
}

}  // namespace

std::vector<std::string>& CallLog() {
  static std::vector<std::string> log;
  return log;
}

PlugInLife::PlugInLife() : host{}, core{}, support{}, viewer{}, offers{}, setup{}, handshake{} {
  life = this;
  CallLog().clear();
  quillon::core::FillTable(&core);
  core.GetTable = &GetTableLogged;
  support = *HostTable<quillon::SupportTable>(quillon::kSupportTableName, quillon::kSupportVersion);
  support.SetSlot = &SetSlotOfHost;
  viewer = *HostTable<quillon::ViewerTable>(quillon::kViewerTableName, quillon::kViewerVersion);
  viewer.RegisterNotification = &IgnoreNotification;
  viewer.RegisterActionHandler = &IgnoreActionHandler;

  constexpr std::uint32_t oldest = quillon::kOldestTableVersion;
  offers = {
      {quillon::kSupportTableName, oldest, quillon::kSupportVersion, &support},
      {quillon::kObjectsTableName, oldest, quillon::kObjectsVersion,
       HostTable<void>(quillon::kObjectsTableName, quillon::kObjectsVersion)},
      {quillon::kDocumentTableName, oldest, quillon::kDocumentVersion,
       HostTable<void>(quillon::kDocumentTableName, quillon::kDocumentVersion)},
      {quillon::kViewerTableName, oldest, quillon::kViewerVersion, &viewer},
      {quillon::kPlatformTableName, oldest, quillon::kPlatformVersion,
       HostTable<void>(quillon::kPlatformTableName, quillon::kPlatformVersion)},
  };
}

PlugInLife::~PlugInLife() { life = nullptr; }

OfferedTable& PlugInLife::Offer(const std::string& name) {
  for (OfferedTable& offer : offers) {
    if (name == offer.name) return offer;
  }
  quillon::Fail(quillon::kErrorBadParameter, "no table " + name);
}

bool PlugInLife::SetUp(std::uint32_t version) {
  std::uint32_t chosen = 0;
  quillon::SetupRoutine routine = nullptr;
  const quillon::PlatformData platform{nullptr, nullptr};
  PlugInMain(quillon::kHandshakeVersion, &chosen, &routine, &platform);
  setup = {quillon::kSetupVersion, kExtension, &core, nullptr};
  return quillon::CallGuarded([&] { return routine(version, &setup); }) != 0;
}

bool PlugInLife::ShakeHands(std::uint32_t version) {
  const auto routine = reinterpret_cast<quillon::HandshakeRoutine>(setup.handshake);
  if (quillon::CallGuarded([&] { return routine(version, &handshake); }) == 0) return false;
  const auto exportTables = reinterpret_cast<quillon::LifecycleRoutine>(handshake.exportTables);
  return quillon::CallGuarded([&] { return exportTables(); }) != 0;
}

bool PlugInLife::Initialise() {
  const auto routine = reinterpret_cast<quillon::LifecycleRoutine>(handshake.initialise);
  return quillon::CallGuarded([&] { return routine(); }) != 0;
}

void PlugInLife::Unload() {
  const auto routine = reinterpret_cast<quillon::LifecycleRoutine>(handshake.unload);
  quillon::CallGuarded([&] { return routine(); });
}

}  // namespace quillform
