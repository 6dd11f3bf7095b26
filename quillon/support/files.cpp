#include "quillon/support/files.h"

#include <array>

#include "quillon/support/file_systems.h"
#include "quillon/support/handles.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"

namespace quillon {
namespace {

struct FileEntry {
  PathRecord path;
  OpenFileRecord file;
};

HandleTable<FileHandle, FileEntry>& Files() {
  static HandleTable<FileHandle, FileEntry> files;
  return files;
}

FileEntry& EntryOf(FileHandle file) { return FollowHandle(Files(), file, "file"); }

}  // namespace

std::string ReadToEnd(FileHandle file) {
  std::string bytes;
  std::array<char, 65536> part;
  for (;;) {
    const std::uint32_t count = support::ReadFile(file, part.data(), part.size());
    if (count == 0) return bytes;
    bytes.append(part.data(), count);
  }
}

std::size_t LiveFileCount() { return Files().records.size(); }

namespace support {

FailureCode OpenFile(PathHandle path, std::uint16_t mode, FileHandle* file) {
  if (file == nullptr) return kErrorBadParameter;
  *file = nullptr;
  try {
    auto entry = std::make_unique<FileEntry>();
    entry->path = PathRecordOf(path);
    const FileSystem& fileSystem = quillon::FileSystemOf(entry->path.fileSystem);
    const FailureCode code = fileSystem.open(entry->path.text, mode, &entry->file);
    if (code == kErrorNone) *file = GiveHandle(Files(), std::move(entry));
    return code;
  } catch (const HostFailure& failure) {
    return failure.code;
  } catch (const std::bad_alloc&) {
    return kErrorNoMemory;
  }
}

FailureCode CloseFile(FileHandle file) {
  const std::unique_ptr<FileEntry> entry = TakeHandle(Files(), file);
  return entry == nullptr ? kErrorBadParameter : entry->file.close();
}

std::uint32_t ReadFile(FileHandle file, void* buffer, std::uint32_t size) {
  return EntryOf(file).file.read(buffer, size);
}

std::uint32_t WriteFile(FileHandle file, const void* bytes, std::uint32_t size) {
  return EntryOf(file).file.write(bytes, size);
}

std::uint32_t FilePosition(FileHandle file) { return EntryOf(file).file.position(); }

void SetFilePosition(FileHandle file, std::uint32_t position) {
  EntryOf(file).file.setPosition(position);
}

std::uint32_t FileSize(FileHandle file) { return EntryOf(file).file.size(); }

PathHandle FilePath(FileHandle file) {
  const PathRecord& path = EntryOf(file).path;
  return NewPath(path.fileSystem, path.text.c_str(), nullptr);
}

FileSystemHandle FileFileSystem(FileHandle file) { return EntryOf(file).path.fileSystem; }

FailureCode DeleteFile(PathHandle path) {
  try {
    const PathRecord& record = PathRecordOf(path);
    return quillon::FileSystemOf(record.fileSystem).remove(record.text);
  } catch (const HostFailure& failure) {
    return failure.code;
  }
}

}  // namespace support
}  // namespace quillon
