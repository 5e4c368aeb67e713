// Windows of the desktop, of whichever program: who they are, and how to bring one to the front.
//
// A window is the number of its handle. Any thread; a window may be gone at the next call.
#pragma once

#include "raw/RawArray.h"
#include "raw/RawString.h"

namespace RawLayer {

RawArrayC<uintptr_t> listWindows(); // the top-level ones, in the system's order
// 260 units at most; empty when there is no such window.
RawString windowText(uintptr_t window, int32_t encoding = EncodingUtf8);
RawString className(uintptr_t window, int32_t encoding = EncodingUtf8);

enum class RawPopupResult { Restored, Raised, NoWindow };
// Restores a minimised window, forces any other to the front. 0 and dead handles are NoWindow.
// Returns when the window is in front or has gone, however long that takes.
RawPopupResult popupWindow(uintptr_t window);

} // namespace RawLayer
