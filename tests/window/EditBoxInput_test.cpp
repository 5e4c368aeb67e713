// The edit box and the input method: the platform's messages, with a stand-in behind them.
#include "window/EditBoxTest.h"

#include <imm.h>

using namespace WindowTest;
using namespace WinLayer;

namespace {

// Writes down what it is asked for; a test sets what it answers.
class StubMethod : public WinInputMethod {
 public:
  Diary diary;
  bool present = true;
  bool openState = false;
  std::u16string running;
  std::u16string result;
  LOGFONTW font{};
  HWND associated = nullptr;

  StubMethod() { install(this); }
  ~StubMethod() override { install(nullptr); }

  HIMC context() { return reinterpret_cast<HIMC>(this); }
  bool isPresent() override {
    diary.push_back("present");
    return present;
  }
  HIMC createContext() override {
    diary.push_back("create");
    return context();
  }
  void destroyContext(HIMC which) override { note("destroy", which); }
  void associate(HWND window, HIMC which) override {
    diary.push_back(which ? "attach" : "detach");
    associated = which ? window : nullptr;
  }
  bool isOpen(HIMC which) override {
    EXPECT_EQ(which, context());
    return openState;
  }
  void open(HIMC which) override { note("open", which); }
  RawString text(HIMC, DWORD kind) override {
    return wide(kind == GCS_RESULTSTR ? result : running);
  }
  void setText(HIMC which, const RawString& text) override {
    note("text " + bytesOfUtf8(text), which);
  }
  void setFont(HIMC, const LOGFONTW& given) override { font = given; }
  void complete(HIMC which) override { note("complete", which); }
  void registerWord(HWND, const RawString& word) override {
    diary.push_back("register " + bytesOfUtf8(word));
  }
  [[nodiscard]] int64_t times(const std::string& line) const { return timesOf(diary, line); }

 private:
  static std::string bytesOfUtf8(const RawString& text) {
    const RawString bytes = text.shareAs(RawLayer::EncodingUtf8);
    return {bytes.text(), static_cast<size_t>(bytes.length())};
  }
  void note(const std::string& line, HIMC which) {
    EXPECT_EQ(which, context());
    diary.push_back(line);
  }
};

// Outlives the box.
struct MethodHolder {
  StubMethod method;
};

struct EditBoxInput : MethodHolder, EditBoxFixture {
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(box.window, message, wParam, lParam);
  }
  void start() const { send(WM_IME_STARTCOMPOSITION); }
  void compose(const std::u16string& running) {
    method.running = running;
    send(WM_IME_COMPOSITION, 0, GCS_COMPSTR);
  }
  void confirm(const std::u16string& result) {
    method.result = result;
    send(WM_IME_COMPOSITION, 0, GCS_RESULTSTR);
  }
  void end() const { send(WM_IME_ENDCOMPOSITION); }
  [[nodiscard]] bool has(WinEditBoxInfo::Flag flag) const { return box.info.has(flag); }
};

} // namespace

// --- The context

TEST_F(EditBoxInput, TheContextIsMadeAtTheFirstFocusAndGoesWithTheBox) {
  {
    WinEditBox other;
    EXPECT_EQ(method.times("create"), 0);
    TestDialog second;
    second.Create();
    other.rect = {10, 10, 100, 30};
    second.addChild(other);
    EXPECT_EQ(method.times("create"), 0);
    SendMessageW(other.window, WM_SETFOCUS, 0, 0);
    SendMessageW(other.window, WM_KILLFOCUS, 0, 0);
    SendMessageW(other.window, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(method.times("create"), 1);
    EXPECT_EQ(method.times("attach"), 1);
    EXPECT_TRUE(other.info.has(WinEditBoxInfo::ContextAttached));
    EXPECT_EQ(method.times("destroy"), 0);
  }
  EXPECT_EQ(method.times("destroy"), 1);
}

TEST_F(EditBoxInput, TheWindowOfADialogCreatedAgainGetsTheContextToo) {
  WinEditBox other;
  TestDialog second;
  other.rect = {10, 10, 100, 30};
  for (int run = 1; run <= 2; ++run) {
    second.Create();
    second.addChild(other);
    SendMessageW(other.window, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(method.times("attach"), run);
    EXPECT_EQ(method.associated, other.window);
    DestroyWindow(second.window);
  }
  EXPECT_EQ(method.times("create"), 1);
}

TEST_F(EditBoxInput, WithoutAnInputMethodThereIsNoContext) {
  method.present = false;
  open(u"ab");
  EXPECT_EQ(method.times("create"), 0);
  EXPECT_FALSE(has(WinEditBoxInfo::ContextAttached));
  start();
  compose(u"x");
  EXPECT_EQ(text(), u"ab");
  EXPECT_FALSE(box.info.composing);
}

TEST_F(EditBoxInput, AReadOnlyBoxAndOneThatIsKeptAwayAttachNone) {
  open(u"ab", WinEditBoxInfo::ReadOnly);
  EXPECT_EQ(method.times("attach"), 0);
  start();
  EXPECT_FALSE(box.info.composing);
  box.setReadOnly(false);
  EXPECT_EQ(method.times("attach"), 1);
  EXPECT_EQ(method.associated, box.window);
  box.info.setFlag(WinEditBoxInfo::NoInputMethod, true);
  send(WM_SETFOCUS);
  EXPECT_EQ(method.times("detach"), 1);
  EXPECT_FALSE(has(WinEditBoxInfo::ContextAttached));
}

TEST_F(EditBoxInput, TheOpenStateIsReadAtTheFocusAndWhenItChanges) {
  method.openState = true;
  open(u"ab");
  EXPECT_TRUE(has(WinEditBoxInfo::InputMethodOpen));
  EXPECT_TRUE(pumpUntil([&] { return pixel(box.window, 0, 0) == 0x80FF80; }));
  method.openState = false;
  send(WM_IME_NOTIFY, IMN_CHANGECANDIDATE);
  EXPECT_TRUE(has(WinEditBoxInfo::InputMethodOpen));
  send(WM_IME_NOTIFY, IMN_SETOPENSTATUS);
  EXPECT_FALSE(has(WinEditBoxInfo::InputMethodOpen));
  EXPECT_TRUE(pumpUntil([&] { return pixel(box.window, 0, 0) == 0xFFC0A0; }));
  method.openState = true;
  send(WM_IME_NOTIFY, IMN_SETOPENSTATUS);
  EXPECT_TRUE(has(WinEditBoxInfo::InputMethodOpen));
  send(WM_KILLFOCUS);
  EXPECT_FALSE(has(WinEditBoxInfo::InputMethodOpen));
}

// --- Composing

TEST_F(EditBoxInput, ARunningTextStandsSelectedAndIsReplacedByTheNext) {
  open(u"abcd");
  box.setSelection(1, 3);
  start();
  EXPECT_TRUE(box.info.composing);
  EXPECT_EQ(text(), u"ad");
  compose(u"\u304B");
  compose(u"\u304B\u3093");
  EXPECT_EQ(text(), u"a\u304B\u3093d");
  EXPECT_EQ(place(), "1-3");
  confirm(u"\u6F22\u5B57");
  end();
  EXPECT_EQ(text(), u"a\u6F22\u5B57d");
  EXPECT_EQ(place(), "3");
  EXPECT_EQ(unitsOf(box.info.lastComposed), u"\u6F22\u5B57");
  EXPECT_FALSE(box.info.composing);
}

TEST_F(EditBoxInput, WhatIsNotConfirmedIsDroppedAtTheEnd) {
  open(u"abcd");
  box.setSelection(2, 2);
  start();
  compose(u"xyz");
  end();
  EXPECT_EQ(text(), u"abcd");
  EXPECT_EQ(place(), "2");
}

TEST_F(EditBoxInput, ResultAndNextRunningTextMayComeTogether) {
  open(u"");
  start();
  compose(u"a");
  method.result = u"A";
  method.running = u"b";
  send(WM_IME_COMPOSITION, 0, GCS_RESULTSTR | GCS_COMPSTR);
  EXPECT_EQ(text(), u"Ab");
  EXPECT_EQ(selected(), u"b");
}

TEST_F(EditBoxInput, TheCompositionHasTheFontOfTheView) {
  WinFont font;
  font.description.lfHeight = 23;
  font.create();
  box.font = &font;
  open(u"");
  start();
  EXPECT_EQ(method.font.lfHeight, 23);
  end();
  box.font = nullptr;
}

TEST_F(EditBoxInput, LosingTheFocusOrAPressCompletesARunningText) {
  open(u"ab");
  send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 10));
  send(WM_LBUTTONUP, 0, MAKELPARAM(1, 10));
  EXPECT_EQ(method.times("complete"), 0);
  start();
  compose(u"x");
  send(WM_MBUTTONDOWN, MK_MBUTTON, MAKELPARAM(1, 10));
  EXPECT_EQ(method.times("complete"), 1);
  send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 10));
  send(WM_LBUTTONUP, 0, MAKELPARAM(1, 10));
  EXPECT_EQ(method.times("complete"), 2);
  send(WM_KILLFOCUS);
  EXPECT_EQ(method.times("complete"), 3);
  end();
  send(WM_KILLFOCUS);
  EXPECT_EQ(method.times("complete"), 3);
}

// --- Requests

TEST_F(EditBoxInput, ThePlaceOfTheCaretIsTold) {
  open(u"abcdef");
  box.setSelection(4, 4);
  IMECHARPOSITION place{};
  place.dwSize = sizeof place;
  EXPECT_EQ(sizeof place, 36u);
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_QUERYCHARPOSITION, reinterpret_cast<LPARAM>(&place)), 1);
  const WinRect client = box.clientRect();
  POINT origin{0, 0};
  ClientToScreen(box.window, &origin);
  EXPECT_EQ(place.pt.x, origin.x + box.caretPlace().left);
  EXPECT_EQ(place.pt.y, origin.y + box.caretPlace().top);
  EXPECT_EQ(place.cLineHeight, static_cast<UINT>(box.info.lineHeight));
  EXPECT_EQ(rectOf(place.rcDocument), client.movedBy(origin.x, origin.y));
}

TEST_F(EditBoxInput, TheLastComposedTextIsOfferedAgain) {
  open(u"a");
  key(VK_END);
  start();
  confirm(u"\u6F22\u5B57");
  end();
  const LRESULT size = send(WM_IME_REQUEST, IMR_RECONVERTSTRING);
  ASSERT_EQ(size, 2 * 2 + 32);
  alignas(RECONVERTSTRING) char room[64] = {};
  auto* offer = reinterpret_cast<RECONVERTSTRING*>(room);
  offer->dwSize = static_cast<DWORD>(size);
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_RECONVERTSTRING, reinterpret_cast<LPARAM>(offer)), size);
  EXPECT_EQ(offer->dwSize, static_cast<DWORD>(size));
  EXPECT_EQ(offer->dwStrLen, 2u);
  EXPECT_EQ(offer->dwStrOffset, 32u);
  EXPECT_EQ(offer->dwCompStrLen, 2u);
  EXPECT_EQ(std::u16string(reinterpret_cast<char16_t*>(room + 32), 2), u"\u6F22\u5B57");
  EXPECT_EQ(place(), "1-3"); // what comes back takes its place
}

TEST_F(EditBoxInput, NothingElseIsOffered) {
  open(u"a");
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_RECONVERTSTRING), 0);
  start();
  confirm(u"x");
  end();
  key(VK_HOME);
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_RECONVERTSTRING), 0);
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_DOCUMENTFEED), 0);
}

TEST_F(EditBoxInput, AnOfferThatIsTooSmallIsLeftAsItIs) {
  open(u"");
  start();
  confirm(u"xyz");
  end();
  RECONVERTSTRING offer{};
  offer.dwSize = sizeof offer;
  EXPECT_EQ(send(WM_IME_REQUEST, IMR_RECONVERTSTRING, reinterpret_cast<LPARAM>(&offer)), 0);
  EXPECT_EQ(offer.dwStrLen, 0u);
}

// --- The menu's entries

TEST_F(EditBoxInput, WithoutAContextTheMenusEntriesAreDisabled) {
  open(u"abcd");
  choose(0);
  EXPECT_TRUE(isEnabled(8));
  EXPECT_TRUE(isEnabled(9));
  method.present = false;
  WinEditBox plain;
  plain.rect = {10, 60, 210, 84};
  dialog.addChild(plain);
  SetFocus(plain.window);
  target = plain.window;
  choose(0);
  EXPECT_FALSE(isEnabled(8));
  EXPECT_FALSE(isEnabled(9));
  plain.OnMenuCommand(8, 0);
  plain.OnMenuCommand(9, 0);
  EXPECT_EQ(method.times("open"), 0);
}

TEST_F(EditBoxInput, TheMenuOpensTheInputMethodOnTheSelection) {
  open(u"abcd");
  box.setSelection(1, 3);
  EXPECT_EQ(box.OnMenuCommand(8, 0), 0);
  ASSERT_GE(method.diary.size(), 2u);
  EXPECT_EQ(method.diary[method.diary.size() - 2], "open");
  EXPECT_EQ(method.diary.back(), "text bc");
  box.setReadOnly(true);
  const size_t before = method.diary.size();
  box.OnMenuCommand(8, 0);
  EXPECT_EQ(method.diary.size(), before);
}

TEST_F(EditBoxInput, TheMenuHandsTheSelectionToTheDictionary) {
  open(u"abcd", WinEditBoxInfo::ReadOnly);
  box.setSelection(1, 3);
  box.OnMenuCommand(9, 0);
  EXPECT_EQ(method.diary.back(), "register bc");
}

// --- The platform's own

TEST_F(EditBoxInput, ThePlatformsMethodBearsAMissingContext) {
  WinInputMethod::install(nullptr);
  WinInputMethod& platform = WinInputMethod::current();
  platform.destroyContext(nullptr);
  platform.open(nullptr);
  platform.complete(nullptr);
  platform.setText(nullptr, wide(u"x"));
  EXPECT_FALSE(platform.isOpen(nullptr));
  EXPECT_TRUE(platform.text(nullptr, GCS_RESULTSTR).isEmpty());
}

TEST_F(EditBoxInput, ThePlatformsContextsWork) {
  WinInputMethod::install(nullptr);
  WinInputMethod& platform = WinInputMethod::current();
  const HIMC context = platform.createContext();
  ASSERT_NE(context, nullptr);
  EXPECT_FALSE(platform.isOpen(context));
  platform.open(context);
  EXPECT_TRUE(platform.isOpen(context));
  EXPECT_TRUE(platform.text(context, GCS_COMPSTR).isEmpty());
  platform.destroyContext(context);
}
