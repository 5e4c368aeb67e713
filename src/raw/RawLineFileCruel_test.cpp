#include "raw/RawLineFile.h"

#include "TestLines.h"
#include "raw/RawEncodings.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <chrono>
#include <random>

using namespace RawLayer;
using namespace TestLines;

// Files that want to be trouble: small buffers, short reads, faults, huge and read-only files.

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
