// Text files in tests: all lines of a file as bytes, texts in other encodings.
#pragma once

#include "LineReference.h"
#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawLineFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TestLines {

using namespace RawLayer;
using std::string;
using Line = LineReference::Line;
using Texts = std::vector<string>;

// The units of a text as they stand in memory.
inline string unitsOf(const RawString& text) {
  if (text.encoding() != EncodingWide) return bytesOf(text);
  return {reinterpret_cast<const char*>(text.wide()), static_cast<std::size_t>(text.length()) * 2};
}
inline std::vector<Line> linesOf(RawLineFile& file) {
  std::vector<Line> lines;
  for (;;) {
    const RawLineRecord& record = file.nextLine();
    if (!record.valid) return lines;
    EXPECT_EQ(record.lineNumber, static_cast<int32_t>(lines.size()));
    lines.push_back({unitsOf(record.text), unitsOf(record.lineEnd)});
  }
}
inline Texts textsOf(RawLineFile& file) {
  Texts texts;
  for (Line& line : linesOf(file)) texts.push_back(std::move(line.text));
  return texts;
}
inline Texts readTexts(const RawString& path) {
  RawLineFile file(path);
  EXPECT_TRUE(file.openRead());
  return textsOf(file);
}
// The bytes of a UTF-8 text in another code.
inline string inCode(int32_t encoding, const string& utf8) {
  return unitsOf(raw(utf8).shareAs(encoding));
}

inline void setReadOnly(const RawString& path, bool readOnly) {
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

inline constexpr int32_t allEncodings[] = {EncodingShiftJis, EncodingUtf8, EncodingUtf16Be,
                                           EncodingUtf16Le};

} // namespace TestLines
