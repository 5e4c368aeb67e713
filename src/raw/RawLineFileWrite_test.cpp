#include "raw/RawLineFile.h"

#include "TestLines.h"
#include "raw/RawEncodings.h"

#include <gtest/gtest.h>

using namespace RawLayer;
using namespace TestLines;

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
