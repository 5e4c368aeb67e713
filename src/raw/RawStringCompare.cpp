#include "raw/RawStringParts.h"
#include "raw/RawUnitScan.h"

// Comparing and scanning. Nothing here changes a text.
//
// A scan goes from character to character, so that it never takes the second byte of a character
// for a unit of its own. Going step by step is slow, though, and hits are few: so find and findChar
// first look for the units wherever they stand, in many places at once, and then ask whether the
// hit is a place that the steps come to (CharacterSteps). That gives the same answers, also for
// texts that are not valid in their encoding.

namespace RawLayer {

namespace {

// --- Comparing

enum class Case { Exact, Folded };

// The first index at which two runs of units differ, or `count`.
template <Case Way, typename Unit>
int32_t differenceIn(const Unit* a, const Unit* b, int32_t count) {
  if constexpr (Way == Case::Folded) return UnitScan::firstDifferenceNoCase(a, b, count);
  return UnitScan::firstDifference(a, b, count);
}

template <Case Way>
uint16_t changed(uint16_t unit) {
  return Way == Case::Folded ? rawFold(unit) : unit;
}

template <Case Way, typename A, typename B>
int32_t differenceIn(const A* a, const B* b, int32_t count) {
  int32_t i = 0;
  while (i < count && changed<Way>(a[i]) == changed<Way>(b[i])) ++i;
  return i;
}

template <Case Way>
int32_t difference(const RawStringBody* a, int32_t aStart, const RawStringBody* b, int32_t bStart,
                   int32_t count) {
  if (a->encoding != EncodingWide && b->encoding != EncodingWide) // nearly always
    return differenceIn<Way>(bytesOf(a) + aStart, bytesOf(b) + bStart, count);
  return withUnits(a, [=](const auto* aUnits) {
    return withUnits(b, [=](const auto* bUnits) {
      return differenceIn<Way>(aUnits + aStart, bUnits + bStart, count);
    });
  });
}

template <Case Way>
bool areEqual(const RawStringBody* a, const RawStringBody* b) {
  return a == b || (a->length == b->length && difference<Way>(a, 0, b, 0, a->length) == a->length);
}

template <Case Way>
bool partsAreEqual(const RawStringBody* a, RawRange aRange, const RawStringBody* b,
                   RawRange bRange) {
  const RawRange aPart = aRange.clamped(a->length);
  const RawRange bPart = bRange.clamped(b->length);
  return aPart.size() == bPart.size() &&
         difference<Way>(a, aPart.start, b, bPart.start, aPart.size()) == aPart.size();
}

template <Case Way>
int32_t order(const RawStringBody* a, const RawStringBody* b) {
  const int32_t shorter = a->length < b->length ? a->length : b->length;
  const int32_t place = difference<Way>(a, 0, b, 0, shorter);
  const auto unitOf = [=](const RawStringBody* body) {
    return changed<Way>(body->encoding == EncodingWide ? wideOf(body)[place]
                                                       : bytesOf(body)[place]);
  };
  if (place < shorter) return unitOf(a) < unitOf(b) ? -1 : 1;
  return a->length == b->length ? 0 : (a->length < b->length ? -1 : 1);
}

// --- Characters

constexpr bool isHighSurrogate(uint32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

// Each rule tells how many further units belong to the character that starts at an index, the most
// that any does, and whether units below 0x80 never have any.

struct SingleUnits {
  static constexpr int32_t most = 0;
  static constexpr bool asciiStandsAlone = true;
  static int32_t extra(const uint8_t*, int32_t, int32_t) { return 0; }
};

struct ShiftJisUnits {
  static constexpr int32_t most = 1;
  static constexpr bool asciiStandsAlone = true;
  static int32_t extra(const uint8_t* units, int32_t i, int32_t) {
    const uint32_t byte = units[i];
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF) ? 1 : 0;
  }
};

struct Utf8Units {
  static constexpr int32_t most = 5;
  static constexpr bool asciiStandsAlone = true;
  static int32_t extra(const uint8_t* units, int32_t i, int32_t) {
    const uint32_t byte = units[i];
    if (byte < 0xC2 || byte > 0xFD) return 0;
    if (byte < 0xE0) return 1;
    if (byte < 0xF0) return 2;
    if (byte < 0xF8) return 3;
    return byte < 0xFC ? 4 : 5;
  }
};

struct WideUnits {
  static constexpr int32_t most = 1;
  static constexpr bool asciiStandsAlone = true;
  static int32_t extra(const char16_t* units, int32_t i, int32_t) {
    return isHighSurrogate(units[i]) ? 1 : 0;
  }
};

template <bool BigEndian>
struct Utf16Bytes {
  static constexpr int32_t most = 3;
  static constexpr bool asciiStandsAlone = false;
  static int32_t extra(const uint8_t* units, int32_t i, int32_t length) {
    if (i % 2 != 0) return 0;
    const uint32_t first = units[i];
    const uint32_t second = i + 1 < length ? units[i + 1] : 0;
    return isHighSurrogate(BigEndian ? first << 8 | second : second << 8 | first) ? 3 : 1;
  }
};

// Calls `action` with the rule and the units of the body.
template <typename Action>
auto withCharacters(const RawStringBody* body, const Action& action) {
  switch (body->encoding) {
  case EncodingShiftJis:
    return action(ShiftJisUnits{}, bytesOf(body));
  case EncodingUtf8:
    return action(Utf8Units{}, bytesOf(body));
  case EncodingUtf16Be:
    return action(Utf16Bytes<true>{}, bytesOf(body));
  case EncodingUtf16Le:
    return action(Utf16Bytes<false>{}, bytesOf(body));
  case EncodingWide:
    return action(WideUnits{}, wideOf(body));
  default:
    return action(SingleUnits{}, bytesOf(body));
  }
}

// Tells which places a walk by characters from a starting place comes to. To be asked for rising
// places only; all questions together cost no more than the walk.
class CharacterSteps {
 public:
  CharacterSteps(const RawStringBody* body, int32_t start) : body_(body), step_(start) {}

  bool comeTo(int32_t place) {
    if (place > step_)
      withCharacters(body_, [=, this](auto rule, const auto* units) { walk(rule, units, place); });
    return place == step_;
  }

 private:
  // Goes to the first step that is not before the place.
  template <typename Rule, typename Unit>
  void walk(Rule rule, const Unit* units, int32_t place) {
    // What no unit before it could reach over, even if it were a start, is a start for certain.
    // In a valid text that is the place itself.
    int32_t sure = place;
    while (sure > step_ && isReachedOver(rule, units, sure)) --sure;
    while (sure < place) sure += 1 + rule.extra(units, sure, body_->length);
    step_ = sure;
  }

  template <typename Rule, typename Unit>
  [[nodiscard]] bool isReachedOver(Rule rule, const Unit* units, int32_t place) const {
    using Block = UnitScan::WordBlock<Unit>;
    if (Rule::asciiStandsAlone && place - step_ >= Block::size &&
        Block::load(units + place - Block::size).above(0x7F) == 0)
      return false;
    for (int32_t i = place - 1; i >= step_ && i >= place - Rule::most; --i)
      if (i + rule.extra(units, i, body_->length) >= place) return true;
    return false;
  }

  const RawStringBody* body_;
  int32_t step_; // a place that the walk comes to
};

// The first place in [from, end) with the unit, wherever it stands; the end when there is none.
int32_t nextUnit(const RawStringBody* body, int32_t from, int32_t end, uint16_t unit) {
  return withUnits(body, [=]<typename Unit>(const Unit* units) {
    const auto sought = static_cast<Unit>(unit);
    return sought == unit ? from + UnitScan::firstUnit(units + from, end - from, sought) : end;
  });
}

// The same for several units; behind the end follow as many as they are, less one.
template <typename Unit, typename OtherUnit>
int32_t nextUnits(const Unit* units, int32_t from, int32_t end, const OtherUnit* sought,
                  int32_t count) {
  // The first and the last unit tell most places apart; the comparison has the last word.
  const auto first = static_cast<Unit>(sought[0]);
  const auto last = static_cast<Unit>(sought[count - 1]);
  for (; from < end; ++from) {
    from += UnitScan::firstPair(units + from, end - from, first, last, count - 1);
    if (from < end && differenceIn<Case::Exact>(units + from, sought, count) == count) break;
  }
  return from;
}

int32_t nextPart(const RawStringBody* body, int32_t from, int32_t end, const RawStringBody* other,
                 RawRange part) {
  return withUnits(body, [=](const auto* units) {
    return withUnits(other, [=](const auto* otherUnits) {
      return nextUnits(units, from, end, otherUnits + part.start, part.size());
    });
  });
}

// --- Sets

// Units to be looked up many times.
class UnitSet {
 public:
  explicit UnitSet(const RawStringBody* set) : set_(set) {
    withUnits(set, [this](const auto* units) {
      for (int32_t i = 0; i < set_->length; ++i)
        if (units[i] < 0x100) bits_[units[i] >> 5] |= 1U << (units[i] & 31);
    });
  }
  [[nodiscard]] bool has(uint8_t unit) const { return (bits_[unit >> 5] >> (unit & 31) & 1) != 0; }
  [[nodiscard]] bool has(char16_t unit) const {
    return unit < 0x100 ? has(static_cast<uint8_t>(unit))
                        : set_->encoding == EncodingWide &&
                              UnitScan::firstUnit(wideOf(set_), set_->length, unit) < set_->length;
  }

 private:
  const RawStringBody* set_;
  uint32_t bits_[8] = {};
};

// For one look-up.
bool occurs(uint16_t unit, const RawStringBody* set) {
  return withUnits(set, [=](const auto* units) {
    for (int32_t i = 0; i < set->length; ++i)
      if (units[i] == unit) return true;
    return false;
  });
}

} // namespace

bool RawString::equals(const RawString& other) const {
  return areEqual<Case::Exact>(body_, other.body_);
}

bool RawString::equalsNoCase(const RawString& other) const {
  return areEqual<Case::Folded>(body_, other.body_);
}

bool RawString::rangeEquals(RawRange range, const RawString& other, RawRange otherRange) const {
  return partsAreEqual<Case::Exact>(body_, range, other.body_, otherRange);
}

bool RawString::rangeEqualsNoCase(RawRange range, const RawString& other,
                                  RawRange otherRange) const {
  return partsAreEqual<Case::Folded>(body_, range, other.body_, otherRange);
}

bool RawString::equalsAt(int32_t position, const RawString& other, int32_t otherStart,
                         int32_t count) const {
  return rangeEquals(rangeOf(position, count), other, rangeOf(otherStart, count));
}

bool RawString::startsWithAt(int32_t position, const RawString& other, int32_t count) const {
  return rangeEqualsNoCase(rangeOf(position, count), other, {0, count});
}

int32_t RawString::compare(const RawString& other) const {
  return order<Case::Exact>(body_, other.body_);
}

int32_t RawString::compareNoCase(const RawString& other) const {
  return order<Case::Folded>(body_, other.body_);
}

int32_t RawString::extraUnits(int32_t position) const {
  if (position < 0 || position >= length()) return 0;
  return withCharacters(body_, [=, this](auto rule, const auto* units) {
    return rule.extra(units, position, length());
  });
}

bool RawString::isOneOf(int32_t position, const RawString& set) const {
  return position >= 0 && position < length() && occurs(at(position), set.body_);
}

bool RawString::containsChar(uint16_t unit) const {
  return findCharFrom(0, unit) < length();
}

int32_t RawString::findChar(RawRange range, uint16_t unit) const {
  const RawRange part = range.clamped(length());
  CharacterSteps steps(body_, part.start);
  int32_t place = nextUnit(body_, part.start, part.end, unit);
  while (place < part.end && !steps.comeTo(place))
    place = nextUnit(body_, place + 1, part.end, unit);
  return place;
}

int32_t RawString::findCharFrom(int32_t position, uint16_t unit) const {
  return findChar({position, length()}, unit);
}

int32_t RawString::find(RawRange range, const RawString& other, RawRange otherRange) const {
  const RawRange part = range.clamped(length());
  const RawRange sought = otherRange.clamped(other.length());
  if (sought.isEmpty()) return part.end;
  const int32_t end = part.end - sought.size() + 1;
  CharacterSteps steps(body_, part.start);
  for (int32_t place = part.start; place < end; ++place) {
    place = nextPart(body_, place, end, other.body_, sought);
    if (place < end && steps.comeTo(place)) return place;
  }
  return part.end;
}

int32_t RawString::find(const RawString& other) const {
  return find(all(), other, other.all());
}

int32_t RawString::findLastOf(RawRange range, const RawString& set) const {
  const RawRange part = range.clamped(length());
  const UnitSet wanted(set.body_);
  return withCharacters(body_, [&](auto rule, const auto* units) {
    int32_t last = part.end;
    for (int32_t i = part.start; i < part.end; i += 1 + rule.extra(units, i, length()))
      if (wanted.has(units[i])) last = i;
    return last;
  });
}

int32_t RawString::findLastSeparator(RawRange range) const {
  return findLastOf(range, "\\/"_text);
}

int32_t RawString::skipSet(int32_t position, const RawString& set) const {
  const RawRange part = RawRange{position, length()}.clamped(length());
  int32_t i = part.start;
  while (i < part.end && occurs(at(i), set.body_)) ++i;
  return i;
}

int32_t RawString::findSet(int32_t position, const RawString& set) const {
  const RawRange part = RawRange{position, length()}.clamped(length());
  const UnitSet wanted(set.body_);
  return withCharacters(body_, [&](auto rule, const auto* units) {
    for (int32_t i = part.start; i < part.end; i += 1 + rule.extra(units, i, length()))
      if (wanted.has(units[i])) return i;
    return part.end;
  });
}

RawRange RawString::trimRange(RawRange range, const RawString& set) const {
  RawRange part = range.clamped(length());
  // Ends to trim are short and so are the sets: nothing pays but a plain look.
  withUnits(body_, [&, count = set.length()](const auto* units) {
    withUnits(set.body_, [&](const auto* wanted) {
      const auto isWanted = [=](uint16_t unit) {
        for (int32_t i = 0; i < count; ++i)
          if (wanted[i] == unit) return true;
        return false;
      };
      while (!part.isEmpty() && isWanted(units[part.start])) ++part.start;
      while (!part.isEmpty() && isWanted(units[part.end - 1])) --part.end;
    });
  });
  return part;
}

int32_t RawString::classifyForPlatform() const {
  if (isEmpty()) return PlatformEither;
  switch (encoding()) {
  case EncodingWide:
    return PlatformWide;
  case EncodingAnsi:
  case EncodingShiftJis:
    return PlatformNarrow;
  case EncodingUtf8:
    return UnitScan::firstAbove(bytesOf(body_), length(), uint8_t{0x7E}) < length()
               ? PlatformConvert
               : PlatformNarrow;
  default:
    return PlatformConvert;
  }
}

int32_t RawString::combinePlatformClasses(int32_t a, int32_t b, int32_t c) {
  const auto are = [=](int32_t wanted) {
    const auto fits = [=](int32_t one) { return one == wanted || one == PlatformEither; };
    return fits(a) && fits(b) && fits(c);
  };
  if (are(PlatformNarrow)) return PlatformNarrow;
  return are(PlatformWide) ? PlatformWide : PlatformConvert;
}

const RawString& RawString::whiteSpace() {
  return " \t"_text;
}
const RawString& RawString::lineSpace() {
  return " \t\r\n"_text;
}

} // namespace RawLayer
