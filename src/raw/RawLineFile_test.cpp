#include "raw/RawLineFile.h"

#include "TestLines.h"
#include "raw/RawEncodings.h"

#include <gtest/gtest.h>

using namespace RawLayer;
using namespace TestLines;

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
