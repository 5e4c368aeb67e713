#include "raw/RawBlockReader.h"

#include "raw/RawCodePage.h"
#include "raw/RawEncodings.h"
#include "raw/RawTranscode.h"

#include <algorithm>
#include <cstring>

namespace RawLayer {

namespace {

// An unconverted line must leave so much of its block free, or it counts as too long.
constexpr int32_t UnconvertedReserve = 6;
// How much more than asked for a buffer gets when it has to grow.
constexpr int32_t GrowthMargin = 2;
constexpr int32_t LargestUtf8 = 3; // bytes of one 16-bit unit

void copyPairs(uint8_t* target, const uint8_t* source, int32_t size, bool swapped) {
  if (!swapped) {
    std::memcpy(target, source, static_cast<std::size_t>(size));
    return;
  }
  for (int32_t i = 0; i + 1 < size; i += 2) {
    target[i] = source[i + 1];
    target[i + 1] = source[i];
  }
}

template <class Unit>
void grow(std::unique_ptr<Unit[]>& buffer, int32_t& capacity, int32_t used, int32_t size) {
  if (size <= capacity) return;
  std::unique_ptr<Unit[]> larger(new Unit[static_cast<std::size_t>(size)]);
  if (used > 0)
    std::memcpy(larger.get(), buffer.get(), static_cast<std::size_t>(used) * sizeof(Unit));
  buffer = std::move(larger);
  capacity = size;
}

// Bytes read, less than `size` only at the end of the file; -1 on failure. The platform may give
// less than was asked for, and whatever is decided over a block must not depend on that.
int32_t readWhole(const RawFileOwner& file, uint8_t* target, int32_t size) {
  int32_t total = 0;
  while (total < size) {
    const int32_t count = readFile(file, target + total, size - total);
    if (count < 0) return -1;
    if (count == 0) break;
    total += count;
  }
  return total;
}

} // namespace

bool RawBlockConverter::convert(int32_t from, int32_t to, const uint8_t* data, int32_t size) {
  flags |= Running;
  growWide(wideStart);
  growOut(outStart);
  wideUsed_ = 0;
  if (size <= 0) return true;
  if (!toWide(from, data, size) || !fromWide(to)) {
    drop();
    return false;
  }
  flags |= OutputReady;
  return true;
}

bool RawBlockConverter::toWide(int32_t from, const uint8_t* data, int32_t size) {
  if (isUtf16Bytes(from)) {
    growWide(size / 2);
    copyPairs(reinterpret_cast<uint8_t*>(wide_.get()), data, size & ~1, from != rawNativeUtf16());
    wideUsed_ = size / 2;
    return true;
  }
  if (from == EncodingShiftJis) {
    growWide(size);
    wideUsed_ = rawShiftJisToWide(data, size, wide_.get());
    if (wideUsed_ >= 0) return true;
  }
  const uint32_t page = rawCodePageOf(from);
  const char* bytes = reinterpret_cast<const char*>(data);
  RawConversion done = rawToWide(page, bytes, size, wide_.get(), wideSize_);
  if (done.error == RawConversionNoRoom) {
    growWide(rawToWide(page, bytes, size, nullptr, 0).count + GrowthMargin);
    done = rawToWide(page, bytes, size, wide_.get(), wideSize_);
  }
  lastError = done.error;
  wideUsed_ = done.count;
  return done.error == 0;
}

bool RawBlockConverter::fromWide(int32_t to) {
  if (wideUsed_ <= 0) return true;
  if (isUtf16Bytes(to)) {
    const int32_t size = wideUsed_ * 2;
    growOut(outUsed_ + size);
    copyPairs(out_.get() + outUsed_, reinterpret_cast<const uint8_t*>(wide_.get()), size,
              to != rawNativeUtf16());
    outUsed_ += size;
    return true;
  }
  if (to == EncodingUtf8) {
    growOut(outUsed_ + wideUsed_ * LargestUtf8);
    outUsed_ += rawWideToUtf8(wide_.get(), wideUsed_, out_.get() + outUsed_);
    return true;
  }
  const uint32_t page = rawCodePageOf(to);
  const auto target = [this] { return reinterpret_cast<char*>(out_.get()) + outUsed_; };
  // No room at all would be taken for the question how much is needed.
  if (outSize_ == outUsed_) growOut(outUsed_ + GrowthMargin);
  RawConversion done = rawFromWide(page, wide_.get(), wideUsed_, target(), outSize_ - outUsed_);
  if (done.error == RawConversionNoRoom) {
    const int32_t needed = rawFromWide(page, wide_.get(), wideUsed_, nullptr, 0).count;
    growOut(outUsed_ + needed + GrowthMargin);
    done = rawFromWide(page, wide_.get(), wideUsed_, target(), outSize_ - outUsed_);
  }
  lastError = done.error;
  if (done.error != 0) return false;
  outUsed_ += done.count;
  return true;
}

void RawBlockConverter::keepTail(int32_t tail) {
  if (tail > 0)
    std::memmove(out_.get(), out_.get() + outUsed_ - tail, static_cast<std::size_t>(tail));
  outUsed_ = tail;
  flags &= static_cast<uint16_t>(~OutputReady);
}

void RawBlockConverter::drop() {
  wide_.reset();
  out_.reset();
  wideSize_ = outSize_ = 0;
  stop();
}

void RawBlockConverter::stop() {
  flags = 0;
  wideUsed_ = outUsed_ = 0;
}

void RawBlockConverter::growWide(int32_t size) {
  grow(wide_, wideSize_, 0, size);
}

void RawBlockConverter::growOut(int32_t size) {
  if (size <= outSize_) return;
  // The terminator's room is there, but is never counted.
  int32_t capacity = outSize_;
  grow(out_, capacity, outUsed_, size + RawBlockReader::TerminatorSize);
  outSize_ = size;
}

void RawBlockReader::start(int32_t size) {
  size = std::clamp(size, MinimumBlockSize, MaximumBlockSize);
  if (size != blockSize_) {
    block_.reset(new uint8_t[static_cast<std::size_t>(size) + TerminatorSize]);
    blockSize_ = size;
    converter_.drop();
  }
  converter_.stop();
  converter_.wideStart = size;
  converter_.outStart = size * 3;
  flags = 0;
  detected = target = markFound = 0;
  keepEncoding = fileEnded_ = false;
  skip_ = filled_ = usableEnd_ = 0;
}

RawBlockReader::Result RawBlockReader::refill(const RawFileOwner& file, int32_t tail) {
  if (isTooLong(tail)) return TooLong;
  keep(tail);
  int32_t count = 0;
  if (!fileEnded_) {
    const int32_t wanted = blockSize_ - filled_;
    count = readWhole(file, block_.get() + filled_, wanted);
    if (count < 0) return ReadFailed;
    fileEnded_ = count < wanted;
  }
  if (count == 0) {
    if (!converter_.isRunning() || filled_ == 0) return Ended;
    // The file ends inside a character.
    converter_.drop();
    detected = EncodingBinary;
    return ConversionFailed;
  }
  filled_ += count;
  findMark();
  if (!findEncoding(file)) return ReadFailed;
  return convert() ? Ready : ConversionFailed;
}

bool RawBlockReader::isTooLong(int32_t tail) const {
  return tail >= (converter_.isRunning() ? blockSize_ : blockSize_ - UnconvertedReserve);
}

// What has to stay goes to the front: text that was handed out, or bytes that were not converted.
void RawBlockReader::keep(int32_t tail) {
  int32_t kept = tail;
  if (converter_.isRunning()) {
    converter_.keepTail(tail);
    kept = filled_ - usableEnd_;
  }
  if (kept > 0 && kept < filled_)
    std::memmove(block_.get(), block_.get() + filled_ - kept, static_cast<std::size_t>(kept));
  filled_ = kept;
  skip_ = usableEnd_ = 0;
}

void RawBlockReader::findMark() {
  if ((flags & FindMark) == 0) return;
  flags &= static_cast<uint16_t>(~FindMark);
  markFound = detectMark(block_.get(), filled_);
  if (markFound == 0) return;
  if (detected == 0) detected = markFound;
  if ((flags & SkipMark) != 0) skip_ += markOf(markFound).size;
}

// False when the file could not be read.
bool RawBlockReader::findEncoding(const RawFileOwner& file) {
  if ((flags & DetectContent) != 0) {
    flags &= static_cast<uint16_t>(~DetectContent);
    if (detected == 0) {
      RawTextDetector detector;
      detected = detector.detect(block_.get() + skip_, filled_ - skip_);
      if (detected == 0 && !fileEnded_) {
        detector.advance(filled_ - skip_);
        if (!readAhead(file, detector)) return false;
      }
    }
  }
  if (keepEncoding) target = detected;
  return true;
}

// Nothing but ASCII in the first block: looks through the rest of the file and comes back. A block
// without a verdict was scanned to its end, so nothing of it has to be seen again.
bool RawBlockReader::readAhead(const RawFileOwner& file, RawTextDetector& detector) {
  const std::unique_ptr<uint8_t[]> scratch(new uint8_t[static_cast<std::size_t>(blockSize_)]);
  int64_t ahead = 0;
  for (int32_t count = blockSize_; detected == 0 && count == blockSize_;) {
    count = readWhole(file, scratch.get(), blockSize_);
    if (count < 0) return false;
    ahead += count;
    detected = detector.detect(scratch.get(), count);
    detector.advance(count);
  }
  return ahead == 0 || seekFile(file, -ahead);
}

bool RawBlockReader::convert() {
  if (target == 0 || detected == EncodingBinary || detected == target) return true;
  usableEnd_ = filled_;
  if (detected == 0) {
    // Plain ASCII is valid in nearly every 8-bit encoding.
    if (!isUtf16Bytes(target)) return true;
  } else {
    usableEnd_ = skip_ + clipToCharacter(detected, block_.get() + skip_, filled_ - skip_);
  }
  if (converter_.convert(detected, target, block_.get() + skip_, usableEnd_ - skip_)) return true;
  detected = EncodingBinary;
  return false;
}

} // namespace RawLayer
