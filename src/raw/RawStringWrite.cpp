#include "raw/RawStringParts.h"

// Writing: code units are copied as they stand, nothing is converted.

namespace RawLayer {

namespace {

constexpr char digitAlphabet[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr uint64_t digitCount = sizeof digitAlphabet - 1;
// 64 binary digits, a prefix of two and a sign.
constexpr int32_t numberRoom = 67;

char digitOf(uint64_t digit) {
  return digit < digitCount ? digitAlphabet[digit] : '?';
}

// A base below 2 has no digits; it counts as 10.
uint64_t usableBase(int32_t base) {
  return base < 2 ? 10 : static_cast<uint64_t>(base);
}

// Both are references to pointers, for the source may be the very text whose body moves.
void appendPart(RawStringBody*& body, RawStringBody* const& source, int32_t start, int32_t count) {
  if (count <= 0) return;
  const int32_t end = body->length;
  makeRoom(body, static_cast<int64_t>(end) + count);
  copyUnits(body, end, source, start, count);
  endAt(body, end + count);
}

// Appends ASCII for which there is room.
void appendAscii(RawStringBody* body, const char* bytes, int32_t count) {
  const RawStringBody view = passingView(EncodingUtf8, bytes, count);
  copyUnits(body, body->length, &view, 0, count);
  endAt(body, body->length + count);
}

// The digits of a number, in a buffer that is filled from its end.
class DigitBuffer {
 public:
  void put(char unit) { bytes_[--start_] = unit; }
  void putDigits(uint64_t value, uint64_t base) {
    do {
      put(digitOf(value % base));
      value /= base;
    } while (value != 0);
  }
  void appendTo(RawStringBody*& body) const {
    makeRoom(body, static_cast<int64_t>(body->length) + numberRoom, RoomRule::Exact);
    appendAscii(body, bytes_ + start_, numberRoom - start_);
  }

 private:
  char bytes_[numberRoom];
  int32_t start_ = numberRoom;
};

} // namespace

void RawString::appendChar(uint16_t unit) {
  makeRoom(body_, static_cast<int64_t>(length()) + 1);
  setUnit(body_, body_->length, unit);
  endAt(body_, body_->length + 1);
}

void RawString::append(const RawString& source) {
  appendPart(body_, source.body_, 0, source.length());
}

void RawString::append(const RawString& source, RawRange range) {
  const RawRange part = range.clamped(source.length());
  appendPart(body_, source.body_, part.start, part.size());
}

void RawString::append5(const RawString& a, const RawString& b, const RawString& c,
                        const RawString& d, const RawString& e) {
  const int64_t added = int64_t{0} + a.length() + b.length() + c.length() + d.length() + e.length();
  if (added == 0) return;
  makeRoom(body_, length() + added);
  for (const RawString* each : {&a, &b, &c, &d, &e})
    appendPart(body_, each->body_, 0, each->length());
}

void RawString::assignChars(const RawString& source) {
  if (this == &source) return;
  const RawString kept = source; // the source may share this body, or be a view into it
  makeRoom(body_, kept.length());
  if (body_->kind == KindEmpty) return;
  copyUnits(body_, 0, kept.body_, 0, kept.length());
  endAt(body_, kept.length());
}

void RawString::insertGap(int32_t position, int32_t count) {
  if (count <= 0) return;
  makeRoom(body_, static_cast<int64_t>(length()) + count, RoomRule::Exact);
  const int32_t place = RawRange{position, length()}.clamped(length()).start;
  moveUnits(body_, place + count, place, length() - place);
  endAt(body_, length() + count);
}

void RawString::removeRange(int32_t position, int32_t count) {
  replaceRange(rangeOf(position, count), emptyStatic(), {});
}

void RawString::replaceRange(RawRange range, const RawString& source, RawRange sourceRange) {
  const RawRange place = range.clamped(length());
  const RawRange part = sourceRange.clamped(source.length());
  if (place.isEmpty() && part.isEmpty()) return;
  const RawString kept = source; // shares, so that this text is copied before it is changed
  const int64_t newLength = static_cast<int64_t>(length()) - place.size() + part.size();
  makeRoom(body_, newLength, RoomRule::Exact);
  moveUnits(body_, place.start + part.size(), place.end, length() - place.end);
  copyUnits(body_, place.start, kept.body_, part.start, part.size());
  endAt(body_, static_cast<int32_t>(newLength));
}

void RawString::insertUnderscore(int32_t position) {
  if (position > length()) return;
  makeRoom(body_, static_cast<int64_t>(length()) + 1);
  const int32_t place = position < 0 ? 0 : position;
  insertGap(place, 1);
  setUnit(body_, place, u'_');
}

void RawString::appendInt64(int64_t value) {
  const auto bits = static_cast<uint64_t>(value);
  DigitBuffer digits;
  digits.putDigits(value < 0 ? 0 - bits : bits, 10);
  if (value < 0) digits.put('-');
  digits.appendTo(body_);
}

void RawString::appendUInt64(uint64_t value, int32_t base) {
  DigitBuffer digits;
  digits.putDigits(value, usableBase(base));
  if (base == 16) digits.put('x');
  if (base == 2) digits.put('b');
  if (base == 16 || base == 2) digits.put('0');
  digits.appendTo(body_);
}

void RawString::appendDigits(uint64_t value, int32_t base, int32_t width) {
  if (width <= 0) return;
  makeRoom(body_, static_cast<int64_t>(length()) + width, RoomRule::Exact);
  for (int32_t place = length() + width; place-- > length(); value /= usableBase(base))
    setUnit(body_, place, static_cast<uint16_t>(digitOf(value % usableBase(base))));
  endAt(body_, length() + width);
}

RawString RawString::escapeControls(const RawString& source) {
  const RawString from = source.shareAs(EncodingUtf8);
  RawString result = withCapacity(from.length());
  for (int32_t i = 0; i < from.length(); ++i) {
    const uint16_t unit = from.at(i);
    if (unit == u'\r' && from.at(i + 1) == u'\n') ++i;
    if (unit == u'\r' || unit == u'\n')
      result.append("\\n"_text);
    else if (unit == u'\t')
      result.append("\\t"_text);
    else
      result.appendChar(unit);
  }
  return result;
}

} // namespace RawLayer
