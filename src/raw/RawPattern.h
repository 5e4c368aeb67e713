// RawPattern: the one matcher for process names, window texts and file names.
//
// A match covers the whole subject. The first unit of a pattern chooses its kind:
//   <   the rest, which may be of any kind, and the answer inverted
//   >   the rest as plain text, always in exact case
//   @   items: a unit, "." (no line end), "[a-z]", "[^a-z]" (no line end either), "%" and a letter,
//       each of them followed by "*" (any number) or "+" (one or more) if need be
//   any other: wildcards, "*" for any number of units, "?" for one, "%" and a letter
// "%" and a letter stand for a unit that configuration files keep for themselves (%s for a blank,
// %c for ";"), any other letter for itself; both in exact case. All else folds ASCII when asked
// to, sets included. Units are code units of the texts' own encodings.
//
// No pattern is bad: an open "[" runs to the end, a "%" at the end takes nothing and so matches
// nothing, "-" at the edge of a set and "*" or "+" without an item in front are plain.
// The cost stays below pattern length times subject length. One object belongs to one thread.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawRangeListAllocator : public RawListAllocator<RawRange> {
  void destroy(RawRange* element) override { delete element; }
};
class RawRangeList : public RawListR<RawRangeListAllocator, RawRange> {};

class RawPattern {
 public:
  RawString pattern;
  bool whole = true;       // always: the match must reach the end of the text
  bool ignoreCase = false; // as the last match was asked for
  int32_t matchStart = 0;  // the part matched
  int32_t matchEnd = 0;

  RawPattern() = default;
  explicit RawPattern(const RawString& text) : pattern(text) {}

  // Whether the pattern covers the clamped range; a negation leaves matchStart and matchEnd 0.
  bool match(const RawString& text, RawRange range, bool foldCase);
  bool match(const RawString& text, bool foldCase) { return match(text, text.all(), foldCase); }
  // Wildcards alone, whatever the first unit is, with "*" taken longest first. On success
  // `captures` holds the range of each "*" and "?" in the order of the pattern, else nothing. Two
  // more escapes: %J for ">" and %K for "<"; %n takes CR LF as one.
  bool capture(const RawString& text, RawRange range, bool foldCase, RawRangeList& captures);
};

} // namespace RawLayer
