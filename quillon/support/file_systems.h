// File systems: what stands behind paths and files. The default one is the operating system's;
// others (files behind URLs, say) are added under names of their own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sdk/support_table.h"

namespace quillon {

// One open file. Destroying the record closes the file; `close` does so before and tells what went
// wrong at the last moment.
struct OpenFileRecord {
  std::function<std::uint32_t(void* buffer, std::uint32_t size)> read;
  std::function<std::uint32_t(const void* bytes, std::uint32_t size)> write;
  std::function<std::uint32_t()> position;
  std::function<void(std::uint32_t position)> setPosition;
  std::function<std::uint32_t()> size;
  std::function<FailureCode()> close;
};

// The routines of a file system. Texts are UTF-8 and, but for the first two, what `resolve` or
// `fromPlatform` answered.
struct FileSystem {
  std::string name;
  // The full text of a path, taken from the folder of the file `base` when given; none when the
  // text names nothing that the file system could hold.
  std::function<std::optional<std::string>(const std::string& text, const std::string* base)>
      resolve;
  std::function<std::optional<std::string>(const std::string& text)> fromPlatform;
  // The text relative to the folder of the file `base`, with forward slashes; the full text when
  // they share no root.
  std::function<std::string(const std::string& path, const std::string& base)> relative;
  // A full text that names no file yet.
  std::function<std::string()> temporary;
  // 0 and the file, or an error code. `mode` is one of OpenMode.
  std::function<FailureCode(const std::string& path, std::uint16_t mode, OpenFileRecord* file)>
      open;
  std::function<FailureCode(const std::string& path)> remove;
};

// Adds one for the life of the process, replacing one of the same name; paths of the replaced one
// stay with the new one.
FileSystemHandle AddFileSystem(FileSystem fileSystem);

// Takes one away, but never the default one; its paths name nothing from here on.
void RemoveFileSystem(FileSystemHandle handle);

FileSystemHandle DefaultFileSystem();

// Follows a handle, null being the default one; throws HostFailure (kErrorBadParameter) for one
// that was never given out.
const FileSystem& FileSystemOf(FileSystemHandle handle);

// The operating system's files.
FileSystem MakeOsFileSystem();

}  // namespace quillon
