#include <gtest/gtest.h>

#include <string>

#include "quillon/core/operations.h"
#include "quillon/support/files.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/support/stream.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::string ReadAll(StreamHandle stream, std::uint32_t step) {
  std::string all;
  std::string part(step, '\0');
  while (const std::uint32_t count = support::ReadStream(stream, part.data(), step)) {
    all.append(part, 0, count);
  }
  return all;
}

struct ProcState {
  std::uint32_t left;
  bool fails;
  bool lies;
};

std::uint32_t GiveOneByte(void* buffer, std::uint32_t size, void* clientData) {
  auto* state = static_cast<ProcState*>(clientData);
  if (state->fails) core::Raise(kErrorReadFile);
  if (state->lies) return size + 1;
  if (state->left == 0) return 0;
  --state->left;
  *static_cast<char*>(buffer) = 'p';
  return 1;
}

TEST(Streams, AMemoryStreamGivesItsBytesOnceInAnySteps) {
  for (const std::uint32_t step : {1U, 3U, 100U}) {
    const StreamHandle stream = support::OpenMemoryStream("hello\0world", 11);
    EXPECT_EQ(ReadAll(stream, step), std::string("hello\0world", 11));
    char byte;
    EXPECT_EQ(support::ReadStream(stream, &byte, 1), 0U);
    EXPECT_EQ(RaisedBy([&] { support::WriteStream(stream, "x", 1); }), kErrorWriteFile);
    support::CloseStream(stream);
    EXPECT_EQ(RaisedBy([&] { support::ReadStream(stream, &byte, 1); }), kErrorBadParameter);
  }
  EXPECT_EQ(LiveStreamCount(), 0U);
}

TEST(Streams, ARoutineFeedsAStreamAndItsRaiseReachesTheReader) {
  ProcState state{5, false, false};
  const StreamHandle stream = support::OpenProcStream(&GiveOneByte, &state);
  EXPECT_EQ(ReadAll(stream, 10), "ppppp");
  char buffer[4];
  state.fails = true;
  EXPECT_EQ(RaisedBy([&] { support::ReadStream(stream, buffer, 4); }), kErrorReadFile);
  state = {0, false, true};
  EXPECT_EQ(RaisedBy([&] { support::ReadStream(stream, buffer, 4); }), kErrorBadStream);
  support::CloseStream(stream);
  EXPECT_EQ(OpenFrameCount(), 0U);
}

TEST(Streams, AFileStreamGoesOnFromTheFilesPositionAndLeavesTheFileOpen) {
  const PathHandle path = support::TempPath(nullptr);
  FileHandle file = nullptr;
  ASSERT_EQ(support::OpenFile(path, kOpenReadWrite, &file), kErrorNone);
  support::WriteFile(file, "head ", 5);
  const StreamHandle out = support::OpenFileStream(file);
  EXPECT_EQ(support::WriteStream(out, "body", 4), 4U);
  support::CloseStream(out);
  support::SetFilePosition(file, 5);
  const StreamHandle in = support::OpenFileStream(file);
  EXPECT_EQ(ReadAll(in, 3), "body");
  support::CloseStream(in);
  EXPECT_EQ(support::FileSize(file), 9U);
  EXPECT_EQ(support::CloseFile(file), kErrorNone);
  EXPECT_EQ(RaisedBy([&] { support::OpenFileStream(file); }), kErrorBadParameter);
  support::DeleteFile(path);
  support::ReleasePath(path);
}

}  // namespace
}  // namespace quillon
