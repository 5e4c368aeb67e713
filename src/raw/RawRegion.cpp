#include "raw/RawRegion.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace RawLayer {

namespace {

// Each block of a region is twice as large as the one before, up to the largest.
constexpr std::size_t FirstBlock = 4 * 1024;
constexpr std::size_t LargestBlock = 64 * 1024;
constexpr std::size_t LargestPiece = FirstBlock / 4; // larger ones would waste the ends of blocks

// While a region cuts pieces from a block, the block's count is that much too high: taking a piece
// counts in the region alone, and the block cannot go before the region has left it.
constexpr int32_t InUse = std::numeric_limits<int32_t>::max() / 2;

void* memoryOf(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) std::abort();
  return memory;
}

} // namespace

void* RawRegion::takeAlone(std::size_t size) {
  auto** piece = static_cast<Block**>(memoryOf(alignment + size));
  *piece = nullptr;
  return reinterpret_cast<unsigned char*>(piece) + sizeof(Block*);
}

void* RawRegion::takeElsewhere(std::size_t size) {
  if (size > LargestPiece) return takeAlone(size);
  leaveBlock();
  blockSize_ = blockSize_ == 0 ? FirstBlock : std::min(blockSize_ * 2, LargestBlock);
  auto* memory = static_cast<unsigned char*>(memoryOf(blockSize_));
  static_assert(sizeof(Block) <= alignment);
  block_ = new (memory) Block{InUse};
  next_ = memory + alignment;
  left_ = blockSize_ - alignment;
  return take(size);
}

void RawRegion::leaveBlock() {
  const int32_t given = InUse - taken_;
  if (block_ != nullptr && block_->pieces.fetch_sub(given, std::memory_order_acq_rel) == given)
    std::free(block_);
  block_ = nullptr;
  taken_ = 0;
}

void RawRegion::give(void* piece) {
  if (piece == nullptr) return;
  Block** place = static_cast<Block**>(piece) - 1;
  Block* block = *place;
  if (block == nullptr)
    std::free(place);
  else if (block->pieces.fetch_sub(1, std::memory_order_acq_rel) == 1)
    std::free(block);
}

} // namespace RawLayer
