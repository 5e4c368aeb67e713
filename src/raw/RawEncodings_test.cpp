#include "raw/RawEncodings.h"

#include "LineReference.h"
#include "raw/RawScan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace RawLayer;
using std::string;

namespace {

int32_t sizeOf(const string& data) {
  return static_cast<int32_t>(data.size());
}
int32_t detected(const string& data) {
  return detectTextEncoding(data.data(), sizeOf(data));
}
int32_t shiftJisOrUtf8(const string& data) {
  return detectShiftJisOrUtf8(data.data(), sizeOf(data));
}
int32_t clipped(int32_t encoding, const string& data) {
  return clipToCharacter(encoding, data.data(), sizeOf(data));
}
// A literal with zeros in it.
template <std::size_t Size>
string zeros(const char (&text)[Size]) {
  return {text, Size - 1};
}

// In exact memory, so that a read outside is seen.
int32_t detectedExactly(const string& data) {
  const std::vector<uint8_t> bytes(data.begin(), data.end());
  return detectTextEncoding(bytes.data(), sizeOf(data));
}

} // namespace

TEST(RawEncodings, MarksAreFoundAtTheStart) {
  EXPECT_EQ(detectMark("\xFE\xFFxx", 4), EncodingUtf16Be);
  EXPECT_EQ(detectMark("\xFF\xFExx", 4), EncodingUtf16Le);
  EXPECT_EQ(detectMark("\xEF\xBB\xBFx", 4), EncodingUtf8);
  EXPECT_EQ(detectMark("x\xEF\xBB\xBF", 4), 0);
}

TEST(RawEncodings, MarkNeedsAllItsBytes) {
  EXPECT_EQ(detectMark("\xFE\xFF", 2), EncodingUtf16Be);
  EXPECT_EQ(detectMark("\xFE\xFF", 1), 0);
  EXPECT_EQ(detectMark("\xEF\xBB\xBF", 3), EncodingUtf8);
  EXPECT_EQ(detectMark("\xEF\xBB\xBF", 2), 0);
  EXPECT_EQ(detectMark("", 0), 0);
}

TEST(RawEncodings, MarkOfUtf7IsWrittenButNeverFound) {
  EXPECT_EQ(string(markOf(EncodingUtf7).bytes), "+/v8-");
  EXPECT_EQ(markOf(EncodingUtf7).size, 5);
  EXPECT_EQ(detectMark("+/v8-abc", 8), 0);
}

TEST(RawEncodings, OtherCodesHaveNoMark) {
  for (const int32_t encoding : {0, 1, 4, 7, 8, 9, -1}) EXPECT_EQ(markOf(encoding).size, 0);
  EXPECT_EQ(markOf(EncodingUtf8).size, 3);
  EXPECT_EQ(markOf(EncodingUtf16Be).size, 2);
  EXPECT_EQ(markOf(EncodingUtf16Le).size, 2);
}

TEST(RawEncodings, PlainAsciiIsUndecided) {
  EXPECT_EQ(detected(""), 0);
  string ascii;
  for (char unit = 1; unit <= 0x7E; ++unit) ascii += unit;
  EXPECT_EQ(detected(ascii), 0);
}

TEST(RawEncodings, FirstByteBeyondAsciiDecidesByItsClass) {
  for (int byte = 0x01; byte <= 0xFF; ++byte) {
    int32_t expected = EncodingBinary;
    if (byte <= 0x7E) expected = 0;
    if (byte >= 0x80 && byte <= 0xC1) expected = EncodingShiftJis;
    if (byte >= 0xC2 && byte <= 0xEF) expected = EncodingShiftJis; // "X " is no UTF-8, see below
    if (byte >= 0xF0 && byte <= 0xFD) expected = EncodingUtf8;
    // A lead of Shift-JIS cannot be followed by a blank.
    if (byte >= 0xE0 && byte <= 0xEF) expected = EncodingUtf8;
    const string data = string("key=") + static_cast<char>(byte) + " tail";
    EXPECT_EQ(detected(data), expected) << byte;
  }
}

TEST(RawEncodings, BytesBelowC2AreShiftJisAtOnce) {
  EXPECT_EQ(detected("a\x80"), EncodingShiftJis);
  EXPECT_EQ(detected("a\xC1\xFF\xFE\x7F"), EncodingShiftJis); // the rest is not looked at
}

TEST(RawEncodings, BytesFromF0AreUtf8AtOnce) {
  EXPECT_EQ(detected("a\xF0"), EncodingUtf8);
  EXPECT_EQ(detected("a\xFD\x82\xA0"), EncodingUtf8);
}

TEST(RawEncodings, DeleteAndTheBytesOfMarksAreBinary) {
  EXPECT_EQ(detected("a\x7F"), EncodingBinary);
  EXPECT_EQ(detected("a\xFE"), EncodingBinary);
  EXPECT_EQ(detected("a\xFF\xFE"), EncodingBinary);
}

TEST(RawEncodings, BetweenC2AndEfTheValidatorsDecide) {
  EXPECT_EQ(detected("a=\xE3\x81\x82\r\n"), EncodingUtf8);     // no Shift-JIS: 82 0D
  EXPECT_EQ(detected("a=\xE3\x81\x82\xE3"), EncodingShiftJis); // both are possible: a tie
  EXPECT_EQ(detected("a=\xC3\xA4 b"), EncodingUtf8);           // two kana speak for UTF-8
}

TEST(RawEncodings, NoBytesAreShiftJis) {
  EXPECT_EQ(shiftJisOrUtf8(""), EncodingShiftJis);
  EXPECT_EQ(shiftJisOrUtf8("plain"), EncodingShiftJis);
}

TEST(RawEncodings, TieGoesToShiftJis) {
  // E3 81 is a double-byte character, 82 A0 another; as UTF-8 it is E3 81 82 and a fault.
  EXPECT_EQ(shiftJisOrUtf8("\xE3\x81\x82\xA0"), EncodingShiftJis);
  // Valid as both, with no kana and no long sequence.
  EXPECT_EQ(shiftJisOrUtf8("\xE3\x81\x82\x41"), EncodingShiftJis);
  EXPECT_EQ(shiftJisOrUtf8("\xE3\x81\x82\xE3\x81\x82"), EncodingShiftJis);
}

TEST(RawEncodings, LoneKanaSpeakForUtf8) {
  EXPECT_EQ(shiftJisOrUtf8("\xC3\xA4"), EncodingUtf8);     // two lone kana, or one letter
  EXPECT_EQ(shiftJisOrUtf8("\xC3"), EncodingUtf8);         // a kana, or a letter cut off
  EXPECT_EQ(shiftJisOrUtf8("\xB1\xB2"), EncodingShiftJis); // no UTF-8 starts so
}

TEST(RawEncodings, ShiftJisValidatorSeesEachByteFirst) {
  // Each byte faults both: the fault of Shift-JIS is seen first and gives UTF-8.
  EXPECT_EQ(shiftJisOrUtf8("\x80"), EncodingUtf8);
  EXPECT_EQ(shiftJisOrUtf8("\xFF"), EncodingUtf8);
  EXPECT_EQ(shiftJisOrUtf8("\xE3\x20"), EncodingUtf8);
}

TEST(RawEncodings, InvalidUtf8IsShiftJis) {
  EXPECT_EQ(shiftJisOrUtf8("\xB1"), EncodingShiftJis);     // a stray continuation byte
  EXPECT_EQ(shiftJisOrUtf8("\xC0\xB1"), EncodingShiftJis); // an overlong form
  EXPECT_EQ(shiftJisOrUtf8("\xC1\xB1"), EncodingShiftJis);
  EXPECT_EQ(shiftJisOrUtf8("\xC4\x41"), EncodingShiftJis);     // a kana and a letter
  EXPECT_EQ(shiftJisOrUtf8("\xE3\x41\x41"), EncodingShiftJis); // a double byte and a letter
}

TEST(RawEncodings, TrailBytesOfShiftJis) {
  for (int trail = 0; trail <= 0xFF; ++trail) {
    const bool valid = (trail >= 0x40 && trail <= 0x7E) || (trail >= 0x80 && trail <= 0xFC);
    // Behind E1 only 80 to BF go on in UTF-8, the other valid ones make it Shift-JIS.
    const string data = string("\xE1") + static_cast<char>(trail);
    EXPECT_EQ(shiftJisOrUtf8(data), valid ? EncodingShiftJis : EncodingUtf8) << trail;
  }
}

TEST(RawEncodings, ValidatorsAgreeWithThePlainOnesOnAllShortTexts) {
  for (int a = 0; a < 256; ++a)
    for (int b = 0; b < 256; ++b)
      for (const char c : {'A', ' ', '\x81', '\xA5', '\xC5', '\xE5', '\xF5', '\xF9', '\xFD'}) {
        const string data{static_cast<char>(a), static_cast<char>(b), c};
        ASSERT_EQ(shiftJisOrUtf8(data), LineReference::shiftJisOrUtf8(data)) << a << " " << b;
        ASSERT_EQ(detected(data), LineReference::detect(data)) << a << " " << b << " " << int(c);
      }
}

TEST(RawEncodings, ZeroAtAnOddPlaceIsLittleEndian) {
  EXPECT_EQ(detected(zeros("a\0b\0")), EncodingUtf16Le);
  EXPECT_EQ(detected(zeros("a\0\r\0\n\0b\0")), EncodingUtf16Le);
}

TEST(RawEncodings, ZeroAtAnEvenPlaceIsBigEndian) {
  EXPECT_EQ(detected(zeros("\0a\0b")), EncodingUtf16Be);
  EXPECT_EQ(detected(zeros("\0\r\0\n\0b")), EncodingUtf16Be);
}

TEST(RawEncodings, EightBitLineEndsSpeakAgainstUtf16) {
  EXPECT_EQ(detected(zeros("a\0\r\nb\0")), 0);
  EXPECT_EQ(detected(zeros("\r\na\0")), 0);
  EXPECT_EQ(detected(zeros("a\0b\r\n\x80")), EncodingShiftJis); // the scan goes on
}

TEST(RawEncodings, FirstLineEndThatTellsDecides) {
  EXPECT_EQ(detected(zeros("a\0\r\0\n\0\r\n")), EncodingUtf16Le);
  EXPECT_EQ(detected(zeros("\r\na\0\r\0\n\0")), 0);
  EXPECT_EQ(detected(zeros("\0a\0\r\0\n\r\n")), EncodingUtf16Be);
  EXPECT_EQ(detected(zeros("\r\n\0a\0\r\0\n")), 0);
}

TEST(RawEncodings, TwoZerosInARowAreNotBigEndian) {
  // The second zero is probed by itself then, at an odd place.
  EXPECT_EQ(detected(zeros("\0\0")), EncodingUtf16Le);
  EXPECT_EQ(detected(zeros("ab\0")), EncodingUtf16Be); // the zero is the last byte
}

TEST(RawEncodings, ZerosMeanNothingOnceLineEndsWereSeen) {
  RawTextDetector detector;
  const string data = zeros("a\0\r\nb");
  EXPECT_EQ(detector.detect(reinterpret_cast<const uint8_t*>(data.data()), 5), 0);
  EXPECT_FALSE(detector.probeUtf16);
  EXPECT_EQ(detector.position, 5);
  detector.advance(5);
  EXPECT_EQ(detector.detect(reinterpret_cast<const uint8_t*>("\0\0b\0"), 4), 0);
}

TEST(RawEncodings, PlaceOfAZeroIsCountedFromTheStartOfTheFile) {
  RawTextDetector detector;
  EXPECT_EQ(detector.detect(reinterpret_cast<const uint8_t*>("abc"), 3), 0);
  detector.advance(3);
  EXPECT_EQ(detector.detect(reinterpret_cast<const uint8_t*>("\0b"), 2), EncodingUtf16Le);
}

TEST(RawEncodings, DetectionAgreesWithThePlainOneOnRandomBytes) {
  std::mt19937 random(7);
  const string alphabet = zeros("\0\0\0abcdef \r\n\r\n\x7F\x80\xC2\xE3\xF0\xFF");
  for (int round = 0; round < 20000; ++round) {
    string data;
    const auto size = random() % 70;
    const auto kinds = 4 + random() % (alphabet.size() - 3);
    for (unsigned i = 0; i < size; ++i) data += alphabet[random() % kinds];
    ASSERT_EQ(detectedExactly(data), LineReference::detect(data)) << testing::PrintToString(data);
  }
}

TEST(RawEncodings, ClippingShiftJisCountsTheLeadsAtTheEnd) {
  EXPECT_EQ(clipped(1, "ab"), 2);
  EXPECT_EQ(clipped(1, "a\x82"), 1);
  EXPECT_EQ(clipped(1, "a\x82\xA0"), 3);     // A0 is no lead
  EXPECT_EQ(clipped(1, "a\x82\x82"), 3);     // a lead and a trail of the lead range
  EXPECT_EQ(clipped(1, "a\x82\x82\x82"), 3); // and one more
  EXPECT_EQ(clipped(1, "\xE0"), 0);
  EXPECT_EQ(clipped(1, "\xF0"), 1);
}

TEST(RawEncodings, ClippingUtf8CutsThePartialCharacter) {
  EXPECT_EQ(clipped(2, "ab"), 2);
  EXPECT_EQ(clipped(2, "a\xC3"), 1);
  EXPECT_EQ(clipped(2, "a\xC3\xA4"), 3);
  EXPECT_EQ(clipped(2, "a\xE3\x81"), 1);
  EXPECT_EQ(clipped(2, "a\xE3\x81\x82"), 4);
  EXPECT_EQ(clipped(2, "a\xF0\x9F\x98"), 1);
  EXPECT_EQ(clipped(2, "a\xF0\x9F\x98\x80"), 5);
  EXPECT_EQ(clipped(2, "a\xF8\x80\x80\x80"), 1);
  EXPECT_EQ(clipped(2, "a\xFC\x80\x80\x80\x80\x80"), 7);
}

TEST(RawEncodings, ClippingUtf8LeavesSpareContinuationBytes) {
  EXPECT_EQ(clipped(2, "a\x80\x80"), 1);
  EXPECT_EQ(clipped(2, "\xC3\xA4\xA4"), 2);
  EXPECT_EQ(clipped(2, "\x80\x80\x80"), 0);
}

TEST(RawEncodings, ClippingUtf8KeepsAllBehindAByteThatLeadsNothing) {
  for (const char odd : {'\xC0', '\xC1', '\xFE', '\xFF'})
    EXPECT_EQ(clipped(2, string("a") + odd + "\x80\x80"), 4);
}

TEST(RawEncodings, ClippingUtf16KeepsPairsTogether) {
  for (const int32_t encoding : {5, 6}) {
    EXPECT_EQ(clipped(encoding, zeros("\0a\0")), 2);
    EXPECT_EQ(clipped(encoding, "a"), 0);
    EXPECT_EQ(clipped(encoding, ""), 0);
  }
  EXPECT_EQ(clipped(5, zeros("\0a\xD8\x3D")), 2);
  EXPECT_EQ(clipped(5, zeros("\0a\xDB\xFF")), 2);
  EXPECT_EQ(clipped(5, zeros("\0a\xDC\x3D")), 4);
  EXPECT_EQ(clipped(6, zeros("a\0\x3D\xD8")), 2);
  EXPECT_EQ(clipped(6, zeros("a\0\xD8\x3D")), 4);
  EXPECT_EQ(clipped(7, zeros("a\0\x3D\xD8")), clipped(rawNativeUtf16(), zeros("a\0\x3D\xD8")));
}

TEST(RawEncodings, OtherCodesAreNotCutIntoBlocks) {
  for (const int32_t encoding : {0, 3, 4, 8, 9, -1}) EXPECT_EQ(clipped(encoding, "abc"), 0);
}

TEST(RawEncodings, ScansFindTheFirstPlaceWhereverItIs) {
  for (int32_t size = 0; size < 50; ++size) {
    for (int32_t place = 0; place <= size; ++place) {
      for (const int byte : {0x00, 0x7F, 0x80, 0xFF, 0x0D, 0x0A}) {
        std::vector<uint8_t> data(static_cast<std::size_t>(size), 'x');
        if (place < size) data[static_cast<std::size_t>(place)] = static_cast<uint8_t>(byte);
        const bool isEnd = byte == 0x0D || byte == 0x0A;
        EXPECT_EQ(rawSkipPlain(data.data(), 0, size), isEnd ? size : place);
        EXPECT_EQ(rawSkipAscii(data.data(), 0, size), byte >= 0x80 ? place : size);
        const auto end = static_cast<uint32_t>(size);
        EXPECT_EQ(rawFindLineEnd8(data.data(), 0, end), isEnd ? static_cast<uint32_t>(place) : end);
      }
    }
  }
}

TEST(RawEncodings, WideScanSeesWholeUnitsOnly) {
  for (const bool big : {false, true}) {
    for (uint32_t size = 0; size < 50; ++size) {
      for (uint32_t place = 0; place <= size; ++place) {
        std::vector<uint8_t> data(size, 0x01);
        if (place < size) data[place] = big ? 0x00 : 0x0A;
        if (place + 1 < size) data[place + 1] = big ? 0x0A : 0x00;
        const bool hits = place % 2 == 0 && place + 1 < size;
        EXPECT_EQ(rawFindLineEnd16(data.data(), 0, size, big), hits ? place : size);
        EXPECT_EQ(rawFindLineEnd16(data.data(), 0, size, !big), size);
      }
    }
  }
}
