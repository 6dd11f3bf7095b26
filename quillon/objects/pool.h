// Memory for the parts of one document: small blocks by size class, given back block by block or
// all at once.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

namespace quillon::objects {

struct PoolBlock {
  PoolBlock* next;
};

struct Pool {
  static constexpr std::size_t kGrain = 16;
  static constexpr std::size_t kLargestSmall = 1024;

  std::array<PoolBlock*, kLargestSmall / kGrain + 1> freeBlocks{};
  std::vector<std::unique_ptr<std::byte[]>> chunks;
  std::byte* next = nullptr;
  std::size_t left = 0;
  std::unordered_map<void*, std::unique_ptr<std::byte[]>> largeBlocks;
};

// Throws std::bad_alloc. Size 0 gives null. Blocks are aligned for any record.
void* Allocate(Pool& pool, std::size_t size);

// `size` is the size asked for.
void Release(Pool& pool, void* block, std::size_t size);

template <typename Item>
Item* AllocateArray(Pool& pool, std::size_t count) {
  return static_cast<Item*>(Allocate(pool, count * sizeof(Item)));
}

}  // namespace quillon::objects
