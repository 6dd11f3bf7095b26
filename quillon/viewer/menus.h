// Menus and the toolbar, as the program shows them and lists them.
#pragma once

#include <string>
#include <vector>

#include "sdk/viewer_table.h"

namespace quillon {

// One item as it is now. Labels are host text with "&" before the access key.
struct MenuItemView {
  MenuItemHandle item;
  std::string name;
  std::string label;      // "-" for a separator
  ExtensionId extension;  // 0 for the viewer's own
  MenuHandle submenu;     // null when it opens none
  bool enabled;
  bool marked;
};

struct MenuView {
  MenuHandle menu;
  std::string name;
  std::string title;
};

struct ToolButtonView {
  ToolButtonHandle button;
  Atom name;
  IconHandle icon;
};

// The menus of the menu bar from left to right, and their items from top to bottom.
std::vector<MenuView> MenuBar();
std::vector<MenuItemView> MenuItems(MenuHandle menu);

// An item is enabled when its routine says so; without one, when it opens a submenu or does
// something. It is marked only when its routine says so. They raise what the routine raises.
bool IsMenuItemEnabled(MenuItemHandle item);
bool IsMenuItemMarked(MenuItemHandle item);

// Chooses an item. Raises kErrorNotOffered when nothing is behind it, kErrorGeneral when it is not
// enabled, and what its routine raises.
void ExecuteMenuItem(MenuItemHandle item);

std::vector<ToolButtonView> ToolbarButtons();

// Throws away every menu and button and builds the viewer's own ones.
void ResetMenus();

}  // namespace quillon
