// Text as views measure and draw it: any encoding, tab length 4, pixels. `format` is the platform's
// DT_ flags. The context must have its font selected; a null context measures nothing and draws
// nothing. Runs on the thread of the context.
#pragma once

#include "win/WinPlatform.h"
#include "win/WinRect.h"

namespace WinLayer {

// The rectangle that the text needs inside `box`; nothing is drawn.
WinRect measureText(HDC dc, const RawString& text, const WinRect& box, UINT format);
void drawText(HDC dc, const RawString& text, const WinRect& box, UINT format);

} // namespace WinLayer
