// The module's entry, its only export.
#pragma once

#include "sdk/entry.h"

// Takes the platform's words, answers the lower of the offered version and kHandshakeVersion, and
// hands back the setup routine. Always 1.
QUILLON_PLUGIN_EXPORT quillon::Boolean PlugInMain(std::uint32_t offeredVersion,
                                                  std::uint32_t* chosenVersion,
                                                  quillon::SetupRoutine* setup,
                                                  const quillon::PlatformData* platform);
