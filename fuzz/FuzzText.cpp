// Texts: conversions between all codes, scans beside plain ones, writers beside a plain model, and
// the number parser.
//
// Four bytes choose the codes of two texts, where the second begins and what is done to them; the
// rest is split into the two.
#include "PlainText.h"
#include "raw/RawNumber.h"

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace RawLayer;

namespace {

void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  uint8_t byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  int32_t number(int32_t below) { return below <= 0 ? 0 : (byte() << 8 | byte()) % below; }
  int32_t code() { return byte() % 9; }
  // A text out of the next bytes; an odd byte of wide text is lost.
  RawString text(int32_t encoding, int32_t bytes) {
    const auto size = static_cast<std::size_t>(bytes) < left_ ? bytes : static_cast<int32_t>(left_);
    const int32_t units = encoding == EncodingWide ? size / 2 : size;
    RawString result(encoding);
    for (int32_t i = 0; i < units; ++i)
      result.appendChar(
          static_cast<uint16_t>(encoding == EncodingWide ? byte() << 8 | byte() : byte()));
    return result;
  }
  RawRange range(const RawString& text) {
    const int32_t start = number(text.length() + 1);
    return {start, start + number(text.length() + 1 - start)};
  }
  [[nodiscard]] int32_t left() const { return static_cast<int32_t>(left_); }

 private:
  const uint8_t* data_;
  std::size_t left_;
};

bool isTerminated(const RawString& text) {
  return text.encoding() == EncodingWide ? text.wide()[text.length()] == 0
                                         : text.text()[text.length()] == 0;
}

void checkConversions(const RawString& text) {
  const RawString wide = text.shareAs(EncodingWide);
  for (int32_t code = EncodingAnsi; code <= EncodingBinary; ++code) {
    if (code == EncodingMac) continue; // no converter here
    const RawString there = text.shareAs(code);
    check(there.encoding() == code && isTerminated(there), "a conversion gives the code");
    check(there.equals(code == text.encoding() ? text : wide.shareAs(code)),
          "all goes through 16-bit text");
  }
  for (const int32_t code : {EncodingUtf16Be, EncodingUtf16Le})
    check(wide.shareAs(code).shareAs(EncodingWide).equals(wide), "UTF-16 loses nothing");
  // What has once been through UTF-8 holds no half pairs, and comes back from it as it was.
  const RawString clean = wide.shareAs(EncodingUtf8);
  check(clean.shareAs(EncodingWide).shareAs(EncodingUtf8).equals(clean), "UTF-8 loses nothing");
  const RawString cleanWide = clean.shareAs(EncodingWide);
  check(cleanWide.shareAs(EncodingUtf7).shareAs(EncodingWide).equals(cleanWide),
        "UTF-7 loses nothing");
}

void checkScans(Input& input, const RawString& text, const RawString& other) {
  const RawRange range = input.range(text);
  const RawRange part = input.range(other);
  const auto unit = static_cast<uint16_t>(input.number(0x10000));
  check(text.findChar(range, unit) == PlainText::findChar(text, range, unit), "findChar");
  check(text.findChar(range, text.at(range.start)) ==
            PlainText::findChar(text, range, text.at(range.start)),
        "findChar of what is there");
  check(text.find(range, other, part) == PlainText::find(text, range, other, part), "find");
  const RawRange own = input.range(text);
  check(text.find(range, text, own) == PlainText::find(text, range, text, own), "find in itself");
  check(text.findSet(range.start, other) == PlainText::findSet(text, range.start, other),
        "findSet");
  check(text.findLastOf(range, other) == PlainText::findLastOf(text, range, other), "findLastOf");
  check(text.compare(other) == PlainText::compare(text, other, false), "compare");
  check(text.compareNoCase(other) == PlainText::compare(text, other, true), "compareNoCase");
  check(text.equals(other) == (PlainText::compare(text, other, false) == 0), "equals");
  check(text.equalsNoCase(other) == (PlainText::compare(text, other, true) == 0), "equalsNoCase");
  check(text.rangeEquals(range, other, part) ==
            (range.size() == part.size() && PlainText::sameAt(text, range.start, other, part)),
        "rangeEquals");
}

// The units of a text, as another text of the given code would take them.
std::u16string unitsOf(const RawString& text, int32_t encoding) {
  std::u16string units;
  for (int32_t i = 0; i < text.length(); ++i)
    units += static_cast<char16_t>(encoding == EncodingWide ? text.at(i) : text.at(i) & 0xFF);
  return units;
}

void checkWriters(Input& input, RawString text, const RawString& other) {
  const int32_t code = text.encoding();
  std::u16string model = unitsOf(text, code);
  const std::u16string pieces = unitsOf(other, code);
  const RawString witness = text;
  const std::u16string before = model;
  for (int32_t steps = 0; steps < 8 && input.left() > 0; ++steps) {
    const auto kind = input.byte() % 8;
    const RawRange place = input.range(text);
    const RawRange part = input.range(other);
    const auto start = static_cast<std::size_t>(place.start);
    const auto count = static_cast<std::size_t>(place.size());
    const std::u16string piece =
        pieces.substr(static_cast<std::size_t>(part.start), static_cast<std::size_t>(part.size()));
    if (kind == 0) {
      text.append(other, part);
      model += piece;
    } else if (kind == 1) {
      text.replaceRange(place, other, part);
      model.replace(start, count, piece);
    } else if (kind == 2) {
      text.removeRange(place.start, place.size());
      model.erase(start, count);
    } else if (kind == 3) {
      text.insertUnderscore(place.start);
      model.insert(start, 1, u'_');
    } else if (kind == 4) {
      text.setLength(place.start);
      model.resize(start);
    } else if (kind == 5) {
      text.replaceRange(place, text, {place.start, text.length()});
      model.replace(start, count, std::u16string(model, start));
    } else if (kind == 6) {
      text.assignChars(other);
      model = pieces;
    } else {
      text.append(text, place);
      model += std::u16string(model, start, count);
    }
    check(text.encoding() == code && isTerminated(text), "a writer keeps code and terminator");
    check(unitsOf(text, code) == model, "a writer does what the model does");
  }
  check(unitsOf(witness, code) == before, "a sharer sees nothing of it");
}

void checkNumbers(const RawString& text) {
  RawNumberParser parser;
  const bool whole = parser.parse(text, text.all());
  check(parser.position >= 0 && parser.position <= text.length(), "a parser stays in the text");
  check(!whole || parser.position == text.length(), "a whole number ends where the text does");
  check(whole == isNumber(text), "isNumber gives the parser's answer");
  check(toInt(RawString::fromInt64(toInt(text))) == toInt(text), "numbers come back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Input input(data, size);
  const int32_t code = input.code();
  const int32_t otherCode = input.code();
  const uint8_t firstSize = input.byte();
  const uint8_t kind = input.byte() % 4;
  const RawString text = input.text(code, firstSize);
  const RawString other = input.text(otherCode, input.left() / 2);
  if (kind == 0) checkConversions(text);
  if (kind == 1) checkScans(input, text, other);
  if (kind == 2) checkWriters(input, text, other);
  if (kind == 3) checkNumbers(text);
  return 0;
}
