#include "quillon/support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using support::NewPath;
using support::ReleasePath;
using test::RaisedBy;

std::string RelativeText(PathHandle path, PathHandle base) {
  char text[300];
  support::PathRelativeText(path, base, text, sizeof text);
  return text;
}

// A path that names no file yet; what it names is deleted at the end.
struct TemporaryFile {
  TemporaryFile() : path(support::TempPath(nullptr)) {}
  ~TemporaryFile() {
    support::DeleteFile(path);
    ReleasePath(path);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  PathHandle path;
};

FileHandle Open(PathHandle path, std::uint16_t mode) {
  FileHandle file = nullptr;
  EXPECT_EQ(support::OpenFile(path, mode, &file), kErrorNone);
  return file;
}

TEST(Paths, ARelativeTextIsTakenFromTheFolderOfTheOtherFile) {
  const PathHandle base = PathOf("forms/2024/order.fdf");
  const PathHandle sibling = NewPath(nullptr, "order.pdf", base);
  const PathHandle above = NewPath(nullptr, "../images/./logo.pdf", base);
  EXPECT_EQ(RelativeText(sibling, base), "order.pdf");
  EXPECT_EQ(RelativeText(above, base), "../images/logo.pdf");
  EXPECT_EQ(std::filesystem::path(PathString(above)).filename(), "logo.pdf");
  EXPECT_TRUE(std::filesystem::path(PathString(above)).is_absolute());
  EXPECT_EQ(PathString(above).find("2024"), std::string::npos);
  for (const PathHandle path : {base, sibling, above}) ReleasePath(path);
}

TEST(Files, WhatIsWrittenIsReadBackFromAnyPosition) {
  const TemporaryFile temporary;
  const FileHandle file = Open(temporary.path, kOpenReadWrite);
  EXPECT_EQ(support::WriteFile(file, "0123456789", 10), 10U);
  EXPECT_EQ(support::FilePosition(file), 10U);
  support::SetFilePosition(file, 4);
  EXPECT_EQ(support::FileSize(file), 10U);
  char text[8] = {};
  EXPECT_EQ(support::ReadFile(file, text, 3), 3U);
  EXPECT_STREQ(text, "456");
  // Straight from reading to writing and back.
  EXPECT_EQ(support::WriteFile(file, "x", 1), 1U);
  EXPECT_EQ(support::ReadFile(file, text, 7), 2U);
  EXPECT_EQ(std::string(text, 2), "89");
  support::SetFilePosition(file, 0);
  EXPECT_EQ(ReadToEnd(file), "0123456x89");
  EXPECT_EQ(support::CloseFile(file), kErrorNone);
  EXPECT_EQ(support::CloseFile(file), kErrorBadParameter);
  EXPECT_EQ(RaisedBy([&] { support::FileSize(file); }), kErrorBadParameter);
}

}  // namespace
}  // namespace quillon
