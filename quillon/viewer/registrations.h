// What plug-ins registered with the viewer. A later registration for the same type wins; the
// earlier ones stay listed.
#pragma once

#include <string>
#include <vector>

#include "sdk/viewer_table.h"

namespace quillon::viewer {

struct RegisteredAnnotHandler {
  ExtensionId extension;
  Atom subtype;
  const AnnotHandlerRecord* record;
};

struct RegisteredTool {
  ExtensionId extension;
  Atom type;
  const ToolRecord* record;
};

struct RegisteredActionHandler {
  ExtensionId extension;
  Atom type;
  const ActionHandlerRecord* record;
  std::string name;  // for people, host text
};

struct RegisteredSelectionServer {
  ExtensionId extension;
  Atom type;
  const SelectionServerRecord* record;
};

struct RegisteredDataHandler {
  ExtensionId extension;
  Atom type;
  const DataHandlerRecord* record;
};

struct Registrations {
  std::vector<RegisteredAnnotHandler> annotHandlers;
  std::vector<RegisteredTool> tools;
  std::vector<RegisteredActionHandler> actionHandlers;
  std::vector<RegisteredSelectionServer> selectionServers;
  std::vector<RegisteredDataHandler> dataHandlers;
};

Registrations& TheRegistrations();

// Null when nobody registered for the type. Good until the next registration.
const RegisteredAnnotHandler* AnnotHandlerOf(Atom subtype);
const RegisteredSelectionServer* SelectionServerOf(Atom type);
const RegisteredDataHandler* DataHandlerOf(Atom type);

}  // namespace quillon::viewer
