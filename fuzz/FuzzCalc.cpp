// Arithmetic: `calculate` beside a plain evaluator that works on lists of texts, in long numbers.
//
// An odd first byte takes each byte for a letter of a small alphabet that means something here; the
// expression is the rest.
#include "job/JobVariableCalc.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

using namespace JobLayer;

namespace {

constexpr std::size_t LongestForReference = 400; // bytes; its cost grows with their square

constexpr char Alphabet[] = "0123456789+-*/%<>=!&|^()() \t99a";

using Tokens = std::vector<std::string>;

enum class Class { Space, Bracket, Word, Sign };

Class classOf(char byte) {
  const auto unit = static_cast<unsigned char>(byte);
  if (unit <= 32 || unit == 127) return Class::Space;
  if (byte == '(' || byte == ')') return Class::Bracket;
  const bool word =
      (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  return word ? Class::Word : Class::Sign;
}

Tokens tokensOf(const std::string& text) {
  Tokens tokens;
  Class last = Class::Space;
  for (const char byte : text) {
    const Class now = classOf(byte);
    if (now != Class::Space) {
      if (now != last || now == Class::Bracket) tokens.emplace_back();
      tokens.back() += byte;
    }
    last = now;
  }
  return tokens;
}

int strengthOf(const std::string& sign) {
  static const std::vector<Tokens> levels = {
      {"||"},       {"&&"},     {"|"},          {"^"}, {"&"}, {"==", "!="}, {"<", ">", "<=", ">="},
      {"<<", ">>"}, {"+", "-"}, {"*", "/", "%"}};
  for (std::size_t level = 0; level < levels.size(); ++level)
    for (const std::string& each : levels[level])
      if (each == sign) return static_cast<int>(level) + 1;
  return 0;
}

// A value of 32 bits, out of any number of bits.
long long wrapped(long long value) {
  const long long low = value & 0xFFFFFFFFLL;
  return low > 0x7FFFFFFFLL ? low - 0x100000000LL : low;
}

// A token is a run of digits, or what this evaluator itself wrote, which may have a sign.
std::optional<long long> numberOf(const std::string& token) {
  const bool negative = token.size() > 1 && token[0] == '-';
  long long value = 0;
  for (std::size_t i = negative ? 1 : 0; i < token.size(); ++i) {
    if (token[i] < '0' || token[i] > '9') return std::nullopt;
    value = wrapped(value * 10 + (token[i] - '0'));
  }
  return wrapped(negative ? -value : value);
}

std::optional<long long> computed(long long a, const std::string& sign, long long b) {
  if ((sign == "/" || sign == "%") && b == 0) return std::nullopt;
  if (sign == "*") return a * b;
  if (sign == "/") return a / b;
  if (sign == "%") return a % b;
  if (sign == "+") return a + b;
  if (sign == "-") return a - b;
  if (sign == "<<") return a * (1LL << (b & 31));
  if (sign == ">>") return a >> (b & 31);
  if (sign == "<") return a < b;
  if (sign == ">") return a > b;
  if (sign == "<=") return a <= b;
  if (sign == ">=") return a >= b;
  if (sign == "==") return a == b;
  if (sign == "!=") return a != b;
  if (sign == "&") return a & b;
  if (sign == "^") return a ^ b;
  if (sign == "|") return a | b;
  if (sign == "&&") return a != 0 && b != 0;
  if (sign == "||") return a != 0 || b != 0;
  return std::nullopt;
}

// A list without brackets, to one token.
std::optional<std::string> reduced(Tokens list) {
  while (list.size() > 1) {
    if (list.size() == 2) return std::nullopt;
    const int strength = strengthOf(list[1]);
    if (strength == 0) return std::nullopt;
    if (list.size() > 3 && strengthOf(list[3]) > strength) {
      std::size_t end = 3;
      while (end < list.size() && strengthOf(list[end]) > strength) end += 2;
      end = end < list.size() ? end : list.size();
      const auto from = list.begin() + 2;
      const auto to = list.begin() + static_cast<std::ptrdiff_t>(end);
      const std::optional<std::string> tighter = reduced(Tokens(from, to));
      if (!tighter) return std::nullopt;
      list.erase(from + 1, to);
      list[2] = *tighter;
      continue;
    }
    const auto a = numberOf(list[0]);
    const auto b = numberOf(list[2]);
    if (!a || !b) return std::nullopt;
    const auto value = computed(*a, list[1], *b);
    if (!value) return std::nullopt;
    list.erase(list.begin(), list.begin() + 2);
    list[0] = std::to_string(wrapped(*value));
  }
  if (list.empty()) return std::nullopt;
  return list[0];
}

std::optional<std::string> evaluated(Tokens list) {
  for (std::size_t open = 0; open < list.size();) {
    if (list[open] != "(") {
      ++open;
      continue;
    }
    std::size_t close = open + 1;
    for (int depth = 1; close < list.size(); ++close) {
      if (list[close] == "(") ++depth;
      if (list[close] == ")" && --depth == 0) break;
    }
    if (close == list.size()) return std::nullopt;
    const auto from = list.begin() + static_cast<std::ptrdiff_t>(open);
    const auto to = list.begin() + static_cast<std::ptrdiff_t>(close);
    const std::optional<std::string> inner = evaluated(Tokens(from + 1, to));
    if (!inner) return std::nullopt;
    list.erase(from, to);
    list[open++] = *inner;
  }
  for (const std::string& token : list)
    if (token == ")") return std::nullopt;
  return reduced(std::move(list));
}

void fail(const std::string& expression, const char* what) {
  std::fprintf(stderr, "%s: \"%s\"\n", what, expression.c_str());
  std::abort();
}

void check(const std::string& expression, const RawString& text) {
  const std::optional<std::string> expected = evaluated(tokensOf(expression));
  RawString result;
  const bool succeeded = calculate(text, result);
  if (succeeded != expected.has_value()) fail(expression, "another outcome");
  if (!succeeded) return;
  const RawString wanted =
      RawString::fromChars(expected->data(), static_cast<int32_t>(expected->size()));
  if (!result.equals(wanted)) fail(expression, "another result");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::string expression(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] % 2 != 0)
    for (char& byte : expression)
      byte = Alphabet[static_cast<unsigned char>(byte) % (sizeof Alphabet - 1)];
  const RawString text =
      RawString::fromChars(expression.data(), static_cast<int32_t>(expression.size()));
  RawString result;
  calculate(text, result);
  if (expression.size() > LongestForReference) return 0;
  check(expression, text);
  bool isAscii = true;
  for (const char byte : expression) isAscii = isAscii && static_cast<unsigned char>(byte) < 0x80;
  if (isAscii) check(expression, text.shareAs(RawLayer::EncodingWide));
  return 0;
}
