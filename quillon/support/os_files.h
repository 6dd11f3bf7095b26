// Files of the operating system: the few things that the standard library does not reach alike on
// every system.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

namespace quillon {

// A text that reached the host from outside, as UTF-8.
std::string TextToUtf8(const std::string& text);

// `mode` as for std::fopen. Null when it cannot be opened.
std::FILE* OpenOsFile(const std::filesystem::path& path, const char* mode);

// 64-bit positions; SeekOsFile answers whether it worked, TellOsFile -1 when it did not.
bool SeekOsFile(std::FILE* file, std::int64_t offset, int origin);
std::int64_t TellOsFile(std::FILE* file);

// Between UTF-8 and the system's own spelling.
std::filesystem::path OsPath(const std::string& utf8);
std::string Utf8Of(const std::filesystem::path& path);

}  // namespace quillon
