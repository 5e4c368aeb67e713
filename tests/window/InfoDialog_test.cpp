// The message box of the program: its arithmetic, its answers, and every way to close it.
#include "win/WinInfoDialog.h"
#include "win/WindowMetrics.h"
#include "window/Faces.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;
using Draw = WinButtonDraw;

namespace {

constexpr WinRect Middle{400, 300, 800, 600};

// The children in their order, or null.
HWND childOf(HWND dialog, int index) {
  HWND child = GetWindow(dialog, GW_CHILD);
  for (int i = 0; child && i < index; ++i) child = GetWindow(child, GW_HWNDNEXT);
  return child;
}

WinRect inClient(HWND dialog, HWND child) {
  RECT area{};
  GetWindowRect(child, &area);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
  return rectOf(area);
}

LRESULT sendNumber(HWND window, const char* number) {
  COPYDATASTRUCT data{};
  data.cbData = static_cast<DWORD>(strlen(number));
  data.lpData = const_cast<char*>(number);
  return SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

struct InfoDialog : Fixture {
  WinInfoDialog dialog;
  RawLayer::RawLabelList answers;

  void prepare(const RawString& text, uint16_t icon, int32_t initial = 0) {
    dialog.Prepare("Caption"_text, text, answers, icon, initial, Middle);
  }
  void askYesNo(int32_t initial = 0) {
    answers.add("Yes"_text, 11);
    answers.add("No"_text, 12);
    prepare("Shall it go on?"_text, WinInfoDialog::IconQuestion, initial);
  }
  [[nodiscard]] bool isUp() const { return bringToFront(dialog.window) && GetFocus() == row(); }
  [[nodiscard]] HWND row() const { return childOf(dialog.window, 2); }
  // Runs the dialog, and does that once it stands.
  int32_t runWith(const Action& action) {
    Steps steps;
    steps.when([this] { return isUp(); }, action);
    const int32_t result = dialog.RunModal(nullptr);
    EXPECT_TRUE(steps.areDone());
    return result;
  }
  void show() {
    dialog.Create();
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
  }
};

} // namespace

// --- Set-up

TEST_F(InfoDialog, IconTextAndAnswersStandInTheirPlaces) {
  askYesNo();
  show();
  const int32_t margin = WindowMetrics::instance().margin;
  const WinRect image = inClient(dialog.window, childOf(dialog.window, 0));
  const WinRect text = inClient(dialog.window, childOf(dialog.window, 1));
  const WinRect answersRow = inClient(dialog.window, row());
  const WinRect client = dialog.clientRect();
  const int32_t iconWidth = GetSystemMetrics(SM_CXICON) + 4; // margins of 2 on each side
  EXPECT_EQ(image, (WinRect{margin, margin, margin + iconWidth, margin + iconWidth}));
  EXPECT_EQ(text.left, image.right);
  EXPECT_EQ(text.top, image.top);
  EXPECT_EQ(text.bottom, image.bottom); // the icon is higher than a line
  EXPECT_EQ(answersRow.top, text.bottom + margin);
  EXPECT_EQ(answersRow.right, text.right);
  EXPECT_EQ(client.right, text.right + margin);
  EXPECT_EQ(client.bottom, answersRow.bottom + margin);
}

TEST_F(InfoDialog, WithoutAnIconTheTextStandsAtTheLeftMargin) {
  answers.add("OK"_text, 1);
  prepare("A text that is wider than its answer"_text, WinInfoDialog::IconNone);
  show();
  const WinRect text = inClient(dialog.window, childOf(dialog.window, 0));
  EXPECT_EQ(text.left, WindowMetrics::instance().margin);
  EXPECT_EQ(childOf(dialog.window, 2), nullptr); // text and answers
}

TEST_F(InfoDialog, ASingleAnswerIsARowOfOneCell) {
  answers.add("OK"_text, 1);
  prepare("Done."_text, WinInfoDialog::IconExclamation);
  show();
  const WinRect cell{0, 0, inClient(dialog.window, row()).width(),
                     inClient(dialog.window, row()).height()};
  SetFocus(row());
  EXPECT_TRUE(comesToShow(row(), cell, Draw::CornersAll | Draw::Focused));
}

TEST_F(InfoDialog, AWideTextAndANarrowRowAreEquallyWide) {
  answers.add("OK"_text, 1);
  prepare("A text that is very much wider than the one answer that can be given to it"_text,
          WinInfoDialog::IconNone);
  show();
  const WinRect text = inClient(dialog.window, childOf(dialog.window, 0));
  const WinRect answersRow = inClient(dialog.window, childOf(dialog.window, 1));
  EXPECT_LT(answersRow.width(), text.width());
  EXPECT_EQ(answersRow.right, text.right);
  EXPECT_EQ(dialog.clientRect().right, text.right + WindowMetrics::instance().margin);
}

TEST_F(InfoDialog, WideAnswersWidenTheText) {
  answers.add("A very long answer to a very short question"_text, 1);
  prepare("Why?"_text, WinInfoDialog::IconNone);
  show();
  const WinRect text = inClient(dialog.window, childOf(dialog.window, 0));
  const WinRect answersRow = inClient(dialog.window, childOf(dialog.window, 1));
  EXPECT_EQ(text.left, answersRow.left);
  EXPECT_EQ(text.right, answersRow.right);
}

TEST_F(InfoDialog, AnEmptyLabelEndsTheAnswers) {
  answers.add("One"_text, 1);
  answers.add(RawString(), 2);
  answers.add("Three"_text, 3);
  prepare("?"_text, WinInfoDialog::IconNone);
  const int32_t width = dialog.rect.width();
  answers = RawLayer::RawLabelList();
  answers.add("One"_text, 1);
  prepare("?"_text, WinInfoDialog::IconNone);
  EXPECT_EQ(dialog.rect.width(), width);
}

TEST_F(InfoDialog, ItStandsInTheMiddleOfTheRectangle) {
  askYesNo();
  EXPECT_EQ(dialog.rect.left - Middle.left, (Middle.width() - dialog.rect.width()) / 2);
  EXPECT_EQ(dialog.rect.top - Middle.top, (Middle.height() - dialog.rect.height()) / 2);
  dialog.Prepare("Caption"_text, "Text"_text, answers, 0, 0, {-500, -500, -400, -400});
  EXPECT_EQ(dialog.rect.left, 0); // pushed in
  EXPECT_EQ(dialog.rect.top, 0);
}

TEST_F(InfoDialog, ItsStyleAndCaption) {
  askYesNo();
  show();
  EXPECT_EQ(textOf(dialog.window), L"Caption");
  const auto style = static_cast<DWORD>(GetWindowLongW(dialog.window, GWL_STYLE));
  constexpr DWORD wanted = WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  EXPECT_EQ(style & wanted, wanted);
  EXPECT_TRUE(GetWindowLongW(dialog.window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
  EXPECT_EQ(windowsOfClass(L"Class_InfoDialog").size(), 1U);
}

// --- Answers

TEST_F(InfoDialog, EnterGivesTheFirstAnswer) {
  askYesNo();
  EXPECT_EQ(runWith([] { pressKey(VK_RETURN); }), 11);
  EXPECT_EQ(dialog.window, nullptr);
}

TEST_F(InfoDialog, TheInitialAnswerHasTheFocus) {
  askYesNo(12);
  EXPECT_EQ(runWith([] { pressKey(VK_SPACE); }), 12);
}

TEST_F(InfoDialog, ArrowsChooseAnotherAnswer) {
  askYesNo();
  EXPECT_EQ(runWith([] {
              pressKey(VK_RIGHT);
              pressKey(VK_RETURN);
            }),
            12);
}

TEST_F(InfoDialog, AClickGivesItsAnswer) {
  askYesNo();
  EXPECT_EQ(runWith([this] {
              RECT area{};
              GetWindowRect(row(), &area);
              pressMouse(area.right - 6, (area.top + area.bottom) / 2);
            }),
            12);
}

TEST_F(InfoDialog, ADoubleClickAnswersOnce) {
  askYesNo();
  EXPECT_EQ(runWith([this] {
              RECT area{};
              GetWindowRect(row(), &area);
              for (int i = 0; i < 2; ++i) pressMouse(area.left + 6, (area.top + area.bottom) / 2);
            }),
            11);
}

TEST_F(InfoDialog, ClosedByOtherMeansItsResultIsZero) {
  askYesNo();
  EXPECT_EQ(runWith([] { pressKey(VK_ESCAPE); }), 0);
  EXPECT_EQ(runWith([this] { PostMessageW(dialog.window, WM_CLOSE, 0, 0); }), 0);
  EXPECT_EQ(runWith([this] { PostMessageW(dialog.window, WM_SYSCOMMAND, SC_CLOSE, 0); }), 0);
  EXPECT_EQ(runWith([this] {
              pressKey(VK_RIGHT); // a cell only looked at is no answer
              pressKey(VK_ESCAPE);
            }),
            0);
}

TEST_F(InfoDialog, AnotherProcessAnswersByANumber) {
  askYesNo();
  EXPECT_EQ(runWith([this] { EXPECT_EQ(sendNumber(dialog.window, "12"), 1); }), 12);
  EXPECT_EQ(runWith([this] { EXPECT_EQ(sendNumber(dialog.window, "77"), 1); }), 77);
  EXPECT_EQ(runWith([this] { EXPECT_EQ(sendNumber(row(), "11"), 1); }), 11);
}

TEST_F(InfoDialog, TheFirstOfTwoAnswersCounts) {
  askYesNo();
  EXPECT_EQ(runWith([this] {
              const HWND window = dialog.window;
              sendNumber(window, "12");
              sendNumber(window, "11");
            }),
            12);
}

TEST_F(InfoDialog, ItCanBeAskedAgain) {
  askYesNo();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(runWith([] { pressKey(VK_RETURN); }), 11);
}

TEST_F(InfoDialog, WithoutAnswersOnlyTheClosingIsLeft) {
  prepare("Nothing to say"_text, WinInfoDialog::IconNone);
  Steps steps;
  steps.when([&] { return bringToFront(dialog.window); },
             [] {
               pressKey(VK_RETURN);
               pressKey(VK_ESCAPE);
             });
  EXPECT_EQ(dialog.RunModal(nullptr), 0);
}

// --- Sizes

TEST_F(InfoDialog, GrowingStretchesTheTextAndKeepsTheAnswersAtTheRightBottom) {
  askYesNo();
  show();
  const WinRect image = inClient(dialog.window, childOf(dialog.window, 0));
  const WinRect text = inClient(dialog.window, childOf(dialog.window, 1));
  const WinRect answersRow = inClient(dialog.window, row());
  const WinRect before = dialog.windowRect();
  SetWindowPos(dialog.window, nullptr, 0, 0, before.width() + 50, before.height() + 30,
               SWP_NOMOVE | SWP_NOZORDER);
  ASSERT_TRUE(pumpUntil([&] { return dialog.windowRect().width() == before.width() + 50; }));
  settle();
  EXPECT_EQ(inClient(dialog.window, childOf(dialog.window, 0)), image);
  EXPECT_EQ(inClient(dialog.window, childOf(dialog.window, 1)),
            (WinRect{text.left, text.top, text.right + 50, text.bottom}));
  EXPECT_EQ(inClient(dialog.window, row()), answersRow.movedBy(50, 30));
}

TEST_F(InfoDialog, ItShrinksOnlyByWhatItHasGrown) {
  askYesNo();
  show();
  const WinRect before = dialog.windowRect();
  MINMAXINFO limits{};
  SendMessageW(dialog.window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, before.width());
  EXPECT_EQ(limits.ptMinTrackSize.y, before.height());
  SetWindowPos(dialog.window, nullptr, 0, 0, before.width() + 50, before.height() + 30,
               SWP_NOMOVE | SWP_NOZORDER);
  ASSERT_TRUE(pumpUntil([&] { return dialog.windowRect().width() == before.width() + 50; }));
  SendMessageW(dialog.window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  EXPECT_EQ(limits.ptMinTrackSize.x, before.width());
  EXPECT_EQ(limits.ptMinTrackSize.y, before.height());
}

TEST_F(InfoDialog, AVeryLongTextLeavesTheAnswersOnTheScreen) {
  RawString text;
  for (int i = 0; i < 200; ++i) text.append("A long line and many. "_text);
  for (int i = 0; i < 100; ++i) text.append("\r\nline"_text);
  answers.add("OK"_text, 1);
  prepare(text, WinInfoDialog::IconExclamation);
  show();
  RECT area{};
  GetWindowRect(row(), &area);
  EXPECT_GE(area.left, 0); // the platform lets a window stick out by its frame
  EXPECT_LE(area.right, GetSystemMetrics(SM_CXSCREEN) + GetSystemMetrics(SM_CXFRAME));
  EXPECT_LE(area.bottom, GetSystemMetrics(SM_CYSCREEN) + GetSystemMetrics(SM_CYFRAME));
}
