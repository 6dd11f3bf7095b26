#include "plugin/exchange/file_choice.h"

#include <algorithm>

#include "plugin/host/dialog_hooks.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::size_t kTextSize = 257;
constexpr std::size_t kPathSize = 1025;

}  // namespace

PathHandle AskForFile(const FileChoice& choice) {
  char title[kTextSize];
  LoadLocalString(choice.title, title, sizeof title);
  // The string table cannot hold NULs; the filters stand there with bars between them.
  char filter[kTextSize + 1]{};
  const std::size_t length = LoadLocalString(choice.filter, filter, kTextSize);
  std::replace(filter, filter + length, '|', '\0');

  char file[kPathSize] = "";
  OPENFILENAMEA question{};
  question.lStructSize = sizeof question;
  question.hwndOwner = static_cast<HWND>(Platform->DocViewWindow(Viewer->ActiveDocView()));
  question.lpstrFilter = filter;
  question.nFilterIndex = 1;
  question.lpstrFile = file;
  question.nMaxFile = sizeof file;
  question.lpstrTitle = title;
  question.lpstrDefExt = choice.extension;
  question.Flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST |
                   (choice.forSaving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
  const bool chosen = choice.forSaving ? AskSaveFile(&question) : AskOpenFile(&question);
  return chosen ? Support->PathFromPlatform(file) : nullptr;
}

}  // namespace quillform
