#include "quillon/support/plug_in_file_systems.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "quillon/core/operations.h"
#include "quillon/support/file_systems.h"
#include "quillon/support/files.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

// An empty file that notes what is done with it.
std::string heard;

std::uint32_t Resolve(const char*, const char*, char* buffer, std::uint32_t size) {
  std::snprintf(buffer, size, "x");
  return 1;
}
FailureCode Open(const char*, std::uint16_t, void** file) {
  *file = &heard;
  return kErrorNone;
}
FailureCode Close(void*, Boolean abandoned) {
  heard += abandoned != 0 ? "abandoned " : "closed ";
  return kErrorNone;
}
std::uint32_t Read(void*, void*, std::uint32_t) {
  heard += "read ";
  return 0;
}
std::uint32_t Length(void*) { return 0; }

constexpr FileSystemRecord kEmptyFile = {
    sizeof(FileSystemRecord),
    &Resolve,
    &Open,
    &Close,
    &Read,
    [](void*, const void*, std::uint32_t) -> std::uint32_t { return 0; },
    &Length,
    [](void*, std::uint32_t) {},
    &Length,
    nullptr};

struct PlugInFiles : testing::Test {
  PlugInFiles() {
    heard.clear();
    name = core::AtomFromName("Empty");
    fileSystem = support::RegisterFileSystem(1, name, &kEmptyFile);
  }

  test::TestHost host;
  Atom name = kNoAtom;
  FileSystemHandle fileSystem = nullptr;
};

TEST_F(PlugInFiles, AFileThatNobodyClosesIsAbandoned) {
  {
    OpenFileRecord record;
    ASSERT_EQ(FileSystemOf(fileSystem).open("x", kOpenWrite, &record), kErrorNone);
  }
  EXPECT_EQ(heard, "abandoned ");
}

TEST_F(PlugInFiles, EndWithTheirPlugIn) {
  const PathHandle path = support::NewPath(fileSystem, "a", nullptr);
  FileHandle file = nullptr;
  ASSERT_EQ(support::OpenFile(path, kOpenRead, &file), kErrorNone);
  RemovePlugInFileSystems();
  EXPECT_EQ(support::FileSystemByName(name), nullptr);
  EXPECT_EQ(ReadToEnd(file), "");
  EXPECT_NE(support::CloseFile(file), kErrorNone);
  EXPECT_EQ(heard, "") << "its routines are gone";
  EXPECT_NE(support::OpenFile(path, kOpenRead, &file), kErrorNone);
  support::ReleasePath(path);
}

}  // namespace
}  // namespace quillon
