#include "quillon/core/plug_ins.h"

#include <cstdio>

#include "quillon/core/guard.h"
#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "quillon/core/report.h"

namespace quillon {
namespace {

std::vector<PlugIn>& Loaded() {
  static std::vector<PlugIn> plugIns;
  return plugIns;
}

PlatformWindow plugInWindow = nullptr;

// Not given out twice in a process, so that what a plug-in left behind is never taken for
// another's.
ExtensionId NewExtensionId() {
  static ExtensionId latest = 0;
  return ++latest;
}

CoreTable* SharedCoreTable() {
  static CoreTable table = [] {
    CoreTable made;
    core::FillTable(&made);
    return made;
  }();
  return &table;
}

std::string NameOf(const PlugIn& plugIn) {
  if (!plugIn.extensionName.empty()) return "the plug-in \"" + plugIn.extensionName + "\"";
  return plugIn.file.empty() ? "a plug-in" : "the plug-in " + plugIn.file;
}

[[noreturn]] void Refuse(const PlugIn& plugIn, const std::string& what) {
  Fail(kErrorGeneral, NameOf(plugIn) + " " + what);
}

// A plug-in's own failure has a code and no text.
std::string ReasonOf(const HostFailure& failure) {
  if (failure.what()[0] != '\0') return failure.what();
  if (failure.code == kErrorNoMemory) return "there is not enough memory";
  char text[32];
  std::snprintf(text, sizeof text, "error 0x%08x", static_cast<unsigned>(failure.code));
  return text;
}

// One lifecycle callback; a missing one counts as done.
bool CallLifecycle(Callback callback) {
  if (callback == nullptr) return true;
  const auto routine = reinterpret_cast<LifecycleRoutine>(callback);
  return CallGuarded([routine] { return routine(); }) != 0;
}

// As CallLifecycle, but whatever goes wrong is reported.
bool TryLifecycle(const PlugIn& plugIn, Callback callback, const std::string& what) {
  try {
    if (CallLifecycle(callback)) return true;
    Report(NameOf(plugIn) + " " + what);
  } catch (const HostFailure& failure) {
    Report(NameOf(plugIn) + " " + what + ": " + ReasonOf(failure));
  }
  return false;
}

struct Entry {
  SetupRoutine setup;
  std::uint32_t version;
};

Entry EnterPlugIn(const PlugIn& plugIn, PlugInMainRoutine main, void* moduleInstance,
                  std::uint32_t offered) {
  const PlatformData platform{plugInWindow, moduleInstance};
  Entry entry{nullptr, 0};
  const Boolean agreed =
      CallGuarded([&] { return main(offered, &entry.version, &entry.setup, &platform); });
  if (agreed == 0 || entry.setup == nullptr) Refuse(plugIn, "refused to be loaded");
  if (entry.version == 0 || entry.version > offered) {
    Refuse(plugIn, "chose a handshake version that was not offered");
  }
  return entry;
}

void ShakeHands(PlugIn& plugIn, const Entry& entry) {
  SetupRecord setup{kSetupVersion, plugIn.id, SharedCoreTable(), nullptr};
  if (CallGuarded([&] { return entry.setup(kSetupVersion, &setup); }) == 0 ||
      setup.handshake == nullptr) {
    Refuse(plugIn, "cannot work with this host: it misses something that the plug-in needs");
  }
  const auto handshake = reinterpret_cast<HandshakeRoutine>(setup.handshake);
  if (CallGuarded([&] { return handshake(entry.version, &plugIn.handshake); }) == 0) {
    Refuse(plugIn, "does not speak this host's version of the handshake");
  }
  const char* name = core::NameFromAtom(plugIn.handshake.extensionName);
  if (name == nullptr || *name == '\0') Refuse(plugIn, "gave no name");
  plugIn.extensionName = name;
}

const PlugIn& AdmitPlugIn(PlugIn plugIn, PlugInMainRoutine main, void* moduleInstance,
                          std::uint32_t offered) {
  ShakeHands(plugIn, EnterPlugIn(plugIn, main, moduleInstance, offered));
  // From here on it is loaded, so that it is also unloaded when its export fails half-way.
  Loaded().push_back(std::move(plugIn));
  PlugIn& admitted = Loaded().back();
  // Without its tables it is not started, whether it answers 0 or raises.
  admitted.started = true;
  if (!CallLifecycle(admitted.handshake.exportTables)) {
    Refuse(admitted, "could not offer its tables");
  }
  admitted.started = false;
  return admitted;
}

}  // namespace

void SetPlugInWindow(PlatformWindow window) { plugInWindow = window; }

const PlugIn& LoadPlugIn(const std::string& file) {
  const Module module = LoadModule(file);
  const PlugInMainRoutine main = FindPlugInMain(module);
  if (main == nullptr) {
    Fail(kErrorGeneral, file + " is no plug-in: it exports no " + kPlugInMainName);
  }
  return AdmitPlugIn({NewExtensionId(), file, "", false, false, {}, module}, main, module.get(),
                     kHandshakeVersion);
}

const PlugIn& AttachPlugIn(PlugInMainRoutine entry, void* moduleInstance,
                           std::uint32_t offeredVersion) {
  return AdmitPlugIn({NewExtensionId(), "", "", false, false, {}, nullptr}, entry, moduleInstance,
                     offeredVersion);
}

void InitialisePlugIns() {
  std::vector<PlugIn>& plugIns = Loaded();
  // Every plug-in has exported its tables by now, and every import runs before the first
  // initialisation, which may use what other plug-ins imported.
  std::vector<bool> imported(plugIns.size(), false);
  for (std::size_t i = 0; i < plugIns.size(); ++i) {
    if (plugIns[i].started) continue;
    imported[i] = TryLifecycle(plugIns[i], plugIns[i].handshake.importTables, "could not import");
  }
  for (std::size_t i = 0; i < imported.size(); ++i) {
    if (plugIns[i].started) continue;
    plugIns[i].started = true;
    plugIns[i].initialised =
        imported[i] &&
        TryLifecycle(plugIns[i], plugIns[i].handshake.initialise, "could not be initialised");
  }
}

const std::vector<PlugIn>& PlugIns() { return Loaded(); }

void UnloadPlugIns() {
  for (auto plugIn = Loaded().rbegin(); plugIn != Loaded().rend(); ++plugIn) {
    TryLifecycle(*plugIn, plugIn->handshake.unload, "could not be unloaded in order");
  }
}

void ForgetPlugIns() {
  while (!Loaded().empty()) Loaded().pop_back();
  plugInWindow = nullptr;
}

}  // namespace quillon
