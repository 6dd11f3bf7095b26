#include "quillon/objects/source.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "quillon/core/failure.h"

#ifndef _WIN32
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quillon::objects {

SourceBytes SourceFromString(std::string bytes) {
  auto text = std::make_shared<const std::string>(std::move(bytes));
  const std::string_view view = *text;
  return {view, std::move(text)};
}

#ifdef _WIN32

// Read instead of mapped: Windows refuses to replace a file that is mapped.
SourceBytes ReadSource(const std::string& file) {
  std::ifstream input(std::filesystem::path(std::u8string(file.begin(), file.end())),
                      std::ios::binary);
  if (!input) Fail(kErrorOpenFile, "The file " + file + " cannot be opened.");
  std::string bytes(std::istreambuf_iterator<char>(input), {});
  if (input.bad()) Fail(kErrorReadFile, "The file " + file + " cannot be read.");
  return SourceFromString(std::move(bytes));
}

#else

namespace {

struct FileDescriptor {
  int number;
  explicit FileDescriptor(int opened) : number(opened) {}
  ~FileDescriptor() {
    if (number >= 0) close(number);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
};

[[noreturn]] void FailOpening(const std::string& file, int error) {
  Fail(kErrorOpenFile,
       "The file " + file + " cannot be opened: " + std::generic_category().message(error) + ".");
}

// Up to here a file is copied into memory. Another program that cuts a mapped file off kills its
// reader; larger files are mapped all the same, so that opening one costs what is asked of it.
constexpr std::size_t kMaxCopied = std::size_t{32} << 20;

// What is left of a pipe or file, to its end.
SourceBytes ReadToEnd(const FileDescriptor& pipe, const std::string& file, std::size_t expected) {
  std::string bytes;
  bytes.reserve(expected);
  std::array<char, 65536> part;
  for (;;) {
    const ssize_t count = read(pipe.number, part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail(kErrorReadFile, "The file " + file + " cannot be read.");
    if (count == 0) return SourceFromString(std::move(bytes));
    bytes.append(part.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace

SourceBytes ReadSource(const std::string& file) {
  const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (descriptor.number < 0 || fstat(descriptor.number, &status) != 0) FailOpening(file, errno);
  if (S_ISDIR(status.st_mode)) FailOpening(file, EISDIR);
  if (S_ISFIFO(status.st_mode)) return ReadToEnd(descriptor, file, 0);
  // Other devices may never end.
  if (!S_ISREG(status.st_mode)) Fail(kErrorOpenFile, file + " is a device and no file.");
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size <= kMaxCopied) return ReadToEnd(descriptor, file, size);
  void* mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor.number, 0);
  if (mapped == MAP_FAILED) Fail(kErrorReadFile, "The file " + file + " cannot be read.");
  const std::string_view bytes(static_cast<const char*>(mapped), size);
  return {bytes, std::shared_ptr<const void>(mapped, [size](const void* start) {
            munmap(const_cast<void*>(start), size);
          })};
}

#endif

}  // namespace quillon::objects
