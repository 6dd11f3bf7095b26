#include "quillon/viewer/registered.h"

#include <cstdio>

#include "quillon/core/operations.h"
#include "quillon/document/notify.h"
#include "quillon/viewer/menu_record.h"
#include "quillon/viewer/registrations.h"

namespace quillon {
namespace {

std::string NameOf(Atom atom) {
  const char* name = core::NameFromAtom(atom);
  return name != nullptr ? name : "";
}

std::string NumberText(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof(text), "0x%02X", static_cast<unsigned>(number));
  return text;
}

}  // namespace

std::vector<Registered> RegisteredThings() {
  const viewer::Registrations& registrations = viewer::TheRegistrations();
  std::vector<Registered> things;
  for (const auto& item : viewer::TheMenus().items) {
    if (item->extension != 0) things.push_back({item->extension, "menu item", item->name});
  }
  for (const auto& tool : registrations.tools) {
    things.push_back({tool.extension, "tool", NameOf(tool.type)});
  }
  for (const auto& handler : registrations.annotHandlers) {
    things.push_back({handler.extension, "annotation handler", NameOf(handler.subtype)});
  }
  for (const auto& handler : registrations.actionHandlers) {
    things.push_back({handler.extension, "action handler", NameOf(handler.type)});
  }
  for (const auto& server : registrations.selectionServers) {
    things.push_back({server.extension, "selection server", NameOf(server.type)});
  }
  for (const auto& handler : registrations.dataHandlers) {
    things.push_back({handler.extension, "data handler", NameOf(handler.type)});
  }
  for (const Subscriber& subscriber : Subscribers()) {
    things.push_back({subscriber.extension, "notification", NumberText(subscriber.number)});
  }
  return things;
}

}  // namespace quillon
