#include "quillon/support/memory.h"

#include <cstdlib>
#include <limits>
#include <utility>

#include "quillon/support/operations.h"

namespace quillon {
namespace {

MemorySource current{&std::malloc, &std::free};
MemoryInUse inUse{0, 0};

// Stands before every block; its alignment keeps the block's.
struct alignas(std::max_align_t) BlockHeader {
  std::size_t size;
};

}  // namespace

MemorySource SetMemorySource(const MemorySource& source) { return std::exchange(current, source); }

MemoryInUse CountMemory() { return inUse; }

namespace support {

void* Alloc(std::uint32_t size) {
  if (size > std::numeric_limits<std::size_t>::max() - sizeof(BlockHeader)) return nullptr;
  auto* header = static_cast<BlockHeader*>(current.allocate(sizeof(BlockHeader) + size));
  if (header == nullptr) return nullptr;
  header->size = size;
  ++inUse.blocks;
  inUse.bytes += size;
  return header + 1;
}

void Free(void* block) {
  if (block == nullptr) return;
  BlockHeader* header = static_cast<BlockHeader*>(block) - 1;
  --inUse.blocks;
  inUse.bytes -= header->size;
  current.release(header);
}

}  // namespace support
}  // namespace quillon
