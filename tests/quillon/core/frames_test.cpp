#include <gtest/gtest.h>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

// A plug-in's own block: its restore routine throws the plug-in's own type.
struct PlugInError {
  FailureCode code;
};

struct PlugInBlock {
  PlugInBlock() {
    core::PushFrame(&frame, [](GuardFrame* raised) { throw PlugInError{raised->code}; });
  }
  ~PlugInBlock() { core::PopFrame(); }
  PlugInBlock(const PlugInBlock&) = delete;
  PlugInBlock& operator=(const PlugInBlock&) = delete;

  GuardFrame frame;
};

struct Counted {
  explicit Counted(int* count) : destroyed(count) {}
  ~Counted() { ++*destroyed; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  int* destroyed;
};

CoreTable Table() {
  CoreTable table;
  core::FillTable(&table);
  return table;
}

TEST(Frames, ARaiseDestroysWhatLiesBetweenAndEndsInTheInnermostBlock) {
  const CoreTable table = Table();
  int destroyed = 0;
  bool outerRaised = false;
  try {
    PlugInBlock outer;
    Counted first(&destroyed);
    try {
      PlugInBlock inner;
      Counted second(&destroyed);
      [&] {
        Counted third(&destroyed);
        table.Raise(77);
      }();
    } catch (const PlugInError& error) {
      EXPECT_EQ(error.code, 77);
      EXPECT_EQ(destroyed, 2);
      EXPECT_EQ(OpenFrameCount(), 1U);
      EXPECT_EQ(table.ErrorCode(), 77);
    }
    table.Raise(78);
  } catch (const PlugInError& error) {
    outerRaised = true;
    EXPECT_EQ(error.code, 78);
  }
  EXPECT_TRUE(outerRaised);
  EXPECT_EQ(destroyed, 3);
  EXPECT_EQ(OpenFrameCount(), 0U);
}

TEST(Frames, ABlockLeftOpenInsideAHostBlockIsDroppedWithIt) {
  GuardFrame forgotten;
  CallGuarded([&] { core::PushFrame(&forgotten, [](GuardFrame*) { throw PlugInError{1}; }); });
  EXPECT_EQ(OpenFrameCount(), 0U);
}

TEST(FramesDeathTest, ARaiseOutsideEveryBlockEndsTheProcessAndNamesTheCode) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(core::Raise(kErrorBadFile), "0x20020004");
}

}  // namespace
}  // namespace quillon
