#include "quillon/support/paths.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "quillon/support/file_systems.h"
#include "quillon/support/handles.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

HandleTable<PathHandle, PathRecord>& Paths() {
  static HandleTable<PathHandle, PathRecord> paths;
  return paths;
}

PathHandle GivePath(FileSystemHandle fileSystem, std::string text) {
  return GiveHandle(Paths(), std::make_unique<PathRecord>(PathRecord{fileSystem, std::move(text)}));
}

// Into a buffer of `size` bytes, cut and NUL-terminated; answers the whole length.
std::uint32_t PutText(const std::string& text, char* buffer, std::uint32_t size) {
  if (buffer != nullptr && size > 0) {
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
  }
  return static_cast<std::uint32_t>(text.size());
}

}  // namespace

const PathRecord& PathRecordOf(PathHandle path) { return FollowHandle(Paths(), path, "path"); }

std::string PathString(PathHandle path) { return PathRecordOf(path).text; }

PathHandle PathOf(const std::string& utf8) {
  const PathHandle path = support::NewPath(nullptr, utf8.c_str(), nullptr);
  if (path == nullptr) Fail(kErrorOpenFile, "\"" + utf8 + "\" names no file");
  return path;
}

std::size_t LivePathCount() { return Paths().records.size(); }

namespace support {

FileSystemHandle FileSystemOf(PathHandle path) {
  const PathRecord* record = FindHandle(Paths(), path);
  return record == nullptr ? DefaultFileSystem() : record->fileSystem;
}

PathHandle NewPath(FileSystemHandle fileSystem, const char* text, PathHandle relativeTo) {
  if (text == nullptr) Fail(kErrorBadParameter, "the text of a path is missing");
  if (fileSystem == nullptr) fileSystem = DefaultFileSystem();
  const std::string* base = relativeTo == nullptr ? nullptr : &PathRecordOf(relativeTo).text;
  std::optional<std::string> full = quillon::FileSystemOf(fileSystem).resolve(text, base);
  return full ? GivePath(fileSystem, std::move(*full)) : nullptr;
}

PathHandle PathFromPlatform(const char* platformText) {
  if (platformText == nullptr) Fail(kErrorBadParameter, "the text of a path is missing");
  const FileSystemHandle fileSystem = DefaultFileSystem();
  std::optional<std::string> full = quillon::FileSystemOf(fileSystem).fromPlatform(platformText);
  return full ? GivePath(fileSystem, std::move(*full)) : nullptr;
}

PathHandle CopyPath(PathHandle path) {
  const PathRecord& record = PathRecordOf(path);
  return GivePath(record.fileSystem, record.text);
}

void ReleasePath(PathHandle path) {
  if (path == nullptr) return;
  if (TakeHandle(Paths(), path) == nullptr) {
    Fail(kErrorBadParameter, "a path was released that is not alive");
  }
}

std::uint32_t PathText(PathHandle path, char* buffer, std::uint32_t size) {
  return PutText(PathRecordOf(path).text, buffer, size);
}

std::uint32_t PathRelativeText(PathHandle path, PathHandle relativeTo, char* buffer,
                               std::uint32_t size) {
  const PathRecord& record = PathRecordOf(path);
  const PathRecord& base = PathRecordOf(relativeTo);
  if (record.fileSystem != base.fileSystem) return PutText(record.text, buffer, size);
  const FileSystem& fileSystem = quillon::FileSystemOf(record.fileSystem);
  return PutText(fileSystem.relative(record.text, base.text), buffer, size);
}

PathHandle TempPath(FileSystemHandle fileSystem) {
  if (fileSystem == nullptr) fileSystem = DefaultFileSystem();
  return GivePath(fileSystem, quillon::FileSystemOf(fileSystem).temporary());
}

}  // namespace support
}  // namespace quillon
