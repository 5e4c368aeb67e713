// Texts beside std::string, and sharing them beside a bare atomic count.

#include "Bench.h"
#include "raw/RawString.h"

#include <atomic>
#include <random>
#include <string>

using namespace RawLayer;

namespace {

// Words of lower case letters with blanks between, always the same ones.
std::string wordsOf(std::size_t size, uint32_t seed) {
  std::minstd_rand random(seed);
  std::string text;
  while (text.size() < size) {
    for (auto letters = 2 + random() % 8; letters > 0; --letters)
      text += static_cast<char>('a' + random() % 26);
    text += ' ';
  }
  text.resize(size);
  return text;
}

// Hiragana in UTF-8, always the same ones.
std::string kanaOf(std::size_t size, uint32_t seed) {
  std::minstd_rand random(seed);
  std::string text;
  while (text.size() + 3 <= size) {
    const auto character = 0x3041 + random() % 80;
    text += static_cast<char>(0xE0 | character >> 12);
    text += static_cast<char>(0x80 | (character >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (character & 0x3F));
  }
  return text;
}

RawString textOf(const std::string& bytes) {
  return RawString::fromChars(bytes.data(), static_cast<int32_t>(bytes.size()));
}

void benchCopy(const std::string& bytes) {
  const RawString text = textOf(bytes);
  std::atomic<int32_t> count{0};
  Bench::compare(
      "text copy", "atomic pair", 1.1, [&] { Bench::keep(RawString(text)); },
      [&] {
        count.fetch_add(1, std::memory_order_relaxed);
        Bench::keep(count);
        count.fetch_sub(1, std::memory_order_acq_rel);
      });
}

void benchCreate(const char* name, const std::string& bytes) {
  Bench::compare(
      name, "std::string", 1.0, [&] { Bench::keep(RawString::fromChars(bytes.c_str())); },
      [&] { Bench::keep(std::string(bytes.c_str())); });
}

void benchAppend(const char* name, const std::string& piece, int pieces) {
  const RawString part = textOf(piece);
  Bench::compare(
      name, "std::string", 1.0,
      [&] {
        RawString text;
        for (int i = 0; i < pieces; ++i) text.append(part);
        Bench::keep(text);
      },
      [&] {
        std::string text;
        for (int i = 0; i < pieces; ++i) text.append(piece);
        Bench::keep(text);
      });
}

void benchConcat(const std::string& bytes) {
  const RawString text = textOf(bytes);
  const RawString comma = textOf(", ");
  const std::string stdComma = ", ";
  Bench::compare(
      "text concat of five", "std::string", 1.0,
      [&] { Bench::keep(RawString::concat(text, comma, text, comma, text)); },
      [&] { Bench::keep(std::string(bytes + stdComma + bytes + stdComma + bytes)); });
}

void benchFind(const char* name, const std::string& bytes, const std::string& sought) {
  const RawString text = textOf(bytes);
  const RawString part = textOf(sought);
  Bench::compare(
      name, "std::string", 1.0, [&] { Bench::keep(text.find(part)); },
      [&] { Bench::keep(bytes.find(sought)); });
}

void benchFindChar(const char* name, const std::string& bytes, char sought) {
  const RawString text = textOf(bytes);
  Bench::compare(
      name, "std::string", 1.0,
      [&] { Bench::keep(text.findCharFrom(0, static_cast<uint8_t>(sought))); },
      [&] { Bench::keep(bytes.find(sought)); });
}

void benchCompare(const char* name, const std::string& bytes) {
  const RawString a = textOf(bytes);
  const RawString b = textOf(bytes);
  const std::string stdA = bytes;
  const std::string stdB = bytes;
  Bench::compare(
      name, "std::string", 1.0, [&] { Bench::keep(a.compare(b)); },
      [&] { Bench::keep(stdA.compare(stdB)); });
}

void benchEquals(const char* name, const std::string& bytes) {
  const RawString a = textOf(bytes);
  const RawString b = textOf(bytes);
  const std::string stdA = bytes;
  const std::string stdB = bytes;
  Bench::compare(
      name, "std::string", 1.0, [&] { Bench::keep(a.equals(b)); },
      [&] { Bench::keep(stdA == stdB); });
}

} // namespace

int main() {
  const std::string path = "C:\\Program Files\\Some Vendor\\Some Program\\program.exe";
  const std::string words = wordsOf(4096, 1);
  const std::string kana = kanaOf(4096, 2);

  benchCopy(path);
  benchCreate("text create, 11 bytes", "LButtonDown");
  benchCreate("text create, 52 bytes", path);
  benchCreate("text create, 4 KB", words);
  benchAppend("text append, 10 of 8 bytes", "12345678", 10);
  benchAppend("text append, 100 of 52 bytes", path, 100);
  benchConcat(path);
  benchFind("text find, 52 bytes", path, "program.exe");
  benchFind("text find, 4 KB of words", words, "zebra crossing");
  benchFind("text find, 4 KB of kana", kana, kanaOf(9, 7));
  benchFindChar("text findChar, 52 bytes", path, '.');
  benchFindChar("text findChar, 4 KB of words", words, '=');
  benchFindChar("text findChar, 4 KB of kana", kana, '=');
  benchCompare("text compare, 11 bytes", "LButtonDown");
  benchCompare("text compare, 52 bytes", path);
  benchCompare("text compare, 4 KB", words);
  benchEquals("text equals, 52 bytes", path);
}
