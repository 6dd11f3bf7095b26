#include "plugin/exchange/form_data_commands.h"

#include <string>

#include "plugin/exchange/edit_in_progress.h"
#include "plugin/exchange/fdf_reader.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/exchange/file_choice.h"
#include "plugin/exchange/path_text.h"
#include "plugin/host/owned_files.h"
#include "plugin/resources/menu_commands.h"

namespace quillform {

namespace {

constexpr std::int16_t kLabel = 146;

void Export(void*) { ExportFormData(); }

void Import(void*) { ImportFormData(); }

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

void ImportFormData() {
  const DocView view = Viewer->ActiveDocView();
  if (view == nullptr) return;
  const PathHandle path = AskForFile(kChooseFdf);
  if (path != nullptr) ImportFDFFile(view, path);
}

void AddFormDataItems() {
  AddCommandItem<&Import, &IsEnabled>(Viewer->AcquireMenuByName("Import"), "Quillform:ImportFDF",
                                      kLabel);
  AddCommandItem<&Export, &IsEnabled>(Viewer->AcquireMenuByName("Export"), "Quillform:ExportFDF",
                                      kLabel);
}

}  // namespace quillform
