// Dialogs: their life, their messages, the focus, and the limits of their size.
#include "window/TestDialog.h"

#include <algorithm>

using namespace WindowTest;
using namespace WinLayer;

namespace {

class DialogLife : public Fixture {};
class DialogMessages : public Fixture {};
class DialogFocus : public Fixture {};
class DialogLimits : public Fixture {};
class DialogSoak : public Fixture {};

bool hasFocus(const TestDialog& dialog, WinView& view) {
  return isInFront(dialog.window) && GetFocus() == view.window;
}

// Runs the dialog until it was closed by Esc from its first button.
void runAndEscape(TestDialog& dialog) {
  Steps steps;
  steps.when([&] { return hasFocus(dialog, dialog.button(0)); }, [] { pressKey(VK_ESCAPE); });
  dialog.RunLoop();
  EXPECT_TRUE(steps.areDone());
}

MINMAXINFO askLimits(const TestDialog& dialog) {
  MINMAXINFO info{};
  info.ptMinTrackSize = {-5, -6};
  info.ptMaxTrackSize = {-7, -8};
  SendMessageW(dialog.window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
  return info;
}

WinSize workArea() {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  return {work.right - work.left, work.bottom - work.top};
}

} // namespace

// --- Life

TEST_F(DialogLife, IsCreatedShownAndFilled) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.SetTitle("Title"_text);
  dialog.Create();
  ASSERT_NE(dialog.window, nullptr);
  EXPECT_TRUE(IsWindowVisible(dialog.window));
  EXPECT_EQ(textOf(dialog.window), L"Title");
  EXPECT_EQ(GetWindow(dialog.window, GW_OWNER), nullptr);
  EXPECT_EQ(GetParent(dialog.window), nullptr);
  EXPECT_EQ(windowsOfClass(L"Class_TestDialog"), std::vector<HWND>{dialog.window});
  EXPECT_EQ(dialog.clientRect(), (WinRect{0, 0, 300, 120}));
  EXPECT_EQ(dialog.windowRect().left, 100);
  EXPECT_EQ(dialog.windowRect().top, 100);
  EXPECT_EQ(dialog.children.count(), 2);
  EXPECT_TRUE(IsWindowVisible(dialog.button(1).window));
  EXPECT_EQ(dialog.diary.back(), "created");
}

TEST_F(DialogLife, ItsClassIsAsTheToolkitsAre) {
  TestDialog dialog;
  dialog.Create();
  WNDCLASSEXW record{};
  record.cbSize = sizeof record;
  ASSERT_TRUE(GetClassInfoExW(WinView::instance(), L"Class_TestDialog", &record));
  EXPECT_EQ(record.style, UINT{CS_VREDRAW | CS_HREDRAW});
  EXPECT_EQ(record.hbrBackground, reinterpret_cast<HBRUSH>(16));
  EXPECT_EQ(record.hCursor, LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(record.lpszMenuName, nullptr);
}

TEST_F(DialogLife, TheFirstSizeTellsTheShowStatesInOrder) {
  TestDialog dialog;
  EXPECT_EQ(dialog.state, 5);
  dialog.Create();
  EXPECT_EQ(dialog.state, 0);
  ASSERT_GE(dialog.diary.size(), 3u);
  EXPECT_EQ(dialog.diary[0], "state 5 0");
  EXPECT_EQ(dialog.diary[1], "resized");
  EXPECT_EQ(dialog.diary[2], "state 6 0");
  dialog.diary.clear();
  DestroyWindow(dialog.window);
  EXPECT_EQ(dialog.diary, (Diary{"state 0 7", "destroyed"}));
  dialog.window = nullptr;
}

TEST_F(DialogLife, OneThatWasNeverShownIsDestroyedFromStateFive) {
  TestDialog dialog;
  dialog.style = WS_CAPTION | WS_SYSMENU; // popup windows get their first size at creation
  dialog.showCommand = SW_HIDE;
  dialog.Create();
  EXPECT_FALSE(IsWindowVisible(dialog.window));
  EXPECT_EQ(dialog.state, 5);
  dialog.diary.clear();
  DestroyWindow(dialog.window);
  EXPECT_EQ(dialog.diary, (Diary{"state 5 7", "destroyed"}));
  dialog.window = nullptr;
}

TEST_F(DialogLife, MinimisedMaximisedAndBack) {
  TestDialog dialog;
  dialog.Create();
  const WinRect normal = dialog.windowRect();
  // The first two things that happen; the window manager may have its own idea of the size later.
  const auto diaryUntil = [&](int command, int32_t state) {
    settle();
    dialog.diary.clear();
    ShowWindow(dialog.window, command);
    EXPECT_TRUE(pumpUntil([&] { return dialog.state == state; })) << state;
    dialog.diary.resize(std::min<size_t>(dialog.diary.size(), 2));
    return dialog.diary;
  };
  EXPECT_EQ(diaryUntil(SW_MAXIMIZE, 2), (Diary{"state 0 2", "resized"}));
  EXPECT_EQ(dialog.client.rect, dialog.clientRect());
  EXPECT_EQ(diaryUntil(SW_RESTORE, 0), (Diary{"state 2 0", "resized"}));
  EXPECT_EQ(diaryUntil(SW_MINIMIZE, 1), (Diary{"state 0 1"})); // no size to tell
  EXPECT_EQ(dialog.normalRect, normal);
  EXPECT_EQ(dialog.client.rect, (WinRect{0, 0, 300, 120}));
  EXPECT_EQ(diaryUntil(SW_RESTORE, 0), (Diary{"state 1 0", "resized"}));
}

TEST_F(DialogLife, AnAnsweredSizeChangesNoState) {
  TestDialog dialog;
  dialog.Create();
  dialog.diary.clear();
  dialog.answer = [](UINT message, WPARAM, LPARAM) {
    return message == WM_SIZE ? 0 : WinNotHandled;
  };
  const WinRect client = dialog.client.rect;
  dialog.rect.right += 10;
  dialog.moveWindow(true);
  EXPECT_TRUE(dialog.diary.empty());
  EXPECT_EQ(dialog.client.rect, client);
  EXPECT_EQ(dialog.normalRect, dialog.windowRect());
}

TEST_F(DialogLife, AMoveIsFollowedByViewAndNormalRectangle) {
  TestDialog dialog;
  dialog.Create();
  const WinSize size{dialog.windowRect().width(), dialog.windowRect().height()};
  SetWindowPos(dialog.window, nullptr, 150, 170, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_EQ(dialog.rect, (WinRect{150, 170, 150 + size.width, 170 + size.height}));
  EXPECT_EQ(dialog.normalRect, dialog.rect);
}

TEST_F(DialogLife, ChildrenFollowTheClient) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  WinView& view = dialog.button(0);
  view.bind(&dialog.client, 0x1112);
  const WinRect before = view.rect;
  SetWindowPos(dialog.window, nullptr, 0, 0, dialog.rect.width() + 25, dialog.rect.height() + 13,
               SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_TRUE(view.ApplyAnchors());
  EXPECT_EQ(view.rect,
            (WinRect{before.left + 25, before.top, before.right + 25, before.bottom + 13}));
}

TEST_F(DialogLife, TheLoopEndsWithTheDialog) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.Create();
  const HWND window = dialog.window;
  runAndEscape(dialog);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(dialog.window, nullptr);
  EXPECT_EQ(dialog.children.count(), 0);
  EXPECT_EQ(dialog.button(0).window, nullptr);
  // Children first, then the dialog.
  const Diary end(dialog.diary.end() - 4, dialog.diary.end());
  EXPECT_EQ(end, (Diary{"state 0 7", "destroyed 2500", "destroyed 2501", "destroyed"}));
}

TEST_F(DialogLife, TheLoopGivesTheValueOfTheQuitMessage) {
  TestDialog dialog;
  dialog.Create();
  PostQuitMessage(42);
  EXPECT_EQ(dialog.RunLoop(), 42);
}

TEST_F(DialogLife, WithoutAWindowThereIsNoLoop) {
  TestDialog dialog;
  EXPECT_EQ(dialog.RunLoop(), 0);
  EXPECT_TRUE(dialog.diary.empty());
}

TEST_F(DialogLife, TheEndOfTheSessionIsAnEndToo) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  dialog.diary.clear();
  const HWND window = dialog.window;
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(dialog.diary, (Diary{"state 0 7", "destroyed 2500", "destroyed"}));
  EXPECT_EQ(dialog.children.count(), 0);
  dialog.RunLoop(); // finds the WM_QUIT
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(timesOf(dialog.diary, "destroyed"), 1);
}

TEST_F(DialogLife, CanBeCreatedAgainAfterItsEnd) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.Create();
  runAndEscape(dialog);
  const int32_t last = dialog.state;
  dialog.diary.clear();
  dialog.Create();
  ASSERT_NE(dialog.window, nullptr);
  EXPECT_EQ(last, 0);
  EXPECT_EQ(timesOf(dialog.diary, "state 5 0"), 0); // the state kept its last value
  EXPECT_EQ(timesOf(dialog.diary, "state 6 0"), 0);
  EXPECT_EQ(dialog.children.count(), 2);
  EXPECT_EQ(dialog.button(0).identifier, 2500u);
  EXPECT_TRUE(IsWindow(dialog.button(1).window));
  runAndEscape(dialog);
}

TEST_F(DialogLife, MayEndBeforeItsLoopBegins) {
  TestDialog dialog;
  dialog.whenCreated = [&] { DestroyWindow(dialog.window); };
  EXPECT_EQ(dialog.RunModal(nullptr), 0);
  EXPECT_EQ(dialog.window, nullptr);
}

TEST_F(DialogLife, AClassThatCannotBeRegisteredLeavesNoWindow) {
  TestDialog dialog;
  dialog.className = RawString();
  dialog.Create();
  EXPECT_EQ(dialog.window, nullptr);
  EXPECT_EQ(dialog.RunModal(nullptr), 0);
  dialog.Show(0, 0);
  EXPECT_TRUE(dialog.diary.empty());
}

TEST_F(DialogLife, AnObjectTakesItsWindowAlong) {
  HWND window = nullptr;
  {
    TestDialog dialog;
    dialog.addButtons(3);
    dialog.Create();
    window = dialog.window;
  }
  EXPECT_FALSE(IsWindow(window));
}

// --- Messages

TEST_F(DialogMessages, EscFromAChildCloses) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  runAndEscape(dialog);
  EXPECT_EQ(timesOf(dialog.diary, "command 2500 1004"), 1);
}

TEST_F(DialogMessages, OtherCodesDoNotClose) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  dialog.button(0).sendCode(WinCodeDoubleClick);
  settle();
  EXPECT_TRUE(IsWindow(dialog.window));
}

TEST_F(DialogMessages, ADialogMayRefuseToClose) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.mayClose = false;
  dialog.Create();
  const HWND window = dialog.window;
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(window));
  dialog.mayClose = true;
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(DialogMessages, TheClientIsPaintedInTheDialogColour) {
  TestDialog dialog;
  dialog.Create();
  settle();
  EXPECT_EQ(pixel(dialog.window, 1, 1), GetSysColor(COLOR_3DFACE));
  EXPECT_EQ(pixel(dialog.window, 298, 118), GetSysColor(COLOR_3DFACE));
}

TEST_F(DialogMessages, APaintThatIsAnsweredIsLeftAlone) {
  TestDialog dialog;
  dialog.answer = [&](UINT message, WPARAM, LPARAM) {
    if (message != WM_PAINT) return WinNotHandled;
    PAINTSTRUCT paint;
    BeginPaint(dialog.window, &paint);
    fillRect(paint.hdc, dialog.clientRect(), RGB(10, 200, 30));
    frameRect(paint.hdc, dialog.clientRect(), RGB(1, 2, 3));
    EndPaint(dialog.window, &paint);
    return 0;
  };
  dialog.Create();
  settle();
  EXPECT_EQ(pixel(dialog.window, 1, 1), RGB(10, 200, 30));
  EXPECT_EQ(pixel(dialog.window, 298, 118), RGB(10, 200, 30));
  EXPECT_EQ(pixel(dialog.window, 0, 60), RGB(1, 2, 3));
  EXPECT_EQ(pixel(dialog.window, 299, 119), RGB(1, 2, 3));
}

TEST_F(DialogMessages, NothingIsErased) {
  TestDialog dialog;
  dialog.Create();
  int asked = 0;
  dialog.answer = [&](UINT message, WPARAM, LPARAM) {
    if (message == WM_ERASEBKGND) ++asked;
    return WinNotHandled;
  };
  EXPECT_NE(SendMessageW(dialog.window, WM_ERASEBKGND, 0, 0), 0);
  EXPECT_EQ(asked, 0);
}

TEST_F(DialogMessages, OwnerDrawingGoesToTheDialogOrToTheChild) {
  struct Drawn : WinView {
    int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
      return message == WM_MEASUREITEM ? 77 : WinView::OnMessage(message, wParam, lParam);
    }
  } view;
  view.className = "BUTTON"_text;
  view.style = WS_CHILD;
  TestDialog dialog;
  dialog.Create();
  dialog.addChild(view);
  dialog.answer = [](UINT message, WPARAM, LPARAM) {
    return message == WM_MEASUREITEM ? 55 : WinNotHandled;
  };
  MEASUREITEMSTRUCT measure{};
  const auto record = reinterpret_cast<LPARAM>(&measure);
  EXPECT_EQ(SendMessageW(dialog.window, WM_MEASUREITEM, 0, record), 55);
  EXPECT_EQ(SendMessageW(dialog.window, WM_MEASUREITEM, 2500, record), 77);
  EXPECT_EQ(SendMessageW(dialog.window, WM_MEASUREITEM, 9999, record), 0);
}

TEST_F(DialogMessages, ColoursOfAChildAreItsOwnElseTheDialogs) {
  struct Coloured : WinView {
    int32_t colour = WinNotHandled;
    int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
      return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT
                 ? colour
                 : WinView::OnMessage(message, wParam, lParam);
    }
  } view;
  view.className = "BUTTON"_text;
  view.style = WS_CHILD;
  TestDialog dialog;
  dialog.Create();
  dialog.addChild(view);
  dialog.answer = [](UINT message, WPARAM, LPARAM) {
    return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLOREDIT ? 5 : WinNotHandled;
  };
  for (const UINT message : {UINT{WM_CTLCOLORSTATIC}, UINT{WM_CTLCOLOREDIT}}) {
    view.colour = 9;
    const auto child = reinterpret_cast<LPARAM>(view.window);
    EXPECT_EQ(SendMessageW(dialog.window, message, 0, child), 9);
    view.colour = WinNotHandled;
    EXPECT_EQ(SendMessageW(dialog.window, message, 0, child), 5);
  }
}

TEST_F(DialogMessages, ACommandOfNoChildIsTheDialogs) {
  TestDialog dialog;
  dialog.Create();
  EXPECT_EQ(SendMessageW(dialog.window, WM_COMMAND, MAKEWPARAM(0, 0x1234), 0), -1);
}

TEST_F(DialogMessages, ShowBringsItBackToTheFront) {
  TestDialog below, above;
  below.Create();
  above.Create();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(above.window); }));
  SendMessageW(below.window, WinMessageShow, 0, 0);
  EXPECT_TRUE(isInFront(below.window));
  ShowWindow(below.window, SW_MINIMIZE);
  settle();
  SendMessageW(below.window, WinMessageShow, 0, 0);
  EXPECT_FALSE(IsIconic(below.window));
  EXPECT_TRUE(isInFront(below.window));
}

TEST_F(DialogMessages, ShowDoesNotActivateWhereTheStyleForbidsIt) {
  TestDialog quiet, other;
  quiet.extendedStyle = WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW;
  quiet.style = WS_POPUP | WS_BORDER;
  quiet.showCommand = SW_HIDE;
  quiet.Create();
  other.Create();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(other.window); }));
  SendMessageW(quiet.window, WinMessageShow, 0, 0);
  EXPECT_TRUE(IsWindowVisible(quiet.window));
  settle();
  EXPECT_TRUE(isInFront(other.window));
}

TEST_F(DialogMessages, TheLoopOffersMessagesToTheChildThatWantsThem) {
  struct Taker : WinView {
    std::vector<UINT> offered;
    bool PreTranslate(const MSG& message, LRESULT&) override {
      offered.push_back(message.message);
      return message.message == WM_KEYDOWN;
    }
  } taker;
  taker.className = "BUTTON"_text;
  taker.style = WS_CHILD | WS_VISIBLE;
  taker.viewFlags = WinView::WantsPreTranslate;
  int reached = 0;
  struct Counter : WinViewHook {
    int& count;
    explicit Counter(int& target) : count(target) {}
    int32_t OnHookMessage(UINT message, WPARAM, LPARAM) override {
      if (message == WM_KEYDOWN) ++count;
      return WinNotHandled;
    }
  } counter(reached);
  taker.addHook(counter);

  for (const bool offers : {false, true}) {
    TestDialog dialog;
    dialog.answer = [&](UINT message, WPARAM, LPARAM) {
      if (message == WM_CREATE) dialog.addChild(taker);
      return WinNotHandled;
    };
    if (offers) dialog.dialogFlags |= WinDialog::OffersKeys;
    dialog.whenCreated = [&] { SetFocus(taker.window); };
    reached = 0;
    taker.offered.clear();
    dialog.Create();
    EXPECT_TRUE(dialog.dialogFlags & WinDialog::ChildWantsKeys);
    Steps steps;
    steps.when([&] { return isInFront(dialog.window) && GetFocus() == taker.window; },
               [] { pressKey('A'); });
    steps.when([&] { return !(GetQueueStatus(QS_KEY)) && (reached || !taker.offered.empty()); },
               [&] { DestroyWindow(dialog.window); });
    dialog.RunLoop();
    EXPECT_EQ(reached, offers ? 0 : 1);
    EXPECT_EQ(taker.offered.empty(), !offers);
  }
}

// --- Focus

TEST_F(DialogFocus, TabGoesOnAndWrapsAtTheEnd) {
  TestDialog dialog;
  dialog.addButtons(3);
  dialog.Create();
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(0)); }));
  for (const int next : {1, 2, 0}) {
    pressKey(VK_TAB);
    EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(next); })) << next;
  }
}

TEST_F(DialogFocus, ShiftTabGoesBackAndWrapsAtTheBeginning) {
  TestDialog dialog;
  dialog.addButtons(3);
  dialog.Create();
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(0)); }));
  for (const int next : {2, 1, 0}) {
    pressShiftTab();
    EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(next); })) << next;
    settle();
  }
}

TEST_F(DialogFocus, DisabledChildrenAndThoseThatOnlyShowAreLeftOut) {
  TestDialog dialog;
  dialog.addButtons(4);
  dialog.button(2).viewFlags |= WinView::NotSubclassed;
  dialog.Create();
  EnableWindow(dialog.focusOf(1), FALSE);
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(0)); }));
  pressKey(VK_TAB);
  EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(3); }));
  pressShiftTab();
  EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(0); }));
}

TEST_F(DialogFocus, FromTheLastChildToTheFirstThatIsEnabled) {
  TestDialog dialog;
  dialog.addButtons(3);
  dialog.Create();
  EnableWindow(dialog.focusOf(0), FALSE);
  SetFocus(dialog.focusOf(2));
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(2)); }));
  pressKey(VK_TAB);
  EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog.focusOf(1); }));
}

TEST_F(DialogFocus, StaysWhereNoOtherTakesIt) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.Create();
  EnableWindow(dialog.focusOf(1), FALSE);
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(0)); }));
  SendMessageW(dialog.window, WinMessageMoveFocus, 2500, 0);
  EXPECT_EQ(GetFocus(), dialog.focusOf(0));
  SendMessageW(dialog.window, WinMessageMoveFocus, 9999, 0); // of nobody
  EXPECT_EQ(GetFocus(), dialog.focusOf(0));
}

TEST_F(DialogFocus, AMousePressTakesIt) {
  TestDialog dialog;
  dialog.addButtons(3);
  dialog.Create();
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(0)); }));
  const WinPoint place = centreOf(dialog.focusOf(2));
  pressMouse(place.x, place.y);
  EXPECT_TRUE(pumpUntil([&] { return timesOf(dialog.diary, "up 2502") == 1; }));
  EXPECT_EQ(GetFocus(), dialog.focusOf(2));
  EXPECT_EQ(timesOf(dialog.diary, "down 2502"), 1);
}

TEST_F(DialogFocus, ComesBackToTheChildThatHadIt) {
  TestDialog dialog, other;
  dialog.addButtons(3);
  dialog.Create();
  SetFocus(dialog.focusOf(1));
  ASSERT_TRUE(pumpUntil([&] { return hasFocus(dialog, dialog.button(1)); }));
  other.Create();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(other.window); }));
  EXPECT_TRUE(
      pumpUntil([&] { return bringToFront(dialog.window) && hasFocus(dialog, dialog.button(1)); }));
  // But not to one that cannot take it.
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(other.window); }));
  EnableWindow(dialog.focusOf(1), FALSE);
  EXPECT_TRUE(pumpUntil([&] { return bringToFront(dialog.window); }));
  EXPECT_NE(GetFocus(), dialog.focusOf(1));
}

// --- Limits

TEST_F(DialogLimits, AsItWasSetUpItMayOnlyGrow) {
  TestDialog dialog;
  dialog.Create();
  const MINMAXINFO info = askLimits(dialog);
  EXPECT_EQ(info.ptMinTrackSize.x, dialog.rect.width());
  EXPECT_EQ(info.ptMinTrackSize.y, dialog.rect.height());
  EXPECT_EQ(info.ptMaxTrackSize.x, workArea().width);
  EXPECT_EQ(info.ptMaxTrackSize.y, workArea().height);
  EXPECT_EQ(dialog.normalRect, dialog.rect);
}

TEST_F(DialogLimits, MayLoseWhatItHasWon) {
  TestDialog dialog;
  dialog.Create();
  const WinSize before{dialog.rect.width(), dialog.rect.height()};
  dialog.rect.right += 50;
  dialog.rect.bottom += 30;
  dialog.moveWindow(true);
  const MINMAXINFO info = askLimits(dialog);
  EXPECT_EQ(info.ptMinTrackSize.x, before.width);
  EXPECT_EQ(info.ptMinTrackSize.y, before.height);
  EXPECT_EQ(info.ptMaxTrackSize.x, workArea().width);
  EXPECT_EQ(info.ptMaxTrackSize.y, workArea().height);
}

TEST_F(DialogLimits, ThePlatformHoldsThem) {
  TestDialog dialog;
  dialog.Create();
  const WinSize before{dialog.rect.width(), dialog.rect.height()};
  SetWindowPos(dialog.window, nullptr, 0, 0, 20, 20, SWP_NOMOVE | SWP_NOZORDER);
  EXPECT_EQ(dialog.windowRect().width(), before.width);
  EXPECT_EQ(dialog.windowRect().height(), before.height);
}

TEST_F(DialogLimits, TheDialogMayChangeThem) {
  TestDialog dialog;
  dialog.Create();
  WinSize offeredShrink, offeredGrowth;
  dialog.limits = [&](WinSize& shrink, WinSize& growth) {
    offeredShrink = shrink;
    offeredGrowth = growth;
    shrink = {11, 22};
    growth = {33, 44};
    return true;
  };
  const MINMAXINFO info = askLimits(dialog);
  EXPECT_EQ(offeredShrink, (WinSize{0, 0}));
  EXPECT_EQ(offeredGrowth, (WinSize{workArea().width - dialog.rect.width(),
                                    workArea().height - dialog.rect.height()}));
  EXPECT_EQ(info.ptMinTrackSize.x, dialog.rect.width() - 11);
  EXPECT_EQ(info.ptMinTrackSize.y, dialog.rect.height() - 22);
  EXPECT_EQ(info.ptMaxTrackSize.x, dialog.rect.width() + 33);
  EXPECT_EQ(info.ptMaxTrackSize.y, dialog.rect.height() + 44);
}

TEST_F(DialogLimits, AnAnswerOfTheDialogIsFinal) {
  TestDialog dialog;
  dialog.Create();
  dialog.answer = [](UINT message, WPARAM, LPARAM) {
    return message == WM_GETMINMAXINFO ? 0 : WinNotHandled;
  };
  const MINMAXINFO info = askLimits(dialog);
  EXPECT_EQ(info.ptMinTrackSize.x, -5);
  EXPECT_EQ(info.ptMaxTrackSize.y, -8);
}

TEST_F(DialogLimits, AMinimisedDialogHasNone) {
  TestDialog dialog;
  dialog.Create();
  const WinRect normal = dialog.normalRect;
  dialog.state = WinDialog::Minimised;
  dialog.rect = {1, 2, 3, 4};
  const MINMAXINFO info = askLimits(dialog);
  EXPECT_EQ(info.ptMinTrackSize.x, -5);
  EXPECT_EQ(dialog.normalRect, normal);
}

// --- Handles

TEST_F(DialogSoak, TwoHundredDialogsLeaveNothing) {
  const auto runOne = [] {
    TestDialog dialog;
    dialog.addButtons(3);
    dialog.whenCreated = [&] { PostMessageW(dialog.window, WM_CLOSE, 0, 0); };
    dialog.RunModal(nullptr);
    EXPECT_EQ(timesOf(dialog.diary, "destroyed"), 1);
  };
  runOne(); // what is made once is made now
  settle();
  const uint32_t objects = drawingObjects();
  const uint32_t windows = windowCount();
  ASSERT_GT(objects, 0u);
  for (int i = 0; i < 200; ++i) runOne();
  settle();
  EXPECT_EQ(windowCount(), windows);
  EXPECT_LE(drawingObjects(), objects);
}

TEST_F(DialogSoak, TheCountsSeeALeak) {
  const uint32_t objects = drawingObjects();
  const WinBrushOwner brush(CreateSolidBrush(RGB(1, 2, 3)));
  EXPECT_EQ(drawingObjects(), objects + 1);
  const uint32_t windows = windowCount();
  TestDialog dialog;
  dialog.addButtons(3);
  dialog.Create();
  EXPECT_GE(windowCount(), windows + 4);
}

// --- Offscreen surfaces

TEST_F(DialogMessages, AnOffscreenSurfaceComesToTheWindowInOneStep) {
  TestDialog dialog;
  dialog.Create();
  settle();
  const WinWindowDc dc(dialog.window);
  WinOffscreen surface;
  for (const WinSize size : {WinSize{10, 10}, WinSize{40, 20}, WinSize{8, 30}}) {
    const HDC memory = surface.begin(dc.get(), size);
    ASSERT_NE(memory, nullptr);
    fillRect(memory, {0, 0, size.width, size.height}, RGB(size.width, size.height, 7));
    surface.end({100, 50});
    EXPECT_EQ(GetPixel(dc.get(), 100, 50), RGB(size.width, size.height, 7));
    EXPECT_EQ(GetPixel(dc.get(), 100 + size.width - 1, 50 + size.height - 1),
              RGB(size.width, size.height, 7));
  }
  EXPECT_EQ(GetPixel(dc.get(), 99, 50), GetSysColor(COLOR_3DFACE));
  EXPECT_EQ(surface.begin(dc.get(), {0, 10}), nullptr);
}
