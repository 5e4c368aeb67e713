// The hook that tells when the pointer enters, leaves and rests.
#include "win/WinEnterControl.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

class EnterControl : public WinEnterControl {
 public:
  using WinEnterControl::track;
  using WinEnterControl::WinEnterControl;
  Diary diary;
  WinPoint lastPoint;
  bool tracksAfterRest = false;
  bool tracksOn = true;

  void OnMouseEnter(WinPoint point) override { note("enter", point); }
  void OnMouseLeave(WinPoint point) override { note("leave", point); }
  bool OnMouseHover(WinPoint point) override {
    note("hover", point);
    return tracksAfterRest;
  }
  bool OnMouseMoveTracked(WinPoint point) override {
    note("tracked", point);
    return tracksOn;
  }
  [[nodiscard]] bool has(const char* what, int64_t times = 1) const {
    return timesOf(diary, what) == times;
  }

 private:
  void note(const char* what, WinPoint point) {
    diary.push_back(what);
    lastPoint = point;
  }
};

class EnterDialog : public TestDialog {
 public:
  EnterControl control;
  EnterDialog() : control(*this) {
    style = WS_POPUP;
    fitToClient(ClientSize);
    rect = rect.movedTo(100, 100);
    addHook(control);
  }
  void open() {
    Create();
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(window); }));
    settle();
  }
};

int32_t answerTo(EnterControl& control, UINT message, int32_t x = 0, int32_t y = 0) {
  return control.OnHookMessage(message, 0, MAKELPARAM(x, y));
}

class WinEnterControlWindow : public Fixture {};

} // namespace

TEST_F(WinEnterControlWindow, EnterAndLeaveAreToldOnceEach) {
  EnterDialog dialog;
  dialog.open();
  movePointer(150, 160);
  ASSERT_TRUE(pumpUntil([&] { return dialog.control.has("enter"); }));
  EXPECT_EQ(dialog.control.lastPoint, (WinPoint{50, 60}));
  EXPECT_EQ(dialog.control.inside, 1);
  movePointer(170, 170);
  settle();
  EXPECT_EQ(dialog.control.diary, Diary{"enter"});
  movePointer(700, 700);
  ASSERT_TRUE(pumpUntil([&] { return dialog.control.has("leave"); }));
  EXPECT_EQ(dialog.control.inside, 0);
  settle();
  EXPECT_EQ(dialog.control.diary, (Diary{"enter", "leave"})); // and it stays silent
  movePointer(150, 160);
  EXPECT_TRUE(pumpUntil([&] { return dialog.control.has("enter", 2); }));
}

TEST_F(WinEnterControlWindow, ARestIsToldAfterItsTime) {
  EnterDialog dialog;
  dialog.control.hoverTime = 50;
  dialog.open();
  movePointer(150, 160);
  ASSERT_TRUE(pumpUntil([&] { return dialog.control.has("hover"); }));
  EXPECT_EQ(dialog.control.lastPoint, (WinPoint{50, 60}));
  dialog.control.track();
  EXPECT_TRUE(pumpUntil([&] { return dialog.control.has("hover", 2); }));
  movePointer(700, 700);
  EXPECT_TRUE(pumpUntil([&] { return dialog.control.has("leave"); }));
}

TEST_F(WinEnterControlWindow, WithARestTimeALeaveIsToldOnceToo) {
  EnterDialog dialog;
  dialog.control.hoverTime = 50;
  dialog.open();
  movePointer(150, 160);
  ASSERT_TRUE(pumpUntil([&] { return dialog.control.has("hover"); }));
  movePointer(700, 700);
  ASSERT_TRUE(pumpUntil([&] { return dialog.control.has("leave"); }));
  const uint64_t start = GetTickCount64();
  pumpUntil([start] { return GetTickCount64() - start > 200; });
  EXPECT_EQ(dialog.control.diary, (Diary{"enter", "hover", "leave"}));
}

TEST_F(WinEnterControlWindow, OnlyAnEnterALeaveAndARestAreAnswered) {
  WinView view;
  EnterControl control(view);
  EXPECT_EQ(answerTo(control, WM_MOUSEMOVE, 3, 4), 0);
  EXPECT_EQ(control.lastPoint, (WinPoint{3, 4}));
  EXPECT_EQ(answerTo(control, WM_MOUSEMOVE, 5, 6), 0x7FFFFFFF);
  EXPECT_EQ(answerTo(control, WM_MOUSEHOVER, -5, -6), 0);
  EXPECT_EQ(control.lastPoint, (WinPoint{-5, -6}));
  EXPECT_EQ(answerTo(control, WM_MOUSELEAVE), 0);
  EXPECT_EQ(answerTo(control, WM_LBUTTONDOWN), 0x7FFFFFFF);
  EXPECT_EQ(answerTo(control, WM_PAINT), 0x7FFFFFFF);
  EXPECT_EQ(control.diary, (Diary{"enter", "hover", "leave"}));
}

TEST_F(WinEnterControlWindow, MovesAreTrackedAfterARestThatSaysSo) {
  WinView view;
  EnterControl control(view);
  answerTo(control, WM_MOUSEMOVE);
  answerTo(control, WM_MOUSEHOVER);
  answerTo(control, WM_MOUSEMOVE);
  EXPECT_EQ(control.diary, (Diary{"enter", "hover"}));

  control.tracksAfterRest = true;
  answerTo(control, WM_MOUSEHOVER);
  EXPECT_EQ(control.trackMoves, 1);
  EXPECT_EQ(answerTo(control, WM_MOUSEMOVE, 8, 9), 0x7FFFFFFF);
  EXPECT_TRUE(control.has("tracked"));
  EXPECT_EQ(control.lastPoint, (WinPoint{8, 9}));
  answerTo(control, WM_MOUSELEAVE);
  EXPECT_TRUE(control.has("tracked", 2));
  EXPECT_EQ(control.diary.back(), "tracked");

  control.tracksOn = false; // the last one that it hears of
  answerTo(control, WM_MOUSEMOVE);
  answerTo(control, WM_MOUSEMOVE);
  EXPECT_TRUE(control.has("tracked", 3));
  EXPECT_EQ(control.trackMoves, 0);
}
