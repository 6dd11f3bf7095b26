#include "quillon/core/atoms.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
}  // namespace quillon
