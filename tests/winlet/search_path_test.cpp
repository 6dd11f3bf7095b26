#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "tests/support/temporary_folder.h"
#include "winlet/winlet.h"

namespace {

struct SearchPath : testing::Test {
  SearchPath() {
    std::ofstream(file) << "x";
    setenv("PATH", ("/nowhere:" + folder.path.string()).c_str(), 1);
  }
  ~SearchPath() override { setenv("PATH", before.c_str(), 1); }

  std::string before = std::getenv("PATH");
  quillon::test::TemporaryFolder folder;
  std::string file = folder.File("data.fdf");
};

TEST_F(SearchPath, finds_a_file_in_the_folders_of_PATH) {
  char found[300] = "";
  char* name = nullptr;
  EXPECT_EQ(SearchPathA(nullptr, "data.fdf", nullptr, sizeof found, found, &name), file.size());
  EXPECT_EQ(found, file);
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
