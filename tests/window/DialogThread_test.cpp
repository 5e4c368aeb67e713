// Dialogs on threads of their own: start, stop, and what is left of them.
#include "window/TestDialog.h"

#include <atomic>

using namespace WindowTest;
using namespace WinLayer;

namespace {

class DialogThread : public Fixture {};

class QuietDialog : public WinDialogThread {
 public:
  std::atomic<int> created{0};
  std::atomic<int> destroyed{0};
  QuietDialog() {
    className = "Class_TestThread"_text;
    style = WS_POPUP | WS_BORDER;
    extendedStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
    showCommand = SW_SHOWNOACTIVATE;
    fitToClient({80, 20});
    text_.className = "STATIC"_text;
    text_.style = WS_CHILD | WS_VISIBLE;
    text_.rect = {0, 0, 80, 20};
  }
  void OnCreateChildren() override { addChild(text_); }
  void OnCreated() override { ++created; }
  void OnDestroyed() override { ++destroyed; }

 private:
  WinView text_;
};

} // namespace

TEST_F(DialogThread, ItsWindowStandsOnAnotherThreadWhenTheStartReturns) {
  QuietDialog dialog;
  EXPECT_FALSE(dialog.isReady());
  dialog.startAndWait();
  EXPECT_TRUE(dialog.isReady());
  ASSERT_TRUE(IsWindow(dialog.window));
  EXPECT_TRUE(IsWindowVisible(dialog.window));
  EXPECT_NE(GetWindowThreadProcessId(dialog.window, nullptr), GetCurrentThreadId());
  EXPECT_EQ(dialog.created, 1);
  EXPECT_EQ(dialog.children.count(), 1);
  dialog.startAndWait(); // it runs already
  EXPECT_EQ(dialog.created, 1);
  dialog.stopAndWait();
}

TEST_F(DialogThread, NothingStandsWhenTheStopReturns) {
  QuietDialog dialog;
  dialog.startAndWait();
  const HWND window = dialog.window;
  dialog.stopAndWait();
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(dialog.window, nullptr);
  EXPECT_FALSE(dialog.isReady());
  EXPECT_FALSE(dialog.isRunning());
  EXPECT_EQ(dialog.destroyed, 1);
  EXPECT_EQ(dialog.children.count(), 0);
  dialog.stopAndWait(); // nothing left to stop
  EXPECT_EQ(dialog.destroyed, 1);
}

TEST_F(DialogThread, OneThatWasNeverStartedCanBeStopped) {
  QuietDialog dialog;
  dialog.stopAndWait();
  EXPECT_EQ(dialog.destroyed, 0);
}

TEST_F(DialogThread, MayEndByItself) {
  QuietDialog dialog;
  dialog.startAndWait();
  PostMessageW(dialog.window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(pumpUntil([&] { return dialog.isDone(); }));
  EXPECT_FALSE(dialog.isReady());
  dialog.stopAndWait();
  EXPECT_EQ(dialog.destroyed, 1);
  dialog.startAndWait();
  EXPECT_TRUE(dialog.isReady());
  dialog.stopAndWait();
  EXPECT_EQ(dialog.destroyed, 2);
}

TEST_F(DialogThread, WithoutAWindowTheStartReturnsNotReady) {
  QuietDialog dialog;
  dialog.className = RawString();
  dialog.startAndWait();
  EXPECT_FALSE(dialog.isReady());
  EXPECT_EQ(dialog.created, 0);
  dialog.stopAndWait();
}

TEST_F(DialogThread, TakesNoFocusFromTheMainThread) {
  TestDialog main;
  main.addButtons(1);
  main.Create();
  ASSERT_TRUE(pumpUntil([&] { return isInFront(main.window); }));
  const HWND focus = GetFocus();
  QuietDialog dialog;
  dialog.startAndWait();
  settle();
  EXPECT_EQ(GetFocus(), focus);
  EXPECT_TRUE(isInFront(main.window));
  dialog.stopAndWait();
}

TEST_F(DialogThread, ManyStartsAndStopsLeaveNothing) {
  QuietDialog dialog;
  dialog.startAndWait();
  dialog.stopAndWait();
  const uint32_t objects = drawingObjects();
  const uint32_t windows = windowCount();
  DWORD handlesBefore = 0, handlesAfter = 0;
  GetProcessHandleCount(GetCurrentProcess(), &handlesBefore);
  constexpr int Rounds = 100;
  for (int i = 0; i < Rounds; ++i) {
    dialog.startAndWait();
    ASSERT_TRUE(dialog.isReady());
    dialog.stopAndWait();
    ASSERT_FALSE(dialog.isReady());
  }
  GetProcessHandleCount(GetCurrentProcess(), &handlesAfter);
  EXPECT_EQ(dialog.created, Rounds + 1);
  EXPECT_EQ(dialog.destroyed, Rounds + 1);
  EXPECT_EQ(windowCount(), windows);
  EXPECT_LE(drawingObjects(), objects);
  EXPECT_LT(handlesAfter, handlesBefore + Rounds / 2);
}
