#include "raw/RawLineFile.h"

#include "LineReference.h"
#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawEncodings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <vector>

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

using namespace RawLayer;
using std::string;
using Line = LineReference::Line;

namespace {

// The units of a text as they stand in memory.
string unitsOf(const RawString& text) {
  if (text.encoding() != EncodingWide) return bytesOf(text);
  return {reinterpret_cast<const char*>(text.wide()), static_cast<std::size_t>(text.length()) * 2};
}
std::vector<Line> linesOf(RawLineFile& file) {
  std::vector<Line> lines;
  for (;;) {
    const RawLineRecord& record = file.nextLine();
    if (!record.valid) return lines;
    EXPECT_EQ(record.lineNumber, static_cast<int32_t>(lines.size()));
    lines.push_back({unitsOf(record.text), unitsOf(record.lineEnd)});
  }
}
std::vector<string> textsOf(RawLineFile& file) {
  std::vector<string> texts;
  for (Line& line : linesOf(file)) texts.push_back(std::move(line.text));
  return texts;
}
std::vector<string> readTexts(const RawString& path) {
  RawLineFile file(path);
  EXPECT_TRUE(file.openRead());
  return textsOf(file);
}
// The bytes of a UTF-8 text in another code.
string inCode(int32_t encoding, const string& utf8) {
  return unitsOf(raw(utf8).shareAs(encoding));
}

void setReadOnly(const RawString& path, bool readOnly) {
  using std::filesystem::perms;
  std::error_code error;
  std::filesystem::permissions(reinterpret_cast<const char8_t*>(path.text()),
                               readOnly ? perms::owner_read : perms::all, error);
  ASSERT_FALSE(error);
}

// A literal with zeros in it.
template <std::size_t Size>
string zeros(const char (&text)[Size]) {
  return {text, Size - 1};
}

using Texts = std::vector<string>;

constexpr int32_t allEncodings[] = {EncodingShiftJis, EncodingUtf8, EncodingUtf16Be,
                                    EncodingUtf16Le};

} // namespace

TEST(RawLineFile, EmptyFileIsOpenButHasNoLine) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", ""));
  EXPECT_TRUE(file.openRead());
  EXPECT_FALSE(file.nextLine().valid);
  EXPECT_EQ(file.state, RawLineFile::OpenLastBlock);
  EXPECT_EQ(file.record().fileEncoding, 0);
  EXPECT_EQ(file.record().markEncoding, 0);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::Closed);
}

TEST(RawLineFile, FileOfOneMarkHasNoLine) {
  const TestFolder folder;
  for (const int32_t encoding : {EncodingUtf8, EncodingUtf16Be, EncodingUtf16Le}) {
    const RawMark mark = markOf(encoding);
    RawLineFile file(folder.write("a.txt", {mark.bytes, static_cast<std::size_t>(mark.size)}));
    EXPECT_TRUE(file.openRead());
    EXPECT_FALSE(file.nextLine().valid);
    EXPECT_EQ(file.state, RawLineFile::OpenLastBlock);
    EXPECT_EQ(file.record().markEncoding, encoding);
  }
}

TEST(RawLineFile, MissingFileCannotBeRead) {
  const TestFolder folder;
  RawLineFile file(folder.file("none.txt"));
  EXPECT_FALSE(file.openRead());
  EXPECT_EQ(file.state, RawLineFile::CannotRead);
  EXPECT_FALSE(file.nextLine().valid);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::CannotRead); // until the next opening
}

TEST(RawLineFile, LockedFileCannotBeReadOrWritten) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  RawLineFile file(path);
  {
    const RawFileOwner lock = openFile(path, RawAccessRead, RawShareNone, RawOpenExisting);
    EXPECT_FALSE(file.openRead());
    EXPECT_EQ(file.state, RawLineFile::CannotRead);
    EXPECT_FALSE(file.openWrite());
    EXPECT_EQ(file.state, RawLineFile::CannotWrite);
  }
  EXPECT_TRUE(file.openRead());
  EXPECT_EQ(textsOf(file), Texts{"abc"});
}

TEST(RawLineFile, ReaderLetsOthersReadAndWrite) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  RawLineFile first(path);
  RawLineFile second(path);
  EXPECT_TRUE(first.openRead());
  EXPECT_TRUE(second.openRead());
  EXPECT_TRUE(openFile(path, RawAccessWrite, RawShareReadWrite, RawOpenExisting).isValid());
}

TEST(RawLineFile, WriterLetsOthersReadOnly) {
  const TestFolder folder;
  RawLineFile first(folder.file("a.txt"));
  RawLineFile second(folder.file("a.txt"));
  ASSERT_TRUE(first.openWrite());
  EXPECT_FALSE(second.openWrite());
  EXPECT_EQ(second.state, RawLineFile::CannotWrite);
  EXPECT_TRUE(
      openFile(folder.file("a.txt"), RawAccessRead, RawShareReadWrite, RawOpenExisting).isValid());
}

TEST(RawLineFile, FolderIsNoFile) {
  const TestFolder folder;
  RawLineFile file(folder.path());
  EXPECT_FALSE(file.openRead());
  EXPECT_EQ(file.state, RawLineFile::CannotRead);
  EXPECT_FALSE(file.openWrite());
  EXPECT_EQ(file.state, RawLineFile::CannotWrite);
}

TEST(RawLineFile, EveryKindOfLineEndEndsALine) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "a\rb\nc\r\nd\n\re\r\rf\n\n"));
  ASSERT_TRUE(file.openRead());
  const std::vector<Line> expected{{"a", "\r"}, {"b", "\n"}, {"c", "\r\n"}, {"d", "\n"}, {"", "\r"},
                                   {"e", "\r"}, {"", "\r"},  {"f", "\n"},   {"", "\n"}};
  EXPECT_EQ(linesOf(file), expected);
}

TEST(RawLineFile, LastLineNeedsNoEnd) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "one\ntwo"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(linesOf(file), (std::vector<Line>{{"one", "\n"}, {"two", ""}}));
  EXPECT_EQ(file.state, RawLineFile::OpenLastBlock);
}

TEST(RawLineFile, NoEmptyLineBehindTheLastEnd) {
  const TestFolder folder;
  EXPECT_EQ(readTexts(folder.write("a.txt", "one\r\n")), Texts{"one"});
  EXPECT_EQ(readTexts(folder.write("a.txt", "one\r")), Texts{"one"});
  EXPECT_EQ(readTexts(folder.write("a.txt", "one\n\r\n")), (Texts{"one", ""}));
}

TEST(RawLineFile, RecordTellsWhereTheLineStands) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "one\r\n\ntwo"));
  ASSERT_TRUE(file.openRead());
  const RawLineRecord& record = file.nextLine();
  EXPECT_EQ(record.path, file.path());
  EXPECT_EQ(record.offset, 0u);
  EXPECT_EQ(record.lineNumber, 0);
  file.nextLine();
  EXPECT_EQ(record.offset, 5u);
  EXPECT_EQ(record.lineNumber, 1);
  file.nextLine();
  EXPECT_EQ(record.offset, 6u);
  EXPECT_EQ(record.lineNumber, 2);
}

TEST(RawLineFile, LineIsAViewWithATerminator) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "one\r\ntwo"));
  ASSERT_TRUE(file.openRead());
  const RawLineRecord& record = file.nextLine();
  EXPECT_EQ(record.text.kind(), RawString::KindView);
  EXPECT_EQ(string(record.text.text()), "one");
  const RawString kept = record.text; // a copy outlives the read
  file.nextLine();
  EXPECT_EQ(string(record.text.text()), "two");
  EXPECT_EQ(kept, "one"_text);
  file.nextLine();
  EXPECT_TRUE(record.text.isEmpty());
  EXPECT_TRUE(record.lineEnd.isEmpty());
}

TEST(RawLineFile, ZeroBytesAreTextInAnEightBitFile) {
  const TestFolder folder;
  EXPECT_EQ(readTexts(folder.write("a.txt", zeros("a\0b\r\n\0\0\r\nc"))),
            (Texts{zeros("a\0b"), zeros("\0\0"), "c"}));
}

TEST(RawLineFile, MarkedUtf16BecomesUtf8) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", zeros("\xFF\xFE\x42\x30\r\0\n\0\x3D\xD8\x00\xDE\n\0")));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.sourceEncoding, EncodingUtf16Le);
  EXPECT_EQ(file.record().markEncoding, EncodingUtf16Le);
  EXPECT_EQ(file.nextLine().text, raw("\xE3\x81\x82"));
  EXPECT_EQ(file.record().text.encoding(), EncodingUtf8);
  EXPECT_EQ(file.record().fileEncoding, EncodingUtf16Le);
  EXPECT_EQ(file.nextLine().text, raw("\xF0\x9F\x98\x80"));
  EXPECT_FALSE(file.nextLine().valid);
}

TEST(RawLineFile, EncodingIsFoundWithoutAMark) {
  const TestFolder folder;
  const string text = "key=\xE8\xA1\xA8\xE7\xA4\xBA\r\nother=1\r\n";
  for (const int32_t encoding : allEncodings) {
    RawLineFile file(folder.write("a.txt", inCode(encoding, text)));
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(textsOf(file), (Texts{"key=\xE8\xA1\xA8\xE7\xA4\xBA", "other=1"})) << encoding;
    EXPECT_EQ(file.record().fileEncoding, encoding);
    EXPECT_EQ(file.record().markEncoding, 0);
  }
}

TEST(RawLineFile, Utf8NeedsTheVerdictOfTheValidators) {
  const TestFolder folder;
  // E3 81 82 A0 is two characters of Shift-JIS and no UTF-8; E3 81 82 0D the other way round.
  RawLineFile shiftJis(folder.write("a.txt", "\xE3\x81\x82\xA0\r\n"));
  ASSERT_TRUE(shiftJis.openRead());
  EXPECT_EQ(shiftJis.sourceEncoding, EncodingShiftJis);
  RawLineFile utf8(folder.write("b.txt", "\xE3\x81\x82\r\n"));
  ASSERT_TRUE(utf8.openRead());
  EXPECT_EQ(utf8.sourceEncoding, EncodingUtf8);
  RawLineFile both(folder.write("c.txt", "\xE3\x81\x82\xE3\x81\x82"));
  ASSERT_TRUE(both.openRead());
  EXPECT_EQ(both.sourceEncoding, EncodingShiftJis);
}

TEST(RawLineFile, AsciiStaysUnknownAndIsTaggedUtf8) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "plain\r\n"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.nextLine().text.encoding(), EncodingUtf8);
  EXPECT_EQ(file.record().fileEncoding, 0);
  EXPECT_EQ(file.sourceEncoding, 0);
}

TEST(RawLineFile, UnconvertedLinesAreTaggedByTheOption) {
  const TestFolder folder;
  for (const bool ansi : {false, true}) {
    RawLineFile file(folder.write("a.txt", "\xFF\xFE\r\n"));
    file.lineEncoding = 0;
    if (ansi) file.options = RawLineFile::TagUnknownAnsi;
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(bytesOf(file.nextLine().text), "\xFF\xFE"); // no mark and no encoding is looked for
    EXPECT_EQ(file.record().text.encoding(), ansi ? EncodingAnsi : EncodingUtf8);
    EXPECT_EQ(file.record().fileEncoding, 0);
  }
}

TEST(RawLineFile, BinaryFilePassesAsItIs) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.bin", "a\x7F\x82\r\n\xFF\xFE\n"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(textsOf(file), (Texts{"a\x7F\x82", "\xFF\xFE"}));
  EXPECT_EQ(file.record().fileEncoding, EncodingBinary);
}

TEST(RawLineFile, Utf7IsSeenByContentOnly) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "+/v8-abc\r\n"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.nextLine().text, "+/v8-abc"_text);
  EXPECT_EQ(file.record().markEncoding, 0);
  EXPECT_EQ(file.record().fileEncoding, 0);
}

TEST(RawLineFile, WideLinesAreNativeUnits) {
  const TestFolder folder;
  const string text = "\xE3\x81\x82\r\nb\ra\n\nlast";
  for (const int32_t encoding : allEncodings) {
    RawLineFile file(folder.write("a.txt", inCode(encoding, text)));
    file.lineEncoding = EncodingWide;
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(file.workEncoding, rawNativeUtf16());
    EXPECT_EQ(file.nextLine().text, RawString::fromWide(u"\u3042"));
    EXPECT_EQ(file.record().text.encoding(), EncodingWide);
    EXPECT_EQ(file.record().text.wide()[1], u'\0');
    EXPECT_EQ(file.record().lineEnd, RawString::fromWide(u"\r\n"));
    EXPECT_EQ(file.record().lineEnd.encoding(), EncodingWide);
    EXPECT_EQ(file.nextLine().text, "b"_text);
    EXPECT_EQ(file.record().lineEnd, RawString::fromWide(u"\r"));
    file.nextLine();
    EXPECT_EQ(file.record().lineEnd, RawString::fromWide(u"\n"));
    EXPECT_TRUE(file.nextLine().text.isEmpty());
    EXPECT_EQ(file.nextLine().text, "last"_text);
    EXPECT_TRUE(file.record().lineEnd.isEmpty());
  }
}

TEST(RawLineFile, PlainAsciiBecomesWide) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "one\ntwo"));
  file.lineEncoding = EncodingWide;
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.nextLine().text, RawString::fromWide(u"one"));
  EXPECT_EQ(file.record().fileEncoding, 0);
}

TEST(RawLineFile, Utf16LinesKeepTheirBytes) {
  const TestFolder folder;
  for (const int32_t encoding : {EncodingUtf16Be, EncodingUtf16Le}) {
    RawLineFile file(folder.write("a.txt", inCode(encoding, "one\r\ntwo\n")));
    file.lineEncoding = encoding;
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(linesOf(file),
              (std::vector<Line>{{inCode(encoding, "one"), inCode(encoding, "\r\n")},
                                 {inCode(encoding, "two"), inCode(encoding, "\n")}}));
  }
}

TEST(RawLineFile, GivenEncodingIsNotLookedFor) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "\xE3\x81\x82\r\n"));
  file.sourceEncoding = EncodingShiftJis;
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.state, RawLineFile::Open);
  EXPECT_EQ(file.sourceEncoding, EncodingShiftJis);
  RawLineFile marked(folder.write("b.txt", "\xEF\xBB\xBFone\r\n"));
  marked.sourceEncoding = EncodingUtf8;
  ASSERT_TRUE(marked.openRead());
  EXPECT_EQ(marked.nextLine().text, raw("\xEF\xBB\xBFone")); // nor is a mark
  EXPECT_EQ(marked.record().markEncoding, 0);
}

TEST(RawLineFile, ReaderFlagsMayBeGiven) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "\xEF\xBB\xBFone\r\n"));
  file.options = RawLineFile::RawReaderFlags;
  file.options |= RawBlockReader::FindMark;
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.nextLine().text, raw("\xEF\xBB\xBFone"));
  EXPECT_EQ(file.record().markEncoding, EncodingUtf8);
  EXPECT_EQ(file.record().fileEncoding, EncodingUtf8);
}

TEST(RawLineFile, FirstBlockMayWait) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "\xEF\xBB\xBFone\r\n"));
  file.options = RawLineFile::DeferFirstBlock;
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.record().fileEncoding, 0);
  EXPECT_EQ(file.nextLine().text, "one"_text);
  EXPECT_EQ(file.record().fileEncoding, EncodingUtf8);
}

TEST(RawLineFile, FirstBlockIsReadAtTheOpening) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "\xEF\xBB\xBFone\r\n"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.record().fileEncoding, EncodingUtf8);
  EXPECT_EQ(file.record().markEncoding, EncodingUtf8);
  EXPECT_FALSE(file.record().valid);
}

TEST(RawLineFile, OddOffsetOfWideTextIsAFault) {
  const TestFolder folder;
  // The mark of three bytes is skipped, yet the text is said to be UTF-16.
  RawLineFile file(folder.write("a.txt", zeros("\xEF\xBB\xBFo\0n\0\n\0b\0")));
  file.lineEncoding = EncodingWide;
  file.sourceEncoding = rawNativeUtf16();
  file.options = RawLineFile::RawReaderFlags;
  file.options |= RawBlockReader::FindMark | RawBlockReader::SkipMark;
  ASSERT_TRUE(file.openRead());
  EXPECT_TRUE(file.nextLine().text.isEmpty());
  EXPECT_EQ(file.state, RawLineFile::OddOffset);
  EXPECT_FALSE(file.nextLine().valid);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::OddOffset);
}

TEST(RawLineFile, FileThatEndsInsideACharacterIsNotConverted) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "a\x82\xA0\r\nb\x82"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.nextLine().text, raw("a\xE3\x81\x82"));
  EXPECT_FALSE(file.nextLine().valid);
  EXPECT_EQ(file.state, RawLineFile::ConversionFailed);
  EXPECT_TRUE(file.record().text.isEmpty());
  EXPECT_FALSE(file.nextLine().valid);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::ConversionFailed);
}

TEST(RawLineFile, OddByteAtTheEndOfUtf16IsNotConverted) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", zeros("\xFF\xFE"
                                               "a\0\n\0b")));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(textsOf(file), Texts{"a"});
  EXPECT_EQ(file.state, RawLineFile::ConversionFailed);
}

TEST(RawLineFile, Utf7AndMacCannotBeConverted) {
  const TestFolder folder;
  for (const int32_t encoding : {EncodingUtf7, EncodingMac}) {
    RawLineFile file(folder.write("a.txt", "abc\r\n"));
    file.sourceEncoding = encoding;
    ASSERT_TRUE(file.openRead());
    EXPECT_FALSE(file.nextLine().valid);
    EXPECT_EQ(file.state, RawLineFile::ConversionFailed);
  }
}

TEST(RawLineFile, LineOf8185BytesFitsAndOneMoreDoesNot) {
  const TestFolder folder;
  RawLineFile fits(folder.write("a.txt", string(8185, 'a')));
  ASSERT_TRUE(fits.openRead());
  EXPECT_EQ(textsOf(fits), Texts{string(8185, 'a')});
  EXPECT_EQ(fits.state, RawLineFile::OpenLastBlock);
  RawLineFile tooLong(folder.write("b.txt", string(8186, 'a')));
  ASSERT_TRUE(tooLong.openRead());
  EXPECT_FALSE(tooLong.nextLine().valid);
  EXPECT_EQ(tooLong.state, RawLineFile::LineTooLong);
  tooLong.close();
  EXPECT_EQ(tooLong.state, RawLineFile::LineTooLong);
}

TEST(RawLineFile, CompleteLineMayFillTheBlock) {
  const TestFolder folder;
  EXPECT_EQ(readTexts(folder.write("a.txt", string(8190, 'a') + "\r\nb")),
            (Texts{string(8190, 'a'), "b"}));
}

TEST(RawLineFile, ConvertedLineMayBeAsLongAsTheBlock) {
  const TestFolder folder;
  // Two bytes of Shift-JIS become three.
  RawLineFile fits(folder.write("a.txt", "\x82\xA0" + string(8188, 'a')));
  ASSERT_TRUE(fits.openRead());
  EXPECT_EQ(textsOf(fits), Texts{"\xE3\x81\x82" + string(8188, 'a')});
  RawLineFile tooLong(folder.write("b.txt", "\x82\xA0" + string(8189, 'a')));
  ASSERT_TRUE(tooLong.openRead());
  EXPECT_FALSE(tooLong.nextLine().valid);
  EXPECT_EQ(tooLong.state, RawLineFile::LineTooLong);
}

TEST(RawLineFile, PairCutByTheBlockIsOneLineEnd) {
  const TestFolder folder;
  for (int32_t size = 8180; size < 8200; ++size) {
    const string filler(100, 'x');
    string data;
    while (static_cast<int32_t>(data.size()) < size - 101) data += filler + "\n";
    data += string(static_cast<std::size_t>(size) - data.size(), 'y');
    data += "\r\nend\rlast\r";
    RawLineFile file(folder.write("a.txt", data));
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(linesOf(file), LineReference::cut(data, EncodingUtf8)) << size;
  }
}

TEST(RawLineFile, LooksAheadPastManyBlocksOfAscii) {
  const TestFolder folder;
  string data;
  Texts expected;
  for (int i = 0; i < 3000; ++i) {
    expected.push_back("line " + std::to_string(i));
    data += expected.back() + "\r\n";
  }
  expected.push_back("\xE3\x81\x82");
  RawLineFile file(folder.write("a.txt", data + "\x82\xA0\r\n"));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(file.sourceEncoding, EncodingShiftJis);
  EXPECT_EQ(textsOf(file), expected);
}

TEST(RawLineFile, MayBeOpenedAgain) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "\x82\xA0\r\nb"));
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(textsOf(file), (Texts{"\xE3\x81\x82", "b"}));
    file.close();
  }
  ASSERT_TRUE(file.openRead());
  file.nextLine();
  ASSERT_TRUE(file.openRead()); // in the middle, without closing
  EXPECT_EQ(textsOf(file), (Texts{"\xE3\x81\x82", "b"}));
  ASSERT_TRUE(file.openWrite());
  EXPECT_FALSE(file.nextLine().valid);
  EXPECT_TRUE(file.writeLine("new"_text));
  file.close();
  EXPECT_EQ(folder.read("a.txt"), "new\r\n");
}

TEST(RawLineFile, CloseSetsTheChoicesBack) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "a"));
  file.lineEncoding = EncodingWide;
  file.options = RawLineFile::WriteMark;
  file.sourceEncoding = EncodingUtf8;
  ASSERT_TRUE(file.openRead());
  file.close();
  EXPECT_EQ(file.lineEncoding, EncodingUtf8);
  EXPECT_EQ(file.options, 0);
  EXPECT_EQ(file.sourceEncoding, 0);
  EXPECT_EQ(file.state, RawLineFile::Closed);
  EXPECT_FALSE(file.nextLine().valid);
}

TEST(RawLineFile, WritesLinesInEveryEncoding) {
  const TestFolder folder;
  const string text = "one=\xE3\x81\x82";
  for (const int32_t encoding : allEncodings) {
    RawLineFile file(folder.file("a.txt"));
    file.lineEncoding = encoding;
    ASSERT_TRUE(file.openWrite());
    EXPECT_EQ(file.workEncoding, encoding);
    EXPECT_TRUE(file.writeLine(raw(text)));
    EXPECT_TRUE(file.writeLine(RawString()));
    EXPECT_TRUE(file.writeLine(raw(text).shareAs(EncodingWide)));
    EXPECT_TRUE(file.writeLine(raw(text).shareAs(EncodingUtf16Be)));
    file.close();
    EXPECT_EQ(file.state, RawLineFile::Closed);
    EXPECT_EQ(folder.read("a.txt"),
              inCode(encoding, text + "\r\n\r\n" + text + "\r\n" + text + "\r\n"))
        << encoding;
  }
}

TEST(RawLineFile, WideWriterWritesNativeBytes) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"));
  file.lineEncoding = EncodingWide;
  ASSERT_TRUE(file.openWrite());
  EXPECT_EQ(file.workEncoding, rawNativeUtf16());
  EXPECT_TRUE(file.writeLine("ab"_text));
  file.close();
  EXPECT_EQ(folder.read("a.txt"), inCode(rawNativeUtf16(), "ab\r\n"));
}

TEST(RawLineFile, UnknownAndBinaryFilesTakeBytesAsTheyAre) {
  const TestFolder folder;
  for (const int32_t encoding : {0, static_cast<int32_t>(EncodingBinary)}) {
    RawLineFile file(folder.file("a.txt"));
    file.lineEncoding = encoding;
    file.options = RawLineFile::WriteMark;
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLine(raw("\xE3\x81\x82")));
    EXPECT_TRUE(file.writeText(EncodingShiftJis, "\x82\xA0", 2));
    file.close();
    EXPECT_EQ(folder.read("a.txt"), "\xE3\x81\x82\r\n\x82\xA0");
  }
}

TEST(RawLineFile, MarkIsWrittenBeforeTheFirstByte) {
  const TestFolder folder;
  for (const int32_t encoding : {2, 3, 5, 6}) {
    RawLineFile file(folder.file("a.txt"));
    file.lineEncoding = encoding;
    file.options = RawLineFile::WriteMark;
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLine("a"_text));
    EXPECT_TRUE(file.writeLine("b"_text));
    file.close();
    const RawMark mark = markOf(encoding);
    EXPECT_EQ(folder.read("a.txt"), string(mark.bytes, static_cast<std::size_t>(mark.size)) +
                                        inCode(encoding, "a\r\nb\r\n"));
  }
}

TEST(RawLineFile, EmptyLineMayBeTheFirstBehindTheMark) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"));
  file.options = RawLineFile::WriteMark;
  ASSERT_TRUE(file.openWrite());
  EXPECT_TRUE(file.writeLine(RawString()));
  file.close();
  EXPECT_EQ(folder.read("a.txt"), "\xEF\xBB\xBF\r\n");
}

TEST(RawLineFile, WritingNothingWritesNoMark) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"));
  file.options = RawLineFile::WriteMark;
  ASSERT_TRUE(file.openWrite());
  EXPECT_TRUE(file.writeBytes("", 0));
  EXPECT_TRUE(file.writeText(EncodingShiftJis, "", 0));
  file.close();
  EXPECT_EQ(file.state, RawLineFile::Closed);
  EXPECT_EQ(folder.read("a.txt"), "");
}

TEST(RawLineFile, MarkOfUtf7ReadsBackAsText) {
  const TestFolder folder;
  {
    RawLineFile file(folder.file("a.txt"));
    file.lineEncoding = EncodingUtf7;
    file.options = RawLineFile::WriteMark;
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLine("first"_text));
    file.close();
  }
  EXPECT_EQ(folder.read("a.txt"), "+/v8-first\r\n");
  EXPECT_EQ(readTexts(folder.file("a.txt")), Texts{"+/v8-first"});
}

TEST(RawLineFile, LargeAndSmallWritesKeepTheirOrder) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"), 64);
  ASSERT_TRUE(file.openWrite());
  string expected;
  for (int i = 0; i < 200; ++i) {
    const string text(static_cast<std::size_t>(i), static_cast<char>('a' + i % 26));
    EXPECT_TRUE(file.writeLine(raw(text)));
    expected += text + "\r\n";
  }
  file.close();
  EXPECT_EQ(folder.read("a.txt"), expected);
}

TEST(RawLineFile, LineStartsOnALineOfItsOwn) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"));
  ASSERT_TRUE(file.openWrite());
  EXPECT_TRUE(file.writeLineWithEnd(RawString(), RawString()));
  EXPECT_TRUE(file.writeLineWithEnd("open"_text, RawString()));
  EXPECT_TRUE(file.writeLine("own"_text));
  EXPECT_TRUE(file.writeLine("next"_text));
  EXPECT_TRUE(file.writeLineWithEnd("ended"_text, "\n"_text));
  EXPECT_TRUE(file.writeLine("last"_text));
  file.close();
  EXPECT_EQ(folder.read("a.txt"), "open\r\nown\r\nnext\r\nended\nlast\r\n");
}

TEST(RawLineFile, OpeningAnewWritesWhatIsPending) {
  const TestFolder folder;
  RawLineFile file(folder.file("a.txt"));
  ASSERT_TRUE(file.openWrite());
  EXPECT_TRUE(file.writeLine("a"_text));
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(textsOf(file), Texts{"a"});
  ASSERT_TRUE(file.openWrite());
  ASSERT_TRUE(file.openWrite());
}

TEST(RawLineFile, DestructorWritesWhatIsPending) {
  const TestFolder folder;
  {
    RawLineFile file(folder.file("a.txt"));
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLine("a"_text));
  }
  EXPECT_EQ(folder.read("a.txt"), "a\r\n");
}

TEST(RawLineFile, OnlyAnOpenWriterWrites) {
  const TestFolder folder;
  RawLineFile file(folder.write("a.txt", "abc"));
  EXPECT_FALSE(file.writeLine("x"_text));
  ASSERT_TRUE(file.openRead());
  EXPECT_FALSE(file.writeLine("x"_text));
  EXPECT_FALSE(file.writeBytes("x", 1));
  EXPECT_EQ(textsOf(file), Texts{"abc"});
  file.close();
  EXPECT_EQ(file.state, RawLineFile::Closed);
  EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST(RawLineFile, LineEndsAreWrittenAsGiven) {
  const TestFolder folder;
  for (const int32_t encoding : allEncodings) {
    RawLineFile file(folder.file("a.txt"));
    file.lineEncoding = encoding;
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLineWithEnd("a"_text, "\r"_text));
    EXPECT_TRUE(file.writeLineWithEnd(RawString::fromWide(u"b"), RawString::fromWide(u"\n")));
    EXPECT_TRUE(file.writeLineWithEnd(RawString(), "\r\n"_text));
    EXPECT_TRUE(file.writeLineWithEnd("c"_text, RawString()));
    file.close();
    EXPECT_EQ(folder.read("a.txt"), inCode(encoding, "a\rb\n\r\nc"));
  }
}

namespace {

// Copies a file line by line without conversion, as a rewrite does.
void copyLines(const RawString& from, const RawString& to, int32_t bufferSize) {
  RawLineFile reader(from, bufferSize);
  RawLineFile writer(to, bufferSize);
  reader.options = RawLineFile::KeepEncoding;
  ASSERT_TRUE(reader.openRead());
  writer.lineEncoding = reader.record().fileEncoding;
  if (reader.record().markEncoding != 0) writer.options = RawLineFile::WriteMark;
  ASSERT_TRUE(writer.openWrite());
  for (;;) {
    const RawLineRecord& record = reader.nextLine();
    if (!record.valid) break;
    ASSERT_TRUE(writer.writeLineWithEnd(record.text, record.lineEnd));
  }
  reader.close();
  writer.close();
  EXPECT_EQ(reader.state, RawLineFile::Closed);
  EXPECT_EQ(writer.state, RawLineFile::Closed);
}

} // namespace

TEST(RawLineFile, CopyInTheOwnEncodingIsExact) {
  const TestFolder folder;
  const Texts files{
      "",
      "plain\r\nascii\rwith\nall\n\rends",
      "\xEF\xBB\xBFutf8 \xE3\x81\x82\r\n\xFF\xC0\x80 bad\n",
      "\xE3\x81\x82\r\n\x80\xFF bad\r",
      "\x82\xA0\r\n\x82\r\n\xA0\xFD\xFF bad \x82",
      "bin\x7F\xFF\r\n\n\r\x82",
      zeros("\xFF\xFE"
            "a\0\r\0\n\0\x00\xD8z\0\n\0\x00\xDC\r\0odd"),
      zeros("\xFE\xFF\0a\0\r\0\n\xD8\x00\0z\0\r\xDC"),
      zeros("a\0\r\0\n\0\x00\xD8z\0\n\0\x00\xDC\r\0odd"),
      zeros("\0a\0\r\0\n\xD8\x00\0z\0\r\xDC"),
      zeros("zero\0s\r\n\0\0\r\n"),
  };
  for (const string& data : files) {
    for (const int32_t bufferSize : {23, 64, 8192}) {
      copyLines(folder.write("a.txt", data), folder.file("b.txt"), bufferSize);
      EXPECT_EQ(folder.read("b.txt"), data) << bufferSize;
    }
  }
}

TEST(RawLineFile, LinesInTheOwnEncodingAreTaggedWithIt) {
  const TestFolder folder;
  for (const int32_t encoding : allEncodings) {
    RawLineFile file(folder.write("a.txt", inCode(encoding, "key=\xE8\xA1\xA8 x\r\n")));
    file.options = RawLineFile::KeepEncoding;
    ASSERT_TRUE(file.openRead());
    EXPECT_EQ(file.workEncoding, encoding);
    EXPECT_EQ(file.nextLine().text.encoding(), encoding);
    EXPECT_EQ(file.record().text.shareAs(EncodingUtf8), raw("key=\xE8\xA1\xA8 x"));
    EXPECT_EQ(file.record().lineEnd.encoding(), encoding);
  }
  RawLineFile ascii(folder.write("a.txt", "plain\r\n"));
  ascii.options = RawLineFile::KeepEncoding;
  ASSERT_TRUE(ascii.openRead());
  EXPECT_EQ(ascii.nextLine().text.encoding(), EncodingUtf8);
  RawLineFile binary(folder.write("a.txt", "\x7F\r\n"));
  binary.options = RawLineFile::KeepEncoding;
  ASSERT_TRUE(binary.openRead());
  EXPECT_EQ(binary.nextLine().text.encoding(), EncodingBinary);
}

TEST(RawLineFile, ReadOnlyFileIsRead) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  setReadOnly(path, true);
  EXPECT_EQ(readTexts(path), Texts{"abc"});
  setReadOnly(path, false);
}

TEST(RawLineFile, HugeFilesEndQuickly) {
  constexpr std::uintmax_t gigabyte = 1u << 30;
  const TestFolder folder;
  for (const string& start : {string(), string(20000, 'a'), string("\x82\xA0"), string("\x7F"),
                              string("\xF0\x9F\x98\x80 one\r\ntwo\r\n")}) {
    const RawString path = folder.write("a.txt", start);
    const std::filesystem::path native(reinterpret_cast<const char8_t*>(path.text()));
    std::error_code error;
    std::filesystem::resize_file(native, gigabyte, error);
    ASSERT_FALSE(error);
    const auto begin = std::chrono::steady_clock::now();
    RawLineFile file(path);
    if (file.openRead()) textsOf(file);
    EXPECT_EQ(file.state, RawLineFile::LineTooLong);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  }
}

namespace {

// Random lines of few characters with random ends, in UTF-8.
string randomText(std::mt19937& random, int32_t maximum) {
  static const Texts characters{
      "a", "b", "=", "[", " ", "\xE3\x81\x82", "\xE8\xA1\xA8", "\xEF\xBD\xB1", "\xE3\x82\xBD"};
  static const Texts ends{"\r\n", "\n", "\r", "\r\n"};
  string text = "a \xE8\xA1\xA8 a\r\n"; // enough to know every encoding by
  for (auto lines = random() % 30; lines > 0; --lines) {
    for (auto count = random() % static_cast<unsigned>(maximum + 1); count > 0; --count)
      text += characters[random() % characters.size()];
    text += ends[random() % ends.size()];
  }
  return random() % 2 == 0 ? text : text + "z";
}

void expectSameLines(const TestFolder& folder, const string& text, int32_t encoding, bool marked,
                     int32_t bufferSize) {
  const RawMark mark = marked ? markOf(encoding) : RawMark{"", 0};
  RawLineFile file(folder.write("a.txt", string(mark.bytes, static_cast<std::size_t>(mark.size)) +
                                             inCode(encoding, text)),
                   bufferSize);
  // A small block may hold too little to know the encoding by.
  if (!marked && bufferSize < 1024) file.sourceEncoding = encoding;
  ASSERT_TRUE(file.openRead());
  EXPECT_EQ(linesOf(file), LineReference::cut(text, EncodingUtf8))
      << "encoding " << encoding << ", mark " << marked << ", buffer " << bufferSize;
  EXPECT_EQ(file.record().fileEncoding, encoding);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::Closed);
}

void expectSameLines(const TestFolder& folder, std::mt19937& random) {
  for (const int32_t encoding : allEncodings)
    for (const bool marked : {false, true}) {
      if (marked && encoding == EncodingShiftJis) continue;
      for (const int32_t bufferSize : {23, 24, 31, 64, 100, 8192})
        expectSameLines(folder, randomText(random, bufferSize < 50 ? 4 : 12), encoding, marked,
                        bufferSize);
    }
}

} // namespace

TEST(RawLineFile, TinyBuffersGiveTheSameLines) {
  const TestFolder folder;
  std::mt19937 random(1);
  for (int round = 0; round < 30; ++round) expectSameLines(folder, random);
}

#ifndef _WIN32
TEST(RawLineFileHost, ShortReadsGiveTheSameLines) {
  const TestFolder folder;
  HostFaults::Scope faults;
  std::mt19937 random(2);
  for (const int32_t limit : {1, 2, 3, 5, 22}) {
    faults.limitReads(limit);
    for (int round = 0; round < 10; ++round) expectSameLines(folder, random);
  }
}

// Here only, for what stands under Wine as root may be written whatever its attributes say.
TEST(RawLineFileHost, ReadOnlyFileIsNotWritten) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", "abc");
  setReadOnly(path, true);
  RawLineFile file(path);
  EXPECT_FALSE(file.openWrite());
  EXPECT_EQ(file.state, RawLineFile::CannotWrite);
  EXPECT_EQ(folder.read("a.txt"), "abc");
}

TEST(RawLineFileHost, FailedReadIsNoEndOfTheFile) {
  const TestFolder folder;
  const RawString path = folder.write("a.txt", string(100, 'a') + "\r\n" + string(9000, '\n'));
  HostFaults::Scope faults;
  for (int32_t number = 1;; ++number) {
    faults.failNth(number, HostFaults::All);
    RawLineFile file(path);
    if (file.openRead()) textsOf(file);
    const bool reached = faults.calls() >= number;
    faults.failNone();
    file.close();
    EXPECT_EQ(file.state, reached ? RawLineFile::CannotRead : RawLineFile::Closed) << number;
    if (!reached) break;
    ASSERT_LT(number, 20);
  }
}

TEST(RawLineFileHost, FailedWriteStaysKnown) {
  const TestFolder folder;
  HostFaults::Scope faults;
  for (const uint32_t kind : {HostFaults::Write, HostFaults::Flush}) {
    RawLineFile file(folder.file("a.txt"));
    ASSERT_TRUE(file.openWrite());
    EXPECT_TRUE(file.writeLine("a"_text));
    faults.failAll(kind);
    file.close();
    EXPECT_EQ(file.state, RawLineFile::WriteFailed);
    faults.failNone();
  }
}

TEST(RawLineFileHost, NothingIsWrittenBehindAFault) {
  const TestFolder folder;
  HostFaults::Scope faults;
  RawLineFile file(folder.file("a.txt"), 16);
  ASSERT_TRUE(file.openWrite());
  faults.failNth(1, HostFaults::Write);
  EXPECT_FALSE(file.writeLine(raw(string(100, 'a'))));
  EXPECT_EQ(file.state, RawLineFile::WriteFailed);
  EXPECT_FALSE(file.writeLine("b"_text));
  EXPECT_FALSE(file.writeBytes("c", 1));
  file.close();
  EXPECT_EQ(file.state, RawLineFile::WriteFailed);
  EXPECT_EQ(folder.read("a.txt"), "");
  ASSERT_TRUE(file.openWrite()); // the next opening starts anew
  EXPECT_EQ(file.state, RawLineFile::Open);
}

TEST(RawLineFileHost, FailedConversionIsNotTakenForEmptyText) {
  const TestFolder folder;
  HostFaults::Scope faults;
  RawLineFile writer(folder.file("a.txt"));
  writer.lineEncoding = EncodingShiftJis;
  ASSERT_TRUE(writer.openWrite());
  faults.failAll(HostFaults::Conversion);
  EXPECT_FALSE(writer.writeLine(raw("\xE3\x81\x82")));
  EXPECT_EQ(writer.state, RawLineFile::WriteFailed);
  RawLineFile reader(folder.write("b.txt", "\x80\r\n")); // a byte that only the platform knows
  EXPECT_FALSE(reader.openRead());
  EXPECT_EQ(reader.state, RawLineFile::ConversionFailed);
  EXPECT_EQ(reader.record().fileEncoding, EncodingBinary);
}
#endif
