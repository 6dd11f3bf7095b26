#include "tests/support/temporary_folder.h"

#include <iterator>
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

std::size_t TemporaryFolder::FileCount() const {
  const std::filesystem::directory_iterator files(path);
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

}  // namespace quillon::test
