#include "raw/RawCodePage.h"
#include "raw/RawStringParts.h"
#include "raw/RawUnitScan.h"

#include <bit>

// Conversion of texts. Everything passes through 16-bit text; nothing converts directly between
// two 8-bit codes.

namespace RawLayer {

namespace {

bool isUtf16Bytes(int32_t encoding) {
  return encoding == EncodingUtf16Be || encoding == EncodingUtf16Le;
}

// Whether units below 0x80 stand for ASCII, one by one. Of the codes that texts have in the running
// system, UTF-7 alone has more to say with them.
bool holdsAscii(int32_t encoding) {
  return encoding == EncodingAnsi || encoding == EncodingShiftJis || encoding == EncodingUtf8 ||
         encoding == EncodingWide;
}

// Whether the part is ASCII that reads the same in both codes, as nearly all texts are: no
// conversion is needed then.
bool isPlainIn(int32_t encoding, const RawStringBody* body, int32_t start, int32_t count) {
  return holdsAscii(encoding) && holdsAscii(body->encoding) &&
         withUnits(body, [=]<typename Unit>(const Unit* units) {
           return UnitScan::firstAbove(units + start, count, Unit{0x7F}) == count;
         });
}

void copyPairs(uint8_t* target, const uint8_t* source, int32_t units, bool swapped) {
  for (int32_t i = 0; i < units * 2; i += 2) {
    target[i] = source[swapped ? i + 1 : i];
    target[i + 1] = source[swapped ? i : i + 1];
  }
}

RawStringBody* wideFromPairs(int32_t encoding, const uint8_t* bytes, int32_t size) {
  const int32_t units = size / 2;
  if (units == 0) return emptyBody(EncodingWide);
  RawStringBody* wide = makeOwnedBody(EncodingWide, units);
  copyPairs(mutableBytesOf(wide), bytes, units, encoding != rawNativeUtf16());
  endAt(wide, units);
  return wide;
}

RawStringBody* pairsFromWide(int32_t encoding, const char16_t* units, int32_t count) {
  RawStringBody* pairs = makeOwnedBody(encoding, count * 2);
  copyPairs(mutableBytesOf(pairs), reinterpret_cast<const uint8_t*>(units), count,
            encoding != rawNativeUtf16());
  endAt(pairs, count * 2);
  return pairs;
}

// A filled body, or the empty one when nothing came out.
RawStringBody* finished(RawStringBody* body, RawConversion conversion) {
  if (conversion.error == 0 && conversion.count > 0) {
    endAt(body, conversion.count);
    return body;
  }
  RawStringBody* empty = emptyBody(body->encoding);
  releaseBody(body);
  return empty;
}

RawStringBody* toWide(int32_t encoding, const uint8_t* bytes, int32_t size) {
  if (isUtf16Bytes(encoding)) return wideFromPairs(encoding, bytes, size);
  const uint32_t page = rawCodePageOf(encoding);
  const char* chars = reinterpret_cast<const char*>(bytes);
  const RawConversion needed = rawToWide(page, chars, size, nullptr, 0);
  if (needed.error != 0 || needed.count <= 0) return emptyBody(EncodingWide);
  RawStringBody* wide = makeOwnedBody(EncodingWide, needed.count);
  return finished(wide, rawToWide(page, chars, size, mutableWideOf(wide), needed.count));
}

RawStringBody* fromWideUnits(int32_t encoding, const char16_t* units, int32_t count) {
  if (count <= 0) return emptyBody(encoding);
  if (isUtf16Bytes(encoding))
    return count <= INT32_MAX / 2 ? pairsFromWide(encoding, units, count) : emptyBody(encoding);
  const uint32_t page = rawCodePageOf(encoding);
  const RawConversion needed = rawFromWide(page, units, count, nullptr, 0);
  if (needed.error != 0 || needed.count <= 0) return emptyBody(encoding);
  RawStringBody* bytes = makeOwnedBody(encoding, needed.count);
  return finished(bytes, rawFromWide(page, units, count,
                                     reinterpret_cast<char*>(mutableBytesOf(bytes)), needed.count));
}

} // namespace

int32_t rawNativeUtf16() {
  return std::endian::native == std::endian::little ? EncodingUtf16Le : EncodingUtf16Be;
}

uint32_t rawCodePageOf(int32_t encoding) {
  // What is in no code page is read as the active one.
  static constexpr uint32_t pages[] = {0, 932, 65001, 65000, 2, 0, 0, 0, 0};
  return encoding >= EncodingAnsi && encoding <= EncodingBinary ? pages[encoding] : 0;
}

RawStringBody* convertPart(int32_t encoding, const RawStringBody* body, int32_t start,
                           int32_t count) {
  if (isPlainIn(encoding, body, start, count)) {
    RawStringBody* result = makeOwnedBody(encoding, count);
    copyUnits(result, 0, body, start, count);
    endAt(result, count);
    return result;
  }
  if (body->encoding == EncodingWide) return fromWideUnits(encoding, wideOf(body) + start, count);
  RawStringBody* wide = toWide(body->encoding, bytesOf(body) + start, count);
  if (encoding == EncodingWide) return wide;
  RawStringBody* result = fromWideUnits(encoding, wideOf(wide), wide->length);
  releaseBody(wide);
  return result;
}

} // namespace RawLayer
