// JobCommandUnit: base of all commands. A command reads its own values from its block, expands
// them at that moment with its own pair as the caller, and returns true to go on and false to stop
// the enclosing list. Commands are static objects with a fixed keyword. Main thread only.
#pragma once

#include "job/JobExecutorPair.h"
#include "job/JobParam.h"

namespace JobLayer {

class JobCommandList;

// How a block runs its inner list.
class JobParamExecutor {
 public:
  virtual ~JobParamExecutor() = default;
  virtual bool Execute(const JobParamList& list, const JobExecutorPair& executor) = 0;
};

class JobCommandUnit {
 public:
  RawString keyword;
  JobCommandList* executor = nullptr; // set by the table that the command stands in

  explicit JobCommandUnit(const RawString& word) : keyword(word) {}
  virtual bool Execute(const JobParamList& params, const JobExecutorPair& caller) = 0;

 protected:
  ~JobCommandUnit() = default;
};

// With the ways to read a value that commands share.
class JobCommandUnitEx : public JobCommandUnit {
 protected:
  using JobCommandUnit::JobCommandUnit;
  ~JobCommandUnitEx() = default;

  // Expanded text of the first entry with the key; empty when missing or a block. Stores the state.
  static RawString optionalValue(const JobParamList& params, const RawString& key,
                                 const JobExecutorPair& caller);
  // The same; reports a missing or empty value in the name of this command and gives empty then.
  RawString requiredValue(const JobParamList& params, const RawString& key,
                          const JobExecutorPair& caller) const;
  // Whether the last expansion ended in anything but Success; its report was shown.
  static bool expansionFailed();
  static RawString expandText(const RawString& text, const JobExecutorPair& caller);
  static void setVariable(const RawString& name, const RawString& value);
  // Sets the variables named by the text entries of the block, but for the key `except`, to their
  // values as they stand.
  static void setVariables(const JobParamList& params, const RawString& except);
  // The signed 32-bit number in the text, by the general parser; false when it is none.
  static bool readNumber(const RawString& text, int32_t& number);
};

} // namespace JobLayer
