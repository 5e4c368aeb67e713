#include "job/JobLogLine.h"

namespace JobLayer {

namespace {

constexpr int32_t StampLength = 19; // YYYYMMDD.HHMMSS.mmm
constexpr int32_t MarkLength = 8;   // all signs between the texts of one line, with its end

// Writes `width` decimal digits and gives the place behind them.
char* putDigits(char* target, int32_t value, int32_t width) {
  for (int32_t i = width - 1; i >= 0; --i, value /= 10)
    target[i] = static_cast<char>('0' + value % 10);
  return target + width;
}

// Written into the line's own memory, which has room for it: no line is made without a stamp.
void putStamp(RawString& line, const RawMoment& moment) {
  const int32_t start = line.length();
  char* place = putDigits(line.mutableText() + start, moment.year, 4);
  place = putDigits(place, moment.month, 2);
  place = putDigits(place, moment.day, 2);
  *place++ = '.';
  place = putDigits(place, moment.hour, 2);
  place = putDigits(place, moment.minute, 2);
  place = putDigits(place, moment.second, 2);
  *place++ = '.';
  putDigits(place, moment.milliseconds, 3);
  line.setLength(start + StampLength);
}

void appendStamp(RawString& line, const RawMoment& moment) {
  line.appendChar(':');
  putStamp(line, moment);
}

// An empty text has no place in the line.
void appendOptional(RawString& line, const RawString& text) {
  if (text.isEmpty()) return;
  line.appendChar(':');
  line.append(text);
}

void appendDetail(RawString& line, const RawString& detailPrefix, const RawString& detail) {
  line.appendChar('|');
  line.append(detailPrefix);
  line.append(detail);
}

} // namespace

const RawString& JobLogLine::prefix() {
  return "$ "_text;
}

RawString JobLogLine::stamp(const RawMoment& moment) {
  RawString text = RawString::withCapacity(StampLength);
  putStamp(text, moment);
  return text;
}

RawString JobLogLine::event(const RawString& keyword, const RawString& first,
                            const RawString& second, const RawMoment& moment,
                            const RawString& detailPrefix, const RawString& detail) {
  RawString line =
      RawString::withCapacity(MarkLength + StampLength + keyword.length() + first.length() +
                              second.length() + detailPrefix.length() + detail.length());
  line.appendChar('#');
  line.append(keyword);
  appendOptional(line, first);
  appendOptional(line, second);
  appendStamp(line, moment);
  if (!detail.isEmpty()) appendDetail(line, detailPrefix, detail);
  line.append("\r\n"_text);
  return line;
}

RawString JobLogLine::transition(const RawString& from, const RawString& to,
                                 const RawMoment& moment, const RawString& detailPrefix,
                                 const RawString& detail) {
  RawString line = RawString::withCapacity(MarkLength + StampLength + from.length() + to.length() +
                                           detailPrefix.length() + detail.length());
  line.appendChar('@');
  line.append(from);
  line.appendChar('>');
  line.append(to);
  appendStamp(line, moment);
  appendDetail(line, detailPrefix, detail);
  line.append("\r\n"_text);
  return line;
}

RawString JobLogLine::comment(const RawString& a, const RawString& b, const RawString& c) {
  return RawString::concat("// "_text, a, b, c, "\r\n"_text);
}

RawString JobLogLine::zone(int32_t offsetMinutes) {
  const uint32_t distance =
      static_cast<uint32_t>(offsetMinutes < 0 ? -offsetMinutes : offsetMinutes);
  RawString text = RawString::concat("UTC"_text, offsetMinutes < 0 ? "-"_text : "+"_text);
  text.appendDigits(distance / 60, 10, 2);
  text.appendChar(':');
  text.appendDigits(distance % 60, 10, 2);
  return text;
}

} // namespace JobLayer
