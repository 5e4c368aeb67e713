#include "raw/RawStringTokenizer.h"

#include <algorithm>

namespace RawLayer {

namespace {

constexpr uint16_t Comma = ',';
constexpr uint16_t Quote = '"';

// Whether the whole mark stands at the position and ends within the limit.
bool standsAt(const RawString& text, int32_t position, int32_t limit, const RawString& mark) {
  const int32_t count = mark.length();
  return count > 0 && count <= limit - position && text.equalsAt(position, mark, 0, count);
}

} // namespace

RawStringTokenizer::RawStringTokenizer(const RawString& text)
    : RawStringTokenizer(text, text.all()) {}

RawStringTokenizer::RawStringTokenizer(const RawString& text, RawRange range) : source(text) {
  const RawRange scanned = range.clamped(text.length());
  position = scanned.start;
  end = scanned.end;
  if (scanned.isEmpty()) flags = Finished;
}

int32_t RawStringTokenizer::findTokenEnd(int32_t limit) const {
  bool quoted = false;
  int32_t at = position;
  while (at < limit) {
    const uint16_t unit = source.at(at);
    if (unit == Quote && (flags & ProtectQuoted)) {
      quoted = !quoted;
    } else if (!quoted) {
      if (unit == Comma || (stopsAtTerminator && terminator && unit == terminator)) return at;
      if (standsAt(source, at, limit, open)) {
        at = skipNested({at, limit}, open, close);
        continue;
      }
    }
    at += 1 + source.extraUnits(at);
  }
  return limit;
}

RawRange RawStringTokenizer::next() {
  const int32_t limit = std::clamp(end, 0, source.length());
  position = std::clamp(position, 0, limit);
  const RawRange token{position, findTokenEnd(limit)};
  position = token.end;
  if (token.end >= limit)
    flags |= Finished;
  else if (source.at(token.end) != terminator)
    ++position;
  if (flags & LastToken) {
    position = limit;
    flags |= Finished;
  }
  return space.isEmpty() ? token : source.trimRange(token, space);
}

int32_t RawStringTokenizer::skipNested(RawRange range, const RawString& opening,
                                       const RawString& closing) const {
  const RawRange scanned = range.clamped(source.length());
  int32_t depth = 0;
  int32_t at = scanned.start;
  while (at < scanned.end) {
    if (standsAt(source, at, scanned.end, opening)) {
      ++depth;
      at += opening.length();
    } else if (standsAt(source, at, scanned.end, closing)) {
      at += closing.length();
      if (--depth <= 0) return at;
    } else {
      at += 1 + source.extraUnits(at);
    }
  }
  return scanned.end;
}

RawRange RawStringTokenizer::unquote(RawRange range) {
  RawRange inner = range.clamped(source.length());
  flags &= static_cast<uint16_t>(~HadQuotes);
  if (inner.isEmpty()) return inner;
  if (source.at(inner.start) == Quote) {
    flags |= HadQuotes;
    ++inner.start;
  }
  if (!inner.isEmpty() && source.at(inner.end - 1) == Quote) --inner.end;
  return inner;
}

} // namespace RawLayer
