#include "raw/RawWindows.h"

#include "HostFaults.h"
#include "HostProcesses.h"

namespace RawLayer {

namespace {

constexpr int32_t TextUnits = 260;

RawString cut(const RawString& text, int32_t encoding) {
  if (HostFaults::fails(HostFaults::Query)) return RawString(encoding);
  const RawString wide = text.shareAs(EncodingWide);
  return RawString::fromRange(encoding, wide, {0, TextUnits});
}

} // namespace

RawArrayC<uintptr_t> listWindows() {
  RawArrayC<uintptr_t> windows;
  if (HostFaults::fails(HostFaults::Walk)) return windows;
  for (const HostProcesses::Window& window : HostProcesses::state().windows)
    windows.append(window.handle);
  return windows;
}

RawString windowText(uintptr_t window, int32_t encoding) {
  const HostProcesses::Window* found = HostProcesses::findHandle(window);
  return found == nullptr ? RawString(encoding) : cut(found->text, encoding);
}

RawString className(uintptr_t window, int32_t encoding) {
  const HostProcesses::Window* found = HostProcesses::findHandle(window);
  return found == nullptr ? RawString(encoding) : cut(found->className, encoding);
}

RawPopupResult popupWindow(uintptr_t window) {
  HostProcesses::Window* found = HostProcesses::findHandle(window);
  if (found == nullptr) return RawPopupResult::NoWindow;
  if (found->minimised) {
    found->minimised = false;
    return RawPopupResult::Restored;
  }
  ++found->raised;
  return RawPopupResult::Raised;
}

} // namespace RawLayer
