#include "quillon/support/plug_in_file_systems.h"

#include <utility>
#include <vector>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/support/file_systems.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

// Files keep a reference to it: `record` becomes null when the plug-in goes.
struct Provider {
  const FileSystemRecord* record;
};

struct Offer {
  FileSystemHandle handle;
  std::shared_ptr<Provider> provider;
};

std::vector<Offer>& Offers() {
  static std::vector<Offer> offers;
  return offers;
}

struct OpenedFile {
  ~OpenedFile() {
    if (file == nullptr || provider->record == nullptr) return;
    try {
      Close(1);
    } catch (const HostFailure&) {
      // Nobody asked for the closing, so nobody is there to be told.
    }
  }

  FailureCode Close(Boolean abandoned) {
    void* closing = std::exchange(file, nullptr);
    return CallGuarded([&] { return provider->record->close(closing, abandoned); });
  }

  std::shared_ptr<Provider> provider;
  void* file = nullptr;
};

// Runs a routine of the file's; `otherwise` when the file or its plug-in is gone.
template <typename Result, typename Routine>
Result WithFile(const OpenedFile& opened, Result otherwise, Routine&& routine) {
  const FileSystemRecord* record = opened.provider->record;
  if (opened.file == nullptr || record == nullptr) return otherwise;
  return CallGuarded([&] { return routine(*record, opened.file); });
}

OpenFileRecord RecordOf(const std::shared_ptr<OpenedFile>& opened) {
  using Record = FileSystemRecord;
  constexpr std::uint32_t kNothing = 0;
  OpenFileRecord file;
  file.read = [opened](void* buffer, std::uint32_t size) {
    return WithFile(*opened, kNothing, [&](const Record& record, void* word) {
      return record.read(word, buffer, size);
    });
  };
  file.write = [opened](const void* bytes, std::uint32_t size) {
    return WithFile(*opened, kNothing, [&](const Record& record, void* word) {
      return record.write(word, bytes, size);
    });
  };
  file.position = [opened] {
    return WithFile(*opened, kNothing,
                    [](const Record& record, void* word) { return record.position(word); });
  };
  file.setPosition = [opened](std::uint32_t position) {
    WithFile(*opened, kNothing, [&](const Record& record, void* word) {
      record.setPosition(word, position);
      return kNothing;
    });
  };
  file.size = [opened] {
    return WithFile(*opened, kNothing,
                    [](const Record& record, void* word) { return record.fileSize(word); });
  };
  file.close = [opened]() -> FailureCode {
    if (opened->file == nullptr || opened->provider->record == nullptr) return kErrorWriteFile;
    return opened->Close(0);
  };
  return file;
}

FailureCode Open(const std::shared_ptr<Provider>& provider, const std::string& path,
                 std::uint16_t mode, OpenFileRecord* file) {
  if (provider->record == nullptr) return kErrorNotOffered;
  const auto opened = std::make_shared<OpenedFile>();
  opened->provider = provider;
  const FailureCode code =
      CallGuarded([&] { return provider->record->open(path.c_str(), mode, &opened->file); });
  if (code == kErrorNone) *file = RecordOf(opened);
  return code;
}

std::optional<std::string> Resolve(const Provider& provider, const std::string& text,
                                   const std::string* base) {
  if (provider.record == nullptr) return std::nullopt;
  const auto put = [&](char* buffer, std::uint32_t size) {
    return CallGuarded([&] {
      return provider.record->resolve(text.c_str(), base == nullptr ? nullptr : base->c_str(),
                                      buffer, size);
    });
  };
  char none = '\0';
  const std::uint32_t length = put(&none, 1);
  if (length == 0) return std::nullopt;
  std::string full(std::size_t{length} + 1, '\0');
  if (put(full.data(), length + 1) != length) return std::nullopt;
  full.pop_back();
  return full;
}

FileSystem MakeFileSystem(std::string name, const std::shared_ptr<Provider>& provider) {
  FileSystem made;
  made.name = std::move(name);
  made.resolve = [provider](const std::string& text, const std::string* base) {
    return Resolve(*provider, text, base);
  };
  made.fromPlatform = [provider](const std::string& text) {
    return Resolve(*provider, text, nullptr);
  };
  made.relative = [](const std::string& path, const std::string&) { return path; };
  made.temporary = []() -> std::string {
    Fail(kErrorNotOffered, "this file system has no temporary files");
  };
  made.open = [provider](const std::string& path, std::uint16_t mode, OpenFileRecord* file) {
    return Open(provider, path, mode, file);
  };
  made.remove = [provider](const std::string& path) {
    if (provider->record == nullptr || provider->record->remove == nullptr) return kErrorNotOffered;
    return CallGuarded([&] { return provider->record->remove(path.c_str()); });
  };
  return made;
}

bool IsComplete(const FileSystemRecord* record) {
  return record != nullptr && record->size != 0 && record->resolve != nullptr &&
         record->open != nullptr && record->close != nullptr && record->read != nullptr &&
         record->write != nullptr && record->position != nullptr &&
         record->setPosition != nullptr && record->fileSize != nullptr;
}

}  // namespace

void RemovePlugInFileSystems() {
  for (const Offer& offer : Offers()) {
    offer.provider->record = nullptr;
    RemoveFileSystem(offer.handle);
  }
  Offers().clear();
}

namespace support {

FileSystemHandle RegisterFileSystem(ExtensionId /*extension*/, Atom name,
                                    const FileSystemRecord* record) {
  const char* text = core::NameFromAtom(name);
  if (text == nullptr || !IsComplete(record)) {
    Fail(kErrorBadParameter, "the record of a file system is missing or lacks a routine");
  }
  if (FileSystemByName(name) != nullptr) return nullptr;
  const auto provider = std::make_shared<Provider>(Provider{record});
  const FileSystemHandle handle = AddFileSystem(MakeFileSystem(text, provider));
  Offers().push_back({handle, provider});
  return handle;
}

}  // namespace support
}  // namespace quillon
