#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "winlet/winlet.h"

namespace {

struct SearchPath : testing::Test {
  SearchPath() : folder((std::filesystem::temp_directory_path() / "search-XXXXXX").string()) {
    EXPECT_NE(mkdtemp(folder.data()), nullptr);
    std::ofstream(folder + "/data.fdf") << "x";
    setenv("PATH", ("/nowhere:" + folder).c_str(), 1);
  }
  ~SearchPath() override {
    setenv("PATH", before.c_str(), 1);
    std::filesystem::remove_all(folder);
  }

  std::string before = std::getenv("PATH");
  std::string folder;
};

TEST_F(SearchPath, finds_a_file_in_the_folders_of_PATH) {
  char found[300] = "";
  char* name = nullptr;
  const std::string expected = folder + "/data.fdf";
  EXPECT_EQ(SearchPathA(nullptr, "data.fdf", nullptr, sizeof found, found, &name), expected.size());
  EXPECT_EQ(found, expected);
  EXPECT_STREQ(name, "data.fdf");
}

TEST_F(SearchPath, folders_and_missing_files_are_not_found_and_a_short_buffer_is_left_alone) {
  char found[4] = "abc";
  EXPECT_EQ(SearchPathA(nullptr, "none.fdf", nullptr, sizeof found, found, nullptr), 0u);
  EXPECT_EQ(SearchPathA(nullptr, ".", nullptr, sizeof found, found, nullptr), 0u);
  EXPECT_GT(SearchPathA(nullptr, "data.fdf", nullptr, sizeof found, found, nullptr), sizeof found);
  EXPECT_STREQ(found, "abc");
}

}  // namespace
