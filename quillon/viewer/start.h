// The viewer's start and end: the whole host with its six tables.
#pragma once

#include "sdk/document_table.h"
#include "sdk/objects_table.h"
#include "sdk/platform_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"

namespace quillon {

// The tables as plug-ins get them, slots that plug-ins replaced included.
struct HostTables {
  SupportTable support;
  ObjectsTable objects;
  DocumentTable document;
  ViewerTable viewer;
  PlatformTable platform;
};

// Starts the host and offers its tables; plug-ins are loaded afterwards (core/host.h).
void StartViewer();

// Closes what is shown while the plug-ins can still be told, unloads them, and closes what is left.
void StopViewer();

HostTables& OfferedTables();

}  // namespace quillon
