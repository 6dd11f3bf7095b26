#include <gtest/gtest.h>

#include "winlet/winlet.h"

namespace {

TEST(MulDiv, rounds_halves_away_from_zero_and_refuses_what_does_not_fit) {
  EXPECT_EQ(MulDiv(8, 96, 72), 11);
  EXPECT_EQ(MulDiv(-1, 1, 2), -1);
  EXPECT_EQ(MulDiv(1, -5, -2), 3);
  EXPECT_EQ(MulDiv(2147483647, 2147483647, 2147483647), 2147483647);
  EXPECT_EQ(MulDiv(2147483647, 2, 1), -1);
  EXPECT_EQ(MulDiv(5, 5, 0), -1);
}

}  // namespace
