#include "tests/plugin/frame/plug_in_life.h"

#include <cstdio>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/operations.h"

namespace quillform {

namespace {

using quillon::Atom;
using quillon::Boolean;
using quillon::Callback;
using quillon::ExtensionId;
using quillon::FailureCode;

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

Callback MakeCallbackLogged(ExtensionId extension, Callback routine) {
  CallLog().push_back("callback");
  return quillon::core::MakeCallback(extension, routine);
}

void RegisterNotificationLogged(std::uint32_t number, ExtensionId, Callback, void*) {
  CallLog().push_back("notification " + Hex(number));
}

quillon::MenuItemHandle NewMenuItemLogged(const char* label, const char* name,
                                          quillon::MenuHandle submenu, Boolean wantsShortcut,
                                          std::uint16_t shortcut, std::uint16_t modifiers,
                                          quillon::IconHandle icon, ExtensionId extension) {
  CallLog().push_back(std::string("item ") + name);
  return quillon::viewer::NewMenuItem(label, name, submenu, wantsShortcut, shortcut, modifiers,
                                      icon, extension);
}

void RegisterActionHandlerLogged(ExtensionId, Atom type, const quillon::ActionHandlerRecord*,
                                 const char* name) {
  CallLog().push_back(std::string("action ") + quillon::core::NameFromAtom(type) + " " + name);
}

// The host knows nothing of the copies that the plug-in works with here.
void SetSlotLogged(quillon::TableHandle table, std::uint32_t slot, Callback routine,
                   std::uint32_t flag) {
  if (static_cast<void*>(table) == &life->viewer) {
    CallLog().push_back("viewer slot " + std::to_string(slot));
  } else {
    quillon::support::SetSlot(table, slot, routine, flag);
  }
}

FailureCode RegisterErrorStringLogged(std::uint16_t severity, const char* text) {
  CallLog().push_back("error text " + std::to_string(severity) + " " + text);
  return quillon::support::RegisterErrorString(severity, text);
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
  core.MakeCallback = &MakeCallbackLogged;
  support = *HostTable<quillon::SupportTable>(quillon::kSupportTableName, quillon::kSupportVersion);
  support.RegisterErrorString = &RegisterErrorStringLogged;
  support.SetSlot = &SetSlotLogged;
  viewer = *HostTable<quillon::ViewerTable>(quillon::kViewerTableName, quillon::kViewerVersion);
  viewer.RegisterNotification = &RegisterNotificationLogged;
  viewer.NewMenuItem = &NewMenuItemLogged;
  viewer.RegisterActionHandler = &RegisterActionHandlerLogged;

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
