#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "quillon/support/os_files.h"

namespace quillon {
namespace {

constexpr UINT kHostCodePage = 1252;

std::wstring Widen(const std::string& text, UINT codePage, DWORD flags) {
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(), length);
  return wide;
}

}  // namespace

// Both spellings reach the host: UTF-8 from the program, Windows-1252 from plug-ins. A text of the
// latter with letters beyond ASCII is hardly ever valid UTF-8.
std::string TextToUtf8(const std::string& text) {
  if (text.empty() || !Widen(text, CP_UTF8, MB_ERR_INVALID_CHARS).empty()) return text;
  return Utf8Of(std::filesystem::path(Widen(text, kHostCodePage, 0)));
}

std::FILE* OpenOsFile(const std::filesystem::path& path, const char* mode) {
  const std::string narrow(mode);
  return _wfopen(path.c_str(), std::wstring(narrow.begin(), narrow.end()).c_str());
}

bool SeekOsFile(std::FILE* file, std::int64_t offset, int origin) {
  return _fseeki64(file, offset, origin) == 0;
}

std::int64_t TellOsFile(std::FILE* file) { return _ftelli64(file); }

std::filesystem::path OsPath(const std::string& utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::string Utf8Of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace quillon
