#include "quillon/support/plug_in_file_systems.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>

#include "quillon/core/operations.h"
#include "quillon/support/file_systems.h"
#include "quillon/support/files.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

// One file of a plug-in's, kept in memory.
std::string content;
std::uint32_t place = 0;
std::string closings;

std::uint32_t Resolve(const char* text, const char* base, char* buffer, std::uint32_t capacity) {
  if (text[0] == '?') return 0;
  if (text[0] == '!') core::Raise(kErrorGeneral);
  const std::string full = "mem:" + std::string(base == nullptr ? "" : base) + text;
  const std::size_t count = std::min<std::size_t>(full.size(), capacity - 1);
  std::memcpy(buffer, full.data(), count);
  buffer[count] = '\0';
  return static_cast<std::uint32_t>(full.size());
}
FailureCode Open(const char*, std::uint16_t mode, void** file) {
  if (mode == kOpenReplace) return kErrorOpenFile;
  place = 0;
  *file = &content;
  return kErrorNone;
}
FailureCode Close(void*, Boolean abandoned) {
  closings += abandoned != 0 ? "abandoned " : "closed ";
  return content == "full" ? kErrorWriteFile : kErrorNone;
}
std::uint32_t Read(void*, void* buffer, std::uint32_t size) {
  const auto left = static_cast<std::uint32_t>(content.size()) - place;
  const std::uint32_t count = std::min(size, left);
  std::memcpy(buffer, content.data() + place, count);
  place += count;
  return count;
}
std::uint32_t Write(void*, const void*, std::uint32_t) {
  core::Raise(kErrorWriteFile);
  return 0;
}
std::uint32_t Position(void*) { return place; }
void SetPosition(void*, std::uint32_t position) { place = position; }
std::uint32_t Size(void*) { return static_cast<std::uint32_t>(content.size()); }

constexpr FileSystemRecord kMemory = {sizeof(FileSystemRecord),
                                      &Resolve,
                                      &Open,
                                      &Close,
                                      &Read,
                                      &Write,
                                      &Position,
                                      &SetPosition,
                                      &Size,
                                      nullptr};

struct PlugInFiles : testing::Test {
  PlugInFiles() {
    content = "0123456789";
    closings.clear();
    name = core::AtomFromName("Memory");
    fileSystem = support::RegisterFileSystem(1, name, &kMemory);
  }

  test::TestHost host;
  Atom name = kNoAtom;
  FileSystemHandle fileSystem = nullptr;
};

TEST_F(PlugInFiles, AreReachedThroughPathsLikeAllOthers) {
  EXPECT_EQ(support::FileSystemByName(name), fileSystem);
  EXPECT_EQ(support::RegisterFileSystem(2, name, &kMemory), nullptr) << "the name is taken";
  const PathHandle base = support::NewPath(fileSystem, "a", nullptr);
  const PathHandle path = support::NewPath(fileSystem, "b", base);
  EXPECT_EQ(PathString(path), "mem:mem:ab");
  EXPECT_EQ(support::NewPath(fileSystem, "?", nullptr), nullptr);
  EXPECT_EQ(RaisedBy([&] { support::NewPath(fileSystem, "!", nullptr); }), kErrorGeneral);
  EXPECT_EQ(support::DeleteFile(path), kErrorNotOffered);

  FileHandle file = nullptr;
  EXPECT_EQ(support::OpenFile(path, kOpenReplace, &file), kErrorOpenFile);
  ASSERT_EQ(support::OpenFile(path, kOpenRead, &file), kErrorNone);
  support::SetFilePosition(file, 4);
  EXPECT_EQ(ReadToEnd(file), "456789");
  EXPECT_EQ(support::FileSize(file), 10u);
  EXPECT_EQ(RaisedBy([&] { support::WriteFile(file, "x", 1); }), kErrorWriteFile);
  content = "full";
  EXPECT_EQ(support::CloseFile(file), kErrorWriteFile);
  EXPECT_EQ(closings, "closed ");
  for (const PathHandle done : {path, base}) support::ReleasePath(done);
}

TEST_F(PlugInFiles, AFileThatNobodyClosesIsAbandoned) {
  {
    OpenFileRecord record;
    ASSERT_EQ(FileSystemOf(fileSystem).open("mem:a", kOpenWrite, &record), kErrorNone);
  }
  EXPECT_EQ(closings, "abandoned ");
}

TEST_F(PlugInFiles, EndWithTheirPlugIn) {
  const PathHandle path = support::NewPath(fileSystem, "a", nullptr);
  FileHandle file = nullptr;
  ASSERT_EQ(support::OpenFile(path, kOpenRead, &file), kErrorNone);
  RemovePlugInFileSystems();
  EXPECT_EQ(support::FileSystemByName(name), nullptr);
  EXPECT_EQ(ReadToEnd(file), "");
  EXPECT_NE(support::CloseFile(file), kErrorNone);
  EXPECT_EQ(closings, "") << "its routines are gone";
  EXPECT_NE(support::OpenFile(path, kOpenRead, &file), kErrorNone);
  support::ReleasePath(path);
}

TEST_F(PlugInFiles, AnIncompleteRecordIsRefused) {
  FileSystemRecord lacking = kMemory;
  lacking.open = nullptr;
  const Atom other = core::AtomFromName("Lacking");
  EXPECT_EQ(RaisedBy([&] { support::RegisterFileSystem(1, other, &lacking); }), kErrorBadParameter);
  EXPECT_EQ(RaisedBy([&] { support::RegisterFileSystem(1, other, nullptr); }), kErrorBadParameter);
}

}  // namespace
}  // namespace quillon
