// Encodings and lines the plain way, a byte at a time, for tests and fuzzers to compare with.
#pragma once

#include "raw/RawString.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace LineReference {

struct Line {
  std::string text;
  std::string end;
  bool operator==(const Line&) const = default;
};

// For GoogleTest's messages.
inline void PrintTo(const Line& line, std::ostream* stream) {
  for (const std::string* part : {&line.text, &line.end}) {
    *stream << (part == &line.end ? "|" : "'");
    for (const char unit : *part) {
      if (unit >= 0x20 && unit < 0x7F)
        *stream << unit;
      else
        *stream << '<' << std::hex << (unit & 0xFF) << std::dec << '>';
    }
  }
}

inline int byteAt(const std::string& data, std::size_t index) {
  return index < data.size() ? static_cast<unsigned char>(data[index]) : -1;
}

// Lines of bytes whose unit is one byte, or two for the codes of UTF-16.
inline std::vector<Line> cut(const std::string& data, int encoding) {
  const bool big = encoding == RawLayer::EncodingUtf16Be;
  const std::size_t unit = big || encoding == RawLayer::EncodingUtf16Le ? 2 : 1;
  const auto unitAt = [&](std::size_t i) {
    if (i + unit > data.size()) return -1;
    if (unit == 1) return byteAt(data, i);
    return byteAt(data, i + (big ? 0 : 1)) * 256 + byteAt(data, i + (big ? 1 : 0));
  };
  std::vector<Line> lines;
  std::size_t start = 0;
  for (std::size_t i = 0; i < data.size();) {
    const int here = unitAt(i);
    if (here != 0x0D && here != 0x0A) {
      i += unit;
      continue;
    }
    const std::size_t size = here == 0x0D && unitAt(i + unit) == 0x0A ? 2 * unit : unit;
    lines.push_back({data.substr(start, i - start), data.substr(i, size)});
    start = i += size;
  }
  if (start < data.size()) lines.push_back({data.substr(start), ""});
  return lines;
}

inline int shiftJisOrUtf8(const std::string& data) {
  bool trail = false;
  int singles = 0;
  int expected = 0;
  int longs = 0;
  for (const char unit : data) {
    const auto b = static_cast<unsigned char>(unit);
    if (trail) {
      if (!((b >= 0x40 && b <= 0x7E) || (b >= 0x80 && b <= 0xFC))) return 2;
      trail = false;
    } else if ((b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xEF)) {
      trail = true;
    } else if (b >= 0x80) {
      ++singles;
      if (b < 0xA1 || b > 0xDF) return 2;
    }
    if (expected > 0) {
      if (b >> 6 != 2) return 1;
      --expected;
    } else if (b < 0x80) {
      expected = 0;
    } else if (b >> 5 == 0x6) {
      if (b < 0xC2) return 1;
      expected = 1;
    } else if (b >> 4 == 0xE) {
      expected = 2;
    } else if (b >> 3 == 0x1E) {
      expected = 3;
    } else {
      ++longs;
      if (b >> 2 == 0x3E)
        expected = 4;
      else if (b >> 1 == 0x7E)
        expected = 5;
      else
        return 1;
    }
  }
  return longs < singles ? 2 : 1;
}

// One block.
inline int detect(const std::string& data) {
  bool probe = true;
  for (std::size_t i = 0; i < data.size(); ++i) {
    const int b = byteAt(data, i);
    if (b >= 0x01 && b <= 0x7E) continue;
    if (b >= 0x80 && b <= 0xC1) return 1;
    if (b >= 0xC2 && b <= 0xEF) return shiftJisOrUtf8(data.substr(i));
    if (b >= 0xF0 && b <= 0xFD) return 2;
    if (b != 0) return 8;
    if (!probe) continue;
    const int candidate = i % 2 == 0 ? 5 : 6;
    bool found = false;
    for (std::size_t k = 1; k < data.size() && !found; ++k) {
      if (byteAt(data, k - 1) == 0x0D && byteAt(data, k) == 0x0A) {
        probe = false;
        break;
      }
      if (k + 2 >= data.size()) continue;
      const std::string four = data.substr(k - 1, 4);
      if (candidate == 5 && four == std::string("\0\r\0\n", 4)) found = true;
      if (candidate == 6 && four == std::string("\r\0\n\0", 4)) return 6;
    }
    if (!probe) continue;
    if (candidate == 6) return 6;
    if (byteAt(data, i + 1) != 0) return 5;
  }
  return 0;
}

} // namespace LineReference
