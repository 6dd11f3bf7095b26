#include "quillon/core/atoms.h"

#include <gtest/gtest.h>

#include <string>

#include "quillon/core/operations.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

TEST(Atoms, ANameKeepsItsAtomWhileTheTableFillsUpAndAfterwards) {
  AtomTable table;
  for (std::size_t i = 0; i < kMaxAtoms; ++i) InternName(table, "name" + std::to_string(i));
  EXPECT_EQ(test::RaisedBy([&] { InternName(table, "one too many"); }), kErrorTooManyNames);
  for (std::size_t i = 0; i < kMaxAtoms; ++i) {
    const std::string name = "name" + std::to_string(i);
    const Atom atom = InternName(table, name);
    ASSERT_EQ(atom, i + 1);
    ASSERT_EQ(AtomName(table, atom), name);
  }
}

TEST(Atoms, NamesThatAreEmptyLongOrNotAsciiAreKeptWhole) {
  AtomTable table;
  const std::string lengthy(100000, 'x');
  const Atom empty = InternName(table, "");
  const Atom before = InternName(table, "before");
  const Atom longAtom = InternName(table, lengthy);
  const Atom after = InternName(table, "\xFF\x80");
  EXPECT_STREQ(AtomName(table, empty), "");
  EXPECT_STREQ(AtomName(table, before), "before");
  EXPECT_EQ(AtomName(table, longAtom), lengthy);
  EXPECT_STREQ(AtomName(table, after), "\xFF\x80");
  EXPECT_EQ(InternName(table, lengthy), longAtom);
}

}  // namespace
}  // namespace quillon
