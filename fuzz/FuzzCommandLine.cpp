// Bytes as a command line, as a text with commas and as a profile line: each reader against a plain
// one. Where the bytes are no ASCII a reader steps over whole characters, which the plain ones do
// not; then only what holds for every text is asked.
//
// Input: how to read, then the text.

#include "TestText.h"
#include "raw/RawParameterList.h"
#include "raw/RawStringTokenizer.h"
#include "raw/RawSystem.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

using namespace RawLayer;
using std::string;
using Pairs = std::vector<std::pair<string, string>>;

namespace {

enum How : uint8_t {
  AsciiOnly = 0x01,
  Quotes = 0x02,
  OneToken = 0x04,
  Nesting = 0x08,
  Trim = 0x10,
  AnyCaseFlags = 0x20,
};

const string lineSpaces = " \t\r\n";

void require(bool holds) {
  if (!holds) std::abort();
}

Pairs pairsOf(const RawParameterList& list) {
  Pairs pairs;
  for (const RawParameterUnit& unit : list.elements())
    pairs.emplace_back(bytesOf(unit.key), bytesOf(unit.value));
  return pairs;
}

void dropSpace(string& text) {
  text.erase(0, text.find_first_not_of(lineSpaces));
}

// The plain command line: every step shortens the text.
string takeToken(string& text) {
  string token;
  if (!text.empty() && text[0] == '"') {
    const std::size_t close = text.find('"', 1);
    token = text.substr(1, close == string::npos ? close : close - 1);
    text.erase(0, close == string::npos ? close : close + 1);
  } else if (!text.empty() && text[0] != '-') {
    token = text.substr(0, text.find_first_of(lineSpaces));
    text.erase(0, token.size());
  }
  dropSpace(text);
  return token;
}

Pairs plainCommandLine(string text, bool anyCase) {
  Pairs pairs;
  int unnamed = 0;
  for (dropSpace(text); !text.empty();) {
    if (text[0] != '-') {
      pairs.emplace_back("NoTag_" + std::to_string(++unnamed), takeToken(text));
      continue;
    }
    text.erase(0, 1);
    const string key = takeToken(text);
    const bool valueless = key.empty() || key == "h" || (anyCase && key == "H");
    pairs.emplace_back(key, valueless ? string() : takeToken(text));
  }
  return pairs;
}

string plainWithoutProgram(string text) {
  dropSpace(text);
  bool quoted = false;
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == '"') quoted = !quoted;
    if (!quoted && lineSpaces.find(text[at]) != string::npos) break;
  }
  text.erase(0, at);
  dropSpace(text);
  return text;
}

void checkCommandLine(const string& bytes, uint8_t how) {
  RawStringList flags;
  flags.caseSensitive = (how & AnyCaseFlags) == 0;
  flags.add("h"_text);
  RawParameterList list;
  list.fromCommandLine(raw(bytes), flags);
  const RawString rest = stripProgramName(raw(bytes));
  require(!rest.isOneOf(0, RawString::lineSpace()));
  require(bytes.ends_with(bytesOf(rest)));
  if ((how & AsciiOnly) == 0) return;
  require(pairsOf(list) == plainCommandLine(bytes, (how & AnyCaseFlags) != 0));
  require(bytesOf(rest) == plainWithoutProgram(bytes));
}

// The plain tokenizer, with "(" and ")" for nesting.
std::vector<string> plainTokens(const string& text, uint8_t how) {
  std::vector<string> tokens;
  if (text.empty()) return tokens;
  tokens.emplace_back();
  bool quoted = false;
  int depth = 0;
  for (const char unit : text) {
    if (depth > 0) {
      depth += unit == '(' ? 1 : unit == ')' ? -1 : 0;
    } else if (unit == '"' && (how & Quotes)) {
      quoted = !quoted;
    } else if (!quoted && unit == ',') {
      if (how & OneToken) return tokens;
      tokens.emplace_back();
      continue;
    } else if (!quoted && unit == '(' && (how & Nesting)) {
      ++depth;
    }
    tokens.back() += unit;
  }
  return tokens;
}

void checkTokens(const string& bytes, uint8_t how) {
  RawStringTokenizer tokenizer(raw(bytes));
  if (how & Quotes) tokenizer.flags |= RawStringTokenizer::ProtectQuoted;
  if (how & OneToken) tokenizer.flags |= RawStringTokenizer::LastToken;
  if (how & Nesting) {
    tokenizer.open = "("_text;
    tokenizer.close = ")"_text;
  }
  std::vector<string> tokens;
  int32_t least = 0;
  while (!(tokenizer.flags & RawStringTokenizer::Finished)) {
    const RawRange token = tokenizer.next();
    require(token.start >= least && token.end >= token.start);
    require(token.end <= tokenizer.source.length());
    least = token.end + 1;
    tokens.push_back(bytes.substr(static_cast<std::size_t>(token.start),
                                  static_cast<std::size_t>(token.size())));
    const RawRange inner = tokenizer.unquote(token);
    require(inner.start >= token.start && inner.end <= token.end && inner.end >= inner.start);
  }
  if (how & AsciiOnly) require(tokens == plainTokens(bytes, how));
}

string trimmed(const string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == string::npos ? string()
                               : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

void checkLine(const string& bytes, uint8_t how) {
  const RawString line = raw(bytes);
  RawParameterList list;
  list.parseLine(line, line.all(), (how & Trim) ? RawString::whiteSpace() : RawString());
  list.parseNumbers();
  if ((how & AsciiOnly) == 0) return;
  Pairs plain;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t stop = std::min(bytes.find('\0', start), bytes.size());
    const string item = bytes.substr(start, stop - start);
    start = stop + 1;
    if (item.empty()) continue;
    const std::size_t equals = std::min(item.find('='), item.size());
    const string key = item.substr(0, equals);
    const string value = equals < item.size() ? item.substr(equals + 1) : string();
    if (how & Trim)
      plain.emplace_back(trimmed(key), trimmed(value));
    else
      plain.emplace_back(key, value);
  }
  require(pairsOf(list) == plain);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const uint8_t how = data[0];
  string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  if (how & AsciiOnly)
    for (char& unit : bytes) unit = static_cast<char>(unit & 0x7F);
  checkCommandLine(bytes, how);
  checkTokens(bytes, how);
  checkLine(bytes, how);
  return 0;
}
