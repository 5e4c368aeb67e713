// The functions on texts and on paths as texts. Positions and lengths count code units of the
// text's own encoding; none of these touches the disk.
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// Length:text
class JobVariableLength : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Body:path gives the file name without folder and extension.
class JobVariableBody : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// BodyEx:path gives the file name with its extension.
class JobVariableBodyEx : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Base:path gives the folder without its last separator; empty without a separator.
class JobVariableBaseFolder : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Extension:path gives what stands behind the last "." of the file name; empty without one.
class JobVariableExtension : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Before:text:n gives the first n units. A negative n is a fault, one past the end gives all.
class JobVariableBefore : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// After:text:n gives the units from n on. A negative n is a fault, one past the end gives nothing.
class JobVariableAfter : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Code:n gives the character with that Unicode number, in the encoding of the text that holds the
// call. A negative n is a fault; 0, a surrogate and what lies above 0x10FFFF give nothing.
class JobVariableCode : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// StripQuote:text removes all double quotes at the start and at the end.
class JobVariableStripQuote : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

// Replace:text:from:to, in exact case. Every search starts at the front again, so a `to` that
// contains `from` never ends. An empty `from` changes nothing.
class JobVariableReplace : public JobVariableUnit {
 public:
  using JobVariableUnit::JobVariableUnit;
  JobVariableResult evaluate(JobVariableArgument& argument) override;
};

} // namespace JobLayer
