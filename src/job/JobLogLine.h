// The forms of the log's lines. Pure: texts and a moment in, a whole line with its CR LF out.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawSystem.h"

namespace JobLayer {

using RawLayer::RawMoment;

class JobLogLine {
 public:
  static const RawString& prefix();                // "$ ", of an ordinary detail
  static RawString stamp(const RawMoment& moment); // YYYYMMDD.HHMMSS.mmm
  // "#keyword", ":first" and ":second" when not empty, ":stamp", "|prefix detail" with a detail.
  static RawString event(const RawString& keyword, const RawString& first, const RawString& second,
                         const RawMoment& moment,
                         const RawString& detailPrefix = RawString::emptyStatic(),
                         const RawString& detail = RawString::emptyStatic());
  // "@from>to:stamp|prefix detail".
  static RawString transition(const RawString& from, const RawString& to, const RawMoment& moment,
                              const RawString& detailPrefix, const RawString& detail);
  // "// " and the texts, with nothing between them.
  static RawString comment(const RawString& a, const RawString& b = RawString::emptyStatic(),
                           const RawString& c = RawString::emptyStatic());
  static RawString zone(int32_t offsetMinutes); // "UTC+09:30"
};

} // namespace JobLayer
