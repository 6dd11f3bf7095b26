// The part of Win32 that the plug-in uses, for systems without Win32: the same names, signatures
// and results. What differs from the real thing is written where it is made. Each module that is
// linked with this layer has a copy of its own, as the handles have no meaning outside it.
#pragma once

#include "winlet/file_dialog.h"
#include "winlet/format.h"
#include "winlet/gdi_fonts.h"
#include "winlet/message_box.h"
#include "winlet/module_file.h"
#include "winlet/profile.h"
#include "winlet/registry.h"
#include "winlet/resources.h"
#include "winlet/search_path.h"
#include "winlet/strings.h"
#include "winlet/system_colours.h"
#include "winlet/system_version.h"
#include "winlet/types.h"
#include "winlet/windows.h"
