#include "win/WinStaticBox.h"

namespace WinLayer {

namespace {

constexpr int32_t Margin = 2;
constexpr UINT GreyStates = ODS_DISABLED | ODS_GRAYED;

} // namespace

WinStaticBox::WinStaticBox() {
  className = "STATIC"_text;
  style = WS_CHILD | WS_VISIBLE | SS_OWNERDRAW;
  viewFlags |= NotSubclassed;
  fitFlags = TextLeft | TextTop;
  margins = {Margin, Margin, Margin, Margin};
}

int32_t WinStaticBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_DRAWITEM) return WinView::OnMessage(message, wParam, lParam);
  paint(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
  return TRUE;
}

void WinStaticBox::paint(const DRAWITEMSTRUCT& item) {
  const WinRect place = rectOf(item.rcItem);
  const HDC dc = surface_.begin(item.hDC, {place.width(), place.height()});
  if (!dc) return;
  const WinRect area = place.movedTo(0, 0);
  fillRect(dc, area, background);
  if (secondBackground != WinNoColour)
    fillRect(dc, {area.left, area.height() / 2, area.right, area.bottom}, secondBackground);

  const RawString title = GetTitle();
  if (!title.isEmpty()) {
    const WinRect inner{area.left + margins.left, area.top + margins.top,
                        area.right - margins.right, area.bottom - margins.bottom};
    const UINT format = textFormat(fitFlags);
    const WinSelect selected(dc, fontHandle());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, item.itemState & GreyStates ? GetSysColor(COLOR_GRAYTEXT) : textColour);
    const int32_t height = measureText(dc, title, inner, format).height();
    drawText(dc, title, alignedInBox(inner, height, fitFlags), format);
  }
  surface_.end({place.left, place.top});
}

} // namespace WinLayer
