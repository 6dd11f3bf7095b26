#include "plugin/frame/about_item.h"

#include "plugin/resources/menu_commands.h"

namespace quillform {

AboutHooks aboutHooks{};

namespace {

constexpr const char* kExtensionsItem = "AboutExtensions";
constexpr const char* kItemName = "QuillForm:About";
constexpr std::int16_t kLabel = 145;

void ShowAbout(void*) {
  if (aboutHooks.ShowAbout == nullptr) Raise(quillon::kErrorNotOffered);
  aboutHooks.ShowAbout();
}

Boolean IsEnabled(void*) { return 1; }

}  // namespace

void AddAboutItem() {
  const quillon::MenuItemHandle extensions = Viewer->MenuItemByName(kExtensionsItem);
  AddCommandItem<&ShowAbout, &IsEnabled>(Viewer->SubmenuOf(extensions), kItemName, kLabel);
}

}  // namespace quillform
