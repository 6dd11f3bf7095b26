#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "winlet/registry_file.h"
#include "winlet/winlet.h"

namespace winlet {
namespace {

namespace fs = std::filesystem;

// A user without settings, in a folder that goes away.
struct Registry : testing::Test {
  Registry() {
    std::string name = (fs::temp_directory_path() / "winlet-XXXXXX").string();
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    folder = name;
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
  }
  ~Registry() override {
    EXPECT_EQ(LiveKeys(), 0u);
    fs::remove_all(folder);
  }

  fs::path File() const { return folder / "vantrel" / "quillon-forms.registry"; }
  void Write(const std::string& text) const {
    fs::create_directories(File().parent_path());
    std::ofstream(File(), std::ios::binary) << text;
  }
  std::string Content() const {
    std::ifstream file(File(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  fs::path folder;
};

// "?" and the error when there is no text.
std::string Query(const char* path, const char* name, LONG room = 256) {
  HKEY key = nullptr;
  LSTATUS status = RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                   KEY_READ, nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return "?" + std::to_string(status);
  std::string text(static_cast<std::size_t>(room), '\0');
  status = RegQueryValueA(key, name, text.data(), &room);
  RegCloseKey(key);
  return status == ERROR_SUCCESS ? text.c_str() : "?" + std::to_string(status);
}

LSTATUS Set(const char* path, const char* name, const std::string& text) {
  HKEY key = nullptr;
  const LSTATUS status =
      RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                      nullptr, &key, nullptr);
  if (status != ERROR_SUCCESS) return status;
  const LSTATUS done = RegSetValueA(key, name, REG_SZ, text.c_str(), 0);
  RegCloseKey(key);
  return done;
}

TEST_F(Registry, keeps_texts_in_a_readable_file) {
  EXPECT_EQ(Set("A\\B", "Border=Color", "Y 1 2 3"), ERROR_SUCCESS);
  EXPECT_EQ(Set("A\\B", "File", " C:\\100% caf\xe9.pdf\n"), ERROR_SUCCESS);
  EXPECT_EQ(Set("A", "Empty", ""), ERROR_SUCCESS);
  EXPECT_EQ(Content(),
            "# Settings of Quillon Forms. The program writes this file anew.\n"
            "\n[A]\nEmpty=\n"
            "\n[A\\B]\nBorder%3DColor=Y 1 2 3\nFile=%20C:\\100%25 caf%E9.pdf%0A\n");
  EXPECT_EQ(Query("a\\b", "FILE"), " C:\\100% caf\xe9.pdf\n");
  EXPECT_EQ(Query("A\\B", "border=color"), "Y 1 2 3");
  EXPECT_EQ(Query("A", "Empty"), "");
  EXPECT_EQ(Query("A", "B"), "?2");
  EXPECT_EQ(Query("A\\B", "File", 18), "?234") << "the room is too small";
}

TEST_F(Registry, sees_what_others_write) {
  Set("A", "Mine", "1");
  HKEY key = nullptr;
  RegCreateKeyExA(HKEY_CURRENT_USER, "A", 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr);
  Write("[A]\r\nmine = 2 \r\nYours=3\r\nYours=4");
  char text[8];
  LONG size = sizeof text;
  EXPECT_EQ(RegQueryValueA(key, "Mine", text, &size), ERROR_SUCCESS);
  EXPECT_STREQ(text, "2");
  EXPECT_EQ(size, 2);
  RegCloseKey(key);
  Set("A", "Third", "5");
  EXPECT_EQ(Query("A", "Yours"), "4") << "the last one counts, and stays";
}

TEST_F(Registry, loses_nothing_when_two_programs_write) {
  constexpr int kEach = 25;
  pid_t children[2];
  for (pid_t& child : children) {
    child = fork();
    if (child != 0) continue;
    bool ok = true;
    for (int i = 0; i < kEach; ++i) {
      const std::string name = std::to_string(getpid()) + "-" + std::to_string(i);
      ok = Set("A", name.c_str(), "x") == ERROR_SUCCESS && ok;
    }
    _exit(ok ? 0 : 1);
  }
  for (const pid_t child : children) {
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  const auto settings = LoadRegistry();
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->size(), 2u * kEach);
  EXPECT_EQ(std::distance(fs::directory_iterator(File().parent_path()), {}), 1)
      << "an unfinished file was left";
}

TEST_F(Registry, survives_files_that_make_no_sense) {
  static constexpr char kNonsense[] =
      "=x\nstray=1\n[A\nB=1\n[]\nC=1\n[ A ]\n=1\n#D=1\nE\n"
      "F=%\nG=%4\nH=%zz%41\nI=a%00b\nJ=\0\xff\n";
  Write({kNonsense, sizeof kNonsense - 1});
  EXPECT_EQ(Query("A", "F"), "%");
  EXPECT_EQ(Query("A", "G"), "%4");
  EXPECT_EQ(Query("A", "H"), "%zzA");
  EXPECT_EQ(Query("A", "I"), "a");
  EXPECT_EQ(Query("A", "J"), "");
  const auto settings = LoadRegistry();
  ASSERT_TRUE(settings);
  EXPECT_EQ(settings->size(), 5u);
}

TEST_F(Registry, leaves_alone_what_is_not_its_own) {
  Write(std::string(kMostRegistryBytes + 1, 'x'));
  EXPECT_EQ(Query("A", "B"), "?5");
  EXPECT_EQ(Set("A", "B", "1"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(fs::file_size(File()), kMostRegistryBytes + 1);
  fs::remove(File());
  ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
  EXPECT_EQ(Query("A", "B"), "?5") << "and waits for nobody";
}

TEST_F(Registry, without_a_place_for_settings_has_none) {
  setenv("XDG_CONFIG_HOME", "/dev/null", 1);
  EXPECT_NE(Set("A", "B", "1"), ERROR_SUCCESS);
}

}  // namespace
}  // namespace winlet
