// The built-in functions of the $(...) syntax, in the order of lookups, and what they share.
//
// A built-in is an entry of the table whose `evaluate` reads its arguments through
// JobVariableArgument (so they are expanded when they are read, and not before) and computes its
// text. A fault in an argument is answered by `JobVariableArgument::fault`. The classes keep no
// state of their own; they run on the thread of the script.
//
// A new function is a class beside its kin (JobVariableLogic.h, JobVariableText.h,
// JobVariableCalc.h, JobVariableSystem.h) and a row of the table in the source.
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// Appends one entry for each built-in.
void appendBuiltInVariables(JobVariableList& table);

// State Success with a text.
inline JobVariableResult variableText(RawString text) {
  return {VariableSuccess, std::move(text)};
}
inline JobVariableResult variableTruth(bool flag) {
  return {VariableSuccess, RawString::fromBool(flag)};
}
inline JobVariableResult variableNumber(int64_t number) {
  return {VariableSuccess, RawString::fromInt64(number)};
}

} // namespace JobLayer
