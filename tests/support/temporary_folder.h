// A folder of one test's own, gone with it: tests run beside each other.
#pragma once

#include <filesystem>
#include <string>

namespace quillon::test {

struct TemporaryFolder {
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // The path of `name` inside it, with forward slashes.
  std::string File(const std::string& name) const { return (path / name).generic_string(); }
  std::size_t FileCount() const;

  std::filesystem::path path;
};

}  // namespace quillon::test
