#include "win/WinText.h"

#include "win/WinGdi.h"

namespace WinLayer {

namespace {

constexpr int TabLength = 4;

WinRect callDrawText(HDC dc, const RawString& text, const WinRect& box, UINT format) {
  const RawString wide = text.shareAs(RawLayer::EncodingWide);
  RECT area = platformRect(box);
  DRAWTEXTPARAMS parameters{};
  parameters.cbSize = sizeof parameters;
  parameters.iTabLength = TabLength;
  // The call never writes into the text without DT_MODIFYSTRING.
  DrawTextExW(dc, const_cast<wchar_t*>(wideUnits(wide)), wide.length(), &area, format, &parameters);
  return rectOf(area);
}

} // namespace

WinRect measureText(HDC dc, const RawString& text, const WinRect& box, UINT format) {
  return callDrawText(dc, text, box, format | DT_CALCRECT);
}

void drawText(HDC dc, const RawString& text, const WinRect& box, UINT format) {
  callDrawText(dc, text, box, format);
}

} // namespace WinLayer
