// The form of the script's questions, under real keys and mouse.
#include "win/WinInputDialog.h"
#include "win/WindowMetrics.h"
#include "window/InputFixture.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr uint16_t ReadOnly = WinInputParameterUnit::ReadOnly;
constexpr uint16_t NoHint = WinInputParameterUnit::NoHint;
constexpr WinRect Anchor{100, 100, 500, 300};

std::string bytes(const RawString& text) {
  const RawString utf8 = text.shareAs(RawLayer::EncodingUtf8);
  return {utf8.text(), static_cast<size_t>(utf8.length())};
}
RawString chars(const std::string& text) {
  return RawString::fromChars(text.data(), static_cast<int32_t>(text.size()));
}

HWND shownMenu() {
  for (HWND each : windowsOfClass(L"#32768"))
    if (IsWindowVisible(each)) return each;
  return nullptr;
}

class InputDialog : public InputFixture {
 protected:
  WinInputParameterList fields;
  std::unique_ptr<WinInputDialog> form = std::make_unique<WinInputDialog>();
  TestDialog main;

  // The main dialog stays out of the way, also when the window manager brings the focus late.
  void SetUp() override {
    InputFixture::SetUp();
    main.rect = main.rect.movedTo(700, 500);
    main.isShy = true;
  }
  WinInputParameterUnit& add(const std::string& label, const std::string& initial = "",
                             uint16_t flags = 0) {
    auto unit = std::make_unique<WinInputParameterUnit>();
    unit->label = chars(label);
    unit->initial = chars(initial);
    unit->flags = flags;
    fields.append(unit.get());
    return *unit.release();
  }
  [[nodiscard]] std::string value(int32_t index) const {
    return bytes(WinInputParameterList::element(fields.nodeAt(index))->value);
  }
  void prepare(const std::string& title = "Form") { form->Prepare(Anchor, chars(title), fields); }
  // The windows of the form's children in the order of their creation.
  [[nodiscard]] std::vector<HWND> parts() const {
    std::vector<HWND> found;
    for (const WinView& child : form->children.elements()) found.push_back(child.window);
    return found;
  }
  [[nodiscard]] WinRect placeOf(HWND part) const {
    RECT area{};
    GetWindowRect(part, &area);
    MapWindowPoints(nullptr, form->window, reinterpret_cast<POINT*>(&area), 2);
    return rectOf(area);
  }
  [[nodiscard]] WinInputLayout layout() const {
    WinInputLayout wanted;
    wanted.margin = WindowMetrics::instance().margin;
    if (!fields.prompt.isEmpty()) wanted.prompt = sizeOf<WinStaticBox>(fields.prompt);
    int32_t rows = 0;
    for (const WinInputParameterUnit& unit : fields.elements()) {
      if (++rows > 20) break;
      WinEditBox edit;
      edit.extendedStyle |= 0x0210;
      edit.SetTitle(unit.initial);
      edit.FitToContent();
      WinHintButton hint;
      hint.FitToContent();
      wanted.rows.push_back(
          {sizeOf<WinStaticBox>(unit.label),
           {edit.windowWidth, edit.windowHeight},
           unit.flags & NoHint ? WinSize{} : WinSize{hint.windowWidth, hint.windowHeight}});
    }
    wanted.finish = sizeOf<WinButton>("Finish"_text);
    wanted.cancel = sizeOf<WinButton>("Cancel"_text);
    wanted.compute();
    return wanted;
  }
  template <class View>
  static WinSize sizeOf(const RawString& title) {
    View view;
    view.SetTitle(title);
    view.FitToContent();
    return {view.windowWidth, view.windowHeight};
  }
  [[nodiscard]] bool isReady() const {
    return form->window && bringToFront(form->window) && GetFocus() && GetFocus() != form->window &&
           IsChild(form->window, GetFocus());
  }
  // Runs the form over the main dialog; the actions come one after the other when it stands.
  int32_t run(std::initializer_list<Action> actions) {
    if (!main.window) main.Create(); // a second run has the first one's
    Steps steps;
    for (const Action& action : actions)
      steps.when([this] { return isReady() && !shownMenu(); }, action);
    steps.when([this] { return !IsWindow(form->window); }, [] {}); // within the limit
    const int32_t answer = form->RunModal(&main);
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone(); }));
    return answer;
  }
  void expectRun(int32_t answer, std::initializer_list<Action> actions) {
    EXPECT_EQ(run(actions), answer);
  }
  static Action presses(std::initializer_list<uint16_t> keys) {
    const std::vector<uint16_t> codes(keys);
    return [codes] {
      for (const uint16_t code : codes) pressKey(code);
    };
  }
  Action clicks(size_t part) {
    return [this, part] {
      const WinPoint centre = centreOf(parts()[part]);
      pressMouse(centre.x, centre.y);
    };
  }
  static int32_t workWidth() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area.right - area.left;
  }
};

const uint16_t EnterKey = VK_RETURN;

} // namespace

// --- Set-up

TEST_F(InputDialog, AnEmptyTitleGivesADefault) {
  prepare("");
  EXPECT_EQ(bytes(form->GetTitle()), "Input text.");
  WinInputDialog other;
  other.Prepare(Anchor, "Caption"_text, fields);
  EXPECT_EQ(bytes(other.GetTitle()), "Caption");
}

TEST_F(InputDialog, HasItsClassIconsAndStyles) {
  prepare();
  EXPECT_EQ(bytes(form->className), "Class_InputDialog");
  EXPECT_EQ(form->bigIconId, 130);
  EXPECT_EQ(form->smallIconId, 131);
  EXPECT_EQ(form->style & 0x00CC0000u, 0x00CC0000u);
  EXPECT_EQ(form->extendedStyle & 0x80u, 0x80u);
}

TEST_F(InputDialog, TheClientIsAQuarterOfTheWorkAreaWideAndAsHighAsTheLayout) {
  fields.prompt = "A prompt"_text;
  add("Name", "x");
  add("A longer label", "y", NoHint);
  prepare();
  EXPECT_EQ(form->client.rect.width(), workWidth() / 4);
  EXPECT_EQ(form->client.rect.height(), layout().client.height);
  // Over the middle of what it was given.
  EXPECT_EQ(form->rect.left, 100 + (400 - form->rect.width()) / 2);
  EXPECT_EQ(form->rect.top, 100 + (200 - form->rect.height()) / 2);
}

// --- What stands where

TEST_F(InputDialog, PartsStandWhereTheLayoutSaysStretchedToTheWindow) {
  fields.prompt = "A prompt"_text;
  add("Name", "x");
  add("A longer label", "y", NoHint);
  prepare();
  const WinInputLayout wanted = layout();
  const int32_t margin = wanted.margin;
  const int32_t more = workWidth() / 4 - wanted.client.width;
  run({[&] {
    const std::vector<HWND> part = parts();
    ASSERT_EQ(part.size(), 8u); // prompt, label, edit, hint, label, edit, two buttons
    const auto moved = [&](const WinRect& rect) { return rect.movedBy(margin, margin); };
    const auto wider = [&](WinRect rect) {
      rect.right += more;
      return moved(rect);
    };
    EXPECT_EQ(placeOf(part[0]), wider(wanted.promptRect));
    EXPECT_EQ(placeOf(part[1]), moved(wanted.rows[0].labelRect));
    EXPECT_EQ(placeOf(part[2]), wider(wanted.rows[0].editRect));
    EXPECT_EQ(placeOf(part[3]), moved(wanted.rows[0].hintRect).movedBy(more, 0));
    EXPECT_EQ(placeOf(part[4]), moved(wanted.rows[1].labelRect));
    EXPECT_EQ(placeOf(part[5]), wider(wanted.rows[1].editRect));
    const WinRect client = form->clientRect();
    const WinRect cancel = placeOf(part[7]);
    EXPECT_EQ(cancel.right, client.right - margin);
    EXPECT_EQ(cancel.bottom, client.bottom - margin);
    EXPECT_EQ(placeOf(part[6]).right, cancel.left);
    EXPECT_EQ(cancel.top, margin + wanted.fields.height + margin);
    pressKey(VK_ESCAPE);
  }});
}

TEST_F(InputDialog, EditsStretchWithTheWindowLabelsStayHintsFollow) {
  add("Name");
  prepare();
  run({[&] {
    const std::vector<HWND> part = parts();
    const WinRect label = placeOf(part[0]);
    const WinRect edit = placeOf(part[1]);
    const WinRect hint = placeOf(part[2]);
    const WinRect finish = placeOf(part[3]);
    const WinRect frame = form->windowRect();
    SetWindowPos(form->window, nullptr, 0, 0, frame.width() + 60, frame.height() + 20,
                 SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(pumpUntil([&] { return form->windowRect().width() == frame.width() + 60; }));
    EXPECT_EQ(placeOf(part[0]), label);
    EXPECT_EQ(placeOf(part[1]), (WinRect{edit.left, edit.top, edit.right + 60, edit.bottom}));
    EXPECT_EQ(placeOf(part[2]), hint.movedBy(60, 0));
    EXPECT_EQ(placeOf(part[3]), finish.movedBy(60, 20));
    pressKey(VK_ESCAPE);
  }});
}

TEST_F(InputDialog, TheWindowGetsNoSmallerThanTheFormNeeds) {
  add("Name");
  prepare();
  const WinSize needed = layout().client;
  run({[&] {
    const WinRect frame = form->windowRect();
    const WinRect client = form->clientRect();
    MINMAXINFO limits{};
    SendMessageW(form->window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, frame.width() - (client.width() - needed.width));
    EXPECT_EQ(limits.ptMinTrackSize.y, frame.height());
    EXPECT_GE(limits.ptMaxTrackSize.x, workWidth());
    pressKey(VK_ESCAPE);
  }});
}

TEST_F(InputDialog, ARowWithoutHintsHasNoButton) {
  add("Name", "", NoHint);
  prepare();
  run({[&] {
    EXPECT_EQ(parts().size(), 4u); // label, edit, two buttons
    pressKey(VK_ESCAPE);
  }});
}

TEST_F(InputDialog, WithTwentyOneFieldsTwentyAreShown) {
  for (int i = 0; i < 21; ++i) add("L" + std::to_string(i), "v" + std::to_string(i), NoHint);
  prepare();
  expectRun(1, {[&] {
              EXPECT_EQ(parts().size(), 42u);
              pressKey(EnterKey);
            }});
  EXPECT_EQ(value(0), "v0");
  EXPECT_EQ(value(19), "v19");
  EXPECT_EQ(value(20), "");
}

TEST_F(InputDialog, WithoutFieldsThereAreOnlyPromptAndButtons) {
  fields.prompt = "Go on?"_text;
  prepare();
  main.Create();
  Steps steps;
  steps.when([&] { return form->window && bringToFront(form->window) && parts().size() == 3; },
             clicks(1));
  EXPECT_EQ(form->RunModal(&main), 1);
  EXPECT_TRUE(steps.areDone());
}

// --- Ending

TEST_F(InputDialog, TheFirstEditBoxHasTheFocusAndTypingFillsIt) {
  add("Name");
  add("Note", "old");
  prepare();
  expectRun(1, {[&] {
                  EXPECT_EQ(GetFocus(), parts()[1]);
                  pressKey('A');
                  pressKey('B');
                },
                presses({VK_TAB, VK_TAB, VK_END, 'X', EnterKey})});
  EXPECT_EQ(value(0), "ab");
  EXPECT_EQ(value(1), "oldx");
}

TEST_F(InputDialog, EnterInAnyFieldFinishes) {
  add("Name", "", NoHint);
  add("Note", "", NoHint);
  prepare();
  expectRun(1, {presses({VK_TAB, 'N', EnterKey})});
  EXPECT_EQ(value(1), "n");
}

TEST_F(InputDialog, EscapeCancelsAndTheTextsAreCopiedAllTheSame) {
  add("Name");
  prepare();
  expectRun(0, {presses({'A', VK_ESCAPE})});
  EXPECT_EQ(value(0), "a");
}

TEST_F(InputDialog, TheButtonsFinishAndCancel) {
  add("Name", "x");
  prepare();
  expectRun(1, {clicks(3)});
  EXPECT_EQ(value(0), "x");
  expectRun(0, {clicks(4)});
}

TEST_F(InputDialog, ClosingTheWindowCancels) {
  add("Name", "x");
  prepare();
  expectRun(0, {[&] { PostMessageW(form->window, WM_CLOSE, 0, 0); }});
}

TEST_F(InputDialog, TextsAreCopiedAtEveryNotification) {
  add("Name");
  prepare();
  run({presses({'A', 'B'}),
       [&] {
         EXPECT_TRUE(pumpUntil([&] { return value(0) == "ab"; }));
         pressKey(VK_BACK);
       },
       [&] {
         EXPECT_TRUE(pumpUntil([&] { return value(0) == "a"; }));
         pressKey(VK_ESCAPE);
       }});
}

TEST_F(InputDialog, ItEndsOnceWhateverComesAfter) {
  add("Name");
  prepare();
  expectRun(1, {[&] {
              WinView* const edit = form->children.findWindow(parts()[1]);
              form->OnCommand(*edit, 0x1002);
              form->OnCommand(*edit, 0x1004);
            }});
  expectRun(0, {[&] { PostMessageW(parts()[1], WM_KEYDOWN, VK_ESCAPE, 0); }}); // run again
}

TEST_F(InputDialog, EscapeOnAButtonDoesNothing) {
  add("Name", "", NoHint);
  prepare();
  expectRun(1, {presses({VK_TAB, VK_ESCAPE}), [&] {
                  EXPECT_EQ(GetFocus(), parts()[2]);
                  settle();
                  pressKey(VK_SPACE);
                }});
}

// --- Fields

TEST_F(InputDialog, AReadOnlyFieldKeepsItsText) {
  add("Name", "fixed", ReadOnly | NoHint);
  prepare();
  expectRun(1, {presses({'A', VK_DELETE, EnterKey})});
  EXPECT_EQ(value(0), "fixed");
}

TEST_F(InputDialog, DroppedFilesMayBeTypedIn) {
  add("File");
  prepare();
  run({[&] {
    EXPECT_TRUE(GetWindowLongW(parts()[1], GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
    EXPECT_TRUE(GetWindowLongW(parts()[1], GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    pressKey(VK_ESCAPE);
  }});
}

TEST_F(InputDialog, DownOpensTheHintsWithTheFirstAsDefault) {
  WinInputParameterUnit& unit = add("Name");
  for (const RawString& hint : {"Alice"_text, "Bob"_text}) unit.hints.set(hint, RawString());
  prepare();
  main.Create();
  UINT standard = 0;
  Steps steps;
  steps.when([&] { return isReady(); }, presses({VK_DOWN}))
      .when([] { return shownMenu() != nullptr; },
            [&] {
              const auto menu = reinterpret_cast<HMENU>(SendMessageW(shownMenu(), 0x01E1, 0, 0));
              standard = GetMenuDefaultItem(menu, TRUE, 0);
              presses({VK_DOWN, VK_DOWN, VK_RETURN})();
            })
      .when([&] { return !shownMenu() && value(0) == "Bob" && isReady(); }, presses({EnterKey}));
  EXPECT_EQ(form->RunModal(&main), 1);
  EXPECT_TRUE(steps.areDone());
  EXPECT_EQ(standard, 0u); // by its position
  EXPECT_EQ(value(0), "Bob");
}

TEST_F(InputDialog, TheHintButtonFillsTheEditBox) {
  WinInputParameterUnit& unit = add("Name");
  unit.hints.set("Alice"_text, RawString());
  prepare();
  main.Create();
  Steps steps;
  steps.when([&] { return isReady(); }, clicks(2))
      .when([] { return shownMenu() != nullptr; }, presses({VK_DOWN, VK_RETURN}))
      .when([&] { return !shownMenu() && value(0) == "Alice" && isReady(); }, presses({VK_ESCAPE}));
  EXPECT_EQ(form->RunModal(&main), 0);
  EXPECT_TRUE(steps.areDone());
}

TEST_F(InputDialog, WithoutHintsDownOpensNothing) {
  add("Name");
  prepare();
  expectRun(1, {presses({VK_DOWN}), [&] {
                  settle();
                  EXPECT_EQ(shownMenu(), nullptr);
                  pressKey(EnterKey);
                }});
}

TEST_F(InputDialog, ManyFormsLeaveNothingBehind) {
  main.Create();
  const auto once = [this] {
    WinInputParameterList list = fields;
    form = std::make_unique<WinInputDialog>();
    form->Prepare(Anchor, RawString(), list);
    Steps steps;
    steps.when([this] { return isReady(); },
               [this] { // not by the keyboard: the front changes hands all the time
                 PostMessageW(parts()[2], WM_CHAR, 'a', 0);
                 PostMessageW(parts()[2], WM_KEYDOWN, VK_ESCAPE, 0);
               });
    EXPECT_EQ(form->RunModal(&main), 0);
    form.reset();
  };
  fields.prompt = "Again"_text;
  add("Name");
  add("Note");
  for (int i = 0; i < 3; ++i) once();
  const uint32_t objects = drawingObjects();
  const uint32_t windows = windowCount();
  for (int i = 0; i < 20; ++i) once();
  EXPECT_EQ(drawingObjects(), objects);
  EXPECT_EQ(windowCount(), windows);
}
