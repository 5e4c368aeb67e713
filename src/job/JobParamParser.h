// JobParamLines: where the parser of a JobParamList takes the lines of one section from, one after
// the other. The lines are already judged: no empty ones, no comments, no header.
//
// The present line is valid until `next` is called again, so a source may hand out views into its
// buffer. One object serves one thread.
#pragma once

#include "job/JobParam.h"

namespace JobLayer {

// The range, which lies inside the text, without the blanks and tabs at its ends. The same as
// trimRange with that set; it is asked for twice in each line of a file, and this costs a third.
inline RawRange withoutBlanks(const RawString& text, RawRange range) {
  if (text.encoding() == RawLayer::EncodingWide)
    return text.trimRange(range, RawString::whiteSpace());
  const char* bytes = text.text();
  const auto isBlank = [bytes](int32_t position) {
    return bytes[position] == ' ' || bytes[position] == '\t';
  };
  while (range.start < range.end && isBlank(range.start)) ++range.start;
  while (range.start < range.end && isBlank(range.end - 1)) --range.end;
  return range;
}

class JobParamLines {
 public:
  JobParamLines() = default;
  virtual ~JobParamLines() = default;
  JobParamLines(const JobParamLines&) = delete;
  JobParamLines& operator=(const JobParamLines&) = delete;

  virtual bool next() = 0; // false at the end of the section
  [[nodiscard]] const RawString& text() const { return *text_; }
  // The line without the blanks and tabs at its ends.
  [[nodiscard]] RawRange range() const { return range_; }
  // A part of the present line in the region.
  RawString value(RawRange part) { return RawString::fromRegion(region_, *text_, part); }
  RawString key(RawRange part) { return value(withoutBlanks(*text_, part)); }
  // Where the tree that is made from the lines lies, in one piece of memory after the other.
  RawLayer::RawRegion& region() { return region_; }

 protected:
  const RawString* text_ = &RawString::emptyStatic();
  RawRange range_;

 private:
  RawLayer::RawRegion region_;
};

} // namespace JobLayer
