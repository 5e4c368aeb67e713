// RawRangedTextList: lines kept from a file, for parsers that look at a part of each.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

// A line kept from a file: its text, the part of it that counts, and its number from 0.
struct RawRangedTextUnit {
  RawString text;
  RawRange range;
  int32_t lineNumber = 0;
};
class RawRangedTextListAllocator : public RawListAllocator<RawRangedTextUnit> {
 public:
  void destroy(RawRangedTextUnit* element) override { delete element; }
};
class RawRangedTextList : public RawListR<RawRangedTextListAllocator, RawRangedTextUnit> {};

} // namespace RawLayer
