// RawRegion: memory for many small things that are made one after the other, such as the tree of a
// file that is read. Taking a piece costs an addition instead of a call to the runtime's heap.
//
// Pieces are cut from blocks. A piece outlives its region and may be given back by any thread at
// any time; a block goes with the last piece in it, so one piece that stays keeps its block (64
// KB at most). A region itself serves one thread. Memory that cannot be had ends the process.
//
// Under the address sanitizer each piece is an allocation of its own, so that no fault hides.
//
// Classes whose objects may lie in a region have these as their operators new and delete; what is
// made without a region is a piece of its own.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define RAW_REGION_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define RAW_REGION_CHECKED 1
#endif
#endif
#ifndef RAW_REGION_CHECKED
#define RAW_REGION_CHECKED 0
#endif

namespace RawLayer {

class RawRegion {
 public:
  RawRegion() = default;
  ~RawRegion() { leaveBlock(); }
  RawRegion(const RawRegion&) = delete;
  RawRegion& operator=(const RawRegion&) = delete;

  // `size` bytes, aligned for pointers.
  void* take(std::size_t size) {
    if (RAW_REGION_CHECKED) return takeAlone(size);
    const std::size_t whole = (sizeof(Block*) + size + alignment - 1) & ~(alignment - 1);
    if (whole > left_) return takeElsewhere(size);
    auto** piece = reinterpret_cast<Block**>(next_);
    next_ += whole;
    left_ -= whole;
    ++taken_;
    *piece = block_;
    return piece + 1;
  }
  static void* takeAlone(std::size_t size); // a piece in no region
  static void give(void* piece);            // null is nothing

 private:
  struct Block {
    std::atomic<int32_t> pieces; // not given back yet
  };
  static constexpr std::size_t alignment = alignof(Block*) < 8 ? 8 : alignof(Block*);
  void* takeElsewhere(std::size_t size);
  void leaveBlock();

  Block* block_ = nullptr;
  unsigned char* next_ = nullptr;
  std::size_t left_ = 0;
  std::size_t blockSize_ = 0;
  int32_t taken_ = 0;
};

} // namespace RawLayer
