// RawStringBody: what a RawString points at. Only the sources of the text write it.
//
// An owned body and its units are one allocation, the units right behind the body; static texts
// and views are a body alone. The count of sharers is an atomic number instead of one under a
// lock, for copying and dropping a text are the most frequent operations of the whole system.
#pragma once

#include <cstdint>

namespace RawLayer {

struct RawStringBody {
  const void* text;
  int32_t length;        // code units, without the terminator
  int32_t capacity;      // code units that fit, without the terminator
  int32_t references;    // sharers beyond the first; through std::atomic_ref only
  uint8_t kind;          // RawString::Kind
  uint8_t encoding;      // RawEncoding
  bool inRegion = false; // a piece of RawRegion, with the units behind it
};

} // namespace RawLayer
