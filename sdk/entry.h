// The entry of a plug-in: how a host and a plug-in first meet.
//
// A plug-in is a loadable module that exports one routine, PlugInMain. The host calls it, then the
// setup routine that it hands back, then the handshake callback that setup made, then the four
// lifecycle callbacks: export, import and initialise at start-up, unload at the end.
#pragma once

#include <cstddef>

#include "core_table.h"
#include "types.h"

namespace quillon {

// Offsets are those of 32-bit Windows; a 64-bit build widens the words that hold pointers.

// 0 main window, 4 module instance.
struct PlatformData {
  PlatformWindow mainWindow;
  void* moduleInstance;  // the plug-in's own module; its resources are found through it
};

// 0 version, 4 extension id, 8 Core, 12 handshake callback.
struct SetupRecord {
  std::uint32_t version;  // kSetupVersion
  ExtensionId extension;
  CoreTable* core;
  Callback handshake;  // out: a HandshakeRoutine
};

// 0 the host's, 6 name, 8 export, 12 import, 16 initialise, 20 unload.
struct HandshakeRecord {
  std::uint16_t hostWords[3];
  Atom extensionName;     // out
  Callback exportTables;  // out: a LifecycleRoutine, as are the next three
  Callback importTables;
  Callback initialise;
  Callback unload;
};

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(PlatformData) == 8 && offsetof(PlatformData, moduleInstance) == 4);
static_assert(sizeof(SetupRecord) == 16 && offsetof(SetupRecord, core) == 8 &&
              offsetof(SetupRecord, handshake) == 12);
static_assert(offsetof(HandshakeRecord, extensionName) == 6 &&
              offsetof(HandshakeRecord, exportTables) == 8 &&
              offsetof(HandshakeRecord, importTables) == 12 &&
              offsetof(HandshakeRecord, initialise) == 16 &&
              offsetof(HandshakeRecord, unload) == 20);
#endif

using LifecycleRoutine = Boolean (*)();
using HandshakeRoutine = Boolean (*)(std::uint32_t version, HandshakeRecord* record);
using SetupRoutine = Boolean (*)(std::uint32_t version, SetupRecord* record);
using PlugInMainRoutine = Boolean (*)(std::uint32_t offeredVersion, std::uint32_t* chosenVersion,
                                      SetupRoutine* setup, const PlatformData* platform);

inline constexpr const char* kPlugInMainName = "PlugInMain";

}  // namespace quillon

#if defined(_WIN32)
#define QUILLON_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define QUILLON_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif
