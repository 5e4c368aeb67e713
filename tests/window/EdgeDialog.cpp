#include "window/EdgeDialog.h"

namespace WindowTest {

using namespace WinLayer;

namespace {

constexpr WPARAM CommandMask = 0xFFF0; // the system uses the lower bits itself

} // namespace

bool TestPicker::CanMoveAt(const WinRect& client, WinPoint point) {
  askedClient = client;
  askedPoint = point;
  return mayMove;
}

bool TestPicker::CanResizeAt(const WinRect& client, WinPoint, uint32_t edges) {
  askedClient = client;
  askedEdges = edges;
  return mayResize;
}

bool TestPicker::CanOpenSystemMenuAt(const WinRect&, WinPoint point) {
  askedPoint = point;
  return mayOpenMenu;
}

EdgeDialog::EdgeDialog(uint16_t flags, DWORD extraStyle) : picker(*this, flags) {
  style = WS_POPUP | WS_SYSMENU | extraStyle;
  fitToClient(ClientSize);
  rect = rect.movedTo(Left, Top);
  picker.edgeButtons.buttonWidth = ButtonWidth;
  picker.edgeButtons.buttonHeight = ButtonHeight;
  picker.edgeButtons.glyphWidth = picker.edgeButtons.glyphHeight = GlyphSize;
  addHook(picker);
  answer = [this](UINT message, WPARAM wParam, LPARAM lParam) {
    return answerMessage(message, wParam, lParam);
  };
}

void EdgeDialog::open() {
  Create();
  // Once more behind what was on its way: a window manager gives the front away late.
  ASSERT_TRUE(pumpUntil([this] {
    if (!bringToFront(window)) return false;
    settle();
    const WinRect place = windowRect();
    return isInFront(window) && place.left == Left && place.top == Top;
  }));
  pointAt(Width / 2, Height / 2);
  ASSERT_TRUE(pumpUntil([this] { return picker.hasEdgeFlag(EdgeTracksLeave); }));
  settle();
}

void EdgeDialog::pointAt(int32_t x, int32_t y) {
  const WinRect place = windowRect();
  holdPointer(place.left + x, place.top + y);
}

void EdgeDialog::drag(WinPoint from, WinPoint by) {
  pointAt(from.x, from.y);
  const WinRect place = windowRect();
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  holdPointer(place.left + from.x + by.x, place.top + from.y + by.y);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

void EdgeDialog::startResize(int32_t x, int32_t y) {
  pointAt(x, y);
  ASSERT_TRUE(pumpUntil([this] { return picker.hasEdgeFlag(EdgePointerOnEdge); }));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  ASSERT_TRUE(pumpUntil([this] { return picker.hasEdgeFlag(EdgeDragging); }));
}

void EdgeDialog::send(UINT message, WinPoint point) {
  SendMessageW(window, message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

int32_t EdgeDialog::answerMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SYSCOMMAND) {
    commands.push_back(
        {wParam & CommandMask,
         {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))}});
    return 0;
  }
  if (message == WM_GETMINMAXINFO) {
    auto& asked = *reinterpret_cast<MINMAXINFO*>(lParam);
    asked.ptMinTrackSize = {least.width, least.height};
    asked.ptMaxTrackSize = {greatest.width, greatest.height};
    return 0;
  }
  return WinNotHandled;
}

void holdPointer(int32_t x, int32_t y) {
  movePointer(x, y);
  settle();
  EXPECT_TRUE(pumpUntil([x, y] {
    POINT at{};
    GetCursorPos(&at);
    if (at.x == x && at.y == y) return true;
    movePointer(x, y);
    return false;
  }));
  settle();
}

} // namespace WindowTest
