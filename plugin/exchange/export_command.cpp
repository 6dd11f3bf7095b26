#include "plugin/exchange/export_command.h"

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/exchange/file_choice.h"
#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/resources/menu_commands.h"

namespace quillform {

namespace {

constexpr std::int16_t kLabel = 146;

void Execute(void*) { ExportFormData(); }

Boolean IsEnabled(void*) { return Viewer->ActiveDocView() != nullptr ? 1 : 0; }

}  // namespace

void ExportFormData() {
  const DocView view = Viewer->ActiveDocView();
  if (view == nullptr) return;
  const OwnedPath path(AskForFile(kSaveFdf));
  if (path == nullptr) return;
  CommitEditInProgress(view);
  const std::string pathText = TextOfPath(path.get());
  const ObjectDoc fdf = CreateFDFFromForm(Viewer->DocOf(view), kNullObject, true, false, true, true,
                                          pathText.c_str());
  const FailureCode failure = Support->CloseFile(WriteFDF(fdf, path.get()));
  if (failure == quillon::kErrorNone) return;
  DropFailures([&] { Support->DeleteFile(path.get()); });
  Raise(failure);
}

void AddExportItem() {
  AddMenuCommand({.menu = Viewer->AcquireMenuByName("Export"),
                  .name = "Quillform:ExportFDF",
                  .label = kLabel,
                  .execute = MakeExecuteProc<&Execute>(),
                  .computeEnabled = MakeComputeProc<&IsEnabled>(),
                  .computeMarked = nullptr,
                  .submenu = nullptr,
                  .position = quillon::kMenuEnd,
                  .clientData = nullptr});
}

}  // namespace quillform
