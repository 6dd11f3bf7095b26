// Paths, files and streams of the host that end with their owner. What goes wrong at the end is
// dropped; release the handle and close it by hand where somebody can act on it.
#pragma once

#include <memory>

#include "plugin/host/host.h"

namespace quillform {

struct ReleasePath {
  void operator()(PathHandle path) const {
    DropFailures([path] { Support->ReleasePath(path); });
  }
};
struct CloseFile {
  void operator()(FileHandle file) const {
    DropFailures([file] { Support->CloseFile(file); });
  }
};
struct CloseStream {
  void operator()(StreamHandle stream) const {
    DropFailures([stream] { Support->CloseStream(stream); });
  }
};

using OwnedPath = std::unique_ptr<std::remove_pointer_t<PathHandle>, ReleasePath>;
using OwnedFile = std::unique_ptr<std::remove_pointer_t<FileHandle>, CloseFile>;
using OwnedStream = std::unique_ptr<std::remove_pointer_t<StreamHandle>, CloseStream>;

// A path of the default file system that names nothing at first. Whatever lies there at the end is
// deleted, unless the path has been given on (path.release()).
struct TemporaryFile {
  TemporaryFile() : path(Support->TempPath(Support->FileSystemOf(nullptr))) {}
  ~TemporaryFile() {
    if (path == nullptr) return;
    DropFailures([this] { Support->DeleteFile(path.get()); });
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  OwnedPath path;
};

}  // namespace quillform
