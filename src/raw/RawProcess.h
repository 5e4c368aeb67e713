// Processes and windows of the system, as a script may ask for them. Any thread; each call takes
// its own snapshot. What is not found is an empty text.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

class RawProcessInfoUnit {
 public:
  RawString name; // of the module, EncodingUtf8
  uint32_t processId = 0;
  uint32_t parentId = 0;
};
class RawProcessInfoListAllocator : public RawListAllocator<RawProcessInfoUnit> {
 public:
  void destroy(RawProcessInfoUnit* element) override { delete element; }
};
class RawProcessInfoList : public RawListR<RawProcessInfoListAllocator, RawProcessInfoUnit> {};

void listProcesses(RawProcessInfoList& list);    // appends, in the system's order
RawString findProcess(const RawString& pattern); // name of the first match, any case
// Handle of the first top-level window that both patterns match, in decimal. An empty pattern
// accepts all; exact case.
RawString findWindow(const RawString& classPattern, const RawString& titlePattern);

uint32_t currentProcessId();
// Ends the process with exit code 0 and waits for that, at most so many milliseconds; fails in
// silence.
void terminateProcess(uint32_t processId, uint32_t waitMilliseconds);

} // namespace RawLayer
