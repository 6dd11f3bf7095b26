#include "plugin/host/log.h"

#include <cstdarg>
#include <ctime>
#include <memory>

#include "plugin/host/module_path.h"
#include "plugin/host/settings.h"

namespace quillform {

namespace {

constexpr const char* kLogFile = "QuillForm.log";
constexpr std::size_t kLongestLogPath = 260;
constexpr std::size_t kLongestLogText = 1024;
constexpr std::size_t kLongestTimeText = 132;

// Empty while nothing is logged.
char logPath[kLongestLogPath + 1] = "";

struct FileClose {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, FileClose>;

void LogNow(const char* mode, const char* what) {
  const OwnedFile file(std::fopen(logPath, mode));
  if (file) LogPrintf(file.get(), "*** %s Log at %s\n", what, NowText().c_str());
}

}  // namespace

void OpenLog() {
  logPath[0] = '\0';
  if (!ReadDebugSetting()) return;
  if (ModuleDirectoryPath(logPath, sizeof logPath, kLogFile)) LogNow("w", "Starting");
}

void CloseLog() {
  if (logPath[0] != '\0') LogNow("a", "Closing");
  logPath[0] = '\0';
}

void LogPrintf(std::FILE* file, const char* format, ...) {
  char text[kLongestLogText];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  std::fputs(text, file);
}

std::string NowText(const char* format) {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  if (local == nullptr) return {};
  char formatted[kLongestTimeText + 1] = "";
  std::string text;
  if (format == nullptr) {
    text = std::asctime(local);
  } else if (std::strftime(formatted, sizeof formatted, format, local) > 0) {
    text = formatted;
  }
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

}  // namespace quillform
