#include "quillon/objects/pool.h"

namespace quillon::objects {
namespace {

constexpr std::size_t kChunkSize = std::size_t{256} * 1024;

std::size_t ClassOf(std::size_t size) { return (size + Pool::kGrain - 1) / Pool::kGrain; }

void* AllocateLarge(Pool& pool, std::size_t size) {
  auto block = std::unique_ptr<std::byte[]>(new std::byte[size]);
  void* address = block.get();
  pool.largeBlocks.emplace(address, std::move(block));
  return address;
}

}  // namespace

void* Allocate(Pool& pool, std::size_t size) {
  if (size == 0) return nullptr;
  if (size > Pool::kLargestSmall) return AllocateLarge(pool, size);
  const std::size_t sizeClass = ClassOf(size);
  if (PoolBlock* block = pool.freeBlocks[sizeClass]) {
    pool.freeBlocks[sizeClass] = block->next;
    return block;
  }
  const std::size_t bytes = sizeClass * Pool::kGrain;
  if (pool.left < bytes) {
    // Small documents stay small: the first chunk is an eighth of the others.
    const std::size_t chunk = pool.chunks.empty() ? kChunkSize / 8 : kChunkSize;
    pool.chunks.push_back(std::unique_ptr<std::byte[]>(new std::byte[chunk]));
    pool.next = pool.chunks.back().get();
    pool.left = chunk;
  }
  void* block = pool.next;
  pool.next += bytes;
  pool.left -= bytes;
  return block;
}

void Release(Pool& pool, void* block, std::size_t size) {
  if (block == nullptr) return;
  if (size > Pool::kLargestSmall) {
    pool.largeBlocks.erase(block);
    return;
  }
  const std::size_t sizeClass = ClassOf(size);
  auto* freed = static_cast<PoolBlock*>(block);
  freed->next = pool.freeBlocks[sizeClass];
  pool.freeBlocks[sizeClass] = freed;
}

}  // namespace quillon::objects
