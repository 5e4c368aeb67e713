// Calc: integer arithmetic on a text, in signed 32 bits with wrap-around.
//
// Blanks and control characters part the tokens; "(" and ")" are tokens by themselves, a run of
// ASCII letters and digits is one, a run of any other characters is one. So "1+-2" holds the
// operator "+-", which is none, and "-1" is two tokens: a negative number cannot be written.
// Operands are decimal digits of which the low 32 bits count. A lone token is the result as it
// stands, number or not. All else that cannot be computed is a fault without words.
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// The arithmetic by itself; false, with `result` unchanged, on a fault. Any text, any thread. The
// cost grows with the length alone, however the brackets stand.
bool calculate(const RawString& expression, RawString& result);

// Calc:expression
class JobVariableCalc : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

} // namespace JobLayer
