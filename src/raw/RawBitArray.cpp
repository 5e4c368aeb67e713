#include "raw/RawBitArray.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <memory>

namespace RawLayer {

struct RawBitArrayData : public RawDataShared {
  std::unique_ptr<uint32_t[]> words;
  int32_t wordCount = 0;
  int32_t growStep = 0;
  int32_t bitCapacity = 0;
  int32_t usedBits = 0;
  std::atomic<int32_t> references{0}; // sharers beyond the first
};

namespace {

// More words would give bits whose positions do not fit into 32 bits.
constexpr int32_t MostWords = INT32_MAX / RawBitArray::WordBits;

uint32_t maskOf(int32_t index) {
  return 1u << (index % RawBitArray::WordBits);
}

uint32_t& wordOf(RawBitArrayData& data, int32_t index) {
  return data.words[static_cast<std::size_t>(index / RawBitArray::WordBits)];
}

std::unique_ptr<uint32_t[]> copyWords(const RawBitArrayData& data, int32_t count) {
  auto words = std::make_unique<uint32_t[]>(static_cast<std::size_t>(count));
  std::copy_n(data.words.get(), std::min(count, data.wordCount), words.get());
  return words;
}

void dropReference(RawBitArrayData* data) {
  if (data->references.fetch_sub(1, std::memory_order_acq_rel) == 0) delete data;
}

} // namespace

RawBitArray::RawBitArray(int32_t growStep) : data_(new RawBitArrayData) {
  data_->growStep = std::max(growStep, 1);
}

RawBitArray::RawBitArray(const RawBitArray& other)
    : RawBitArrayInfo(other), Duplicator(other), data_(other.data_) {
  data_->references.fetch_add(1, std::memory_order_relaxed);
}

RawBitArray& RawBitArray::operator=(const RawBitArray& other) {
  other.data_->references.fetch_add(1, std::memory_order_relaxed);
  dropReference(data_);
  data_ = other.data_;
  return *this;
}

RawBitArray::~RawBitArray() {
  dropReference(data_);
}

void RawBitArray::duplicate() {
  if (data_->references.load(std::memory_order_acquire) == 0) return;
  auto* copy = new RawBitArrayData;
  copy->words = copyWords(*data_, data_->wordCount);
  copy->wordCount = data_->wordCount;
  copy->growStep = data_->growStep;
  copy->bitCapacity = data_->bitCapacity;
  copy->usedBits = data_->usedBits;
  dropReference(data_);
  data_ = copy;
}

bool RawBitArray::growFor(int32_t index) {
  const int64_t step = data_->growStep;
  const int64_t beyond = int64_t{index} - data_->bitCapacity;
  const int64_t words = (int64_t{index} + (WordBits - 1) + (step - beyond % step)) / WordBits;
  // The last step is cut at the greatest size, as long as that still holds the index.
  const int64_t most = index / WordBits < MostWords ? MostWords : words;
  return resizeWords(static_cast<int32_t>(std::min(words, most)));
}

void RawBitArray::setBit(int32_t index) {
  if (index < 0) return;
  duplicate();
  if (index >= data_->bitCapacity && !growFor(index)) return;
  wordOf(*data_, index) |= maskOf(index);
  data_->usedBits = std::max(data_->usedBits, index + 1);
}

void RawBitArray::clearBit(int32_t index) {
  if (!testBit(index)) return;
  duplicate();
  wordOf(*data_, index) &= ~maskOf(index);
}

bool RawBitArray::testBit(int32_t index) const {
  if (index < 0 || index >= data_->bitCapacity) return false;
  return (wordOf(*data_, index) & maskOf(index)) != 0;
}

int32_t RawBitArray::findFirstClear() {
  for (int32_t i = 0; i < data_->wordCount; ++i) {
    const uint32_t word = data_->words[static_cast<std::size_t>(i)];
    if (word != 0xFFFFFFFF) return i * WordBits + std::countr_one(word);
  }
  const int32_t index = data_->bitCapacity;
  // An array without words stays without: its first setBit makes them.
  if (index > 0) growFor(index);
  return index;
}

bool RawBitArray::resizeWords(int32_t count) {
  if (count < data_->wordCount) return true;
  if (count > MostWords) return false;
  duplicate();
  data_->words = copyWords(*data_, count);
  data_->wordCount = count;
  data_->bitCapacity = count * WordBits;
  return true;
}

void RawBitArray::clear() {
  duplicate();
  data_->words.reset();
  data_->wordCount = data_->bitCapacity = data_->usedBits = 0;
}

const uint32_t* RawBitArray::words() const {
  return data_->words.get();
}

uint32_t* RawBitArray::mutableWords() {
  duplicate();
  return data_->words.get();
}

int32_t RawBitArray::wordCount() const {
  return data_->wordCount;
}
int32_t RawBitArray::growStep() const {
  return data_->growStep;
}
int32_t RawBitArray::bitCapacity() const {
  return data_->bitCapacity;
}
int32_t RawBitArray::usedBits() const {
  return data_->usedBits;
}

void RawBitArray::setUsedBits(int32_t count) {
  duplicate();
  data_->usedBits = count;
}

} // namespace RawLayer
