// The toolbar: one bar, whose markers tell plug-ins where their buttons go.
#include <algorithm>

#include "quillon/viewer/menu_record.h"
#include "quillon/viewer/menus.h"
#include "quillon/viewer/operations.h"

namespace quillon::viewer {
namespace {

// There is one bar; its handle only has to be something.
ToolbarHandle TheBar() { return reinterpret_cast<ToolbarHandle>(&TheMenus().toolbar); }

void CheckBar(ToolbarHandle bar) {
  if (bar != TheBar()) Fail(kErrorBadParameter, "there is no such toolbar");
}

}  // namespace

ToolButtonHandle HandleOf(const ToolButtonRecord* button) {
  return reinterpret_cast<ToolButtonHandle>(const_cast<ToolButtonRecord*>(button));
}

ToolbarHandle GetToolbar() { return TheBar(); }

ToolButtonHandle FindToolbarButton(ToolbarHandle bar, Atom name) {
  CheckBar(bar);
  for (const ToolButtonRecord* button : TheMenus().toolbar) {
    if (button->name == name) return HandleOf(button);
  }
  return nullptr;
}

ToolButtonHandle NewToolbarButton(Atom name, IconHandle icon, std::uint32_t flags,
                                  std::uint32_t reserved) {
  if (reserved != 0) Fail(kErrorBadParameter, "the last word of a new button is 0");
  TheMenus().buttons.push_back(
      std::make_unique<ToolButtonRecord>(ToolButtonRecord{name, icon, flags}));
  return HandleOf(TheMenus().buttons.back().get());
}

void AddToolbarButton(ToolbarHandle bar, ToolButtonHandle button, Boolean before,
                      ToolButtonHandle other) {
  CheckBar(bar);
  Menus& menus = TheMenus();
  const auto made = std::find_if(menus.buttons.begin(), menus.buttons.end(),
                                 [&](const auto& each) { return HandleOf(each.get()) == button; });
  if (made == menus.buttons.end()) Fail(kErrorBadParameter, "there is no such toolbar button");
  std::erase(menus.toolbar, made->get());
  auto place = std::find_if(menus.toolbar.begin(), menus.toolbar.end(),
                            [&](const auto* each) { return HandleOf(each) == other; });
  if (place != menus.toolbar.end() && before == 0) ++place;
  menus.toolbar.insert(place, made->get());
}

}  // namespace quillon::viewer

namespace quillon {

std::vector<ToolButtonView> ToolbarButtons() {
  std::vector<ToolButtonView> buttons;
  for (const viewer::ToolButtonRecord* button : viewer::TheMenus().toolbar) {
    buttons.push_back({viewer::HandleOf(button), button->name, button->icon});
  }
  return buttons;
}

}  // namespace quillon
