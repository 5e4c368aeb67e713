// Scans over texts as plainly as they can be written: what the fast ones have to agree with.
// Ranges are clamped by the caller.
#pragma once

#include "raw/RawString.h"

namespace PlainText {

using RawLayer::RawRange;
using RawLayer::RawString;

inline int32_t findChar(const RawString& text, RawRange range, uint16_t unit) {
  for (int32_t i = range.start; i < range.end; i += 1 + text.extraUnits(i))
    if (text.at(i) == unit) return i;
  return range.end;
}

inline bool sameAt(const RawString& text, int32_t position, const RawString& other, RawRange part) {
  for (int32_t i = 0; i < part.size(); ++i)
    if (text.at(position + i) != other.at(part.start + i)) return false;
  return true;
}

inline int32_t find(const RawString& text, RawRange range, const RawString& other, RawRange part) {
  if (part.isEmpty()) return range.end;
  for (int32_t i = range.start; i + part.size() <= range.end; i += 1 + text.extraUnits(i))
    if (sameAt(text, i, other, part)) return i;
  return range.end;
}

inline int32_t findSet(const RawString& text, int32_t position, const RawString& set) {
  for (int32_t i = position; i < text.length(); i += 1 + text.extraUnits(i))
    if (text.isOneOf(i, set)) return i;
  return text.length();
}

inline int32_t findLastOf(const RawString& text, RawRange range, const RawString& set) {
  int32_t last = range.end;
  for (int32_t i = range.start; i < range.end; i += 1 + text.extraUnits(i))
    if (text.isOneOf(i, set)) last = i;
  return last;
}

inline int32_t compare(const RawString& a, const RawString& b, bool folds) {
  for (int32_t i = 0; i < a.length() && i < b.length(); ++i) {
    const uint16_t left = folds ? RawLayer::rawFold(a.at(i)) : a.at(i);
    const uint16_t right = folds ? RawLayer::rawFold(b.at(i)) : b.at(i);
    if (left != right) return left < right ? -1 : 1;
  }
  return a.length() == b.length() ? 0 : (a.length() < b.length() ? -1 : 1);
}

} // namespace PlainText
