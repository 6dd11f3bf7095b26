#include "plugin/host/win32.h"

// Nothing is made or released with the module: the host calls PlugInMain and, at the end, the
// unload callback.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return TRUE; }
