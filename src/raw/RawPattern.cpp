#include "raw/RawPattern.h"

#include "raw/RawPatternUnits.h"

#include <array>
#include <cstring>
#include <memory>

namespace RawLayer {

namespace {

uint16_t otherCase(uint16_t unit) {
  if (unit >= 'A' && unit <= 'Z') return static_cast<uint16_t>(unit + 0x20);
  return rawFold(unit);
}

// --- Wildcards
//
// The pattern is cut at its "*" into segments whose items take one unit each. The first segment
// has to stand at the start of the text and the last one at its end; for those between, the
// leftmost place that fits leaves the most room for the rest, so no other need ever be tried.
// That gives the answer of trying every "*" shortest first, without going back and without memory.
template <class P, class T>
class WildcardMatch {
 public:
  WildcardMatch(RawUnits<P> pattern, RawUnits<T> text, bool fold)
      : pattern_(pattern), text_(text), fold_(fold) {}

  bool run() const {
    int32_t item = 0;
    int32_t position = 0;
    while (item < pattern_.size && pattern_[item] != '*')
      if (position == text_.size || !takes(item, text_[position++])) return false;
    if (item == pattern_.size) return position == text_.size;
    for (;;) {
      const RawPatternSegment segment = segmentFrom(pattern_, item + 1);
      const int32_t last = text_.size - segment.items;
      if (segment.end == pattern_.size) return position <= last && fits(segment, last);
      position = find(segment, position, last);
      if (position > last) return false;
      position += segment.items;
      item = segment.end;
    }
  }

 private:
  // Whether the item takes the unit; moves behind the item.
  bool takes(int32_t& item, uint16_t unit) const {
    const uint16_t own = pattern_[item++];
    if (own == '%') return item < pattern_.size && unescaped(pattern_[item++]) == unit;
    return own == '?' || unitsEqual(own, unit, fold_);
  }

  // Whether the items take the units from `position` on; the text is long enough.
  [[nodiscard]] bool fits(const RawPatternSegment& segment, int32_t position) const {
    for (int32_t item = segment.start; item < segment.end; ++position)
      if (!takes(item, text_[position])) return false;
    return true;
  }

  // The first position up to `last` where the segment fits; above it when there is none.
  [[nodiscard]] int32_t find(const RawPatternSegment& segment, int32_t position,
                             int32_t last) const {
    if (segment.items == 0) return position;
    const uint16_t first = pattern_[segment.start];
    const bool isPlain = first != '?' && first != '%';
    // The bit in which a unit that folds to `first` may differ from it.
    const uint16_t free = fold_ && otherCase(first) != first ? uint16_t{0x20} : uint16_t{0};
    const auto wanted = static_cast<uint16_t>(first | free);
    for (; position <= last; ++position) {
      if (isPlain && (text_[position] | free) != wanted) continue;
      if (fits(segment, position)) break;
    }
    return position;
  }

  RawUnits<P> pattern_;
  RawUnits<T> text_;
  bool fold_;
};

// --- Classes

bool isLineEnd(uint16_t unit) {
  return unit == '\n' || unit == '\r';
}

// A set between its brackets, or the part behind "[^".
template <class P>
class SetItem {
 public:
  SetItem(RawUnits<P> pattern, RawRange members) : pattern_(pattern), members_(members) {}

  [[nodiscard]] bool contains(uint16_t unit) const {
    int32_t position = members_.start;
    while (position < members_.end) {
      if (isDanglingEscape(position)) return false;
      const uint16_t low = takeMember(position);
      uint16_t high = low;
      // A "-" parts a range only when a member stands at both its sides.
      if (position + 1 < members_.end && pattern_[position] == '-' &&
          !isDanglingEscape(position + 1)) {
        ++position;
        high = takeMember(position);
      }
      if (unit >= low && unit <= high) return true;
    }
    return false;
  }

 private:
  [[nodiscard]] bool isDanglingEscape(int32_t position) const {
    return pattern_[position] == '%' && position + 1 == members_.end;
  }
  uint16_t takeMember(int32_t& position) const {
    const uint16_t unit = pattern_[position++];
    return unit == '%' ? unescaped(pattern_[position++]) : unit;
  }

  RawUnits<P> pattern_;
  RawRange members_;
};

// One item of a class pattern with its repetition, read from the pattern.
template <class P>
class ClassItem {
 public:
  // Reads the item at `position`, which is inside the pattern, and moves behind it.
  ClassItem(RawUnits<P> pattern, int32_t& position, bool fold) : pattern_(pattern), fold_(fold) {
    unit_ = pattern[position++];
    switch (unit_) {
    case '.':
      kind_ = Any;
      break;
    case '[':
      readSet(position);
      break;
    case '%':
      kind_ = position < pattern.size ? Escape : Nothing;
      if (kind_ == Escape) unit_ = unescaped(pattern[position++]);
      break;
    default:
      break;
    }
    const uint16_t next = position < pattern.size ? pattern[position] : uint16_t{0};
    if (next == '*' || next == '+') ++position;
    repeats = next == '*' || next == '+';
    optional = next == '*';
  }

  [[nodiscard]] bool takes(uint16_t unit) const {
    switch (kind_) {
    case Plain:
      return unitsEqual(unit_, unit, fold_);
    case Escape:
      return unit_ == unit;
    case Any:
      return !isLineEnd(unit);
    case Set:
      return isInSet(unit);
    case NegatedSet:
      return !isLineEnd(unit) && !isInSet(unit);
    default:
      return false;
    }
  }

  bool repeats;
  bool optional; // zero times will do

 private:
  enum Kind : uint8_t { Plain, Escape, Any, Set, NegatedSet, Nothing };

  void readSet(int32_t& position) {
    kind_ = Set;
    if (position < pattern_.size && pattern_[position] == '^') {
      kind_ = NegatedSet;
      ++position;
    }
    members_ = {position, position};
    while (members_.end < pattern_.size && pattern_[members_.end] != ']')
      members_.end += pattern_[members_.end] == '%' ? 2 : 1;
    if (members_.end > pattern_.size) members_.end = pattern_.size;
    position = members_.end < pattern_.size ? members_.end + 1 : members_.end;
  }

  [[nodiscard]] bool isInSet(uint16_t unit) const {
    const SetItem<P> set(pattern_, members_);
    return set.contains(unit) || (fold_ && set.contains(otherCase(unit)));
  }

  RawUnits<P> pattern_;
  RawRange members_;
  uint16_t unit_;
  Kind kind_ = Plain;
  bool fold_;
};

// Which positions of the text the items so far can end at. All ways through the pattern are
// followed at once, so no pattern costs more than its length times that of the text.
class ReachedPositions {
 public:
  explicit ReachedPositions(int32_t size) {
    const auto bytes = static_cast<std::size_t>(size) + 1;
    if (bytes > small_.size()) {
      large_ = std::make_unique<uint8_t[]>(bytes);
      flags_ = large_.get();
    } else {
      std::memset(flags_, 0, bytes);
    }
    flags_[0] = 1;
  }
  ReachedPositions(const ReachedPositions&) = delete;
  ReachedPositions& operator=(const ReachedPositions&) = delete;

  [[nodiscard]] bool isAt(int32_t position) const { return flags_[position] != 0; }

  // False when no position is left.
  template <class P, class T>
  bool advance(const ClassItem<P>& item, RawUnits<T> text) {
    if (!item.optional) stepOver(item, text);
    if (item.repeats) spread(item, text);
    return first_ <= last_;
  }

 private:
  // Each position moves to the one behind the unit that the item takes there.
  template <class P, class T>
  void stepOver(const ClassItem<P>& item, RawUnits<T> text) {
    int32_t last = -1;
    int32_t first = text.size + 1;
    for (int32_t i = last_ < text.size ? last_ : text.size - 1; i >= first_; --i) {
      const bool reached = flags_[i] != 0 && item.takes(text[i]);
      flags_[i + 1] = reached ? 1 : 0;
      if (!reached) continue;
      first = i + 1;
      if (last < 0) last = i + 1;
    }
    flags_[first_] = 0;
    first_ = first;
    last_ = last;
  }

  // Each position adds the ones behind any number of units that the item takes from there on.
  template <class P, class T>
  void spread(const ClassItem<P>& item, RawUnits<T> text) {
    if (last_ < 0) return;
    for (int32_t i = first_; i <= last_ && i < text.size; ++i) {
      if (flags_[i] == 0 || flags_[i + 1] != 0 || !item.takes(text[i])) continue;
      flags_[i + 1] = 1;
      if (last_ == i) ++last_;
    }
  }

  std::array<uint8_t, 512> small_;
  std::unique_ptr<uint8_t[]> large_;
  uint8_t* flags_ = small_.data();
  int32_t first_ = 0; // no position outside first_ to last_ is reached
  int32_t last_ = 0;
};

template <class P, class T>
bool matchClasses(RawUnits<P> pattern, RawUnits<T> text, bool fold) {
  ReachedPositions reached(text.size);
  int32_t position = 0;
  while (position < pattern.size) {
    const ClassItem<P> item(pattern, position, fold);
    if (!reached.advance(item, text)) return false;
  }
  return reached.isAt(text.size);
}

// --- Kinds

bool matchPlain(const RawString& pattern, int32_t start, const RawString& text, RawRange part) {
  const int32_t size = pattern.length() - start;
  return size == part.size() && (size == 0 || text.equalsAt(part.start, pattern, start, size));
}

bool matchKind(const RawString& pattern, int32_t start, const RawString& text, RawRange part,
               bool fold) {
  const uint16_t kind = pattern.at(start);
  // Plain text compares with exact case, folding or not.
  if (kind == '>') return matchPlain(pattern, start + 1, text, part);
  const bool classes = kind == '@';
  const RawRange rest{classes ? start + 1 : start, pattern.length()};
  return withUnits(pattern, rest, [&](auto patternUnits) {
    return withUnits(text, part, [&](auto textUnits) {
      return classes ? matchClasses(patternUnits, textUnits, fold)
                     : WildcardMatch(patternUnits, textUnits, fold).run();
    });
  });
}

} // namespace

bool RawPattern::match(const RawString& text, RawRange range, bool foldCase) {
  ignoreCase = foldCase;
  matchStart = 0;
  matchEnd = 0;
  const RawRange part = range.clamped(text.length());
  int32_t negations = 0;
  while (pattern.at(negations) == '<') ++negations;
  const bool matched = matchKind(pattern, negations, text, part, foldCase);
  if (negations > 0) return matched != (negations % 2 != 0);
  if (matched) {
    matchStart = part.start;
    matchEnd = part.end;
  }
  return matched;
}

} // namespace RawLayer
