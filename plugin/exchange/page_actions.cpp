#include "plugin/exchange/page_actions.h"

#include "plugin/exchange/action_dialogs.h"
#include "plugin/resources/menu_commands.h"

namespace quillform {

namespace {

constexpr const char* kNeighbour = "CropPages";
constexpr const char* kItemName = "QuillForm:Actions";
constexpr std::int16_t kLabel = 149;

Boolean CanEditPageActions(void*) {
  const DocView view = Viewer->ActiveDocView();
  if (view == nullptr) return 0;
  return (Document->GetPermissions(Viewer->DocOf(view)) & quillon::kPermitEdit) != 0 ? 1 : 0;
}

void EditPageActions(void*) {
  const DocView view = Viewer->ActiveDocView();
  const PageView page = view != nullptr ? Viewer->DocPageView(view) : nullptr;
  if (page == nullptr) return;
  if (actionDialogs.EditPageActions == nullptr) Raise(quillon::kErrorNotOffered);
  actionDialogs.EditPageActions(view, Viewer->PageViewPageNumber(page));
}

}  // namespace

void AddPageActionsItem() {
  const quillon::MenuItemHandle neighbour = Viewer->MenuItemByName(kNeighbour);
  const std::uint32_t position = Viewer->MenuItemIndex(neighbour) + 1u;
  AddCommandItem<&EditPageActions, &CanEditPageActions>(
      Viewer->MenuOfItem(neighbour), kItemName, kLabel, static_cast<std::uint16_t>(position));
}

}  // namespace quillform
