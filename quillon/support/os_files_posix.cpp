#include <sys/types.h>

#include "quillon/support/os_files.h"

namespace quillon {

// File names are bytes here: whatever the text is, it names the file with those bytes.
std::string TextToUtf8(const std::string& text) { return text; }

std::FILE* OpenOsFile(const std::filesystem::path& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool SeekOsFile(std::FILE* file, std::int64_t offset, int origin) {
  return fseeko(file, static_cast<off_t>(offset), origin) == 0;
}

std::int64_t TellOsFile(std::FILE* file) { return ftello(file); }

std::filesystem::path OsPath(const std::string& utf8) { return utf8; }

std::string Utf8Of(const std::filesystem::path& path) { return path.string(); }

}  // namespace quillon
