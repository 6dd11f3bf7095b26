// The forms of other producers (when their folder is there) and the example, for tests that are run
// over each of them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"

namespace quillon::test {

inline std::vector<std::string> SampleDocuments() {
  std::vector<std::string> files = {ExampleForm()};
  const char* named = std::getenv("QUILLFORM_SAMPLES");
  std::error_code missing;
  for (const auto& entry :
       std::filesystem::directory_iterator(named != nullptr ? named : SAMPLES_FOLDER, missing)) {
    if (entry.path().extension() == ".pdf") files.push_back(entry.path().string());
  }
  std::sort(files.begin() + 1, files.end());
  return files;
}

inline std::string SampleName(const testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path(info.param).stem().string();
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
  return name;
}

}  // namespace quillon::test
