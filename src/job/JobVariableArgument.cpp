#include "job/JobVariableExpander.h"

#include "job/JobToolMessage.h"
#include "raw/RawNumber.h"

namespace JobLayer {

static constexpr int32_t OpeningLength = 2; // of "$("

bool JobVariableArgument::split(int32_t position) {
  return source.encoding() == RawLayer::EncodingWide ? splitUnits(source.wide(), position)
                                                     : splitUnits(source.text(), position);
}

// Most units are none, and are told by one look.
static bool isMark(uint32_t unit) {
  constexpr uint64_t marks = 1ULL << '$' | 1ULL << ')' | 1ULL << ':';
  return unit < 64 && (marks >> unit & 1) != 0;
}

template <class Unit>
bool JobVariableArgument::splitUnits(const Unit* units, int32_t position) {
  const int32_t length = source.length();
  int32_t depth = 0;
  Token token{{position + OpeningLength, 0}};
  for (int32_t i = token.range.start; i < length; ++i) {
    const Unit unit = units[i];
    if (!isMark(unit)) continue;
    if (unit == '$' && i + 1 < length && units[i + 1] == '(') {
      ++depth;
      token.holdsCall = true;
    } else if (unit == ')' && depth > 0) {
      --depth;
    } else if ((unit == ':' || unit == ')') && depth == 0) {
      token.range.end = i;
      addToken(token);
      token = {{i + 1, 0}};
      if (unit == ':') continue;
      range = {position, i + 1};
      return true;
    }
  }
  return false;
}

void JobVariableArgument::addToken(const Token& token) {
  if (tokenCount_ < FewTokens)
    few_[tokenCount_] = token;
  else
    more_.push_back(token);
  ++tokenCount_;
}

JobVariableArgument::Token JobVariableArgument::tokenAt(int32_t index) const {
  return index < FewTokens ? few_[index] : more_[static_cast<std::size_t>(index - FewTokens)];
}

RawString JobVariableArgument::get(int32_t index, int32_t flags) {
  if (index >= 0 && index < tokenCount_) {
    const Token token = tokenAt(index);
    RawString text = RawString::fromRange(source.encoding(), source, token.range);
    // A text without a call expands to itself.
    if (!token.holdsCall || (flags & Unexpanded) != 0) return text;
    return expander->expand(std::move(text)).text;
  }
  if ((flags & Optional) == 0) {
    reportError("TooFewVariableArguments"_text, callText());
    failure = VariableInvalid;
  }
  return RawString();
}

// The parser's own entry would take the prefixes 0x and 0b, and an empty text as 0.
static bool readDecimal(const RawString& text, int64_t& number) {
  const bool isNegative = text.at(0) == u'-';
  const RawRange digits{isNegative || text.at(0) == u'+' ? 1 : 0, text.length()};
  RawLayer::RawNumberParser parser;
  if (digits.isEmpty() || !parser.parseInBase(text, digits, 10)) return false;
  number = static_cast<int64_t>(isNegative ? 0 - parser.value : parser.value);
  return true;
}

int64_t JobVariableArgument::getNumber(int32_t index, int32_t flags) {
  const RawString text = get(index, flags);
  if (failure != 0) return 0;
  int64_t number = 0;
  const bool isNumber = readDecimal(text, number);
  if (isNumber && (number >= 0 || (flags & NotNegative) == 0)) return number;
  reportError(isNumber ? "OutOfRangeNumber"_text : "IncorrectNumberFormat"_text, text, callText());
  failure = VariableInvalid;
  return 0;
}

RawString JobVariableArgument::callText() const {
  return RawString::fromRange(source.encoding(), source, range);
}

RawString JobVariableArgument::ask(const RawString& variable) {
  JobVariableArgument call(*expander, RawString::concat("$("_text, variable, ")"_text));
  call.split(0);
  call.name = variable;
  return expander->evaluate(variable, call).text;
}

void JobVariableArgument::reportError(const RawString& key, const RawString& value,
                                      const RawString& script) {
  JobToolMessage::ReportVariableError(key, name, value, script);
}

} // namespace JobLayer
