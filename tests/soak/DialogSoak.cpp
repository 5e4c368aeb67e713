// Every dialog opened and closed again and again in one process: what the process holds after the
// first rounds it holds after the last. SOAK_ROUNDS in the environment asks for more rounds.
#include "soak/SoakFigures.h"
#include "win/WinInfoDialog.h"
#include "win/WinInputDialog.h"
#include "win/WinRadioButton.h"
#include "win/WinTipDialog.h"
#include "window/WindowTest.h"

#include <cstdio>
#include <cstdlib>

using namespace RawLayer::RawLiterals;
using namespace WinLayer;

namespace {

constexpr int WarmUp = 20;
constexpr int UsualRounds = 100;
// A byte kept by each round would be more. The heap itself differs by some blocks.
constexpr int64_t AllocatedSlack = 3000;
constexpr int64_t ResidentSlack = 4 * 1024 * 1024;

int rounds() {
  const char* asked = std::getenv("SOAK_ROUNDS");
  return asked ? std::max(std::atoi(asked), WarmUp + 1) : UsualRounds;
}

struct Held {
  SoakFigures process;
  int64_t drawing;
  int64_t windows;
};

Held held() {
  WindowTest::settle();
  return {soakFigures(), WindowTest::drawingObjects(), WindowTest::windowCount()};
}

void print(const char* what, int round, const Held& now) {
  std::printf("%-12s %6d rounds: %lld bytes in use, %lld resident, %lld handles, %lld for drawing, "
              "%lld windows\n",
              what, round, static_cast<long long>(now.process.allocated),
              static_cast<long long>(now.process.resident),
              static_cast<long long>(now.process.handles), static_cast<long long>(now.drawing),
              static_cast<long long>(now.windows));
  std::fflush(stdout);
}

template <class Round>
void soak(const char* what, Round round) {
  const int count = rounds();
  for (int i = 0; i < WarmUp; ++i) round();
  const Held first = held();
  print(what, WarmUp, first);
  for (int i = WarmUp; i < count && !testing::Test::HasFailure(); ++i) round();
  const Held last = held();
  print(what, count, last);
  EXPECT_LE(last.process.allocated, first.process.allocated + AllocatedSlack);
  EXPECT_LE(last.process.resident, first.process.resident + ResidentSlack);
  EXPECT_LE(last.process.handles, first.process.handles);
  EXPECT_LE(last.process.gui, first.process.gui);
  EXPECT_LE(last.drawing, first.drawing);
  EXPECT_LE(last.windows, first.windows);
  EXPECT_GT(first.process.handles, 0);
  EXPECT_GT(first.drawing, 0);
}

// Answers itself by Enter once it stands and is painted.
struct AnsweredDialog : WinInfoDialog {
  void OnCreated() override {
    WinInfoDialog::OnCreated();
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
  }
};

struct FinishedForm : WinInputDialog {
  void OnCreated() override {
    WinInputDialog::OnCreated();
    PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
  }
};

// A dialog with a toggle and a row, closed from outside.
struct ClosedDialog : WinDialog {
  WinButton button;
  WinRadioButtonBody row;
  RawLayer::RawLabelList labels;
  int32_t value = 1;
  ClosedDialog() {
    className = "Class_SoakDialog"_text;
    style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
    fitToClient({200, 100});
    labels.add("One"_text, 1);
    labels.add("Two"_text, 2);
    row.SetUp(labels, value);
    row.FitToContent();
    row.rect = {10, 60, 10 + row.windowWidth, 60 + row.windowHeight};
    button.SetUp("Press"_text, WinButtonDraw::CornersAll | WinButtonDraw::Toggle, 0);
    button.rect = {10, 10, 100, 40};
  }
  void OnCreateChildren() override {
    addChild(button);
    addChild(row);
  }
  void OnCreated() override {
    SetFocus(button.window);
    SendMessageW(button.window, WM_KEYDOWN, VK_SPACE, 0);
    PostMessageW(window, WM_CLOSE, 0, 0);
  }
};

class DialogSoak : public WindowTest::Fixture {};

} // namespace

TEST_F(DialogSoak, InfoDialogs) {
  RawLayer::RawLabelList answers;
  answers.add("Yes"_text, 1);
  answers.add("No"_text, 2);
  soak("info", [&] {
    AnsweredDialog dialog;
    dialog.Prepare("Soak"_text, "Shall it go on?"_text, answers, WinInfoDialog::IconQuestion, 2,
                   {0, 0, 600, 400});
    EXPECT_EQ(dialog.RunModal(nullptr), 2);
  });
}

TEST_F(DialogSoak, TheSameInfoDialog) {
  RawLayer::RawLabelList answers;
  answers.add("OK"_text, 1);
  AnsweredDialog dialog;
  dialog.Prepare("Soak"_text, "Again"_text, answers, WinInfoDialog::IconNone, 1, {0, 0, 600, 400});
  soak("info again", [&] { EXPECT_EQ(dialog.RunModal(nullptr), 1); });
}

TEST_F(DialogSoak, InputDialogs) {
  soak("input", [] {
    WinInputParameterList fields;
    fields.prompt = "Fill in"_text;
    for (int i = 0; i < 3; ++i) {
      auto* field = new WinInputParameterUnit;
      field->label = "Field"_text;
      field->initial = "text"_text;
      field->hints.add("hint"_text);
      fields.append(field);
    }
    FinishedForm form;
    form.Prepare({0, 0, 600, 400}, "Soak"_text, fields);
    EXPECT_EQ(form.RunModal(nullptr), WinInputDialog::Finished);
  });
}

TEST_F(DialogSoak, Tips) {
  WinTipDialog tip;
  soak("tip", [&] {
    tip.ShowTip("A tip"_text);
    EXPECT_TRUE(tip.isShown());
    tip.HideTip();
  });
}

TEST_F(DialogSoak, DialogsWithButtons) {
  soak("buttons", [] {
    ClosedDialog dialog;
    EXPECT_EQ(dialog.RunModal(nullptr), 0);
    EXPECT_TRUE(dialog.button.checked);
  });
}
