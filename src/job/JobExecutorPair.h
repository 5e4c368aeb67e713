// JobExecutorPair: who runs something, as the log and the commands name it. A plain value.
#pragma once

#include "job/JobFacts.h"

namespace JobLayer {

struct JobExecutorPair {
  RawString name;
  int32_t number = 0;

  // The name alone when the number is 0, else "name#number".
  [[nodiscard]] RawString text() const;

  static const JobExecutorPair& executor();
  static const JobExecutorPair& user();
  static const JobExecutorPair& system();
  static JobExecutorPair command(int32_t number);
  static JobExecutorPair variable(int32_t number);
};

} // namespace JobLayer
