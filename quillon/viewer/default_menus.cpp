// The viewer's own menus. Plug-ins find their places by these names, which never change with the
// language; an item without a routine behind it is shown disabled.
#include "quillon/core/operations.h"
#include "quillon/viewer/menu_record.h"
#include "quillon/viewer/menus.h"
#include "quillon/viewer/operations.h"

namespace quillon {
namespace {

struct DefaultMenu {
  const char* name;
  const char* title;
  bool inBar;
};

constexpr DefaultMenu kMenus[] = {
    {"File", "&File", true},
    {"Edit", "&Edit", true},
    {"View", "&View", true},
    {"Document", "&Document", true},
    {"Tools", "&Tools", true},
    {"Help", "&Help", true},
    {"Import", "&Import", false},
    {"Export", "&Export", false},
    {"AboutExtensions", "About E&xtensions", false},
};

struct DefaultItem {
  const char* menu;
  const char* name;
  const char* label;
  const char* submenu;  // null for none
};

constexpr const char* kSeparator = "-";

constexpr DefaultItem kItems[] = {
    {"File", "Open", "&Open...", nullptr},
    {"File", "Close", "&Close", nullptr},
    {"File", "Save", "&Save", nullptr},
    {"File", "SaveAs", "Save &As...", nullptr},
    {"File", "endSaveGroup", kSeparator, nullptr},
    {"File", "ImportSubMenu", "&Import", "Import"},
    {"File", "ExportSubMenu", "&Export", "Export"},
    {"File", "endImportGroup", kSeparator, nullptr},
    {"File", "Quit", "E&xit", nullptr},
    {"Edit", "Undo", "&Undo", nullptr},
    {"Edit", "endUndoGroup", kSeparator, nullptr},
    {"Edit", "Cut", "Cu&t", nullptr},
    {"Edit", "Copy", "&Copy", nullptr},
    {"Edit", "Paste", "&Paste", nullptr},
    {"Edit", "SelectAll", "Select A&ll", nullptr},
    {"Edit", "endEditGroup", kSeparator, nullptr},
    {"Edit", "endOleEditGroup", kSeparator, nullptr},
    {"Edit", "Properties", "P&roperties...", nullptr},
    {"View", "FirstPage", "&First Page", nullptr},
    {"View", "PreviousPage", "&Previous Page", nullptr},
    {"View", "NextPage", "&Next Page", nullptr},
    {"View", "LastPage", "&Last Page", nullptr},
    {"View", "endPageGroup", kSeparator, nullptr},
    {"View", "ZoomIn", "Zoom &In", nullptr},
    {"View", "ZoomOut", "Zoom &Out", nullptr},
    {"Document", "InsertPages", "&Insert Pages...", nullptr},
    {"Document", "DeletePages", "&Delete Pages...", nullptr},
    {"Document", "CropPages", "&Crop Pages...", nullptr},
    {"Tools", "Hand", "&Hand", nullptr},
    {"Tools", "Thread", "&Thread", nullptr},
    {"Help", "AboutExtensions", "About E&xtensions", "AboutExtensions"},
};

constexpr const char* kButtons[] = {"Hand", "endToolsGroup"};

void AddDefaultItem(const DefaultItem& item) {
  const MenuHandle submenu = item.submenu ? viewer::AcquireMenuByName(item.submenu) : nullptr;
  const MenuItemHandle made =
      viewer::NewMenuItem(item.label, item.name, submenu, 0, 0, 0, nullptr, 0);
  viewer::AddMenuItem(viewer::AcquireMenuByName(item.menu), made, kMenuEnd);
  viewer::ReleaseMenuItem(made);
}

}  // namespace

void ResetMenus() {
  viewer::Menus& menus = viewer::TheMenus();
  menus = viewer::Menus{};
  for (const DefaultMenu& menu : kMenus) {
    const MenuHandle made = viewer::NewMenu(menu.title, menu.name, 0);
    if (menu.inBar) menus.bar.push_back(&viewer::RecordOf(made));
  }
  for (const DefaultItem& item : kItems) AddDefaultItem(item);
  for (const char* button : kButtons) {
    const ToolButtonHandle made =
        viewer::NewToolbarButton(core::AtomFromName(button), nullptr, 0, 0);
    viewer::AddToolbarButton(viewer::GetToolbar(), made, 0, nullptr);
  }
}

}  // namespace quillon
