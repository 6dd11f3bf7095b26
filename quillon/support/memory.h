// The memory that Support.Alloc hands out, as the host's own code sees it.
#pragma once

#include <cstddef>

namespace quillon {

// Where the memory comes from. A replacement may answer null to imitate exhaustion; what one pair
// gave must be released while that pair, or one that can release it, is in force.
struct MemorySource {
  void* (*allocate)(std::size_t size);
  void (*release)(void* block);
};

// Answers the source that it replaces.
MemorySource SetMemorySource(const MemorySource& source);

// Blocks given out and not given back, and their bytes as they were asked for.
struct MemoryInUse {
  std::size_t blocks;
  std::size_t bytes;
};
MemoryInUse CountMemory();

}  // namespace quillon
