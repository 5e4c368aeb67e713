// Views: routing, titles, fonts, measuring, and the life of a child window.
#include "TestText.h"
#include "win/WindowMetrics.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr UINT Question = WM_USER + 77;

// A hook with one answer to everything, which writes down that it was asked.
class TestHook : public WinViewHook {
 public:
  TestHook(std::string& diary, char name, int32_t answer)
      : diary_(diary), name_(name), answer_(answer) {}
  WinView* leaves = nullptr; // takes itself off that view at its next message
  int32_t OnHookMessage(UINT message, WPARAM, LPARAM) override {
    if (message == Question) diary_ += name_;
    if (leaves) leaves->removeHook(*this);
    leaves = nullptr;
    return message == Question ? answer_ : WinNotHandled;
  }

 private:
  std::string& diary_;
  char name_;
  int32_t answer_;
};

class AnsweringView : public WinView {
 public:
  explicit AnsweringView(std::string& diary, int32_t answer = WinNotHandled)
      : diary_(diary), answer_(answer) {}
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message != Question) return WinView::OnMessage(message, wParam, lParam);
    diary_ += 'v';
    return answer_;
  }

 private:
  std::string& diary_;
  int32_t answer_;
};

class WinViewRouting : public Fixture {};
class WinViewBase : public Fixture {};
class WinViewFont : public Fixture {};
class WinViewWindow : public Fixture {};

WinSize textSize(HFONT font, const wchar_t* text, UINT format = DT_NOPREFIX) {
  const WinWindowDc dc(nullptr);
  const WinSelect selected(dc.get(), font);
  RECT area{0, 0, 0x7FFF, 0x7FFF};
  DrawTextW(dc.get(), text, -1, &area, format | DT_CALCRECT);
  return {area.right - area.left, area.bottom - area.top};
}

} // namespace

// --- Routing

TEST_F(WinViewRouting, TheViewIsAskedFirstThenTheHooksInOrder) {
  std::string diary;
  AnsweringView view(diary);
  TestHook a(diary, 'a', WinNotHandled);
  TestHook b(diary, 'b', WinNotHandled);
  view.addHook(a);
  view.addHook(b);
  EXPECT_EQ(view.Dispatch(Question, 0, 0), 0x7FFFFFFF);
  EXPECT_EQ(diary, "vab");
}

TEST_F(WinViewRouting, WithoutAnAnswerOfAHookTheViewsOwnCounts) {
  std::string diary;
  AnsweringView view(diary, 7);
  TestHook hook(diary, 'a', WinNotHandled);
  view.addHook(hook);
  EXPECT_EQ(view.Dispatch(Question, 0, 0), 7);
}

TEST_F(WinViewRouting, AHooksAnswerCountsMoreThanTheViews) {
  std::string diary;
  AnsweringView view(diary, 7);
  TestHook hook(diary, 'a', 9);
  view.addHook(hook);
  EXPECT_EQ(view.Dispatch(Question, 0, 0), 9);
}

TEST_F(WinViewRouting, AHookThatAnswersZeroStopsTheLaterOnes) {
  std::string diary;
  AnsweringView view(diary, 7);
  TestHook a(diary, 'a', 0);
  TestHook b(diary, 'b', 9);
  view.addHook(a);
  view.addHook(b);
  EXPECT_EQ(view.Dispatch(Question, 0, 0), 0);
  EXPECT_EQ(diary, "va");
}

TEST_F(WinViewRouting, AHookMayTakeItselfOffWhileItAnswers) {
  std::string diary;
  AnsweringView view(diary);
  TestHook a(diary, 'a', WinNotHandled);
  TestHook b(diary, 'b', WinNotHandled);
  view.addHook(a);
  view.addHook(b);
  a.leaves = &view;
  view.Dispatch(Question, 0, 0);
  view.Dispatch(Question, 0, 0);
  EXPECT_EQ(diary, "vabvb");
}

TEST_F(WinViewRouting, WhatNobodyHandlesGoesToThePlatform) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  // The button's own class answers this, the view does not.
  SetWindowTextW(dialog.button(0).window, L"abc");
  EXPECT_EQ(textOf(dialog.button(0).window), L"abc");
  EXPECT_EQ(SendMessageW(dialog.button(0).window, WM_GETTEXTLENGTH, 0, 0), 3);
}

TEST_F(WinViewRouting, AnswersOfViewAndHookReachTheSender) {
  std::string diary;
  TestDialog dialog;
  AnsweringView view(diary, 5);
  view.className = "BUTTON"_text;
  view.style = WS_CHILD | WS_VISIBLE;
  dialog.Create();
  dialog.addChild(view);
  EXPECT_EQ(SendMessageW(view.window, Question, 0, 0), 5);
  TestHook hook(diary, 'a', 0);
  view.addHook(hook);
  EXPECT_EQ(SendMessageW(view.window, Question, 0, 0), 0);
  EXPECT_EQ(diary, "vva");
  view.removeHook(hook);
  EXPECT_EQ(SendMessageW(view.window, Question, 0, 0), 5);
}

// --- Base operations

TEST_F(WinViewBase, OperationsOfABareView) {
  WinView view;
  WinSize shrink, growth;
  LRESULT result = 0;
  EXPECT_EQ(view.OnChildNotify(1), -1); // no owner
  EXPECT_EQ(view.OnMenuCommand(1, 0), -1);
  EXPECT_EQ(view.OnCommand(view, 1), 0);
  EXPECT_FALSE(view.OnMinMaxInfo(shrink, growth));
  EXPECT_FALSE(view.PreTranslate(MSG{}, result));
  EXPECT_EQ(view.OnMessage(WM_PAINT, 0, 0), 0x7FFFFFFF);
  EXPECT_EQ(view.OnMessage(WM_KEYDOWN, 'A', 0), 0x7FFFFFFF);
  EXPECT_EQ(view.OnMessage(WM_KEYDOWN, VK_TAB, 0), 0);
  EXPECT_EQ(view.OnMessage(WM_KEYDOWN, VK_ESCAPE, 0), 0);
  EXPECT_EQ(view.OnMessage(WM_COMMAND, MAKEWPARAM(2500, 0x1002), 0), -1);
  EXPECT_EQ(view.OnMessage(0x8003, 4, 0), -1);
}

TEST_F(WinViewBase, WithoutAWindowNothingHappens) {
  WinView view;
  view.invalidate();
  view.moveWindow(true);
  view.postCode(WinCodeEscape);
  EXPECT_EQ(view.sendCode(WinCodeEscape), 0);
  EXPECT_EQ(view.clientRect(), WinRect{});
  EXPECT_EQ(view.windowRect(), WinRect{});
}

TEST_F(WinViewBase, ACommandGoesToTheOwner) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.Create();
  dialog.diary.clear();
  dialog.button(1).sendCode(0x1234);
  EXPECT_EQ(dialog.diary, (Diary{"command 2501 1234"}));
  // The dialog finds the child by the identifier in the low word.
  dialog.diary.clear();
  SendMessageW(dialog.window, WM_COMMAND, MAKEWPARAM(2500, 0x1008), 0);
  EXPECT_EQ(dialog.diary, (Diary{"command 2500 1008"}));
}

TEST_F(WinViewBase, AMenuResultIsTheViewsOwn) {
  struct MenuView : WinView {
    uint32_t entry = 0;
    int32_t OnMenuCommand(uint32_t chosen, LPARAM) override {
      entry = chosen;
      return 3;
    }
  } view;
  EXPECT_EQ(view.Dispatch(WinMessageMenuResult, 0x1010, 0), 3);
  EXPECT_EQ(view.entry, 0x1010u);
}

// --- Title

TEST(WinViewTitle, EachChangeIncreasesTheRevision) {
  WinView view;
  EXPECT_EQ(view.titleRevision, 0u);
  view.SetTitle("one"_text);
  EXPECT_EQ(view.GetTitle(), "one"_text);
  EXPECT_EQ(view.titleRevision, 1u);
  view.AppendTitle(" two"_text);
  EXPECT_EQ(view.GetTitle(), "one two"_text);
  EXPECT_EQ(view.titleRevision, 2u);
  view.ClearTitle();
  EXPECT_TRUE(view.GetTitle().isEmpty());
  EXPECT_EQ(view.titleRevision, 3u);
}

TEST(WinViewTitle, TextsOfOtherEncodingsAreConverted) {
  const RawString wide = RawString::fromWide(u"\u00E9\u3042");
  WinView view;
  view.SetTitle("a"_text);
  view.AppendTitle(wide);
  EXPECT_EQ(view.GetTitle(), "a\xC3\xA9\xE3\x81\x82"_text);
  view.SetTitle(wide);
  view.AppendTitle("b"_text);
  EXPECT_EQ(view.GetTitle().encoding(), RawLayer::EncodingUtf8);
  EXPECT_EQ(view.GetTitle(), "\xC3\xA9\xE3\x81\x82"
                             "b"_text);
}

TEST(WinViewTitle, TheTitleOfAnotherIsNotTouched) {
  const RawString text = RawString::fromChars("shared");
  WinView view;
  view.SetTitle(text);
  view.AppendTitle("!"_text);
  EXPECT_EQ(text, "shared"_text);
}

// --- Font

TEST_F(WinViewFont, TheFirstInTheChainElseTheWindowFont) {
  WinFont own, parents;
  own.create();
  parents.create();
  WinView grandparent, parent, view;
  view.styleParent = &parent;
  parent.styleParent = &grandparent;
  EXPECT_EQ(view.fontHandle(), WinFont::window().handle());
  ASSERT_NE(view.fontHandle(), nullptr);
  grandparent.font = &parents;
  EXPECT_EQ(view.fontHandle(), parents.handle());
  view.font = &own;
  EXPECT_EQ(view.fontHandle(), own.handle());
  EXPECT_EQ(parent.fontHandle(), parents.handle());
}

TEST_F(WinViewFont, AWindowGetsItsFontAtCreationOnly) {
  WinFont first, second;
  first.create();
  second.create();
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.button(0).font = &first;
  dialog.Create();
  const auto fontOf = [](const WinView& view) {
    return reinterpret_cast<HFONT>(SendMessageW(view.window, WM_GETFONT, 0, 0));
  };
  EXPECT_EQ(fontOf(dialog.button(0)), first.handle());
  EXPECT_EQ(fontOf(dialog.button(1)), WinFont::window().handle());
  dialog.button(0).font = &second;
  EXPECT_EQ(fontOf(dialog.button(0)), first.handle());
}

TEST_F(WinViewFont, KeysOfASectionAreReadAndWrittenInOrder) {
  WinFont font;
  RawLayer::RawParameterList keys;
  keys.set("Height"_text, "-17"_text);
  keys.set("Weight"_text, "700"_text);
  keys.set("Italic"_text, "1"_text);
  keys.set("FaceName"_text, "Liberation Sans"_text);
  font.read(keys);
  EXPECT_EQ(font.description.lfHeight, -17);
  EXPECT_EQ(font.description.lfWeight, 700);
  EXPECT_EQ(font.description.lfItalic, 1);
  EXPECT_EQ(font.description.lfCharSet, DEFAULT_CHARSET); // missing, so as it was
  EXPECT_EQ(std::wstring(font.description.lfFaceName), L"Liberation Sans");

  RawLayer::RawParameterList written;
  font.write(written);
  std::string order;
  for (const RawLayer::RawParameterUnit& unit : written.elements())
    order += std::string(unit.key.text()) + "=" + unit.value.text() + " ";
  EXPECT_EQ(order, "Height=-17 Width=0 Escapement=0 Orientation=0 Weight=700 Italic=1 Underline=0 "
                   "StrikeOut=0 Charset=1 OutPrecision=0 ClipPrecision=0 Quality=0 PitchFamily=0 "
                   "FaceName=Liberation Sans ");
}

TEST_F(WinViewFont, AFaceNameThatIsTooLongIsCut) {
  WinFont font;
  RawLayer::RawParameterList keys;
  keys.set("FaceName"_text, RawString::fromChars(std::string(100, 'x').c_str()));
  font.read(keys);
  EXPECT_EQ(std::wstring(font.description.lfFaceName), std::wstring(LF_FACESIZE - 1, L'x'));
}

// --- Measuring

TEST(WinViewFit, ATitleWithMargins) {
  WinView view;
  view.SetTitle("Some title"_text);
  view.margins = {1, 2, 30, 40};
  view.FitToContent();
  const WinSize text = textSize(view.fontHandle(), L"Some title");
  EXPECT_EQ(view.clientWidth, text.width);
  EXPECT_EQ(view.clientHeight, text.height);
  EXPECT_EQ(view.windowWidth, text.width + 31);
  EXPECT_EQ(view.windowHeight, text.height + 42);
}

TEST(WinViewFit, AnEmptyTitleHasNoWidthAndTheHeightOfALine) {
  WinView view;
  view.FitToContent();
  EXPECT_EQ(view.clientWidth, 0);
  EXPECT_EQ(view.clientHeight, textSize(view.fontHandle(), L"A").height);
  EXPECT_GT(view.clientHeight, 5);
  EXPECT_EQ(view.windowWidth, 0);
  EXPECT_EQ(view.windowHeight, view.clientHeight);
}

TEST(WinViewFit, AnAmpersandIsAPlainCharacter) {
  WinView view;
  view.SetTitle("a&b"_text);
  view.FitToContent();
  EXPECT_EQ(view.clientWidth, textSize(view.fontHandle(), L"a&b").width);
  EXPECT_GT(view.clientWidth, textSize(view.fontHandle(), L"ab").width);
}

TEST(WinViewFit, LinesAreMeasuredWithAndWithoutWrapping) {
  WinView view;
  view.SetTitle("one\r\ntwo three\r\n"_text);
  view.FitToContent();
  const WinSize plain = textSize(view.fontHandle(), L"one\r\ntwo three\r\n");
  EXPECT_EQ(view.clientHeight, plain.height);
  EXPECT_EQ(view.clientWidth, textSize(view.fontHandle(), L"two three").width);
  view.fitFlags = WinView::TextWrapped | WinView::TextCentre;
  view.FitToContent();
  const WinSize wrapped = textSize(view.fontHandle(), L"one\r\ntwo three\r\n", 0x2810);
  EXPECT_EQ(view.clientHeight, wrapped.height);
  EXPECT_EQ(view.clientWidth, wrapped.width);
}

TEST(WinViewFit, TheFormatFollowsTheFitFlags) {
  EXPECT_EQ(textFormat(0), 0x800u);
  EXPECT_EQ(textFormat(WinView::TextWrapped), 0x2810u);
  EXPECT_EQ(textFormat(WinView::TextCentre), 0x800u | DT_CENTER);
  EXPECT_EQ(textFormat(WinView::TextRight | WinView::TextWrapped), 0x2810u | DT_RIGHT);
  EXPECT_EQ(textFormat(WinView::TextLeft | WinView::TextTop | WinView::TextMiddle), 0x800u);
}

TEST(WinViewFit, TheFontOfTheViewIsMeasured) {
  WinFont big;
  big.description.lfHeight = -60;
  big.create();
  WinView view;
  view.font = &big;
  view.FitToContent();
  EXPECT_GE(view.clientHeight, 60);
}

TEST(WinViewFit, TheFrameFollowsTheStyle) {
  WinView view;
  view.style = WS_CHILD | WS_BORDER;
  view.margins = {4, 4, 4, 4};
  view.FitToContent();
  RECT frame{-4, -4, 4, view.clientHeight + 4};
  AdjustWindowRectEx(&frame, view.style, FALSE, 0);
  EXPECT_EQ(view.windowWidth, frame.right - frame.left);
  EXPECT_EQ(view.windowHeight, frame.bottom - frame.top);
}

TEST(WinViewFit, BothBarsTakeTheWidthOfAVerticalOne) {
  const int bar = GetSystemMetrics(SM_CXVSCROLL);
  WinView view;
  WinRect rect{0, 0, 10, 10};
  view.style = WS_CHILD | WS_VSCROLL;
  view.AdjustFrame(rect);
  EXPECT_EQ(rect, (WinRect{0, 0, 10 + bar, 10}));
  rect = {0, 0, 10, 10};
  view.style = WS_CHILD | WS_HSCROLL;
  view.AdjustFrame(rect);
  EXPECT_EQ(rect, (WinRect{0, 0, 10, 10 + bar}));
}

TEST(WinViewFit, ADerivedViewMeasuresItsOwnContent) {
  struct Fixed : WinView {
    void MeasureText(WinRect& area) override { area = {5, 5, 105, 25}; }
  } view;
  view.margins = {1, 1, 1, 1};
  view.FitToContent();
  EXPECT_EQ(view.clientWidth, 100);
  EXPECT_EQ(view.clientHeight, 20);
  EXPECT_EQ(view.windowWidth, 102);
  EXPECT_EQ(view.windowHeight, 22);
}

// --- The window

TEST_F(WinViewWindow, IsMadeAsTheViewSays) {
  TestDialog dialog;
  dialog.addButtons(1);
  WinView& view = dialog.button(0);
  view.SetTitle("caf\xC3\xA9"_text);
  view.rect = {11, 22, 111, 72};
  view.extendedStyle = WS_EX_ACCEPTFILES;
  dialog.Create();
  ASSERT_NE(view.window, nullptr);
  EXPECT_EQ(view.owner, &dialog);
  EXPECT_EQ(GetParent(view.window), dialog.window);
  EXPECT_EQ(textOf(view.window), L"caf\u00E9");
  EXPECT_EQ(GetDlgCtrlID(view.window), 2500);
  EXPECT_TRUE(GetWindowLongPtrW(view.window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
  EXPECT_EQ(view.clientRect(), (WinRect{0, 0, 100, 50}));
  POINT corner{11, 22};
  ClientToScreen(dialog.window, &corner);
  EXPECT_EQ(view.windowRect(), (WinRect{corner.x, corner.y, corner.x + 100, corner.y + 50}));
  EXPECT_FALSE(view.viewFlags & WinView::NotSubclassed);
}

TEST_F(WinViewWindow, OnCreatedFindsItStanding) {
  struct Curious : WinView {
    HWND seen = nullptr;
    void OnCreated() override { seen = window; }
  } view;
  view.className = "BUTTON"_text;
  view.style = WS_CHILD;
  TestDialog dialog;
  dialog.Create();
  dialog.addChild(view);
  EXPECT_NE(view.seen, nullptr);
  EXPECT_EQ(view.seen, view.window);
}

TEST_F(WinViewWindow, AViewOfAnOwnClassIsNotSubclassed) {
  WinView view;
  view.className = "BUTTON"_text;
  view.classKind = WinView::OwnClass;
  view.style = WS_CHILD;
  TestDialog dialog;
  dialog.Create();
  dialog.addChild(view);
  EXPECT_TRUE(view.viewFlags & WinView::NotSubclassed);
  DestroyWindow(view.window);
  view.window = nullptr;
}

TEST_F(WinViewWindow, AnUnknownClassLeavesNoWindow) {
  WinView view;
  view.className = "Class_Nobody"_text;
  view.style = WS_CHILD;
  TestDialog dialog;
  dialog.Create();
  dialog.addChild(view);
  EXPECT_EQ(view.window, nullptr);
  view.invalidate();
}

TEST_F(WinViewWindow, MovesToTheRectangleOfTheView) {
  TestDialog dialog;
  dialog.addButtons(1);
  dialog.Create();
  dialog.button(0).rect = {1, 2, 41, 62};
  dialog.button(0).moveWindow(false);
  EXPECT_EQ(dialog.button(0).clientRect(), (WinRect{0, 0, 40, 60}));
}

TEST_F(WinViewWindow, GoesWithItsView) {
  TestDialog dialog;
  dialog.Create();
  HWND window = nullptr;
  {
    TestButton view(dialog.diary);
    dialog.addChild(view);
    window = view.window;
    EXPECT_EQ(dialog.children.count(), 1);
  }
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(dialog.children.count(), 0);
}

TEST_F(WinViewWindow, ThatIsDestroyedLeavesItsView) {
  TestDialog dialog;
  dialog.addButtons(2);
  dialog.Create();
  dialog.diary.clear();
  DestroyWindow(dialog.button(0).window);
  EXPECT_EQ(dialog.button(0).window, nullptr);
  EXPECT_EQ(dialog.diary, (Diary{"destroyed 2500"}));
  EXPECT_EQ(dialog.children.findIdentifier(2500), nullptr);
  EXPECT_EQ(dialog.children.findIdentifier(2501), &dialog.button(1));
}

// --- The list of children

TEST(WinViewList, IdentifiersCountUpFrom2500) {
  WinViewList list;
  WinView a, b;
  list.add(a);
  list.add(b);
  EXPECT_EQ(a.identifier, 2500u);
  EXPECT_EQ(b.identifier, 2501u);
  EXPECT_EQ(list.findIdentifier(2501), &b);
  EXPECT_EQ(list.findIdentifier(2502), nullptr);
  list.remove(2500);
  EXPECT_EQ(list.findIdentifier(2500), nullptr);
  WinView c;
  list.add(c);
  EXPECT_EQ(c.identifier, 2502u);
  list.remove(9999);
  EXPECT_EQ(list.count(), 2);
  list.removeView(c);
  list.removeView(c);
  EXPECT_EQ(list.count(), 1);
  list.removeAll();
  list.add(a);
  EXPECT_EQ(a.identifier, 2500u);
}

TEST(WinViewList, FindsByWindowButNeverANullOne) {
  WinViewList list;
  WinView a, b;
  list.add(a);
  list.add(b);
  b.window = GetDesktopWindow();
  EXPECT_EQ(list.findWindow(b.window), &b);
  EXPECT_EQ(list.findWindow(nullptr), nullptr);
  b.window = nullptr;
}

TEST(WinViewColours, AreThoseOfTheSystem) {
  EXPECT_EQ(WinView::windowTextColour(), GetSysColor(COLOR_WINDOWTEXT));
  EXPECT_EQ(WinView::dialogColour(), GetSysColor(COLOR_3DFACE));
}
