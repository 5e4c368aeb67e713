#include "raw/RawRegion.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace RawLayer {

namespace {

constexpr std::size_t BlockSize = 16 * 1024;
constexpr std::size_t LargestPiece = 1024; // larger ones would waste the ends of blocks

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
  auto* memory = static_cast<unsigned char*>(memoryOf(BlockSize));
  block_ = new (memory) Block{InUse};
  next_ = memory + alignment;
  left_ = BlockSize - alignment;
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
