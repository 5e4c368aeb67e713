#include "job/JobVariableLogic.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"
#include "raw/RawStringList.h"

namespace JobLayer {

JobVariableResult JobVariableNot::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(!isTrueText(text));
}

JobVariableResult JobVariableIsEqual::evaluate(JobVariableArgument& argument) {
  const RawString a = argument.get(1);
  const RawString b = argument.get(2);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(a.equals(b));
}

JobVariableResult JobVariableIsEqualNoCase::evaluate(JobVariableArgument& argument) {
  const RawString a = argument.get(1);
  const RawString b = argument.get(2);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(a.equalsNoCase(b));
}

JobVariableResult JobVariableNumberTest::evaluate(JobVariableArgument& argument) {
  const int64_t a = argument.getNumber(1);
  const int64_t b = argument.getNumber(2);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(holds(a, b));
}

// Whether one of the arguments tests as `wanted`; those behind it are not read.
static bool hasArgument(JobVariableArgument& argument, bool wanted) {
  for (int32_t i = 1; i <= argument.argumentCount(); ++i)
    if (isTrueText(argument.get(i)) == wanted) return true;
  return false;
}

JobVariableResult JobVariableLogicAnd::evaluate(JobVariableArgument& argument) {
  return variableTruth(!hasArgument(argument, false));
}

JobVariableResult JobVariableLogicOr::evaluate(JobVariableArgument& argument) {
  return variableTruth(hasArgument(argument, true));
}

JobVariableResult JobVariableIsDefined::evaluate(JobVariableArgument& argument) {
  const RawString variable = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(argument.expander->isDefined(variable));
}

static JobVariableResult branch(JobVariableArgument& argument, bool test) {
  RawString text = argument.get(test ? 2 : 3);
  if (argument.failure != 0) return argument.fault();
  return variableText(std::move(text));
}

JobVariableResult JobVariableCond::evaluate(JobVariableArgument& argument) {
  const RawString test = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return branch(argument, isTrueText(test));
}

JobVariableResult JobVariableCondDef::evaluate(JobVariableArgument& argument) {
  const RawString variable = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return branch(argument, argument.expander->isDefined(variable));
}

static bool containsNoCase(const RawString& text, const RawString& part) {
  for (int32_t i = 0; i + part.length() <= text.length(); i += 1 + text.extraUnits(i))
    if (text.startsWithAt(i, part, part.length())) return true;
  return false;
}

JobVariableResult JobVariableIsKey::evaluate(JobVariableArgument& argument) {
  RawLayer::RawStringList words;
  for (int32_t i = 1; i <= argument.argumentCount(); ++i) words.add(argument.get(i));
  const RawString keys = argument.ask("KeyState"_text);
  for (const RawString& word : words.elements())
    if (!containsNoCase(keys, word)) return variableTruth(false);
  return variableTruth(true);
}

} // namespace JobLayer
