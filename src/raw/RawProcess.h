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

void listProcesses(RawProcessInfoList& list); // appends, in the system's order
RawString findProcess(const RawString& pattern); // name of the first match, any case
// Handle of the first top-level window in decimal. Empty patterns accept all; exact case.
RawString findWindow(const RawString& classPattern, const RawString& titlePattern);
RawString windowText(uintptr_t window, int32_t encoding = EncodingUtf8); // 260 units at most
RawString className(uintptr_t window, int32_t encoding = EncodingUtf8);

uint32_t currentProcessId();
// Ends the process and waits for at most so many milliseconds; fails in silence.
void terminateProcess(uint32_t processId, uint32_t waitMilliseconds);

// How many entries of the pattern's folder match its last component, in any case.
int32_t countEntries(const RawString& pattern, bool folders);
// A path with wildcards resolved part by part to the first match; "???" when a part has none.
RawString resolveWildcardPath(const RawString& path);

enum class RawPopupResult { Restored, Raised, NoWindow };
// Restores a minimised window, forces any other to the front. 0 and dead handles are NoWindow.
RawPopupResult popupWindow(uintptr_t window);

} // namespace RawLayer
