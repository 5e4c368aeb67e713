// Tokens are read from left to right onto a stack; a ")" reduces what lies above its "(" to one
// token. So brackets nest to any depth without recursion, and only operators of ever greater
// strength recurse. A bracket around a lone operator gives that operator, as it stands.
#include "job/JobVariableCalc.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"

#include <vector>

namespace JobLayer {

static int32_t wrap(uint32_t value) {
  return static_cast<int32_t>(value);
}
static uint32_t bits(int32_t value) {
  return static_cast<uint32_t>(value);
}
// The platform's own division traps where the quotient is one too large.
static int32_t quotient(int32_t a, int32_t b) {
  return b == -1 ? wrap(0 - bits(a)) : a / b;
}
static constexpr int32_t ShiftMask = 31;

struct Operator {
  const char* symbol;
  int32_t strength;
  bool divides; // the second operand must not be 0
  int32_t (*compute)(int32_t a, int32_t b);
};

static constexpr Operator operators[] = {
    {"*", 10, false, [](int32_t a, int32_t b) { return wrap(bits(a) * bits(b)); }},
    {"/", 10, true, quotient},
    {"%", 10, true, [](int32_t a, int32_t b) { return b == -1 ? 0 : a % b; }},
    {"+", 9, false, [](int32_t a, int32_t b) { return wrap(bits(a) + bits(b)); }},
    {"-", 9, false, [](int32_t a, int32_t b) { return wrap(bits(a) - bits(b)); }},
    {"<<", 8, false, [](int32_t a, int32_t b) { return wrap(bits(a) << (b & ShiftMask)); }},
    {">>", 8, false, [](int32_t a, int32_t b) { return a >> (b & ShiftMask); }},
    {"<", 7, false, [](int32_t a, int32_t b) { return int32_t{a < b}; }},
    {">", 7, false, [](int32_t a, int32_t b) { return int32_t{a > b}; }},
    {"<=", 7, false, [](int32_t a, int32_t b) { return int32_t{a <= b}; }},
    {">=", 7, false, [](int32_t a, int32_t b) { return int32_t{a >= b}; }},
    {"==", 6, false, [](int32_t a, int32_t b) { return int32_t{a == b}; }},
    {"!=", 6, false, [](int32_t a, int32_t b) { return int32_t{a != b}; }},
    {"&", 5, false, [](int32_t a, int32_t b) { return a & b; }},
    {"^", 4, false, [](int32_t a, int32_t b) { return a ^ b; }},
    {"|", 3, false, [](int32_t a, int32_t b) { return a | b; }},
    {"&&", 2, false, [](int32_t a, int32_t b) { return int32_t{a != 0 && b != 0}; }},
    {"||", 1, false, [](int32_t a, int32_t b) { return int32_t{a != 0 || b != 0}; }},
};

namespace {

struct Token {
  RawRange written;        // in the expression, unless computed
  int32_t value = 0;       // when computed
  bool isComputed = false; // the outcome of an operation
};

class Calculator {
 public:
  explicit Calculator(const RawString& expression) : text_(expression) { tokens_.reserve(16); }
  bool run(RawString& result);

 private:
  enum Class { Space, Bracket, Word, Sign };
  [[nodiscard]] uint16_t unit(int32_t i) const;
  [[nodiscard]] Class classOf(int32_t i) const;
  [[nodiscard]] RawRange nextToken(int32_t position) const;
  bool add(RawRange written);
  bool reduceFrom(std::size_t first);
  bool reduceTighter(std::size_t& next, int32_t strength, Token& result) const;
  bool apply(const Operator& operation, Token& left, const Token& right) const;
  [[nodiscard]] const Operator* operatorAt(const Token& token) const;
  bool readOperand(const Token& token, int32_t& value) const;

  const RawString& text_;
  const bool isWide_ = text_.encoding() == RawLayer::EncodingWide;
  const char* const bytes_ = isWide_ ? nullptr : text_.text();
  const char16_t* const wide_ = isWide_ ? text_.wide() : nullptr;
  std::vector<Token> tokens_;
  std::vector<std::size_t> brackets_; // for each open "(", how many tokens lie below it
};

uint16_t Calculator::unit(int32_t i) const {
  return isWide_ ? static_cast<uint16_t>(wide_[i]) : static_cast<unsigned char>(bytes_[i]);
}

Calculator::Class Calculator::classOf(int32_t i) const {
  const uint16_t u = unit(i);
  if (u <= u' ' || u == 127) return Space;
  if (u == u'(' || u == u')') return Bracket;
  const uint16_t letter = RawLayer::rawFold(u);
  const bool isWord = (u >= u'0' && u <= u'9') || (letter >= u'A' && letter <= u'Z');
  return isWord ? Word : Sign;
}

// The first token at or behind `position`; empty at the end of the text.
RawRange Calculator::nextToken(int32_t position) const {
  const int32_t length = text_.length();
  int32_t start = position;
  while (start < length && classOf(start) == Space) ++start;
  if (start == length) return {length, length};
  const Class kind = classOf(start);
  int32_t end = start + 1;
  while (kind != Bracket && end < length && classOf(end) == kind) ++end;
  return {start, end};
}

bool Calculator::run(RawString& result) {
  for (RawRange token = nextToken(0); !token.isEmpty(); token = nextToken(token.end))
    if (!add(token)) return false;
  if (!brackets_.empty() || !reduceFrom(0)) return false;
  const Token& last = tokens_.front();
  result = last.isComputed ? RawString::fromInt64(last.value)
                           : RawString::fromRange(text_.encoding(), text_, last.written);
  return true;
}

bool Calculator::add(RawRange written) {
  const uint16_t first = unit(written.start);
  if (first == u'(') {
    brackets_.push_back(tokens_.size());
  } else if (first == u')') {
    if (brackets_.empty() || !reduceFrom(brackets_.back())) return false;
    brackets_.pop_back();
  } else {
    tokens_.push_back({written});
  }
  return true;
}

// Puts one token in the place of all from `first` on.
bool Calculator::reduceFrom(std::size_t first) {
  if (first == tokens_.size()) return false;
  Token result;
  std::size_t next = first;
  if (!reduceTighter(next, 0, result)) return false;
  tokens_.resize(first + 1);
  tokens_[first] = result;
  return true;
}

// Reduces the tokens from `next` on for as long as their operators bind tighter than `strength`.
bool Calculator::reduceTighter(std::size_t& next, int32_t strength, Token& result) const {
  result = tokens_[next++];
  while (next < tokens_.size()) {
    const Operator* const operation = operatorAt(tokens_[next]);
    if (operation == nullptr) return false;
    if (operation->strength <= strength) return true;
    Token right;
    if (++next == tokens_.size() || !reduceTighter(next, operation->strength, right) ||
        !apply(*operation, result, right))
      return false;
  }
  return true;
}

bool Calculator::apply(const Operator& operation, Token& left, const Token& right) const {
  int32_t a = 0;
  int32_t b = 0;
  if (!readOperand(left, a) || !readOperand(right, b) || (operation.divides && b == 0))
    return false;
  left.value = operation.compute(a, b);
  left.isComputed = true;
  return true;
}

const Operator* Calculator::operatorAt(const Token& token) const {
  if (token.isComputed || token.written.size() > 2) return nullptr;
  const uint16_t first = unit(token.written.start);
  const uint16_t second = token.written.size() == 2 ? unit(token.written.start + 1) : 0;
  for (const Operator& each : operators)
    if (each.symbol[0] == first && each.symbol[1] == second) return &each;
  return nullptr;
}

bool Calculator::readOperand(const Token& token, int32_t& value) const {
  uint32_t number = bits(token.value);
  if (!token.isComputed)
    for (int32_t i = token.written.start; i < token.written.end; ++i) {
      const uint16_t digit = unit(i);
      if (digit < u'0' || digit > u'9') return false;
      number = number * 10 + (digit - u'0');
    }
  value = wrap(number);
  return true;
}

} // namespace

bool calculate(const RawString& expression, RawString& result) {
  return Calculator(expression).run(result);
}

JobVariableResult JobVariableCalc::evaluate(JobVariableArgument& argument) {
  const RawString expression = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  RawString result;
  if (!calculate(expression, result)) return {VariableInvalid, RawString()};
  return variableText(std::move(result));
}

} // namespace JobLayer
