// RawPattern: the one matcher for process names, window texts and file names.
//
// The first unit of a pattern chooses its kind: "<" the rest negated, ">" plain text, "@" the
// class syntax, anything else wildcards. A match covers the whole subject. Failed positions are
// remembered, so the cost stays below pattern length times subject length.
// Bad patterns match what their readable part says; none fails. One object belongs to one thread.
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
  bool ignoreCase = false; // of the last match
  int32_t matchStart = 0;  // the part matched
  int32_t matchEnd = 0;

  RawPattern() = default;
  explicit RawPattern(const RawString& text) : pattern(text) {}

  bool match(const RawString& text, RawRange range, bool foldCase);
  bool match(const RawString& text, bool foldCase) { return match(text, text.all(), foldCase); }
  // The wildcard syntax with "*" taken longest first; on success the range of each wildcard in
  // `captures`, in the order of the pattern.
  bool capture(const RawString& text, RawRange range, bool foldCase, RawRangeList& captures);
};

} // namespace RawLayer
