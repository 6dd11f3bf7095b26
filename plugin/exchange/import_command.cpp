#include "plugin/exchange/import_command.h"

#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/file_choice.h"
#include "plugin/resources/menu_commands.h"

namespace quillform {

namespace {

constexpr std::int16_t kLabel = 146;

void Execute(void*) { ImportFormData(); }

Boolean IsEnabled(void*) { return Viewer->ActiveDocView() != nullptr ? 1 : 0; }

}  // namespace

void ImportFormData() {
  const DocView view = Viewer->ActiveDocView();
  if (view == nullptr) return;
  const PathHandle path = AskForFile(kChooseFdf);
  if (path != nullptr) ImportFDFFile(view, path);
}

void AddImportItem() {
  AddMenuCommand({.menu = Viewer->AcquireMenuByName("Import"),
                  .name = "Quillform:ImportFDF",
                  .label = kLabel,
                  .execute = MakeExecuteProc<&Execute>(),
                  .computeEnabled = MakeComputeProc<&IsEnabled>(),
                  .computeMarked = nullptr,
                  .submenu = nullptr,
                  .position = quillon::kMenuEnd,
                  .clientData = nullptr});
}

}  // namespace quillform
