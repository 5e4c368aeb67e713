#include "job/JobVariableExpander.h"

#include "job/JobToolMessage.h"
#include "raw/RawNumber.h"

namespace JobLayer {

RawString JobVariableArgument::get(int32_t index, int32_t flags) {
  const RawString* const token = RawLayer::RawStringList::element(tokens.nodeAt(index));
  if (token != nullptr) return (flags & Unexpanded) != 0 ? *token : expander->expand(*token).text;
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
  call.range = call.source.all();
  call.tokens.add(variable);
  return expander->evaluate(variable, call).text;
}

void JobVariableArgument::reportError(const RawString& key, const RawString& value,
                                      const RawString& script) {
  JobToolMessage::ReportVariableError(key, name, value, script);
}

} // namespace JobLayer
