// Menus: the operations and the tree that the program shows.
#include "quillon/viewer/menus.h"

#include <algorithm>

#include "quillon/core/guard.h"
#include "quillon/viewer/menu_record.h"
#include "quillon/viewer/operations.h"

namespace quillon::viewer {
namespace {

std::string TextOf(const char* text) { return text != nullptr ? text : ""; }

// The record of a handle among those that are owned by a list.
template <typename Record, typename Handle>
Record& Owned(const std::vector<std::unique_ptr<Record>>& list, Handle handle, const char* what) {
  const auto place = std::find_if(list.begin(), list.end(), [&](const auto& record) {
    return static_cast<const void*>(record.get()) == static_cast<const void*>(handle);
  });
  if (place == list.end()) Fail(kErrorBadParameter, std::string("there is no such ") + what);
  return **place;
}

}  // namespace

Menus& TheMenus() {
  static Menus menus;
  return menus;
}

MenuHandle HandleOf(const MenuRecord* menu) {
  return reinterpret_cast<MenuHandle>(const_cast<MenuRecord*>(menu));
}

MenuItemHandle HandleOf(const MenuItemRecord* item) {
  return reinterpret_cast<MenuItemHandle>(const_cast<MenuItemRecord*>(item));
}

MenuRecord& RecordOf(MenuHandle menu) { return Owned(TheMenus().menus, menu, "menu"); }
MenuItemRecord& RecordOf(MenuItemHandle item) { return Owned(TheMenus().items, item, "menu item"); }

MenuHandle AcquireMenuByName(const char* name) {
  const std::string wanted = TextOf(name);
  for (const auto& menu : TheMenus().menus) {
    if (menu->name == wanted) return HandleOf(menu.get());
  }
  return nullptr;
}

MenuItemHandle MenuItemByName(const char* name) {
  const std::string wanted = TextOf(name);
  for (const auto& item : TheMenus().items) {
    if (item->menu != nullptr && item->name == wanted) return HandleOf(item.get());
  }
  return nullptr;
}

MenuHandle NewMenu(const char* title, const char* name, ExtensionId extension) {
  auto menu = std::make_unique<MenuRecord>(MenuRecord{TextOf(name), TextOf(title), extension, {}});
  TheMenus().menus.push_back(std::move(menu));
  return HandleOf(TheMenus().menus.back().get());
}

MenuItemHandle NewMenuItem(const char* label, const char* name, MenuHandle submenu,
                           Boolean wantsShortcut, std::uint16_t shortcut, std::uint16_t modifiers,
                           IconHandle icon, ExtensionId extension) {
  auto item = std::make_unique<MenuItemRecord>();
  item->label = TextOf(label);
  item->name = TextOf(name);
  item->submenu = submenu != nullptr ? &RecordOf(submenu) : nullptr;
  item->extension = extension;
  item->icon = icon;
  item->shortcut = wantsShortcut != 0 ? shortcut : std::uint16_t{0};
  item->modifiers = wantsShortcut != 0 ? modifiers : std::uint16_t{0};
  TheMenus().items.push_back(std::move(item));
  return HandleOf(TheMenus().items.back().get());
}

void SetExecuteProc(MenuItemHandle item, ExecuteProc proc, void* clientData) {
  MenuItemRecord& record = RecordOf(item);
  record.execute = proc;
  record.executeData = clientData;
}

void SetComputeEnabledProc(MenuItemHandle item, ComputeProc proc, void* clientData) {
  MenuItemRecord& record = RecordOf(item);
  record.computeEnabled = proc;
  record.enabledData = clientData;
}

void SetComputeMarkedProc(MenuItemHandle item, ComputeProc proc, void* clientData) {
  MenuItemRecord& record = RecordOf(item);
  record.computeMarked = proc;
  record.markedData = clientData;
}

void AddMenuItem(MenuHandle menu, MenuItemHandle item, std::uint16_t position) {
  MenuRecord& target = RecordOf(menu);
  MenuItemRecord& record = RecordOf(item);
  if (record.menu != nullptr) Fail(kErrorBadParameter, "the item stands in a menu already");
  const std::size_t place = std::min<std::size_t>(position, target.items.size());
  target.items.insert(target.items.begin() + static_cast<std::ptrdiff_t>(place), &record);
  record.menu = &target;
}

void ReleaseMenuItem(MenuItemHandle item) {
  MenuItemRecord& record = RecordOf(item);
  if (record.menu != nullptr) return;
  std::erase_if(TheMenus().items, [&](const auto& other) { return other.get() == &record; });
}

MenuHandle SubmenuOf(MenuItemHandle item) {
  const MenuRecord* submenu = item == nullptr ? nullptr : RecordOf(item).submenu;
  return submenu == nullptr ? nullptr : HandleOf(submenu);
}

MenuHandle MenuOfItem(MenuItemHandle item) {
  const MenuRecord* menu = item == nullptr ? nullptr : RecordOf(item).menu;
  return menu == nullptr ? nullptr : HandleOf(menu);
}

// An item that stands nowhere has its place beyond every end.
std::uint16_t MenuItemIndex(MenuItemHandle item) {
  const MenuRecord* menu = item == nullptr ? nullptr : RecordOf(item).menu;
  if (menu == nullptr) return kMenuEnd;
  const auto place = std::find(menu->items.begin(), menu->items.end(), &RecordOf(item));
  return static_cast<std::uint16_t>(place - menu->items.begin());
}

}  // namespace quillon::viewer

namespace quillon {

using viewer::MenuItemRecord;

std::vector<MenuView> MenuBar() {
  std::vector<MenuView> bar;
  for (const viewer::MenuRecord* menu : viewer::TheMenus().bar) {
    bar.push_back({viewer::HandleOf(menu), menu->name, menu->title});
  }
  return bar;
}

std::vector<MenuItemView> MenuItems(MenuHandle menu) {
  std::vector<MenuItemView> items;
  // A copy: what an item's routine does must not pull the list from under the walk.
  const std::vector<MenuItemRecord*> records = viewer::RecordOf(menu).items;
  for (const MenuItemRecord* record : records) {
    const MenuItemHandle item = viewer::HandleOf(record);
    const MenuHandle submenu = record->submenu ? viewer::HandleOf(record->submenu) : nullptr;
    items.push_back({item, record->name, record->label, record->extension, submenu,
                     IsMenuItemEnabled(item), IsMenuItemMarked(item)});
  }
  return items;
}

bool IsMenuItemEnabled(MenuItemHandle item) {
  const MenuItemRecord& record = viewer::RecordOf(item);
  if (record.computeEnabled == nullptr) {
    return record.submenu != nullptr || record.execute != nullptr;
  }
  return CallGuarded([&] { return record.computeEnabled(record.enabledData); }) != 0;
}

bool IsMenuItemMarked(MenuItemHandle item) {
  const MenuItemRecord& record = viewer::RecordOf(item);
  if (record.computeMarked == nullptr) return false;
  return CallGuarded([&] { return record.computeMarked(record.markedData); }) != 0;
}

void ExecuteMenuItem(MenuItemHandle item) {
  const MenuItemRecord& record = viewer::RecordOf(item);
  if (record.execute == nullptr) Fail(kErrorNotOffered, "nothing is behind " + record.name);
  if (!IsMenuItemEnabled(item)) Fail(kErrorGeneral, record.name + " is not available now");
  CallGuarded([&] { record.execute(record.executeData); });
}

}  // namespace quillon
