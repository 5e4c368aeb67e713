// JobExecutionRecord: the Begin and End bracket of one run in the log. A small value on the stack
// of whoever runs something; the destructor closes it.
#pragma once

#include "job/JobExecutorPair.h"

namespace JobLayer {

class JobExecutionRecord {
 public:
  // Opens the record of a run or a variable call: active with the log category "U".
  JobExecutionRecord(const JobExecutorPair& user, const JobExecutorPair& executor,
                     const RawString& title);
  // Opens the record of a command: active with "C", carries the summary with "P".
  JobExecutionRecord(const JobExecutorPair& user, const JobExecutorPair& executor,
                     const RawString& title, const RawString& summary);
  ~JobExecutionRecord();
  JobExecutionRecord(const JobExecutionRecord&) = delete;
  JobExecutionRecord& operator=(const JobExecutionRecord&) = delete;

  // Whether runs and variable calls are logged at all, so that a caller can spare their texts.
  static bool logsRuns() { return JobFacts::instance().logCategories.containsChar(u'U'); }

  void setResult(const RawString& text);
  void setResult(bool success); // "Success" or "Failed"
  void close();                 // once; later calls do nothing

 private:
  void open(const RawString& prefix, const RawString& detail);
  bool active_ = false;
  JobExecutorPair user_;
  JobExecutorPair executor_;
  RawString title_;
  RawString detail_;
  RawString result_;
};

} // namespace JobLayer
