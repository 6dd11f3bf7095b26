// What stands behind the menu and toolbar handles.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sdk/viewer_table.h"

namespace quillon::viewer {

struct MenuRecord;

struct MenuItemRecord {
  std::string name;
  std::string label;
  MenuRecord* submenu;
  MenuRecord* menu = nullptr;  // the one that it stands in
  ExtensionId extension = 0;
  IconHandle icon = nullptr;
  std::uint16_t shortcut = 0;  // 0 for none
  std::uint16_t modifiers = 0;
  ExecuteProc execute = nullptr;
  void* executeData = nullptr;
  ComputeProc computeEnabled = nullptr;
  void* enabledData = nullptr;
  ComputeProc computeMarked = nullptr;
  void* markedData = nullptr;
};

struct MenuRecord {
  std::string name;
  std::string title;
  ExtensionId extension;
  std::vector<MenuItemRecord*> items;
};

struct ToolButtonRecord {
  Atom name;
  IconHandle icon;
  std::uint32_t flags;
};

struct Menus {
  std::vector<std::unique_ptr<MenuRecord>> menus;
  std::vector<std::unique_ptr<MenuItemRecord>> items;
  std::vector<MenuRecord*> bar;
  std::vector<std::unique_ptr<ToolButtonRecord>> buttons;
  std::vector<ToolButtonRecord*> toolbar;
};

Menus& TheMenus();

MenuHandle HandleOf(const MenuRecord* menu);
MenuItemHandle HandleOf(const MenuItemRecord* item);
ToolButtonHandle HandleOf(const ToolButtonRecord* button);

// They throw kErrorBadParameter for anything that was not handed out.
MenuRecord& RecordOf(MenuHandle menu);
MenuItemRecord& RecordOf(MenuItemHandle item);

}  // namespace quillon::viewer
