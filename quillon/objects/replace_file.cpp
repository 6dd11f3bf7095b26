#include "quillon/objects/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>
#include <system_error>

#include "quillon/core/failure.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace quillon::objects {
namespace {

namespace fs = std::filesystem;

// The few calls that are spelled differently. Deviation on Windows: permissions are inherited from
// the folder, and folders are not flushed.
#ifdef _WIN32

int CreateNew(const fs::path& path, bool) {
  return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
}
std::ptrdiff_t WriteSome(int file, const char* bytes, std::size_t size) {
  return _write(file, bytes, static_cast<unsigned>(size));
}
bool FlushToDisk(int file) { return _commit(file) == 0; }
bool CloseNumber(int file) { return _close(file) == 0; }
int OpenToWrite(const fs::path& path) { return _wopen(path.c_str(), _O_WRONLY | _O_BINARY); }
bool MayWrite(const fs::path& path) { return _waccess(path.c_str(), 2) == 0; }
void CopyPermissions(int, const fs::path&) {}
void FlushFolder(const fs::path&) {}

#else

// One that replaces another is its owner's alone until it has the other's permissions.
int CreateNew(const fs::path& path, bool replaces) {
  return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? 0600 : 0666);
}
std::ptrdiff_t WriteSome(int file, const char* bytes, std::size_t size) {
  std::ptrdiff_t written = 0;
  do {
    written = ::write(file, bytes, size);
  } while (written < 0 && errno == EINTR);
  return written;
}
bool FlushToDisk(int file) { return fsync(file) == 0; }
bool CloseNumber(int file) { return close(file) == 0; }
int OpenToWrite(const fs::path& path) { return open(path.c_str(), O_WRONLY | O_CLOEXEC); }
bool MayWrite(const fs::path& path) { return access(path.c_str(), W_OK) == 0; }
void CopyPermissions(int file, const fs::path& from) {
  struct stat status {};
  if (stat(from.c_str(), &status) != 0) return;
  // A file of somebody else's keeps its mode at least; its owner can be kept by its owner only.
  if (fchown(file, status.st_uid, status.st_gid) != 0) errno = 0;
  if (fchmod(file, status.st_mode & 07777) != 0) errno = 0;
}
void FlushFolder(const fs::path& folder) {
  const int number = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (number < 0) return;
  fsync(number);
  close(number);
}

#endif

// More than any system writes at once.
constexpr std::size_t kLargestWrite = std::size_t{1} << 26;
constexpr int kNameAttempts = 16;
constexpr int kMaxLinks = 40;  // as systems have it

struct Advice {
  int error;
  const char* whatToDo;
};
constexpr const char* kMakeRoom = " Make room there, or write to another disk.";
constexpr const char* kGetPermission =
    " Have the permissions of the file and its folder changed, or write to another folder.";
constexpr Advice kAdvice[] = {
    {ENOSPC, kMakeRoom},
#ifdef EDQUOT
    {EDQUOT, kMakeRoom},
#endif
    {EFBIG, " Have the limit raised, or write to another disk."},
    {EROFS, " Nothing can be written there; write to another folder."},
    {EACCES, kGetPermission},
    {EPERM, kGetPermission},
    {ENOENT, " Make the folder first, or write to another one."},
    {EIO, " The disk may be failing; write to another one."},
};

[[noreturn]] void FailWriting(const fs::path& path, int error) {
  const std::u8string name = path.u8string();
  std::string text = "The file " + std::string(name.begin(), name.end()) +
                     " cannot be written: " + std::generic_category().message(error) + ".";
  for (const Advice& advice : kAdvice) {
    if (advice.error == error) text += advice.whatToDo;
  }
  Fail(kErrorWriteFile, text);
}

// A file that is removed again unless it reached its place.
struct TemporaryFile {
  fs::path path;
  int number = -1;
  bool placed = false;

  TemporaryFile() = default;
  ~TemporaryFile() {
    if (number >= 0) CloseNumber(number);
    std::error_code ignored;
    if (!placed && !path.empty()) fs::remove(path, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
};

// Its name has nothing of the target's, which may be as long as names can be.
void CreateBeside(const fs::path& target, bool replaces, TemporaryFile* file) {
  std::random_device random;
  int error = 0;
  for (int i = 0; i < kNameAttempts; ++i) {
    fs::path path = target.parent_path() / ("quillon-" + std::to_string(random()) + ".new");
    file->number = CreateNew(path, replaces);
    if (file->number >= 0) {
      file->path = std::move(path);
      return;
    }
    error = errno;
    if (error != EEXIST) break;
  }
  FailWriting(target, error);
}

void WriteAll(const TemporaryFile& file, const fs::path& target, std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), kLargestWrite);
    const std::ptrdiff_t written = WriteSome(file.number, bytes.data(), size);
    if (written <= 0) FailWriting(target, errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

fs::path PathOf(const std::string& file) { return std::u8string(file.begin(), file.end()); }

// Where links lead, also one whose file is not there yet.
fs::path Target(const std::string& file) {
  fs::path path = PathOf(file);
  std::error_code failed;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, failed)); ++i) {
    const fs::path next = fs::read_symlink(path, failed);
    if (failed) break;
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  fs::path real = fs::canonical(path, failed);
  return failed ? path : real;
}

void CheckStamp(const std::string& file, const FileStamp& expected) {
  if (StampOf(file) == expected) return;
  Fail(kErrorWriteFile, "The file " + file +
                            " was changed by another program after it was read, so it was left as "
                            "that program wrote it. Try again.");
}

// Devices and pipes take the bytes and keep their place. All bytes are gathered first, so that a
// failure on the way sends none.
void WriteThrough(const fs::path& target, const std::function<void(const TakeBytes&)>& write) {
  std::string bytes;
  write([&bytes](std::string_view part) { bytes.append(part); });
  TemporaryFile file;
  file.placed = true;
  file.path = target;
  file.number = OpenToWrite(target);
  if (file.number < 0) FailWriting(target, errno);
  WriteAll(file, target, bytes);
}

}  // namespace

std::optional<FileStamp> StampOf(const std::string& file) {
  std::error_code failed;
  const std::uintmax_t size = fs::file_size(PathOf(file), failed);
  if (failed) return std::nullopt;
  const fs::file_time_type changed = fs::last_write_time(PathOf(file), failed);
  if (failed) return std::nullopt;
  return FileStamp{size, changed};
}

void ReplaceFile(const std::string& file, const std::function<void(const TakeBytes&)>& write,
                 Flushing flushing, const std::optional<FileStamp>& expected) {
  const fs::path target = Target(file);
  std::error_code unknown;
  const fs::file_status status = fs::status(target, unknown);
  if (fs::is_directory(status)) {
    FailWriting(target, EISDIR);
  }
  // A new file could take the place of one that is protected: the folder's permissions allow that.
  if (fs::exists(status) && !MayWrite(target)) {
    FailWriting(target, errno);
  }
  if (fs::exists(status) && !fs::is_regular_file(status)) return WriteThrough(target, write);
  TemporaryFile temporary;
  CreateBeside(target, fs::exists(status), &temporary);
  CopyPermissions(temporary.number, target);
  write([&](std::string_view bytes) { WriteAll(temporary, target, bytes); });
  const bool flushes = flushing == Flushing::kNow;
  if (flushes && !FlushToDisk(temporary.number)) {
    FailWriting(target, errno);
  }
  const bool closed = CloseNumber(temporary.number);
  temporary.number = -1;
  if (!closed) FailWriting(target, errno);
  if (expected) CheckStamp(file, *expected);
  std::error_code failed;
  fs::rename(temporary.path, target, failed);
  if (failed) FailWriting(target, failed.default_error_condition().value());
  temporary.placed = true;
  if (!flushes) return;
  FlushFolder(target.parent_path().empty() ? fs::path(".") : target.parent_path());
}

}  // namespace quillon::objects
