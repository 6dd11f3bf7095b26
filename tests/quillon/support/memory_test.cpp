#include "quillon/support/memory.h"

#include <gtest/gtest.h>

#include <cstring>

#include "quillon/support/operations.h"

namespace quillon {
namespace {

TEST(Memory, BlocksAreAlignedDistinctAndCountedUntilTheyAreFreed) {
  const MemoryInUse before = CountMemory();
  void* first = support::Alloc(0);
  void* second = support::Alloc(100);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(second) % alignof(std::max_align_t), 0U);
  std::memset(second, 0xAA, 100);
  EXPECT_EQ(CountMemory().blocks, before.blocks + 2);
  EXPECT_EQ(CountMemory().bytes, before.bytes + 100);
  support::Free(second);
  support::Free(first);
  support::Free(nullptr);
  EXPECT_EQ(CountMemory().blocks, before.blocks);
  EXPECT_EQ(CountMemory().bytes, before.bytes);
}

TEST(Memory, AnExhaustedSourceGivesNullAndCountsNothing) {
  const MemoryInUse before = CountMemory();
  const MemorySource usual =
      SetMemorySource({[](std::size_t) -> void* { return nullptr; }, [](void*) {}});
  EXPECT_EQ(support::Alloc(1), nullptr);
  EXPECT_EQ(CountMemory().blocks, before.blocks);
  SetMemorySource(usual);
}

}  // namespace
}  // namespace quillon
