// Texts in tests: comparing and printing RawString values.
#pragma once

#include "raw/RawString.h"

#include <ostream>
#include <string>

namespace RawLayer {

inline bool operator==(const RawString& a, const RawString& b) {
  return a.equals(b);
}

// For GoogleTest's messages.
inline void PrintTo(const RawString& text, std::ostream* stream) {
  *stream << '"';
  for (int32_t i = 0; i < text.length(); ++i) {
    const uint16_t unit = text.at(i);
    if (unit >= 0x20 && unit < 0x7F)
      *stream << static_cast<char>(unit);
    else
      *stream << "<" << std::hex << unit << std::dec << ">";
  }
  *stream << "\" (code " << text.encoding() << ")";
}

} // namespace RawLayer

// The bytes of an 8-bit text.
inline std::string bytesOf(const RawLayer::RawString& text) {
  return {text.text(), static_cast<std::size_t>(text.length())};
}
inline RawLayer::RawString raw(const std::string& bytes) {
  return RawLayer::RawString::fromChars(bytes.data(), static_cast<int32_t>(bytes.size()));
}
