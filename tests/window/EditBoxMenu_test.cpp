// The context menu of the edit box.
#include "window/EditBoxTest.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

using EditBoxMenu = EditBoxFixture;

} // namespace

TEST_F(EditBoxMenu, HasItsEntriesWithLabelsAndTipsInOrder) {
  open(u"abc");
  choose(0);
  const std::vector<std::pair<uint32_t, std::wstring>> wanted = {
      {2, L"Undo\tUndo text."},
      {3, L"Copy\tCopy to clipboard."},
      {4, L"Paste\tPaste from clipboard."},
      {5, L"Delete\tDelete text."},
      {6, L"Select\tSelect all text."},
      {7, L"InsertTab\tInsert tab code."},
      {8, L"IME\tOpen IME."},
      {9, L"Register\tRegister selection."},
  };
  ASSERT_EQ(entries.size(), wanted.size());
  for (size_t i = 0; i < wanted.size(); ++i) {
    EXPECT_EQ(entries[i].id, wanted[i].first);
    EXPECT_EQ(entries[i].text, wanted[i].second);
  }
}

TEST_F(EditBoxMenu, CancelIsThereOnDemandAndTellsTheParent) {
  dialog.mayClose = false;
  open(u"abc", WinEditBoxInfo::HasCancel);
  choose(1);
  ASSERT_FALSE(entries.empty());
  EXPECT_EQ(entries[0].id, 1u);
  EXPECT_EQ(entries[0].text, L"Cancel\tCancel edit.");
  EXPECT_EQ(told("1004"), 1);
}

TEST_F(EditBoxMenu, UndoIsEnabledWhenThereIsSomethingToUndo) {
  open(u"abc");
  choose(0);
  EXPECT_FALSE(isEnabled(2));
  key('X');
  EXPECT_EQ(text(), u"xabc");
  choose(1);
  EXPECT_TRUE(isEnabled(2));
  EXPECT_EQ(text(), u"abc");
  box.setReadOnly(true);
  choose(0);
  EXPECT_FALSE(isEnabled(2));
}

TEST_F(EditBoxMenu, CopyAndPasteUseTheClipboard) {
  open(u"abcd");
  box.setSelection(1, 3);
  choose(2);
  EXPECT_EQ(clipboard(), u"bc");
  key(VK_END);
  choose(3);
  EXPECT_EQ(text(), u"abcdbc");
}

TEST_F(EditBoxMenu, DeleteSelectAndInsertTab) {
  open(u"abcd");
  box.setSelection(0, 2);
  choose(4);
  EXPECT_EQ(text(), u"cd");
  choose(5);
  EXPECT_EQ(place(), "0-2");
  choose(6);
  EXPECT_EQ(text(), u"\t");
}

TEST_F(EditBoxMenu, AReadOnlyBoxIsNotChangedByIt) {
  fillClipboard(u"pasted");
  open(u"abcd", WinEditBoxInfo::ReadOnly);
  box.setSelection(0, 2);
  for (const int number : {1, 3, 4, 6}) choose(number);
  EXPECT_EQ(text(), u"abcd");
  EXPECT_EQ(place(), "0-2");
  for (const uint32_t id : {3, 4, 5, 6, 7}) EXPECT_TRUE(isEnabled(id)) << id;
}

TEST_F(EditBoxMenu, TheKeyboardsMenuKeyOpensItAtTheCaret) {
  open(u"abc");
  Steps steps;
  steps.when([] { return shownMenu() != nullptr; },
             [&] {
               RECT menu{};
               GetWindowRect(shownMenu(), &menu);
               POINT caret{box.caretPlace().left, box.caretPlace().bottom};
               ClientToScreen(box.window, &caret);
               EXPECT_EQ(menu.left, caret.x);
               EXPECT_EQ(menu.top, caret.y);
               pressKey(VK_ESCAPE);
             });
  keyWith(VK_SHIFT, VK_F10);
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !shownMenu(); }));
}

TEST_F(EditBoxMenu, ABoxThatDiesUnderItsMenuIsNotTouchedAgain) {
  open(u"abc");
  Steps steps;
  steps.when([] { return shownMenu() != nullptr; },
             [&] {
               DestroyWindow(dialog.window);
               pressKey(VK_ESCAPE);
             });
  rightPress(150, 10);
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !shownMenu(); }));
  EXPECT_EQ(box.window, nullptr);
}
