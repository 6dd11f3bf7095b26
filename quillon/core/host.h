// The host as one process-wide thing: what it offers, which plug-ins it holds, and its start and
// end. Everything runs on one thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quillon/core/failure.h"
#include "quillon/core/module.h"
#include "sdk/entry.h"

namespace quillon {

// A table that GetTable offers. `highestVersion` imitates older hosts in tests: requests above it
// get null.
struct TableOffer {
  std::string name;
  std::uint32_t highestVersion;
  void* table;
};

// One plug-in that was loaded, in the order of loading.
struct PlugIn {
  ExtensionId id;
  std::string file;           // empty for one that is linked into the process
  std::string extensionName;  // from its handshake
  bool initialised;           // its import and initialise callbacks both answered true
  bool started;               // InitialisePlugIns has had its turn with it
  HandshakeRecord handshake;
  Module module;  // null for one that is linked into the process
};

// Makes the host ready: `Core` and the start steps; no plug-ins, no documents. Safe to call again
// after StopHost; atoms keep their values for the life of the process.
void StartHost();

// Unloads the plug-ins, newest first, then runs the stop steps, the latest added first. Documents
// must be closed before, while the plug-ins can still be told. A plug-in's module is let go last.
void StopHost();

// What rooms above add to the start and the end. Each routine is added once and kept for every
// later start; one that is added while the host runs does not run until the next.
using HostStep = void (*)();
void AddStartStep(HostStep step);
void AddStopStep(HostStep step);

// Adds or replaces what GetTable offers under a name.
void OfferTable(const TableOffer& offer);

// The main window that plug-ins loaded from here on are told of; null, as at the start, without a
// screen.
void SetPlugInWindow(PlatformWindow window);

// Loads a plug-in module and takes it through entry, setup, handshake and export; the import and
// initialise callbacks run in InitialisePlugIns, when every plug-in has exported its tables.
// Throws HostFailure when the file is no plug-in or refuses. The answer is valid until the next
// plug-in is loaded.
const PlugIn& LoadPlugIn(const std::string& file);

// The same for an entry routine that is linked into the process. `offeredVersion` imitates hosts
// that offer another handshake version.
const PlugIn& AttachPlugIn(PlugInMainRoutine entry, void* moduleInstance,
                           std::uint32_t offeredVersion = kHandshakeVersion);

// A plug-in that answers 0 or raises is reported (report.h) and stays loaded: it is unloaded with
// the others.
void InitialisePlugIns();

const std::vector<PlugIn>& PlugIns();

}  // namespace quillon
