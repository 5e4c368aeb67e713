// The functions of truth and choice. Their truths are the words "True" and "False".
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// Not:text
class JobVariableNot : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Equal:a:b, in exact case. Both texts are read in any case.
class JobVariableIsEqual : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// EqualNoCase:a:b, folding ASCII letters.
class JobVariableIsEqualNoCase : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// The comparisons of two signed 64-bit numbers: what differs is `holds`.
class JobVariableNumberTest : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;

 protected:
  [[nodiscard]] virtual bool holds(int64_t a, int64_t b) const = 0;
};
class JobVariableIsSmall : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a < b; }
};
class JobVariableIsLarge : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a > b; }
};
class JobVariableIsSmallEqual : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a <= b; }
};
class JobVariableIsLargeEqual : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a >= b; }
};
class JobVariableIsNumberEqual : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a == b; }
};
class JobVariableIsNumberNotEqual : public JobVariableNumberTest {
  using JobVariableNumberTest::JobVariableNumberTest;
  [[nodiscard]] bool holds(int64_t a, int64_t b) const override { return a != b; }
};

// &&:text:... reads up to the first false text.
class JobVariableLogicAnd : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// ||:text:... reads up to the first true text.
class JobVariableLogicOr : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// IsDefined:name, built-ins included.
class JobVariableIsDefined : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Cond:test:then:else reads only the branch that it takes.
class JobVariableCond : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// CondDef:name:then:else, with the test whether the name is defined.
class JobVariableCondDef : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// IsKey:word:... tells whether every word is a part of the variable "KeyState", folding ASCII
// letters. An empty word is a part of every text.
class JobVariableIsKey : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

} // namespace JobLayer
