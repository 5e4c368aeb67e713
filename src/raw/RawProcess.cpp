#include "raw/RawProcess.h"

#include "raw/RawPattern.h"
#include "raw/RawWindows.h"

namespace RawLayer {

RawString findProcess(const RawString& pattern) {
  RawProcessInfoList list;
  listProcesses(list);
  RawPattern names(pattern);
  for (const RawProcessInfoUnit& unit : list.elements())
    if (names.match(unit.name, true)) return unit.name;
  return RawString::emptyStatic();
}

RawString findWindow(const RawString& classPattern, const RawString& titlePattern) {
  RawPattern classes(classPattern);
  RawPattern titles(titlePattern);
  const RawArrayC<uintptr_t> windows = listWindows();
  for (int32_t i = 0; i < windows.count(); ++i) {
    const uintptr_t window = windows.at(i);
    if (!classPattern.isEmpty() && !classes.match(className(window), false)) continue;
    if (!titlePattern.isEmpty() && !titles.match(windowText(window), false)) continue;
    return RawString::fromUInt64(window, 10);
  }
  return RawString::emptyStatic();
}

} // namespace RawLayer
