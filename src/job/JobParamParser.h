// JobParamLines: where the parser of a JobParamList takes the lines of one section from, one after
// the other. The lines are already judged: no empty ones, no comments, no header.
//
// The present line is valid until `next` is called again, so a source may hand out views into its
// buffer. One object serves one thread.
#pragma once

#include "job/JobParam.h"

namespace JobLayer {

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
  // A part of the present line as a key, without blanks and tabs at its ends. Sections repeat a few
  // words hundreds of times: equal keys share one body.
  RawString key(RawRange part);

 protected:
  const RawString* text_ = &RawString::emptyStatic();
  RawRange range_;

 private:
  static constexpr int32_t KeySlots = 64;
  RawString keys_[KeySlots];
};

} // namespace JobLayer
