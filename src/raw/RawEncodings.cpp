#include "raw/RawEncodings.h"

#include "raw/RawScan.h"

#include <cstring>

namespace RawLayer {

namespace {

constexpr bool isShiftJisLead(uint8_t byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF);
}
constexpr bool isShiftJisTrail(uint8_t byte) {
  return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}
constexpr bool isHalfWidthKana(uint8_t byte) {
  return byte >= 0xA1 && byte <= 0xDF;
}
constexpr bool isContinuation(uint8_t byte) {
  return (byte & 0xC0) == 0x80;
}

// The bytes that follow a UTF-8 lead byte; 0 for ASCII, -1 for what leads nothing.
constexpr int32_t continuationCount(uint8_t byte) {
  if (byte < 0x80) return 0;
  if (byte < 0xC2) return -1;
  if (byte < 0xE0) return 1;
  if (byte < 0xF0) return 2;
  if (byte < 0xF8) return 3;
  if (byte < 0xFC) return 4;
  return byte < 0xFE ? 5 : -1;
}

// Each of the two takes one byte after the other and says whether the text is still possible.
class ShiftJisValidator {
 public:
  int32_t singleCount = 0;

  bool take(uint8_t byte) {
    if (inTrail_) {
      inTrail_ = false;
      return isShiftJisTrail(byte);
    }
    if (byte < 0x80) return true;
    inTrail_ = isShiftJisLead(byte);
    if (inTrail_) return true;
    ++singleCount;
    return isHalfWidthKana(byte);
  }
  [[nodiscard]] bool isBetween() const { return !inTrail_; }

 private:
  bool inTrail_ = false;
};

class Utf8Validator {
 public:
  int32_t longCount = 0;

  bool take(uint8_t byte) {
    if (expected_ > 0) {
      --expected_;
      return isContinuation(byte);
    }
    expected_ = continuationCount(byte);
    // What is no lead of up to four bytes counts as long, also when it is no lead at all.
    if (isContinuation(byte) || byte >= 0xF8) ++longCount;
    return expected_ >= 0;
  }
  [[nodiscard]] bool isBetween() const { return expected_ == 0; }

 private:
  int32_t expected_ = 0;
};

int32_t clipShiftJis(const uint8_t* data, int32_t size) {
  int32_t first = size;
  while (first > 0 && isShiftJisLead(data[first - 1])) --first;
  return size - ((size - first) & 1);
}

int32_t clipUtf8(const uint8_t* data, int32_t size) {
  int32_t lead = size - 1;
  while (lead >= 0 && isContinuation(data[lead])) --lead;
  if (lead < 0) return 0;
  const int32_t more = continuationCount(data[lead]);
  if (more < 0) return size;
  const int32_t end = lead + 1 + more;
  return end <= size ? end : lead;
}

int32_t clipUtf16(const uint8_t* data, int32_t size, bool bigEndian) {
  const int32_t even = size & ~1;
  if (even == 0) return 0;
  const uint8_t high = data[bigEndian ? even - 2 : even - 1];
  return (high & 0xFC) == 0xD8 ? even - 2 : even;
}

} // namespace

int32_t RawTextDetector::detect(const uint8_t* data, int32_t size) {
  for (;; ++position) {
    position = rawSkipPlain(data, position, size);
    if (position >= size) return 0;
    const uint8_t byte = data[position];
    if (byte == 0x00) {
      const int32_t found = probeUtf16 ? probe(data, size, position) : 0;
      if (found != 0) return found;
    } else if (byte == 0x7F || byte >= 0xFE) {
      return EncodingBinary;
    } else if (byte < 0xC2) {
      return EncodingShiftJis;
    } else if (byte < 0xF0) {
      return detectShiftJisOrUtf8(data + position, size - position);
    } else {
      return EncodingUtf8;
    }
  }
}

void RawTextDetector::advance(int32_t size) {
  position = 0;
  oddStart_ = oddStart_ != ((size & 1) != 0);
}

// A zero byte was met: is the block UTF-16? The first line end that tells decides. 0 to scan on.
int32_t RawTextDetector::probe(const uint8_t* data, int32_t size, int32_t zero) {
  const bool bigEndian = ((zero & 1) != 0) == oddStart_;
  const auto at = [data, size](int32_t index) {
    return index >= 0 && index < size ? static_cast<int32_t>(data[index]) : -1;
  };
  const auto end = static_cast<uint32_t>(size);
  for (uint32_t next = 0; (next = rawFindLineEnd8(data, next, end)) < end; ++next) {
    if (data[next] != '\r') continue;
    const auto cr = static_cast<int32_t>(next);
    if (at(cr + 1) == '\n') {
      probeUtf16 = false;
      return 0;
    }
    if (at(cr + 1) != 0) continue;
    if (bigEndian && at(cr - 1) == 0 && at(cr + 2) == '\n') break;
    if (!bigEndian && at(cr + 2) == '\n' && at(cr + 3) == 0) break;
  }
  if (!bigEndian) return EncodingUtf16Le;
  return at(zero + 1) == 0 ? 0 : static_cast<int32_t>(EncodingUtf16Be);
}

int32_t detectTextEncoding(const void* data, int32_t size) {
  return RawTextDetector().detect(static_cast<const uint8_t*>(data), size);
}

int32_t detectShiftJisOrUtf8(const void* data, int32_t size) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  ShiftJisValidator shiftJis;
  Utf8Validator utf8;
  for (int32_t i = 0; i < size; ++i) {
    if (bytes[i] < 0x80 && shiftJis.isBetween() && utf8.isBetween()) {
      i = rawSkipAscii(bytes, i, size);
      if (i == size) break;
    }
    if (!shiftJis.take(bytes[i])) return EncodingUtf8;
    if (!utf8.take(bytes[i])) return EncodingShiftJis;
  }
  return utf8.longCount < shiftJis.singleCount ? EncodingUtf8 : EncodingShiftJis;
}

int32_t detectMark(const void* data, int32_t size) {
  for (const int32_t encoding : {EncodingUtf16Be, EncodingUtf16Le, EncodingUtf8}) {
    const RawMark mark = markOf(encoding);
    if (size >= mark.size &&
        std::memcmp(data, mark.bytes, static_cast<std::size_t>(mark.size)) == 0)
      return encoding;
  }
  return 0;
}

RawMark markOf(int32_t encoding) {
  switch (encoding) {
  case EncodingUtf16Be:
    return {"\xFE\xFF", 2};
  case EncodingUtf16Le:
    return {"\xFF\xFE", 2};
  case EncodingUtf8:
    return {"\xEF\xBB\xBF", 3};
  case EncodingUtf7:
    return {"+/v8-", 5};
  default:
    return {"", 0};
  }
}

int32_t clipToCharacter(int32_t encoding, const void* data, int32_t size) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  if (size <= 0) return 0;
  switch (encoding == EncodingWide ? rawNativeUtf16() : encoding) {
  case EncodingShiftJis:
    return clipShiftJis(bytes, size);
  case EncodingUtf8:
    return clipUtf8(bytes, size);
  case EncodingUtf16Be:
    return clipUtf16(bytes, size, true);
  case EncodingUtf16Le:
    return clipUtf16(bytes, size, false);
  default:
    return 0;
  }
}

} // namespace RawLayer
