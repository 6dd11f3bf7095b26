#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/temporary_folder.h"
#include "winlet/registry_file.h"
#include "winlet/winlet.h"

namespace winlet {
namespace {

namespace fs = std::filesystem;

// A user without settings, in a folder that goes away.
struct Registry : testing::Test {
  Registry() { setenv("XDG_CONFIG_HOME", folder.path.c_str(), 1); }
  ~Registry() override { EXPECT_EQ(LiveKeys(), 0u); }

  void Write(const std::string& text) const {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
  }

  quillon::test::TemporaryFolder folder;
  const fs::path file = folder.File("vantrel/quillon-forms.registry");
};

struct Key {
  explicit Key(const char* path)
      : status(RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                               KEY_READ | KEY_WRITE, nullptr, &key, nullptr)) {}
  ~Key() {
    if (status == ERROR_SUCCESS) RegCloseKey(key);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  // "?" and the error when there is no text.
  std::string Query(const char* name, LONG room = 256) const {
    std::string text(static_cast<std::size_t>(room), '\0');
    const LSTATUS done =
        status != ERROR_SUCCESS ? status : RegQueryValueA(key, name, text.data(), &room);
    if (done != ERROR_SUCCESS) return "?" + std::to_string(done);
    EXPECT_EQ(std::strlen(text.c_str()) + 1, static_cast<std::size_t>(room));
    return text.c_str();
  }

  HKEY key = nullptr;
  LSTATUS status;
};

std::string Query(const char* path, const char* name, LONG room = 256) {
  return Key(path).Query(name, room);
}

LSTATUS Set(const char* path, const char* name, const std::string& text) {
  const Key key(path);
  if (key.status != ERROR_SUCCESS) return key.status;
  return RegSetValueA(key.key, name, REG_SZ, text.c_str(), 0);
}

TEST_F(Registry, keeps_texts_in_a_readable_file) {
  EXPECT_EQ(Set("A\\B", "Border=Color", "Y 1 2 3"), ERROR_SUCCESS);
  EXPECT_EQ(Set("A\\B", "File", " C:\\100% caf\xe9.pdf\n"), ERROR_SUCCESS);
  EXPECT_EQ(Set("A", "Empty", ""), ERROR_SUCCESS);
  std::ifstream stream(file, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}),
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
  const Key key("A");
  Write("[A]\r\nmine = 2 \r\nYours=3\r\nYours=4");
  EXPECT_EQ(key.Query("Mine"), "2");
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
  EXPECT_EQ(LoadRegistry().value().size(), 2u * kEach);
  EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1)
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
  EXPECT_EQ(LoadRegistry().value().size(), 5u);
}

TEST_F(Registry, leaves_alone_what_is_not_its_own) {
  Write(std::string(kMostRegistryBytes + 1, 'x'));
  EXPECT_EQ(Query("A", "B"), "?5");
  EXPECT_EQ(Set("A", "B", "1"), ERROR_ACCESS_DENIED);
  EXPECT_EQ(fs::file_size(file), kMostRegistryBytes + 1);
  fs::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(Query("A", "B"), "?5") << "and waits for nobody";
}

TEST_F(Registry, without_a_place_for_settings_has_none) {
  setenv("XDG_CONFIG_HOME", "/dev/null", 1);
  EXPECT_NE(Set("A", "B", "1"), ERROR_SUCCESS);
}

}  // namespace
}  // namespace winlet
