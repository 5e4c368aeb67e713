#include "raw/RawNumber.h"

namespace RawLayer {

// What is no digit in any base.
static constexpr int32_t noDigit = 36;

static int32_t digitValue(uint16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  const uint16_t letter = rawFold(unit);
  return letter >= u'A' && letter <= u'Z' ? letter - u'A' + 10 : noDigit;
}

bool RawNumberParser::parse(const RawString& source, RawRange range) {
  *this = {};
  const RawRange digits = range.clamped(source.length());
  position = digits.start;
  if (digits.isEmpty()) return true;

  uint16_t unit = source.at(position);
  uint16_t foundSign = 0;
  if (unit == u'-' || unit == u'+') {
    sign = foundSign = unit;
    if (++position == digits.end) return false;
    unit = source.at(position);
  }

  int32_t foundBase = 10;
  if (position + 1 < digits.end) {
    const uint16_t prefix = unit == u'0' ? source.at(position + 1) : uint16_t{0};
    if (prefix == u'x') foundBase = 16;
    if (prefix == u'b') foundBase = 2;
    if (foundBase != 10) position += 2;
  } else if (unit < u'0' || unit > u'9') {
    return false;
  }
  const bool whole = parseInBase(source, {position, digits.end}, foundBase);
  sign = foundSign;
  return whole;
}

bool RawNumberParser::parseInBase(const RawString& source, RawRange range, int32_t numberBase) {
  *this = {};
  base = numberBase;
  const RawRange digits = range.clamped(source.length());
  for (position = digits.start; position < digits.end; ++position) {
    const int32_t digit = digitValue(source.at(position));
    if (digit >= base) return false;
    value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(digit);
  }
  return true;
}

int32_t toInt(const RawString& source) {
  RawNumberParser parser;
  parser.parse(source, source.all());
  const auto low = static_cast<uint32_t>(parser.value);
  return static_cast<int32_t>(parser.sign == u'-' ? 0U - low : low);
}

bool isNumber(const RawString& source) {
  return RawNumberParser().parse(source, source.all());
}

} // namespace RawLayer
