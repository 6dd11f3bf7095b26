// The default file system.
#include <limits>
#include <random>
#include <system_error>

#include "quillon/support/file_systems.h"
#include "quillon/support/os_files.h"
#include "sdk/errors.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

enum class Moved { kNothing, kRead, kWritten };

struct CloseOsFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

struct OsFile {
  std::unique_ptr<std::FILE, CloseOsFile> file;
  Moved latest = Moved::kNothing;
};

struct ModeName {
  std::uint16_t mode;
  const char* name;  // as for std::fopen
};
constexpr ModeName kModes[] = {
    {kOpenRead, "rb"}, {kOpenWrite, "wb"}, {kOpenReadWrite, "w+b"}, {kOpenReplace, "w+b"}};

std::uint32_t HoldToWord(std::int64_t value) {
  constexpr std::int64_t kLargest = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(value < 0 ? 0 : (value > kLargest ? kLargest : value));
}

// The C library wants a seek between reading and writing.
void ChangeDirection(OsFile& file, Moved next) {
  if (file.latest != next && file.latest != Moved::kNothing) {
    SeekOsFile(file.file.get(), 0, SEEK_CUR);
  }
  file.latest = next;
}

std::uint32_t SizeOf(OsFile& file) {
  std::FILE* stream = file.file.get();
  const std::int64_t position = TellOsFile(stream);
  SeekOsFile(stream, 0, SEEK_END);
  const std::int64_t size = TellOsFile(stream);
  SeekOsFile(stream, position, SEEK_SET);
  return HoldToWord(size);
}

// A full disk may show only here, when the last bytes leave the buffer.
FailureCode Close(OsFile& file) {
  const bool failedBefore = std::ferror(file.file.get()) != 0;
  const bool failed = std::fclose(file.file.release()) != 0;
  return failed || failedBefore ? kErrorWriteFile : kErrorNone;
}

OpenFileRecord MakeRecord(std::FILE* opened) {
  const auto file = std::make_shared<OsFile>();
  file->file.reset(opened);
  OpenFileRecord record;
  record.read = [file](void* buffer, std::uint32_t size) {
    ChangeDirection(*file, Moved::kRead);
    return static_cast<std::uint32_t>(std::fread(buffer, 1, size, file->file.get()));
  };
  record.write = [file](const void* bytes, std::uint32_t size) {
    ChangeDirection(*file, Moved::kWritten);
    return static_cast<std::uint32_t>(std::fwrite(bytes, 1, size, file->file.get()));
  };
  record.position = [file] { return HoldToWord(TellOsFile(file->file.get())); };
  record.setPosition = [file](std::uint32_t position) {
    SeekOsFile(file->file.get(), position, SEEK_SET);
    file->latest = Moved::kNothing;
  };
  record.size = [file] { return SizeOf(*file); };
  record.close = [file] { return Close(*file); };
  return record;
}

FailureCode Open(const std::string& path, std::uint16_t mode, OpenFileRecord* record) {
  const char* name = nullptr;
  for (const ModeName& known : kModes) {
    if (known.mode == mode) name = known.name;
  }
  if (name == nullptr) return kErrorBadParameter;
  const fs::path place = OsPath(path);
  std::error_code ignored;
  // Opening a folder to read works on some systems, and every read then fails.
  if (fs::is_directory(place, ignored)) return kErrorOpenFile;
  std::FILE* file = OpenOsFile(place, name);
  if (file == nullptr) return kErrorOpenFile;
  *record = MakeRecord(file);
  return kErrorNone;
}

FailureCode Remove(const std::string& path) {
  const fs::path place = OsPath(path);
  std::error_code error;
  if (fs::is_directory(place, error)) return kErrorWriteFile;
  return fs::remove(place, error) ? kErrorNone : kErrorWriteFile;
}

std::optional<std::string> Resolve(const std::string& text, const std::string* base) {
  if (text.empty()) return std::nullopt;
  fs::path path = OsPath(TextToUtf8(text));
  if (path.is_relative() && base != nullptr) path = OsPath(*base).parent_path() / path;
  std::error_code error;
  const fs::path full = fs::absolute(path, error);
  if (error) return std::nullopt;
  return Utf8Of(full.lexically_normal());
}

std::string Relative(const std::string& path, const std::string& base) {
  const fs::path relative = OsPath(path).lexically_relative(OsPath(base).parent_path());
  if (relative.empty()) return path;
  return Utf8Of(relative.generic_string());
}

std::string TemporaryName() {
  std::error_code error;
  fs::path folder = fs::temp_directory_path(error);
  if (error) folder = fs::current_path(error);
  std::random_device random;
  for (;;) {
    const fs::path candidate =
        folder / ("quillon-" + std::to_string(random()) + std::to_string(random()) + ".tmp");
    if (!fs::exists(candidate, error)) return Utf8Of(candidate);
  }
}

}  // namespace

FileSystem MakeOsFileSystem() {
  FileSystem made;
  made.name = "OS";
  made.resolve = &Resolve;
  made.fromPlatform = [](const std::string& text) { return Resolve(text, nullptr); };
  made.relative = &Relative;
  made.temporary = &TemporaryName;
  made.open = &Open;
  made.remove = &Remove;
  return made;
}

}  // namespace quillon
