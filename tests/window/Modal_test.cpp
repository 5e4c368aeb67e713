// Modal dialogs: what they block, how they are called back, and dialogs on threads of their own.
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

class Modal : public Fixture {};
class DialogThread : public Fixture {};

// Counts what comes to a dialog, before anybody handles it.
struct Counter : WinViewHook {
  UINT message;
  int count = 0;
  explicit Counter(UINT counted) : message(counted) {}
  int32_t OnHookMessage(UINT each, WPARAM, LPARAM) override {
    if (each == message) ++count;
    return WinNotHandled;
  }
};

// A main dialog at the left with two buttons, and others beside it.
struct Stack {
  TestDialog main, first, second;
  Stack() {
    for (TestDialog* each : {&main, &first, &second}) each->addButtons(2);
    first.rect = first.rect.movedTo(500, 100);
    second.rect = second.rect.movedTo(500, 400);
    main.Create();
  }
};

bool isReady(TestDialog& dialog) {
  return isInFront(dialog.window) && GetFocus() == dialog.button(0).window;
}

void press(const TestDialog& dialog, const WinView& view) {
  (void)dialog;
  const WinPoint place = centreOf(view.window);
  pressMouse(place.x, place.y);
}

} // namespace

TEST_F(Modal, BlocksTheTopMostViewForAsLongAsItRuns) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); },
             [&] {
               EXPECT_EQ(stack.main.blockingWindow(), stack.first.window);
               EXPECT_TRUE(IsWindowEnabled(stack.main.window)); // never disabled
               EXPECT_EQ(stack.first.result, 0);
               stack.first.result = 17;
               pressKey(VK_ESCAPE);
             });
  stack.first.result = 3;
  EXPECT_EQ(stack.first.RunModal(&stack.main.button(1)), 17);
  EXPECT_TRUE(steps.areDone());
  EXPECT_EQ(stack.main.blockingWindow(), nullptr);
  EXPECT_EQ(stack.first.window, nullptr);
}

TEST_F(Modal, TheOwnerHasTheFocusAfterwards) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [] { pressKey(VK_ESCAPE); });
  stack.first.RunModal(&stack.main.button(1));
  EXPECT_TRUE(pumpUntil([&] { return isInFront(stack.main.window); }));
  EXPECT_EQ(GetFocus(), stack.main.focusOf(1));
}

TEST_F(Modal, ClosedByOtherMeansItsResultIsZero) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [] { pressKey(VK_ESCAPE); });
  stack.first.result = 99;
  EXPECT_EQ(stack.first.RunModal(&stack.main), 0);
}

TEST_F(Modal, TheTopMostViewIsFoundThroughTheOwners) {
  Stack stack;
  EXPECT_EQ(WinDialog::topView(nullptr), nullptr);
  EXPECT_EQ(WinDialog::topView(&stack.main), &stack.main);
  EXPECT_EQ(WinDialog::topView(&stack.main.button(0)), &stack.main);
}

TEST_F(Modal, APressOnABlockedDialogReachesNothingAndCallsTheModalOneBack) {
  Stack stack;
  Counter reminded(WinMessageRemind);
  stack.first.addHook(reminded);
  stack.main.diary.clear();
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [&] { press(stack.main, stack.main.button(1)); })
      .when([&] { return reminded.count > 0 && !GetQueueStatus(QS_INPUT); },
            [&] {
              // Dragging over it and letting go there does nothing either.
              mouseButton(MOUSEEVENTF_LEFTUP);
            })
      .when([&] { return isInFront(stack.first.window); }, [] { pressKey(VK_ESCAPE); })
      .when([&] { return true; }, [] {});
  stack.first.RunModal(&stack.main);
  EXPECT_EQ(reminded.count, 1);
  EXPECT_TRUE(stack.main.diary.empty()) << stack.main.diary.front();
}

TEST_F(Modal, AChangeOfOrderBringsTheModalOneToTheFront) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [&] { SetForegroundWindow(stack.main.window); })
      .when([&] { return true; },
            [&] { SetWindowPos(stack.main.window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); })
      .when([&] { return isInFront(stack.first.window); },
            [&] { DestroyWindow(stack.first.window); });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
}

TEST_F(Modal, AReminderRunsDownTheStack) {
  Stack stack;
  Counter atFirst(WinMessageRemind), atSecond(WinMessageRemind);
  stack.first.addHook(atFirst);
  stack.second.addHook(atSecond);
  stack.first.whenCreated = [&] { SetFocus(stack.first.focusOf(0)); };
  Steps steps;
  steps
      .when([&] { return isReady(stack.first); },
            [&] { stack.second.RunModal(&stack.first.button(0)); })
      .when([&] { return isReady(stack.first); }, [] { pressKey(VK_ESCAPE); });
  // The inner run has steps of its own, as a timer would find the outer ones busy.
  stack.second.whenCreated = [&] { PostMessageW(stack.second.window, WM_APP, 0, 0); };
  int pressed = 0;
  stack.second.answer = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_APP && !pressed++) {
      EXPECT_EQ(stack.first.blockingWindow(), stack.second.window);
      press(stack.main, stack.main.button(1));
    }
    if (message == WinMessageRemind) PostMessageW(stack.second.window, WM_CLOSE, 0, 0);
    return WinNotHandled;
  };
  stack.first.RunModal(&stack.main.button(0));
  EXPECT_TRUE(steps.areDone());
  EXPECT_EQ(atFirst.count, 0); // a blocked dialog passes it on at once
  EXPECT_GE(atSecond.count, 1);
  EXPECT_EQ(timesOf(stack.main.diary, "down 2501"), 0);
}

TEST_F(Modal, OneWithoutAnOwnerBlocksNobody) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); },
             [&] {
               EXPECT_EQ(stack.main.blockingWindow(), nullptr);
               pressKey(VK_ESCAPE);
             });
  EXPECT_EQ(stack.first.RunModal(nullptr), 0);
  EXPECT_TRUE(steps.areDone());
}
