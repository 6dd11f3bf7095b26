#include "plugin/host/log.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "plugin/frame/initialise.h"
#include "plugin/host/module_path.h"
#include "tests/plugin/frame/plug_in_life.h"
#include "tests/plugin/host/settings_sandbox.h"

namespace quillform {
namespace {

using Lines = std::vector<std::string>;

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

// `text` with each digit as 9 and each letter as a.
std::string Shape(std::string text) {
  for (char& c : text) {
    if (c >= '0' && c <= '9') c = '9';
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) c = 'a';
  }
  return text;
}

// "Mon Nov 23 ..." with the day of the month padded by a space.
bool IsTimedLine(const std::string& line, const std::string& start) {
  if (!line.starts_with(start)) return false;
  std::string time = Shape(line.substr(start.size()));
  if (time.size() > 8 && time[8] == ' ') time[8] = '9';
  return time == "aaa aaa 99 99:99:99 9999";
}

struct Log : testing::Test {
  Log() {
    ClearSettings();
    EXPECT_TRUE(life.SetUp());
    EXPECT_TRUE(life.ShakeHands());
    std::filesystem::remove_all(LogFile());
  }
  ~Log() override { std::filesystem::remove_all(LogFile()); }

  PlugInLife life;
};

TEST_F(Log, begins_anew_with_the_plug_in_and_ends_with_it) {
  StoreSettingText("General", "Debug", "Y");
  std::ofstream(LogFile()) << "of an earlier run\n";
  ASSERT_TRUE(life.Initialise());
  ASSERT_EQ(LogLines().size(), 1u);
  life.Unload();
  const Lines lines = LogLines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(IsTimedLine(lines[0], "*** Starting Log at ")) << lines[0];
  EXPECT_TRUE(IsTimedLine(lines[1], "*** Closing Log at ")) << lines[1];
}

TEST_F(Log, is_left_alone_when_nobody_asked_for_it) {
  StoreSettingText("General", "Debug", "N");
  ASSERT_TRUE(life.Initialise());
  // What was set later plays no part: no path was kept.
  StoreSettingText("General", "Debug", "Y");
  life.Unload();
  EXPECT_FALSE(std::filesystem::exists(LogFile()));
}

TEST_F(Log, that_cannot_be_written_is_done_without) {
  StoreSettingText("General", "Debug", "Y");
  std::filesystem::create_directory(LogFile());
  EXPECT_TRUE(life.Initialise());
  life.Unload();
  EXPECT_TRUE(std::filesystem::is_directory(LogFile()));
}

TEST_F(Log, lines_are_cut_to_the_buffer) {
  std::FILE* file = std::fopen(LogFile().string().c_str(), "w");
  ASSERT_NE(file, nullptr);
  LogPrintf(file, "%d %s", 42, std::string(5000, 'x').c_str());
  std::fclose(file);
  EXPECT_EQ(std::filesystem::file_size(LogFile()), 1023u);
}

TEST(NowText, has_the_callers_format_or_24_characters) {
  EXPECT_EQ(NowText().size(), 24u);
  EXPECT_EQ(NowText("year %% only\n"), "year % only");
  EXPECT_EQ(Shape(NowText("%Y-%m-%d")), "9999-99-99");
  EXPECT_EQ(NowText(std::string(132, 'x').c_str()).size(), 132u);
  EXPECT_EQ(NowText(std::string(133, 'x').c_str()), "") << "does not fit";
}

TEST(ModuleDirectoryPath, is_the_folder_or_a_file_in_it_and_never_half_a_path) {
  char folder[1024];
  char file[1024];
  ASSERT_TRUE(ModuleDirectoryPath(folder, sizeof folder, nullptr));
  ASSERT_TRUE(ModuleDirectoryPath(file, sizeof file, "a.txt"));
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
  EXPECT_EQ(std::filesystem::path(file).parent_path(), std::filesystem::path(folder));
  EXPECT_EQ(std::filesystem::path(file).filename(), "a.txt");
  EXPECT_FALSE(ModuleDirectoryPath(file, 8, "a.txt"));
  EXPECT_STREQ(file, "");
}

}  // namespace
}  // namespace quillform
