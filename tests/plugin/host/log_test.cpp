#include "plugin/host/log.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "plugin/frame/plugin_main.h"
#include "plugin/host/module_path.h"
#include "quillon/core/host.h"
#include "tests/plugin/host/settings_sandbox.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

using Lines = std::vector<std::string>;
using quillon::test::TestHost;

// Where this program lies; the log stands beside it.
std::filesystem::path LogFile() {
  char path[1024];
  EXPECT_TRUE(ModuleDirectoryPath(path, sizeof path, "QuillForm.log"));
  return path;
}

Lines LogLines() {
  std::ifstream file(LogFile());
  Lines lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

struct Log : testing::Test {
  Log() {
    ClearSettings();
    std::filesystem::remove_all(LogFile());
  }
  ~Log() override { std::filesystem::remove_all(LogFile()); }
};

TEST_F(Log, begins_anew_with_the_plug_in_and_ends_with_it) {
  StoreSettingText("General", "Debug", "Y");
  std::ofstream(LogFile()) << "of an earlier run\n";
  {
    const TestHost host({&PlugInMain});
    ASSERT_EQ(LogLines().size(), 1u);
  }
  const Lines lines = LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].rfind("*** Starting Log at ", 0), 0u) << lines[0];
  EXPECT_EQ(lines[0].size(), 44u) << lines[0];
  EXPECT_EQ(lines[1].rfind("*** Closing Log at ", 0), 0u) << lines[1];
}

TEST_F(Log, is_left_alone_when_nobody_asked_for_it) {
  StoreSettingText("General", "Debug", "N");
  {
    const TestHost host({&PlugInMain});
    // What is set later plays no part: no path was kept.
    StoreSettingText("General", "Debug", "Y");
  }
  EXPECT_FALSE(std::filesystem::exists(LogFile()));
}

TEST_F(Log, that_cannot_be_written_is_done_without) {
  StoreSettingText("General", "Debug", "Y");
  std::filesystem::create_directory(LogFile());
  const TestHost host({&PlugInMain});
  EXPECT_TRUE(quillon::PlugIns().front().initialised);
}

TEST(ModuleDirectoryPath, is_never_half_a_path) {
  char file[1024];
  EXPECT_FALSE(ModuleDirectoryPath(file, 8, "a.txt"));
  EXPECT_STREQ(file, "");
}

}  // namespace
}  // namespace quillform
