#include "gallery/GalleryParts.h"

namespace Gallery {

using namespace WinLayer;
using Draw = WinButtonDraw;

// --- FaceSheet

int32_t FaceSheet::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_DRAWITEM) return WinStaticBox::OnMessage(message, wParam, lParam);
  paint(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->hDC);
  return TRUE;
}

void FaceSheet::paint(HDC dc) {
  const struct {
    const char* name;
    uint32_t flags;
  } looks[] = {{"normal", 0},
               {"focused", Draw::Focused},
               {"pressed", Draw::Pressed},
               {"disabled", Draw::Disabled},
               {"checked", Draw::Checked},
               {"ch.+foc.", Draw::Checked | Draw::Focused}};
  const uint32_t shapes[] = {Draw::CornersAll, 0, Draw::CornersAll | Draw::FramesAll,
                             Draw::CornerTopLeft | Draw::CornerBottomLeft | Draw::FrameRight};
  fillRect(dc, clientRect(), dialogColour());
  const WinSelect selected(dc, fontHandle());
  SetBkMode(dc, TRANSPARENT);
  int32_t left = 0;
  for (const auto& look : looks) {
    SetTextColor(dc, windowTextColour());
    drawText(dc, RawString::fromChars(look.name), {left, 0, left + 52, 16},
             DT_CENTER | DT_NOPREFIX);
    int32_t top = 20;
    for (const uint32_t shape : shapes) {
      const WinRect place{left, top, left + 50, top + 30};
      faces_.draw(dc, place, shape | look.flags);
      SetTextColor(dc, Draw::textColour(look.flags, windowTextColour()));
      drawText(dc, "Text"_text, alignedInBox(place, 14, TextMiddle), DT_CENTER | DT_NOPREFIX);
      top += 38;
    }
    left += 56;
  }
}

// --- TextList

void TextList::addRow(const char* text) {
  texts_.push_back(std::make_unique<RawLayer::RawString>(RawLayer::RawString::fromChars(text)));
  add(texts_.back().get());
}

void TextList::BeforeMeasure(HDC) {
  lineStepY = RowHeight;
  if (!hasHeaders) return;
  header.rect = {0, 0, 10, RowHeight};
  footer.rect = {0, 0, 10, RowHeight};
}

void TextList::MeasureRow(HDC, WinRect& row, int32_t, Item& item) {
  row.bottom = dataOf(item)->isEmpty() ? 0 : RowHeight;
}

void TextList::DrawRow(HDC dc, const WinRect& row, int32_t, Item& item) {
  if (item.isMarked()) fillRect(dc, row, 0xFFE0C8);
  SetBkMode(dc, TRANSPARENT);
  if (!item.data) return;
  drawText(dc, *dataOf(item), {row.left + 4, row.top + 2, row.right, row.bottom}, DT_NOPREFIX);
}

void TextList::DrawHeader(HDC dc, const WinRect& row) {
  if (!hasHeaders) return;
  fillRect(dc, row, 0xD0D0D0);
  SetBkMode(dc, TRANSPARENT);
  drawText(dc, "Header"_text, row, DT_NOPREFIX | DT_CENTER);
}

void TextList::DrawFooter(HDC dc, const WinRect& row) {
  if (!hasHeaders) return;
  fillRect(dc, row, 0xE0F0E0);
  SetBkMode(dc, TRANSPARENT);
  drawText(dc, "Footer"_text, row, DT_NOPREFIX | DT_CENTER);
}

// --- GridPlane

GridPlane::GridPlane() {
  style |= WS_HSCROLL | WS_VSCROLL;
  margins = {2, 2, 2, 2};
}

void GridPlane::MeasureContent(HDC) {
  contentWidth = wanted.width;
  contentHeight = wanted.height;
}

void GridPlane::DrawContent(HDC dc, WinPoint place) {
  const WinRect content = WinRect{0, 0, contentWidth, contentHeight}.movedBy(place.x, place.y);
  fillRect(dc, content, 0xFFFFFF);
  for (int32_t x = 0; x < contentWidth; x += 40)
    fillRect(dc, {content.left + x, content.top, content.left + x + 1, content.bottom}, 0xE0C0A0);
  for (int32_t y = 0; y < contentHeight; y += 40)
    fillRect(dc, {content.left, content.top + y, content.right, content.top + y + 1}, 0xA0C0E0);
  frameRect(dc, content, 0x000000);
}

// --- EdgeSample

EdgeSample::EdgeSample()
    : picker(*this, EdgePaint | EdgeCloseButton | EdgeMaximizeButton | EdgeMinimizeButton) {
  className = "STATIC"_text;
  style = WS_CHILD | WS_VISIBLE;
  picker.edgeButtons.buttonWidth = 34;
  picker.edgeButtons.buttonHeight = 22;
  addHook(picker);
}

void EdgeSample::setLook(WinEdgeButtons::Kind kind, bool hovered, bool pressed, bool maximised) {
  const WinRect client = clientRect();
  SendMessageW(window, WM_SIZE, maximised ? SIZE_MAXIMIZED : SIZE_RESTORED,
               MAKELPARAM(client.right, client.bottom));
  picker.edgeButtons.buttons[kind].hover = hovered ? 1 : 0;
  picker.edgeButtons.buttons[kind].pressed = pressed ? 1 : 0;
}

} // namespace Gallery
