// Runs a target over the files of folders, for builds without libFuzzer: each file is an input that
// was found worth keeping.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/fuzz_host.h"

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      std::printf("%s\n", entry.path().filename().c_str());
      std::fflush(stdout);
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%d inputs\n", count);
  return count != 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
