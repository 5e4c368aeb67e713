// Modal dialogs: what they block, and how they are called back.
#include "win/WinEditBox.h"
#include "win/WinStaticBox.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

class Modal : public Fixture {};

constexpr UINT Inner = WM_USER + 77; // nobody else's

// Counts a message that comes to a view. The window manager may bring some at any time, so tests
// look at what is added.
struct Counter : WinViewHook {
  UINT message;
  int count = 0;
  Counter(WinView& view, UINT counted) : message(counted) { view.addHook(*this); }
  int32_t OnHookMessage(UINT each, WPARAM, LPARAM) override {
    if (each == message) ++count;
    return WinNotHandled;
  }
};

// A main dialog, and two more to run over it beside it.
struct Stack {
  TestDialog main, first, second;
  Stack() {
    for (TestDialog* each : {&main, &first, &second}) each->addButtons(2);
    first.rect = first.rect.movedTo(500, 100);
    second.rect = second.rect.movedTo(500, 400);
    main.Create();
    main.diary.clear();
  }
};

bool isReady(TestDialog& dialog) {
  return isInFront(dialog.window) && GetFocus() == dialog.focusOf(0);
}

void pressOn(const WinView& view) {
  const WinPoint place = centreOf(view.window);
  pressMouse(place.x, place.y);
}

// Runs the first dialog over the main one, does that and closes it.
void whileBlocked(Stack& stack, const Action& action) {
  Steps steps;
  steps.when([&] { return isReady(stack.first); },
             [&] {
               action();
               PostMessageW(stack.first.window, WM_CLOSE, 0, 0);
             });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
}

} // namespace

TEST_F(Modal, BlocksTheTopMostViewForAsLongAsItRuns) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); },
             [&] {
               EXPECT_EQ(stack.main.blockingWindow(), stack.first.window);
               EXPECT_TRUE(IsWindowEnabled(stack.main.window)); // never disabled
               EXPECT_EQ(GetWindow(stack.first.window, GW_OWNER), nullptr);
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
  Counter wakes(stack.main, WM_MOUSEACTIVATE);
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [] { pressKey(VK_ESCAPE); });
  stack.first.RunModal(&stack.main.button(1));
  EXPECT_GE(wakes.count, 1); // as if clicked; before, it was blocked
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

TEST_F(Modal, WithoutAnOwnerNobodyIsBlocked) {
  Stack stack;
  Steps steps;
  steps.when([&] { return stack.first.window && IsWindowVisible(stack.first.window); },
             [&] {
               EXPECT_EQ(stack.main.blockingWindow(), nullptr);
               PostMessageW(stack.first.window, WM_CLOSE, 0, 0);
             });
  EXPECT_EQ(stack.first.RunModal(nullptr), 0);
  EXPECT_TRUE(steps.areDone());
}

// --- The blocked dialog

TEST_F(Modal, APressOnABlockedDialogReachesNothingAndFlashesTheModalOne) {
  Stack stack;
  TestDialog other; // stands in front of both
  other.isShy = true;
  other.rect = other.rect.movedTo(100, 500);
  Counter reminders(stack.first, WinMessageRemind);
  Counter flashes(stack.first, WM_NCACTIVATE);
  int remindersBefore = 0, flashesBefore = 0;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [&] { other.Create(); })
      .when([&] { return bringToFront(other.window); },
            [&] {
              remindersBefore = reminders.count;
              flashesBefore = flashes.count;
              pressOn(stack.main.button(1));
            })
      .when([&] { return reminders.count > remindersBefore && isReady(stack.first); },
            [&] { EXPECT_GT(flashes.count, flashesBefore); })
      // All that belongs to the press has come by now.
      .when([&] { return !GetQueueStatus(QS_INPUT); }, [] { pressKey(VK_ESCAPE); });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
  for (const std::string& each : stack.main.diary) ADD_FAILURE() << each;
}

TEST_F(Modal, AChangeOfOrderBringsTheModalOneBackOnce) {
  Stack stack;
  Counter woken(stack.first, WM_MOUSEACTIVATE);
  whileBlocked(stack, [&] {
    WINDOWPOS position{};
    position.hwnd = stack.main.window;
    const auto record = reinterpret_cast<LPARAM>(&position);
    SetForegroundWindow(stack.main.window);
    const int before = woken.count;
    position.flags = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER;
    SendMessageW(stack.main.window, WM_WINDOWPOSCHANGED, 0, record);
    EXPECT_EQ(woken.count, before);
    position.flags = SWP_NOMOVE | SWP_NOSIZE;
    SendMessageW(stack.main.window, WM_WINDOWPOSCHANGED, 0, record);
    EXPECT_EQ(woken.count, before + 1);
    EXPECT_TRUE(isInFront(stack.first.window));
  });
}

TEST_F(Modal, RaisingABlockedDialogBringsTheModalOneToTheFront) {
  Stack stack;
  constexpr UINT Order = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
  whileBlocked(stack, [&] {
    SetWindowPos(stack.main.window, HWND_BOTTOM, 0, 0, 0, 0, Order);
    SetForegroundWindow(stack.main.window);
    SetWindowPos(stack.main.window, HWND_TOP, 0, 0, 0, 0, Order);
    EXPECT_TRUE(isReady(stack.first)); // with the keyboard where it was
  });
}

TEST_F(Modal, WhatABlockedDialogAnswers) {
  Stack stack;
  whileBlocked(stack, [&] {
    const HWND main = stack.main.window;
    int cursors = 0;
    stack.main.answer = [&](UINT message, WPARAM, LPARAM) {
      if (message != WM_SETCURSOR) return WinNotHandled;
      ++cursors;
      return 1;
    };
    EXPECT_EQ(SendMessageW(main, WM_SETCURSOR, 0, MAKELPARAM(HTCLIENT, 0)), 1);
    EXPECT_EQ(cursors, 1);
    EXPECT_EQ(SendMessageW(main, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATEANDEAT);
    EXPECT_EQ(SendMessageW(main, WinMessageRemind, 0, 0), 0);
    EXPECT_EQ(SendMessageW(main, WM_COMMAND, MAKEWPARAM(2500, 0x1004), 0), -1);
    EXPECT_EQ(SendMessageW(main, WM_CLOSE, 0, 0), -1);
    EXPECT_EQ(SendMessageW(main, WM_KEYDOWN, VK_ESCAPE, 0), -1);
    EXPECT_EQ(SendMessageW(main, Inner, 0, 0), -1);
    EXPECT_TRUE(IsWindow(main));
    const WinPoint place = centreOf(main);
    EXPECT_EQ(SendMessageW(main, WM_NCHITTEST, 0, MAKELPARAM(place.x, place.y)), HTCLIENT);
  });
  EXPECT_TRUE(stack.main.diary.empty());
}

TEST_F(Modal, TheChildrenOfABlockedDialogTakeNoInput) {
  Stack stack;
  const HWND child = stack.main.focusOf(1);
  const auto sendAll = [child] {
    SendMessageW(child, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageW(child, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    SendMessageW(child, WM_KEYDOWN, 'A', 1);
  };
  whileBlocked(stack, sendAll);
  for (const std::string& each : stack.main.diary) ADD_FAILURE() << each;
  sendAll(); // and the same is taken when nothing blocks
  EXPECT_EQ(timesOf(stack.main.diary, "down 2501"), 1);
  EXPECT_EQ(timesOf(stack.main.diary, "key 2501 41"), 1);
}

TEST_F(Modal, KeysGoToTheModalDialog) {
  Stack stack;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [] { pressKey('A'); })
      .when([&] { return timesOf(stack.first.diary, "key 2500 41") == 1; },
            [] { pressKey(VK_TAB); })
      .when([&] { return GetFocus() == stack.first.focusOf(1); }, [] { pressKey(VK_ESCAPE); });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
  EXPECT_TRUE(stack.main.diary.empty());
}

TEST_F(Modal, ABlockedDialogPaintsAfterwardsItsChildrenMeanwhile) {
  Stack stack;
  settle();
  Counter dialogPaints(stack.main, WM_PAINT);
  Counter childPaints(stack.main.button(0), WM_PAINT);
  Steps steps;
  int before = 0;
  steps
      .when([&] { return isReady(stack.first); },
            [&] {
              before = dialogPaints.count;
              childPaints.count = 0;
              const WinWindowDc dc(stack.main.window);
              fillRect(dc.get(), {0, 80, 20, 100}, RGB(255, 0, 0));
              stack.main.invalidate();
            })
      .when(
          [&] {
            return childPaints.count > 0 && !GetUpdateRect(stack.main.window, nullptr, FALSE);
          },
          [&] {
            EXPECT_EQ(dialogPaints.count, before);
            EXPECT_EQ(pixel(stack.main.window, 5, 90), RGB(255, 0, 0));
            pressKey(VK_ESCAPE);
          });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
  EXPECT_TRUE(pumpUntil([&] { return dialogPaints.count > before; }));
  EXPECT_EQ(pixel(stack.main.window, 5, 90), GetSysColor(COLOR_3DFACE));
}

TEST_F(Modal, WhatTheChildrenOfABlockedDialogShowStaysUntilTheyMayDraw) {
  Stack stack;
  WinStaticBox label;
  WinEditBox edit;
  label.rect = {10, 50, 60, 70};
  edit.rect = {70, 50, 120, 70};
  label.background = edit.background = RGB(255, 0, 0);
  stack.main.addChild(label);
  stack.main.addChild(edit);
  const auto show = [&](COLORREF colour) {
    return pixel(label.window, 40, 10) == colour && pixel(edit.window, 40, 10) == colour;
  };
  ASSERT_TRUE(pumpUntil([&] { return show(RGB(255, 0, 0)); }));
  Counter labelPaints(label, WM_PAINT);
  Counter editPaints(edit, WM_PAINT);
  Steps steps;
  steps
      .when([&] { return isReady(stack.first); },
            [&] {
              labelPaints.count = editPaints.count = 0;
              label.background = edit.background = RGB(0, 0, 255);
              label.invalidate();
              edit.invalidate();
            })
      .when([&] { return labelPaints.count > 0 && editPaints.count > 0; },
            [&] {
              EXPECT_TRUE(show(RGB(255, 0, 0)));
              pressKey(VK_ESCAPE);
            });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
  EXPECT_TRUE(pumpUntil([&] { return show(RGB(0, 0, 255)); }));
}

TEST_F(Modal, ABlockedDialogThatIsDestroyedLeavesNothing) {
  Stack stack;
  HWND gone = nullptr;
  whileBlocked(stack, [&] {
    gone = stack.main.window;
    DestroyWindow(gone);
  });
  EXPECT_FALSE(IsWindow(gone));
  EXPECT_EQ(stack.main.window, nullptr);
  EXPECT_EQ(stack.main.children.count(), 0);
  EXPECT_EQ(stack.main.RunLoop(), 0); // has nothing to wait for
}

TEST_F(Modal, ShowingABlockedDialogShowsTheModalOneOverIt) {
  Stack stack;
  TestDialog other;
  other.isShy = true;
  Steps steps;
  steps.when([&] { return isReady(stack.first); }, [&] { other.Create(); })
      .when([&] { return bringToFront(other.window); },
            [&] { EXPECT_EQ(SendMessageW(stack.main.window, WinMessageShow, 0, 0), 0); })
      .when([&] { return isReady(stack.first); }, [] { pressKey(VK_ESCAPE); });
  stack.first.RunModal(&stack.main);
  EXPECT_TRUE(steps.areDone());
}

// --- Stacks

TEST_F(Modal, APressOnTheLowestReachesTheTopOfTheStack) {
  Stack stack;
  Counter atFirst(stack.first, WinMessageRemind);
  Counter atSecond(stack.second, WinMessageRemind);
  int firstBefore = 0, secondBefore = 0;
  // The second run nests in the first one's loop.
  stack.first.answer = [&](UINT message, WPARAM, LPARAM) {
    if (message != Inner) return WinNotHandled;
    stack.second.RunModal(&stack.first.button(1));
    return 0;
  };
  Steps steps;
  steps
      .when([&] { return isReady(stack.first); },
            [&] { PostMessageW(stack.first.window, Inner, 0, 0); })
      .when([&] { return isReady(stack.second); },
            [&] {
              EXPECT_EQ(stack.main.blockingWindow(), stack.first.window);
              EXPECT_EQ(stack.first.blockingWindow(), stack.second.window);
              EXPECT_EQ(stack.second.blockingWindow(), nullptr);
              firstBefore = atFirst.count;
              secondBefore = atSecond.count;
              pressOn(stack.main.button(1));
            })
      .when([&] { return atSecond.count > secondBefore; },
            [&] {
              EXPECT_EQ(atFirst.count, firstBefore); // passed on, not handled
              pressOn(stack.first.button(1));
            })
      .when([&] { return atSecond.count > secondBefore + 1 && isReady(stack.second); },
            [] { pressKey(VK_ESCAPE); })
      .when([&] { return isInFront(stack.first.window) && GetFocus() == stack.first.focusOf(1); },
            [&] {
              EXPECT_EQ(stack.first.blockingWindow(), nullptr);
              EXPECT_EQ(stack.main.blockingWindow(), stack.first.window);
              pressKey(VK_ESCAPE);
            });
  stack.first.RunModal(&stack.main.button(0));
  EXPECT_TRUE(steps.areDone());
  EXPECT_TRUE(pumpUntil([&] { return isReady(stack.main); }));
  EXPECT_EQ(timesOf(stack.main.diary, "down 2501"), 0);
  EXPECT_EQ(timesOf(stack.first.diary, "down 2501"), 0);
}
