// RawNumberParser: numbers in texts, with a sign and the prefixes 0x and 0b.
//
// A parser holds the outcome of its last parse. An unreadable text leaves what was read up to the
// fault in `value`. Nothing checks for overflow: values wrap in 64 bits. The sign is kept apart.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

class RawNumberParser {
 public:
  uint16_t sign = 0; // 0, '-' or '+'
  int32_t base = 10;
  int32_t position = 0; // where the digits start, then where the parse stopped
  uint64_t value = 0;

  // True when the whole range is a number. An empty range is true with value 0.
  bool parse(const RawString& source, RawRange range);
  bool parseInBase(const RawString& source, RawRange range, int32_t numberBase);
};

// The low 32 bits of the number in the whole text, negated when it began with a minus.
int32_t toInt(const RawString& source);
// Whether the whole text is a number to the parser (an empty text is).
bool isNumber(const RawString& source);

} // namespace RawLayer
