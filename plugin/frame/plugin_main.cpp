#include "plugin/frame/plugin_main.h"

#include <algorithm>

#include "plugin/frame/setup.h"
#include "plugin/host/host.h"

quillon::Boolean PlugInMain(std::uint32_t offeredVersion, std::uint32_t* chosenVersion,
                            quillon::SetupRoutine* setup, const quillon::PlatformData* platform) {
  quillform::HostWindow = platform->mainWindow;
  quillform::ModuleInstance = platform->moduleInstance;
  *chosenVersion = std::min(offeredVersion, quillon::kHandshakeVersion);
  *setup = &quillform::PlugInSetup;
  return 1;
}
