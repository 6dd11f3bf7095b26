#include "plugin/resources/open_file_name.h"

#include <string>

#include "plugin/host/dialog_hooks.h"
#include "plugin/host/host.h"
#include "plugin/host/window_position.h"
#include "plugin/resources/resources.h"

namespace quillform {

namespace {

constexpr std::uint32_t kAllFilesString = 139;
constexpr std::size_t kTextSize = 257;
constexpr int kFileNameField = 1152;
constexpr LPARAM kWholeText = -1;
constexpr DWORD kOldShellMajorVersion = 3;

void AddFilter(std::string* filter, const std::string& description, const std::string& pattern) {
  *filter += description + " (" + pattern + ")" + '\0' + pattern + '\0';
}

// The chooser ends its list at an empty description, which the text's own end makes.
std::string FilterOf(const OpenFileQuestion& question) {
  std::string filter;
  AddFilter(&filter, question.fileType, std::string("*.") + question.extension);
  if (question.offerAllFiles) {
    char allFiles[kTextSize];
    LoadLocalString(kAllFilesString, allFiles, sizeof allFiles);
    AddFilter(&filter, allFiles, "*.*");
  }
  return filter;
}

// Systems before these know the old chooser only.
bool HasExplorerChooser() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (!GetVersionExA(&version)) return false;
  if (version.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS) return true;
  return version.dwPlatformId == VER_PLATFORM_WIN32_NT &&
         version.dwMajorVersion > kOldShellMajorVersion;
}

// The newer chooser gives its hook a window of its own inside the dialog.
HWND DialogOfHook(HWND window) {
  return GetDlgItem(window, kFileNameField) != nullptr || GetParent(window) == nullptr
             ? window
             : GetParent(window);
}

// Nothing here may raise: the platform's own frames lie between this and the caller.
UINT_PTR CALLBACK PrepareChooser(HWND window, UINT message, WPARAM, LPARAM) {
  if (message != WM_INITDIALOG) return 0;
  const HWND dialog = DialogOfHook(window);
  const HWND field = GetDlgItem(dialog, kFileNameField);
  SendMessageA(field, EM_SETSEL, 0, kWholeText);
  if (field != nullptr) SetFocus(field);
  CenterWindow(dialog);
  return 0;
}

}  // namespace

bool AskOpenFileName(const OpenFileQuestion& question, char* path, std::size_t size) {
  if (size == 0) return false;
  path[0] = '\0';
  const std::string filter = FilterOf(question);
  char fileTitle[kTextSize] = "";
  OPENFILENAMEA record{};
  record.lStructSize = sizeof record;
  record.hwndOwner = question.owner;
  record.hInstance = static_cast<HINSTANCE>(ModuleInstance);
  record.lpstrFilter = filter.c_str();
  record.nFilterIndex = 1;
  record.lpstrFile = path;
  record.nMaxFile = static_cast<DWORD>(size);
  record.lpstrFileTitle = fileTitle;
  record.nMaxFileTitle = sizeof fileTitle;
  record.lpstrInitialDir = question.initialFolder;
  record.lpstrTitle = question.title;
  record.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_ENABLEHOOK;
  if (HasExplorerChooser()) record.Flags |= OFN_EXPLORER;
  record.lpfnHook = &PrepareChooser;
  return AskOpenFile(&record);
}

}  // namespace quillform
