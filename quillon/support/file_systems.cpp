#include "quillon/support/file_systems.h"

#include <list>
#include <utility>

#include "quillon/core/operations.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

// A list: handles are the addresses. The default one stands first.
std::list<FileSystem>& FileSystems() {
  static std::list<FileSystem> fileSystems = [] {
    std::list<FileSystem> made;
    made.push_back(MakeOsFileSystem());
    return made;
  }();
  return fileSystems;
}

FileSystemHandle HandleOf(FileSystem& fileSystem) {
  return reinterpret_cast<FileSystemHandle>(&fileSystem);
}

}  // namespace

FileSystemHandle AddFileSystem(FileSystem fileSystem) {
  for (FileSystem& known : FileSystems()) {
    if (known.name != fileSystem.name) continue;
    known = std::move(fileSystem);
    return HandleOf(known);
  }
  return HandleOf(FileSystems().emplace_back(std::move(fileSystem)));
}

void RemoveFileSystem(FileSystemHandle handle) {
  if (handle == DefaultFileSystem()) return;
  FileSystems().remove_if([handle](FileSystem& known) { return HandleOf(known) == handle; });
}

FileSystemHandle DefaultFileSystem() { return HandleOf(FileSystems().front()); }

const FileSystem& FileSystemOf(FileSystemHandle handle) {
  if (handle == nullptr) return FileSystems().front();
  for (FileSystem& known : FileSystems()) {
    if (HandleOf(known) == handle) return known;
  }
  Fail(kErrorBadParameter, "there is no such file system");
}

namespace support {

FileSystemHandle FileSystemByName(Atom name) {
  const char* text = core::NameFromAtom(name);
  if (text == nullptr) return nullptr;
  for (FileSystem& known : FileSystems()) {
    if (known.name == text) return HandleOf(known);
  }
  return nullptr;
}

}  // namespace support
}  // namespace quillon
