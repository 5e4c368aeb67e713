// What the sources of RawString share: making, sharing and changing bodies. For them only.
//
// Empty texts need no memory: one everlasting body for each encoding code serves them all, and
// nobody counts it. Functions that change a body take a reference to the pointer, for it may move.
#pragma once

#include "raw/RawString.h"

#include <atomic>
#include <cstring>

namespace RawLayer {

static_assert(sizeof(RawString) == sizeof(void*), "a text is exactly one pointer");

// Aggregates of a view for the length of one operation, that nobody counts or frees.
constexpr RawStringBody passingView(int32_t encoding, const void* units, int32_t length) {
  return {units, length, length, 0, RawString::KindView, static_cast<uint8_t>(encoding)};
}

// The range of so many units from a position; it may reach out of the text.
constexpr RawRange rangeOf(int32_t position, int32_t count) {
  const int64_t end = int64_t{position} + count;
  return {position, end < INT32_MAX ? static_cast<int32_t>(end < 0 ? 0 : end) : INT32_MAX};
}

inline std::atomic_ref<int32_t> referencesOf(RawStringBody* body) {
  return std::atomic_ref<int32_t>(body->references);
}

constexpr int32_t unitSize(int32_t encoding) {
  return encoding == EncodingWide ? 2 : 1;
}

inline const uint8_t* bytesOf(const RawStringBody* body) {
  return static_cast<const uint8_t*>(body->text);
}
inline const char16_t* wideOf(const RawStringBody* body) {
  return static_cast<const char16_t*>(body->text);
}
inline uint8_t* mutableBytesOf(RawStringBody* body) {
  return const_cast<uint8_t*>(bytesOf(body));
}
inline char16_t* mutableWideOf(RawStringBody* body) {
  return const_cast<char16_t*>(wideOf(body));
}

// Calls `action` with the pointer to the units of the body: const uint8_t* or const char16_t*.
template <typename Action>
auto withUnits(const RawStringBody* body, Action&& action) {
  return body->encoding == EncodingWide ? action(wideOf(body)) : action(bytesOf(body));
}

// The everlasting empty body of a code; an unknown code counts as EncodingBinary.
RawStringBody* emptyBody(int32_t encoding) noexcept;
// A body over memory that is not its own: KindStatic or KindView. Null and counts below 0 are
// empty.
RawStringBody* makeForeignBody(RawString::Kind kind, int32_t encoding, const void* units,
                               int32_t length);
// An empty, terminated, owned body with room for exactly `capacity` units.
RawStringBody* makeOwnedBody(int32_t encoding, int32_t capacity);

// One more sharer of a body that is no view; the body itself.
inline RawStringBody* shareBody(RawStringBody* body) noexcept {
  if (body->kind != RawString::KindEmpty)
    referencesOf(body).fetch_add(1, std::memory_order_relaxed);
  return body;
}
void releaseBody(RawStringBody* body) noexcept;
// Gives a body of the code: shared, copied under the growth rule, or converted.
RawStringBody* shareBodyAs(int32_t encoding, RawStringBody* body);
// The units [start, start + count) of a body, copied (under the growth rule) or converted.
RawStringBody* copyPart(int32_t encoding, const RawStringBody* body, int32_t start, int32_t count);
// The same, where the codes differ; a conversion that fails gives the empty body.
RawStringBody* convertPart(int32_t encoding, const RawStringBody* body, int32_t start,
                           int32_t count);

// The growth rule: the capacity that a writer reserves for a text that needs `needed` units.
int32_t grownCapacity(int64_t needed);
// Makes the body owned and sole with room for exactly `capacity` units, and never less than it has.
void resizeBody(RawStringBody*& body, int32_t capacity);

enum class RoomRule { Grow, Exact };
// The slow road of makeRoom.
void takeRoom(RawStringBody*& body, int64_t needed, RoomRule rule);
// Before a write: a body that others see, or whose memory is not its own, is copied under the
// growth rule; where fewer than `needed` units fit, more room is taken, exactly `needed` or by the
// growth rule. A body that was empty and needs nothing stays the everlasting one.
inline void makeRoom(RawStringBody*& body, int64_t needed, RoomRule rule = RoomRule::Grow) {
  if (body->kind != RawString::KindOwned || body->capacity < needed ||
      referencesOf(body).load(std::memory_order_acquire) > 0)
    takeRoom(body, needed, rule);
}

inline void setUnit(RawStringBody* body, int32_t position, uint16_t unit) {
  if (body->encoding == EncodingWide)
    mutableWideOf(body)[position] = static_cast<char16_t>(unit);
  else
    mutableBytesOf(body)[position] = static_cast<uint8_t>(unit);
}

// Sets the length of a writable body and its terminator.
inline void endAt(RawStringBody* body, int32_t length) {
  body->length = length;
  setUnit(body, length, 0);
}

template <std::size_t Half>
void copyEnds(uint8_t* to, const uint8_t* from, std::size_t size) {
  uint8_t first[Half];
  uint8_t last[Half];
  std::memcpy(first, from, Half);
  std::memcpy(last, from + (size - Half), Half);
  std::memcpy(to, first, Half);
  std::memcpy(to + (size - Half), last, Half);
}

// memcpy for what is short in most cases: calling the C runtime takes longer than the copy. Each
// size is met by two copies that may overlap.
inline void copyBytes(uint8_t* to, const uint8_t* from, std::size_t size) {
  if (size > 64) {
    std::memcpy(to, from, size);
  } else if (size >= 32) {
    copyEnds<32>(to, from, size);
  } else if (size >= 16) {
    copyEnds<16>(to, from, size);
  } else if (size >= 8) {
    copyEnds<8>(to, from, size);
  } else if (size >= 4) {
    copyEnds<4>(to, from, size);
  } else {
    for (std::size_t i = 0; i < size; ++i) to[i] = from[i];
  }
}

// Copies units between texts of different widths: truncated to bytes, or widened one by one.
void copyUnitsAcross(RawStringBody* target, int32_t position, const RawStringBody* source,
                     int32_t start, int32_t count);
// Copies units as they stand. The target has room and does not overlap.
inline void copyUnits(RawStringBody* target, int32_t position, const RawStringBody* source,
                      int32_t start, int32_t count) {
  const int32_t size = unitSize(target->encoding);
  if (size != unitSize(source->encoding))
    copyUnitsAcross(target, position, source, start, count);
  else
    copyBytes(mutableBytesOf(target) + static_cast<std::ptrdiff_t>(position) * size,
              bytesOf(source) + static_cast<std::ptrdiff_t>(start) * size,
              static_cast<std::size_t>(count) * static_cast<std::size_t>(size));
}
// Moves `count` units inside a writable body; the parts may overlap.
void moveUnits(RawStringBody* body, int32_t to, int32_t from, int32_t count);

} // namespace RawLayer
