#include <gtest/gtest.h>

#include "winlet/winlet.h"

namespace {

TEST(StringOrder, is_that_of_a_dictionary) {
  // Ascending, each against all that follow. Accented letters are Windows-1252.
  const char* const ascending[] = {"",   "_x",    "1",   "9a", "a",     "A",   "ab",    "Ab",
                                   "AB", "\344b", "abc", "b",  "co-op", "cop", "Zebra", "zebras"};
  constexpr std::size_t count = sizeof ascending / sizeof *ascending;
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_EQ(lstrcmpA(ascending[i], ascending[i]), 0);
    for (std::size_t j = i + 1; j < count; ++j) {
      EXPECT_LT(lstrcmpA(ascending[i], ascending[j]), 0) << ascending[i] << " " << ascending[j];
      EXPECT_GT(lstrcmpA(ascending[j], ascending[i]), 0) << ascending[i] << " " << ascending[j];
    }
  }
}

TEST(StringOrder, without_case_still_tells_accents_and_hyphens_apart) {
  EXPECT_EQ(lstrcmpiA("Name", "nAME"), 0);
  EXPECT_EQ(lstrcmpiA("\xC9T\xC9", "\xE9t\xE9"), 0);
  EXPECT_NE(lstrcmpiA("ete", "\xE9t\xE9"), 0);
  EXPECT_NE(lstrcmpiA("coop", "co-op"), 0);
  EXPECT_LT(lstrcmpiA(nullptr, ""), 0);
}

}  // namespace
