#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "winlet/winlet.h"

namespace {

namespace fs = std::filesystem;

struct Profile : testing::Test {
  Profile() {
    std::string name = (fs::temp_directory_path() / "winlet-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    folder = name;
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    fs::create_directories(folder / "vantrel");
    std::ofstream(folder / "vantrel" / "Types.ini", std::ios::binary)
        << "Stray=1\r\n; [Settings]\r\n[Other]\r\nFace=Wrong\r\n"
           "[ settings ]\r\n; Face=Wrong\r\nFACE = Times Roman \r\nFace=Second\r\nEmpty=\r\n"
           "Quoted=\" a \"\r\n[More]\r\nLate=1\r\n[Settings]\r\nLate=2\r\n";
  }
  ~Profile() override { fs::remove_all(folder); }

  std::string Read(const char* section, const char* key, const char* file = "Types.ini",
                   DWORD size = 64) {
    char text[64] = "untouched";
    const DWORD length = GetPrivateProfileStringA(section, key, "other", text, size, file);
    EXPECT_EQ(length, std::string(text).size());
    return text;
  }

  fs::path folder;
};

TEST_F(Profile, finds_the_first_of_a_name_whatever_its_case) {
  EXPECT_EQ(Read("Settings", "face"), "Times Roman");
  EXPECT_EQ(Read("other", "Face"), "Wrong");
  EXPECT_EQ(Read("Settings", "Quoted"), " a ");
  EXPECT_EQ(Read("Settings", "Empty"), "");
  EXPECT_EQ(Read("Settings", "Late"), "other") << "the second section of the name does not count";
}

TEST_F(Profile, gives_the_default_when_there_is_none) {
  EXPECT_EQ(Read("Settings", "Stray"), "other");
  EXPECT_EQ(Read("Nowhere", "Face"), "other");
  EXPECT_EQ(Read("Settings", "Face", "Missing.ini"), "other");
  EXPECT_EQ(Read("Settings", nullptr), "other");
  char text[4] = "xyz";
  EXPECT_EQ(GetPrivateProfileStringA("S", "K", nullptr, text, sizeof text, "Missing.ini"), 0u);
  EXPECT_STREQ(text, "");
}

TEST_F(Profile, cuts_to_the_room_and_takes_files_by_their_path) {
  EXPECT_EQ(Read("Settings", "Face", "Types.ini", 6), "Times");
  const std::string path = (folder / "vantrel" / "Types.ini").string();
  EXPECT_EQ(Read("Settings", "Face", path.c_str()), "Times Roman");
}

}  // namespace
