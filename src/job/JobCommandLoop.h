// What the loops have in common: one round of a body, and the key that ends them.
#pragma once

#include "job/JobCommandList.h"

namespace JobLayer {

enum class JobLoopRound {
  Done,   // the loop may go on
  Broken, // a break travelled up to here and is used up: the loop ends with
          // true
  Failed, // the loop ends with false
};

// Clears what an earlier break left behind.
void beginLoop(JobCommandList& runner);
JobLoopRound runLoopBody(JobCommandList& runner, const JobParamList& body,
                         const JobExecutorPair& caller);
// Whether the Escape key is down at this moment.
bool isLoopAborted();

} // namespace JobLayer
