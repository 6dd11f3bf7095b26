#include "tests/support/temporary_folder.h"

#include <random>
#include <stdexcept>
#include <system_error>

namespace quillon::test {

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    path = std::filesystem::temp_directory_path() / ("quillon-test-" + std::to_string(random()));
    if (std::filesystem::create_directory(path)) return;
  }
  throw std::runtime_error("no temporary folder can be made");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::File(const char* name) const { return (path / name).generic_string(); }

}  // namespace quillon::test
