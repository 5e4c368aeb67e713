// Patterns against texts: RawPattern beside a plain reference that tries everything, and on long
// input for its own sake.
//
// The first byte chooses: 1 folds, 2 captures, 4 takes 16-bit texts, 8 takes long input, 16 takes
// each byte for a letter of a small alphabet that means something to patterns. The next one is the
// length of the pattern; the text is the rest.
#include "raw/RawPattern.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace RawLayer;

namespace {

using Text = std::string;
using Ranges = std::vector<RawRange>;

constexpr std::size_t ShortSize = 14; // of input for the reference, which takes exponential time

constexpr char Alphabet[] = "abAB*?%[]^-+.<>@nsEJK\r\n ";

unsigned char unitOf(char unit) {
  return static_cast<unsigned char>(unit);
}
char upper(char unit) {
  return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - 'a' + 'A') : unit;
}
char lower(char unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<char>(unit - 'A' + 'a') : unit;
}

bool same(char a, char b, bool fold) {
  return fold ? upper(a) == upper(b) : a == b;
}

char escape(char letter) {
  switch (letter) {
  case 'B':
    return '[';
  case 'E':
    return ']';
  case 'O':
    return '(';
  case 'C':
    return ')';
  case 'c':
  case 'i':
    return ';';
  case 'e':
    return '%';
  case 'l':
    return ':';
  case 'm':
    return ',';
  case 'n':
    return '\n';
  case 'q':
    return '"';
  case 'r':
    return '\r';
  case 's':
    return ' ';
  case 't':
    return '\t';
  case 'v':
    return '|';
  default:
    return letter;
  }
}

// --- The reference

bool wildcards(const Text& pattern, std::size_t p, const Text& text, std::size_t t, bool fold) {
  if (p == pattern.size()) return t == text.size();
  if (pattern[p] == '*') {
    for (; t <= text.size(); ++t)
      if (wildcards(pattern, p + 1, text, t, fold)) return true;
    return false;
  }
  if (pattern[p] == '%' && p + 1 == pattern.size()) return false;
  if (t == text.size()) return false;
  if (pattern[p] == '?') return wildcards(pattern, p + 1, text, t + 1, fold);
  if (pattern[p] == '%')
    return escape(pattern[p + 1]) == text[t] && wildcards(pattern, p + 2, text, t + 1, fold);
  return same(pattern[p], text[t], fold) && wildcards(pattern, p + 1, text, t + 1, fold);
}

struct Item {
  std::size_t end = 0; // behind the item, without its repetition
  bool set[256] = {};
};

void addSet(Item& item, const Text& pattern, std::size_t p, bool fold) {
  const bool negated = p < pattern.size() && pattern[p] == '^';
  if (negated) ++p;
  std::vector<int> members; // -1 for a "-" that is not escaped
  while (p < pattern.size() && pattern[p] != ']') {
    if (pattern[p] == '%') {
      if (++p == pattern.size()) break;
      members.push_back(unitOf(escape(pattern[p])));
    } else {
      members.push_back(pattern[p] == '-' ? -1 : unitOf(pattern[p]));
    }
    ++p;
  }
  item.end = std::min(p < pattern.size() ? p + 1 : p, pattern.size());
  const auto value = [&](std::size_t i) { return members[i] < 0 ? '-' : members[i]; };
  for (std::size_t i = 0; i < members.size();) {
    const bool isRange = i + 2 < members.size() && members[i + 1] == -1;
    const int high = isRange ? value(i + 2) : value(i);
    for (int unit = value(i); unit <= high; ++unit) item.set[unit] = true;
    i += isRange ? 3 : 1;
  }
  if (fold)
    for (char letter = 'a'; letter <= 'z'; ++letter) {
      const bool either = item.set[unitOf(letter)] || item.set[unitOf(upper(letter))];
      item.set[unitOf(letter)] = item.set[unitOf(upper(letter))] = either;
    }
  if (!negated) return;
  for (bool& member : item.set) member = !member;
  item.set[unitOf('\n')] = item.set[unitOf('\r')] = false;
}

Item readItem(const Text& pattern, std::size_t p, bool fold) {
  Item item;
  item.end = p + 1;
  if (pattern[p] == '[') {
    addSet(item, pattern, p + 1, fold);
  } else if (pattern[p] == '.') {
    for (bool& member : item.set) member = true;
    item.set[unitOf('\n')] = item.set[unitOf('\r')] = false;
  } else if (pattern[p] == '%') {
    if (p + 1 < pattern.size()) item.set[unitOf(escape(pattern[p + 1]))] = true;
    item.end = std::min(p + 2, pattern.size());
  } else {
    item.set[unitOf(pattern[p])] = true;
    if (fold) item.set[unitOf(upper(pattern[p]))] = item.set[unitOf(lower(pattern[p]))] = true;
  }
  return item;
}

bool classes(const Text& pattern, std::size_t p, const Text& text, std::size_t t, bool fold) {
  if (p == pattern.size()) return t == text.size();
  const Item item = readItem(pattern, p, fold);
  const char repeat = item.end < pattern.size() ? pattern[item.end] : '\0';
  const auto takes = [&](std::size_t i) { return i < text.size() && item.set[unitOf(text[i])]; };
  if (repeat != '*' && repeat != '+')
    return takes(t) && classes(pattern, item.end, text, t + 1, fold);
  if (repeat == '+' && !takes(t++)) return false;
  for (;; ++t) {
    if (classes(pattern, item.end + 1, text, t, fold)) return true;
    if (!takes(t)) return false;
  }
}

bool matches(const Text& pattern, const Text& text, bool fold) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == '<') return !matches(pattern.substr(1), text, fold);
  if (pattern[0] == '>') return pattern.substr(1) == text;
  if (pattern[0] == '@') return classes(pattern.substr(1), 0, text, 0, fold);
  return wildcards(pattern, 0, text, 0, fold);
}

bool captures(const Text& pattern, std::size_t p, const Text& text, std::size_t t, bool fold,
              Ranges& ranges) {
  if (p == pattern.size()) return t == text.size();
  const auto rest = [&](std::size_t nextP, std::size_t nextT) {
    return captures(pattern, nextP, text, nextT, fold, ranges);
  };
  if (pattern[p] == '*' || (pattern[p] == '?' && t < text.size())) {
    const std::size_t longest = pattern[p] == '*' ? text.size() : t + 1;
    const std::size_t shortest = pattern[p] == '*' ? t : t + 1;
    for (std::size_t end = longest + 1; end-- > shortest;) {
      ranges.push_back({static_cast<int32_t>(t), static_cast<int32_t>(end)});
      const std::size_t depth = ranges.size();
      if (rest(p + 1, end)) return true;
      ranges.resize(depth - 1);
    }
    return false;
  }
  if (t == text.size() || pattern[p] == '?') return false;
  if (pattern[p] != '%') return same(pattern[p], text[t], fold) && rest(p + 1, t + 1);
  if (p + 1 == pattern.size()) return false;
  const char letter = pattern[p + 1];
  if (letter == 'n' && text[t] == '\r')
    return t + 1 < text.size() && text[t + 1] == '\n' && rest(p + 2, t + 2);
  const char unit = letter == 'J' ? '>' : letter == 'K' ? '<' : escape(letter);
  return unit == text[t] && rest(p + 2, t + 1);
}

// --- The comparison

void check(bool holds, const char* what, const Text& pattern, const Text& text) {
  if (holds) return;
  std::fprintf(stderr, "%s: pattern \"%s\", text \"%s\"\n", what, pattern.c_str(), text.c_str());
  std::abort();
}

RawString rawOf(const Text& text, bool wide) {
  if (!wide) return RawString::fromChars(text.data(), static_cast<int32_t>(text.size()));
  std::u16string units;
  for (const char unit : text) units += unitOf(unit);
  return RawString::fromWide(units.data(), static_cast<int32_t>(units.size()));
}

void compareMatch(const Text& pattern, const Text& text, bool fold, bool wide) {
  RawPattern matcher(rawOf(pattern, wide));
  const RawString subject = rawOf("#" + text + "#", wide);
  const int32_t end = static_cast<int32_t>(text.size()) + 1;
  const bool expected = matches(pattern, text, fold);
  check(matcher.match(subject, {1, end}, fold) == expected, "match", pattern, text);
  const bool isRange = expected && (pattern.empty() || pattern[0] != '<');
  check(matcher.matchStart == (isRange ? 1 : 0), "start", pattern, text);
  check(matcher.matchEnd == (isRange ? end : 0), "end", pattern, text);
}

void compareCapture(const Text& pattern, const Text& text, bool fold, bool wide) {
  RawPattern matcher(rawOf(pattern, wide));
  const RawString subject = rawOf(text, wide);
  RawRangeList list;
  Ranges expected;
  const bool matched = captures(pattern, 0, text, 0, fold, expected);
  if (!matched) expected.clear();
  check(matcher.capture(subject, subject.all(), fold, list) == matched, "capture", pattern, text);
  Ranges found;
  for (const RawRange& range : list.elements()) found.push_back(range);
  check(found == expected, "ranges", pattern, text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const uint8_t choice = data[0];
  const bool isLong = (choice & 8) != 0;
  const std::size_t room = size - 2;
  std::size_t patternSize = std::min<std::size_t>(data[1], room);
  if (!isLong) patternSize = std::min(patternSize, ShortSize);
  std::size_t textSize = room - patternSize;
  if (!isLong) textSize = std::min(textSize, ShortSize);
  Text pattern(reinterpret_cast<const char*>(data) + 2, patternSize);
  Text text(reinterpret_cast<const char*>(data) + 2 + patternSize, textSize);
  if ((choice & 16) != 0)
    for (Text* each : {&pattern, &text})
      for (char& unit : *each) unit = Alphabet[unitOf(unit) % (sizeof Alphabet - 1)];

  const bool fold = (choice & 1) != 0;
  const bool wide = (choice & 4) != 0;
  if (isLong) {
    RawRangeList list;
    const RawString subject = rawOf(text, wide);
    RawPattern matcher(rawOf(pattern, wide));
    matcher.match(subject, fold);
    matcher.capture(subject, subject.all(), fold, list);
  } else if ((choice & 2) != 0) {
    compareCapture(pattern, text, fold, wide);
  } else {
    compareMatch(pattern, text, fold, wide);
  }
  return 0;
}
