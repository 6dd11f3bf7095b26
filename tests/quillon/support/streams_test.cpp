#include <gtest/gtest.h>

#include <string>

#include "quillon/core/operations.h"
#include "quillon/support/operations.h"
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

}  // namespace
}  // namespace quillon
