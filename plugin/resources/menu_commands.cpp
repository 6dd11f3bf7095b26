#include "plugin/resources/menu_commands.h"

#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::size_t kLabelSize = 257;

// An item for as long as it is being made; the menu keeps it.
struct NewItem {
  NewItem(const char* label, const MenuCommand& command)
      : handle(Viewer->NewMenuItem(label, command.name, command.submenu, 0, 0, 0, nullptr,
                                   Extension)) {}
  ~NewItem() {
    DropFailures([this] { Viewer->ReleaseMenuItem(handle); });
  }
  NewItem(const NewItem&) = delete;
  NewItem& operator=(const NewItem&) = delete;

  quillon::MenuItemHandle handle;
};

}  // namespace

void AddMenuCommand(const MenuCommand& command) {
  if (command.menu == nullptr) return;
  char label[kLabelSize] = "";
  if (command.label >= 0) {
    LoadLocalString(static_cast<std::uint32_t>(command.label), label, sizeof label);
  }
  const NewItem item(label, command);
  void* const data = command.clientData;
  if (command.execute != nullptr) Viewer->SetExecuteProc(item.handle, command.execute, data);
  if (command.computeEnabled != nullptr) {
    Viewer->SetComputeEnabledProc(item.handle, command.computeEnabled, data);
  }
  if (command.computeMarked != nullptr) {
    Viewer->SetComputeMarkedProc(item.handle, command.computeMarked, data);
  }
  Viewer->AddMenuItem(command.menu, item.handle, command.position);
}

}  // namespace quillform
