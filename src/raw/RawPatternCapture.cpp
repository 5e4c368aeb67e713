#include "raw/RawPattern.h"

#include "raw/RawPatternUnits.h"

#include <vector>

namespace RawLayer {

namespace {

constexpr int32_t NoFit = -1;

// The pattern is cut at its "*" into segments. Taking every "*" longest first means to put each
// segment as far to the right as the ones behind it allow, so they are placed from the last one to
// the second; only the first one is bound to the start of the text. Nothing is tried twice.
template <class P, class T>
class CaptureMatch {
 public:
  CaptureMatch(RawUnits<P> pattern, RawUnits<T> text, bool fold)
      : pattern_(pattern), text_(text), fold_(fold) {
    int32_t start = 0;
    do {
      places_.push_back({segmentFrom(pattern, start), 0});
      start = places_.back().segment.end + 1;
    } while (start <= pattern.size);
  }

  bool run() {
    int32_t limit = text_.size;
    const int32_t firstEnd = endOf(places_.front().segment, 0, limit);
    if (firstEnd == NoFit) return false;
    if (places_.size() == 1) return firstEnd == limit;
    for (std::size_t i = places_.size() - 1; i > 0; --i) {
      places_[i].position = rightmost(places_[i].segment, firstEnd, limit, i + 1 == places_.size());
      if (places_[i].position == NoFit) return false;
      limit = places_[i].position;
    }
    return true;
  }

  // The ranges of all wildcards of a pattern that fits; `offset` is where the text's units start.
  void list(int32_t offset, RawRangeList& captures) const {
    int32_t end = 0;
    for (const Place& place : places_) {
      if (&place != &places_.front())
        captures.append(new RawRange{offset + end, offset + place.position});
      end = place.position;
      for (int32_t i = place.segment.start; i < place.segment.end;) {
        const bool isWildcard = pattern_[i] == '?';
        const int32_t start = end;
        end = takeItem(i, place.segment.end, end, text_.size);
        if (isWildcard) captures.append(new RawRange{offset + start, offset + end});
      }
    }
  }

 private:
  struct Place {
    RawPatternSegment segment;
    int32_t position;
  };

  // Where the segment fits that starts at `first` or behind it and ends at `limit` or before it
  // (exactly there for the last one).
  [[nodiscard]] int32_t rightmost(const RawPatternSegment& segment, int32_t first, int32_t limit,
                                  bool isLast) const {
    for (int32_t position = limit; position >= first; --position) {
      const int32_t end = endOf(segment, position, limit);
      if (end != NoFit && (!isLast || end == limit)) return position;
    }
    return NoFit;
  }

  [[nodiscard]] int32_t endOf(const RawPatternSegment& segment, int32_t position,
                              int32_t limit) const {
    for (int32_t i = segment.start; i < segment.end && position != NoFit;)
      position = takeItem(i, segment.end, position, limit);
    return position;
  }

  // The position behind what the item at `i` takes, or NoFit; moves `i` behind the item.
  int32_t takeItem(int32_t& i, int32_t patternEnd, int32_t position, int32_t limit) const {
    const uint16_t unit = pattern_[i++];
    if (unit == '%' && i == patternEnd) return NoFit;
    const uint16_t letter = unit == '%' ? pattern_[i++] : uint16_t{0};
    if (position >= limit) return NoFit;
    const uint16_t subject = text_[position];
    if (letter == 'n' && subject == '\r')
      return position + 1 < limit && text_[position + 1] == '\n' ? position + 2 : NoFit;
    const bool taken = unit == '?' || (unit == '%' ? captureUnescaped(letter) == subject
                                                   : unitsEqual(unit, subject, fold_));
    return taken ? position + 1 : NoFit;
  }

  // The two escapes that only this matcher knows, and those of the other one.
  static uint16_t captureUnescaped(uint16_t letter) {
    return letter == 'J' ? uint16_t{'>'} : letter == 'K' ? uint16_t{'<'} : unescaped(letter);
  }

  RawUnits<P> pattern_;
  RawUnits<T> text_;
  bool fold_;
  std::vector<Place> places_;
};

} // namespace

bool RawPattern::capture(const RawString& text, RawRange range, bool foldCase,
                         RawRangeList& captures) {
  ignoreCase = foldCase;
  matchStart = 0;
  matchEnd = 0;
  captures.clear();
  const RawRange part = range.clamped(text.length());
  const bool matched = withUnits(pattern, pattern.all(), [&](auto patternUnits) {
    return withUnits(text, part, [&](auto textUnits) {
      CaptureMatch match(patternUnits, textUnits, foldCase);
      if (!match.run()) return false;
      match.list(part.start, captures);
      return true;
    });
  });
  if (matched) {
    matchStart = part.start;
    matchEnd = part.end;
  }
  return matched;
}

} // namespace RawLayer
