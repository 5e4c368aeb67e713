#include "raw/RawBlockReader.h"

#include "TestFolder.h"
#include "TestText.h"

#include <gtest/gtest.h>

#include <string>

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

using namespace RawLayer;
using std::string;

namespace {

constexpr uint16_t allFlags =
    RawBlockReader::FindMark | RawBlockReader::SkipMark | RawBlockReader::DetectContent;

string textOf(RawBlockReader& reader) {
  return {reinterpret_cast<const char*>(reader.text()) + reader.textStart(),
          static_cast<std::size_t>(reader.textEnd() - reader.textStart())};
}
RawFileOwner openToRead(const RawString& path) {
  return openFile(path, RawAccessRead, RawShareReadWrite, RawOpenExisting);
}
bool convert(RawBlockConverter& converter, int32_t from, int32_t to, const string& data) {
  return converter.convert(from, to, reinterpret_cast<const uint8_t*>(data.data()),
                           static_cast<int32_t>(data.size()));
}
string outputOf(RawBlockConverter& converter) {
  return {reinterpret_cast<const char*>(converter.output()),
          static_cast<std::size_t>(converter.outputSize())};
}

} // namespace

TEST(RawBlockConverter, AppendsBlockToBlock) {
  RawBlockConverter converter;
  converter.wideStart = converter.outStart = 64;
  EXPECT_FALSE(converter.isRunning());
  ASSERT_TRUE(convert(converter, 1, 2, "a\x82\xA0"));
  EXPECT_TRUE(converter.isRunning());
  ASSERT_TRUE(convert(converter, 1, 2, "\xB1z"));
  EXPECT_EQ(outputOf(converter), "a\xE3\x81\x82\xEF\xBD\xB1z");
  EXPECT_EQ(converter.flags, RawBlockConverter::Running | RawBlockConverter::OutputReady);
}

TEST(RawBlockConverter, KeepsTheTailAtTheFront) {
  RawBlockConverter converter;
  converter.wideStart = converter.outStart = 64;
  ASSERT_TRUE(convert(converter, 1, 2, "one\r\ntw"));
  converter.keepTail(2);
  EXPECT_EQ(outputOf(converter), "tw");
  ASSERT_TRUE(convert(converter, 1, 2, "o"));
  EXPECT_EQ(outputOf(converter), "two");
  converter.keepTail(0);
  EXPECT_EQ(outputOf(converter), "");
}

TEST(RawBlockConverter, BuffersGrowAndKeepWhatTheyHeld) {
  RawBlockConverter converter;
  converter.wideStart = converter.outStart = 1;
  string expected;
  for (int i = 0; i < 40; ++i) {
    ASSERT_TRUE(convert(converter, 1, 2, "\x82\xA0\x82\xA2" + string(static_cast<size_t>(i), 'x')));
    expected += "\xE3\x81\x82\xE3\x81\x84" + string(static_cast<size_t>(i), 'x');
    ASSERT_EQ(outputOf(converter), expected);
  }
}

TEST(RawBlockConverter, SwapsOrCopiesUtf16) {
  RawBlockConverter converter;
  ASSERT_TRUE(convert(converter, 5, 6, string("\0a\x30\x42", 4)));
  EXPECT_EQ(outputOf(converter), string("a\0\x42\x30", 4));
  converter.keepTail(0);
  ASSERT_TRUE(convert(converter, 6, 5, string("a\0\x42\x30", 4)));
  EXPECT_EQ(outputOf(converter), string("\0a\x30\x42", 4));
  converter.keepTail(0);
  ASSERT_TRUE(convert(converter, 5, 2, string("\0a\x30\x42", 4)));
  EXPECT_EQ(outputOf(converter), "a\xE3\x81\x82");
  converter.keepTail(0);
  ASSERT_TRUE(convert(converter, 2, 5, "a\xE3\x81\x82"));
  EXPECT_EQ(outputOf(converter), string("\0a\x30\x42", 4));
}

TEST(RawBlockConverter, NothingStartsTheRunOnly) {
  RawBlockConverter converter;
  EXPECT_TRUE(convert(converter, 1, 2, ""));
  EXPECT_TRUE(converter.isRunning());
  EXPECT_EQ(converter.outputSize(), 0);
}

TEST(RawBlockReader, ShowsTheBytesOfTheFile) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "one\r\ntwo"));
  RawBlockReader reader;
  reader.start(64);
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "one\r\ntwo");
  EXPECT_EQ(reader.refill(file, 3), RawBlockReader::Ended);
  EXPECT_EQ(textOf(reader), "two");
}

TEST(RawBlockReader, TailComesFirstInTheNextBlock) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "0123456789abcdefghijklmn"));
  RawBlockReader reader;
  reader.start(16);
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "0123456789abcdef");
  EXPECT_EQ(reader.refill(file, 4), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "cdefghijklmn");
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ended);
  EXPECT_EQ(textOf(reader), "");
}

TEST(RawBlockReader, TooLongATailLeavesNoRoom) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", string(200, 'x')));
  RawBlockReader reader;
  reader.start(64);
  ASSERT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(reader.refill(file, 58), RawBlockReader::TooLong);
  EXPECT_EQ(reader.refill(file, 57), RawBlockReader::Ready);
}

TEST(RawBlockReader, ConvertedTailMayFillAllButTheBlockSize) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "\x82\xA0" + string(200, 'x')));
  RawBlockReader reader;
  reader.start(64);
  reader.flags = allFlags;
  reader.target = EncodingUtf8;
  ASSERT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(reader.textEnd(), 65);
  EXPECT_EQ(reader.refill(file, 64), RawBlockReader::TooLong);
  EXPECT_EQ(reader.refill(file, 63), RawBlockReader::Ready);
  EXPECT_EQ(reader.textEnd(), 127);
}

TEST(RawBlockReader, MarkIsFoundSkippedAndReported) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "\xEF\xBB\xBFone"));
  RawBlockReader reader;
  reader.start(64);
  reader.flags = allFlags;
  reader.target = EncodingUtf8;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "one");
  EXPECT_EQ(reader.markFound, EncodingUtf8);
  EXPECT_EQ(reader.detected, EncodingUtf8);
}

TEST(RawBlockReader, MarkMayStayInTheText) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "\xEF\xBB\xBFone"));
  RawBlockReader reader;
  reader.start(64);
  reader.flags = RawBlockReader::FindMark;
  reader.target = EncodingUtf8;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "\xEF\xBB\xBFone");
  EXPECT_EQ(reader.markFound, EncodingUtf8);
}

TEST(RawBlockReader, MarkDoesNotOverruleTheEncodingGiven) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "\xEF\xBB\xBFone"));
  RawBlockReader reader;
  reader.start(64);
  reader.flags = allFlags;
  reader.detected = EncodingShiftJis;
  reader.target = EncodingShiftJis;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(reader.markFound, EncodingUtf8);
  EXPECT_EQ(reader.detected, EncodingShiftJis);
}

TEST(RawBlockReader, LooksAheadThroughAscii) {
  const TestFolder folder;
  const string ascii(100, 'a');
  const RawFileOwner file = openToRead(folder.write("a.txt", ascii + "\x82\xA0" + ascii));
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  reader.target = EncodingUtf8;
  string all;
  while (reader.refill(file, 0) == RawBlockReader::Ready) all += textOf(reader);
  EXPECT_EQ(reader.detected, EncodingShiftJis);
  EXPECT_EQ(all, ascii + "\xE3\x81\x82" + ascii);
}

TEST(RawBlockReader, PlainAsciiStaysUnknownAndUnconverted) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", string(100, 'a')));
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  reader.target = EncodingUtf8;
  string all;
  while (reader.refill(file, 0) == RawBlockReader::Ready) all += textOf(reader);
  EXPECT_EQ(reader.detected, 0);
  EXPECT_EQ(all, string(100, 'a'));
}

TEST(RawBlockReader, PlainAsciiIsWidenedForUtf16) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "abc"));
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  reader.target = EncodingUtf16Be;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), string("\0a\0b\0c", 6));
}

TEST(RawBlockReader, BinaryDataPassesAsItIs) {
  const TestFolder folder;
  const string data("a\x7F\xFF\xFE\x82\0", 6);
  const RawFileOwner file = openToRead(folder.write("a.bin", data));
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  reader.target = EncodingUtf16Le;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(reader.detected, EncodingBinary);
  EXPECT_EQ(textOf(reader), data);
}

TEST(RawBlockReader, CharacterCutByTheBlockWaits) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "0123456789abcd\xB1\x82\xA0\x82\xA2"));
  RawBlockReader reader;
  reader.start(16);
  reader.detected = EncodingShiftJis;
  reader.target = EncodingUtf8;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "0123456789abcd\xEF\xBD\xB1");
  EXPECT_EQ(reader.refill(file, 3), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "\xEF\xBD\xB1\xE3\x81\x82\xE3\x81\x84");
}

TEST(RawBlockReader, FileThatEndsInsideACharacterFails) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "ab\x82"));
  RawBlockReader reader;
  reader.start(16);
  reader.detected = EncodingShiftJis;
  reader.target = EncodingUtf8;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(textOf(reader), "ab");
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::ConversionFailed);
  EXPECT_EQ(reader.detected, EncodingBinary);
}

TEST(RawBlockReader, EncodingThatCannotBeCutIntoBlocksFails) {
  const TestFolder folder;
  for (const int32_t encoding : {EncodingUtf7, EncodingMac}) {
    const RawFileOwner file = openToRead(folder.write("a.txt", string(40, 'a')));
    RawBlockReader reader;
    reader.start(16);
    reader.detected = encoding;
    reader.target = EncodingUtf8;
    EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
    EXPECT_EQ(textOf(reader), "");
    EXPECT_EQ(reader.refill(file, 0), RawBlockReader::ConversionFailed);
  }
}

TEST(RawBlockReader, KeptEncodingConvertsNothing) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", "a\x82\xA0\x82"));
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  reader.target = EncodingUtf8;
  reader.keepEncoding = true;
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
  EXPECT_EQ(reader.target, EncodingShiftJis);
  EXPECT_EQ(textOf(reader), "a\x82\xA0\x82");
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ended);
}

TEST(RawBlockReader, ServesOneFileAfterTheOther) {
  const TestFolder folder;
  RawBlockReader reader;
  for (const char* text : {"\x82\xA0", "\xF0\x9F\x98\x80", "plain", "\x82\xA0"}) {
    const RawFileOwner file = openToRead(folder.write("a.txt", text));
    reader.start(16);
    reader.flags = allFlags;
    reader.target = EncodingUtf8;
    EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
    EXPECT_EQ(textOf(reader), text[0] == '\x82' ? "\xE3\x81\x82" : text);
  }
}

TEST(RawBlockReader, SizesOutsideTheLimitsAreClamped) {
  RawBlockReader reader;
  reader.start(-1);
  EXPECT_EQ(reader.blockSize(), RawBlockReader::MinimumBlockSize);
  reader.start(23);
  EXPECT_EQ(reader.blockSize(), 23);
}

TEST(RawBlockReader, UnreadableFileFails) {
  RawBlockReader reader;
  reader.start(16);
  EXPECT_EQ(reader.refill(RawFileOwner(), 0), RawBlockReader::ReadFailed);
}

#ifndef _WIN32
TEST(RawBlockReaderHost, ShortReadsDoNotShow) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", string(100, 'a') + "\xE3\x81\x82\r\n");
  HostFaults::Scope faults;
  for (const int32_t limit : {1, 2, 3, 7, 15, 16}) {
    faults.limitReads(limit);
    const RawFileOwner file = openToRead(path);
    RawBlockReader reader;
    reader.start(64);
    reader.flags = allFlags;
    reader.target = EncodingUtf8;
    EXPECT_EQ(reader.refill(file, 0), RawBlockReader::Ready);
    EXPECT_EQ(textOf(reader), string(64, 'a'));
    EXPECT_EQ(reader.detected, EncodingUtf8);
  }
}

TEST(RawBlockReaderHost, FaultsWhileLookingAheadAreSeen) {
  const TestFolder folder;
  const RawFileOwner file = openToRead(folder.write("a.txt", string(100, 'a')));
  HostFaults::Scope faults;
  RawBlockReader reader;
  reader.start(16);
  reader.flags = allFlags;
  faults.failNth(3, HostFaults::Read);
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::ReadFailed);
  reader.start(16);
  reader.flags = allFlags;
  faults.failAll(HostFaults::Seek);
  EXPECT_EQ(reader.refill(file, 0), RawBlockReader::ReadFailed);
}
#endif
