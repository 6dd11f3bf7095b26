#include "winlet/registry_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace winlet {

namespace {

constexpr const char* kFolder = "vantrel";
constexpr const char* kFileName = "quillon-forms.registry";

// An open file for its own lifetime; -1 for none.
struct Descriptor {
  explicit Descriptor(int number) : number(number) {}
  ~Descriptor() {
    if (number >= 0) close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number;
};

std::optional<RegistrySettings> LoadFrom(const std::filesystem::path& path) {
  // Not to wait: somebody may have put a pipe there.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.number < 0) {
    return errno == ENOENT ? std::optional<RegistrySettings>(std::in_place) : std::nullopt;
  }
  struct stat status {};
  if (fstat(file.number, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::string bytes;
  char buffer[4096];
  for (;;) {
    const ssize_t got = read(file.number, buffer, sizeof buffer);
    if (got < 0) return std::nullopt;
    if (got == 0) return ParseRegistry(bytes);
    bytes.append(buffer, static_cast<std::size_t>(got));
    if (bytes.size() > kMostRegistryBytes) return std::nullopt;
  }
}

bool WriteAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Through a file beside it, so that readers see the old one or the new one.
bool Replace(const std::filesystem::path& path, std::string_view bytes) {
  std::string unfinished = path.string() + ".XXXXXX";
  bool done = false;
  {
    const Descriptor file(mkostemp(unfinished.data(), O_CLOEXEC));
    if (file.number < 0) return false;
    done = WriteAll(file.number, bytes) && fsync(file.number) == 0;
  }
  done = done && std::rename(unfinished.c_str(), path.c_str()) == 0;
  if (!done) unlink(unfinished.c_str());
  return done;
}

}  // namespace

// A place that depends on the current folder does not count.
std::filesystem::path UserFolder() {
  const char* configuration = std::getenv("XDG_CONFIG_HOME");
  if (configuration != nullptr && configuration[0] == '/') {
    return std::filesystem::path(configuration) / kFolder;
  }
  const char* home = std::getenv("HOME");
  if (home == nullptr || home[0] != '/') return {};
  return std::filesystem::path(home) / ".config" / kFolder;
}

std::optional<RegistrySettings> LoadRegistry() {
  const std::filesystem::path folder = UserFolder();
  if (folder.empty()) return std::nullopt;
  return LoadFrom(folder / kFileName);
}

bool StoreSetting(RegistrySetting setting) {
  const std::filesystem::path folder = UserFolder();
  if (folder.empty()) return false;
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  // The folder is what writers wait for each other at: the file itself is replaced every time.
  const Descriptor lock(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (lock.number < 0 || flock(lock.number, LOCK_EX) != 0) return false;
  std::optional<RegistrySettings> settings = LoadFrom(folder / kFileName);
  if (!settings) return false;
  PutSetting(*settings, std::move(setting));
  const std::string bytes = WriteRegistry(*settings);
  return bytes.size() <= kMostRegistryBytes && Replace(folder / kFileName, bytes);
}

}  // namespace winlet
