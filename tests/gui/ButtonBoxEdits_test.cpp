// The edits of the button box: by menu, by keys and by dropped files, down to the file's bytes.
#include "gui/ButtonBoxBed.h"

#include "app/GuiMainCommands.h"

using namespace AppLayer;
using namespace WindowTest;

namespace {

// Everything but buttons, to stand in front of them and behind.
const char Head[] = "// of mine\r\n[Common]\r\nProgram=Tarvellon\r\n";
const char Tail[] = "  // kept\r\n[Selector:s]\r\n Title=S\r\n[Action:x]\r\n  Define\r\n";
const char SelectorsWritten[] = "[Selector:s]\r\nTitle=S\r\n\r\n[Action:x]\r\n  Define\r\n";

std::string plain(const std::string& names) {
  std::string text;
  for (const char name : names) text += "[Button:" + std::string(1, name) + "]\r\n\r\n";
  return text;
}

class GuiButtonBoxEdits : public ButtonBoxTest {
 protected:
  // The box with these buttons, of one letter each, the focus and a current button.
  void openWith(const std::string& letters, int32_t current) {
    open(Head + plain(letters) + "[Option]\r\n" + Tail);
    SetFocus(box().window);
    settle();
    key(VK_HOME);
    for (int32_t i = 0; i < current; ++i)
      key(LauncherOptions::instance().horizontal ? VK_RIGHT : VK_DOWN);
    ASSERT_EQ(cursor(), current);
  }
  static std::string fileWith(const std::string& letters) {
    return Head + plain(letters) + "[Option]\r\n" + Tail;
  }
  [[nodiscard]] bool hasNotified() {
    return dialog().codes == std::vector<uint32_t>{MainCommandButtonsChanged};
  }
};

class GuiButtonBoxDrops : public GuiButtonBoxEdits {};

} // namespace

// --- Deleting

TEST_F(GuiButtonBoxEdits, DeleteTakesTheCurrentButtonOut) {
  openWith("abc", 1);
  key(VK_DELETE);
  EXPECT_EQ(names(), "a,c");
  EXPECT_EQ(cursor(), 1);
  EXPECT_EQ(file(), fileWith("ac"));
  EXPECT_TRUE(hasNotified());
  EXPECT_EQ(dialog().clientRect().height(), 10 + 2 * 24);
}

TEST_F(GuiButtonBoxEdits, SoDoesDeleteWithAlt) {
  openWith("abc", 2);
  altKey(VK_DELETE);
  EXPECT_EQ(names(), "a,b");
  EXPECT_EQ(cursor(), 1);
  EXPECT_EQ(file(), fileWith("ab"));
  EXPECT_TRUE(hasNotified());
}

TEST_F(GuiButtonBoxEdits, DeleteOnASeparatorRemovesIt) {
  openWith("a-b", 0);
  pressLeft(1);
  EXPECT_EQ(cursor(), 1);
  key(VK_DELETE);
  EXPECT_EQ(names(), "a,b");
  EXPECT_EQ(file(), fileWith("ab"));
}

TEST_F(GuiButtonBoxEdits, DeleteWithoutACurrentButtonDoesNothing) {
  open(fileWith("ab"));
  SetFocus(box().window);
  key(VK_DELETE);
  altKey(VK_DELETE);
  altKey(VK_DOWN);
  EXPECT_EQ(names(), "a,b");
  EXPECT_EQ(file(), fileWith("ab"));
  EXPECT_TRUE(dialog().codes.empty());
}

TEST_F(GuiButtonBoxEdits, TheLastButtonCanGoToo) {
  openWith("a", 0);
  key(VK_DELETE);
  EXPECT_EQ(names(), "");
  EXPECT_EQ(cursor(), -1);
  EXPECT_EQ(file(), fileWith(""));
}

// --- The menu

TEST_F(GuiButtonBoxEdits, TheMenuInsertsASeparator) {
  openWith("ab", 1);
  menu([] { pressKey(VK_RIGHT); }, GuiButtonBox::MenuInsertSeparator);
  EXPECT_EQ(names(), "a,-,b");
  EXPECT_EQ(file(), fileWith("a-b"));
  EXPECT_TRUE(hasNotified());
  EXPECT_EQ(dialog().clientRect().height(), 10 + 2 * 24 + 7);
}

TEST_F(GuiButtonBoxEdits, TheMenuDeletesAndMoves) {
  openWith("abc", 1);
  menu([] { pressKey(VK_RIGHT); }, GuiButtonBox::MenuMoveUpItems);
  EXPECT_EQ(names(), "b,a,c");
  EXPECT_EQ(cursor(), 0);
  menu([] { pressKey(VK_RIGHT); }, GuiButtonBox::MenuMoveDownItems);
  menu([] { pressKey(VK_RIGHT); }, GuiButtonBox::MenuMoveDownItems);
  EXPECT_EQ(names(), "a,c,b");
  EXPECT_EQ(cursor(), 2);
  EXPECT_TRUE(dialog().codes.empty());
  menu([] { pressKey(VK_RIGHT); }, GuiButtonBox::MenuDeleteItems);
  EXPECT_EQ(names(), "a,c");
  EXPECT_TRUE(hasNotified());
}

TEST_F(GuiButtonBoxEdits, OtherEntriesAreNotHandled) {
  openWith("ab", 0);
  EXPECT_EQ(box().OnMenuCommand(0, 0), -1);
  EXPECT_EQ(box().OnMenuCommand(5, 0), -1);
  EXPECT_EQ(box().OnMenuCommand(GuiButtonBox::MenuMoveUpItems, 0), 0);
  EXPECT_EQ(names(), "a,b");
}

// --- Moving

TEST_F(GuiButtonBoxEdits, AMoveSavesTheSelectorsAndNothingOfTheButtons) {
  openWith("abc", 0);
  altKey(VK_DOWN);
  EXPECT_EQ(names(), "b,a,c");
  EXPECT_EQ(cursor(), 1);
  EXPECT_EQ(GuiButtonLayout::rectOf(*buttons().at(1)).top, 24);
  EXPECT_EQ(file(), Head + plain("abc") + "[Option]\r\n  // kept\r\n" + SelectorsWritten);
  EXPECT_TRUE(dialog().codes.empty());
  altKey(VK_UP);
  altKey(VK_UP); // is at the start by now
  EXPECT_EQ(names(), "a,b,c");
}

TEST_F(GuiButtonBoxEdits, AtTheEndsAMoveDoesNothing) {
  openWith("ab", 1);
  altKey(VK_DOWN);
  EXPECT_EQ(names(), "a,b");
  EXPECT_EQ(file(), fileWith("ab"));
}

TEST_F(GuiButtonBoxEdits, InARowLeftAndRightMove) {
  LauncherOptions::instance().horizontal = true;
  openWith("abc", 1);
  altKey(VK_RIGHT);
  EXPECT_EQ(names(), "a,c,b");
  altKey(VK_LEFT);
  altKey(VK_LEFT);
  EXPECT_EQ(names(), "b,a,c");
  EXPECT_EQ(GuiButtonLayout::rectOf(*buttons().at(0)).left, 0);
}

TEST_F(GuiButtonBoxEdits, AMoveReachesTheFileWithTheNextEditThatSaves) {
  openWith("abc", 0);
  altKey(VK_DOWN);
  key(VK_END);
  key(VK_DELETE);
  EXPECT_EQ(file(), Head + plain("ba") + "[Option]\r\n  // kept\r\n" + SelectorsWritten);
}

TEST_F(GuiButtonBoxEdits, AFileThatCannotBeReplacedLeavesTheEditInMemory) {
  openWith("ab", 0);
  const RawLayer::RawString path = folder.file("c.ini").shareAs(RawLayer::EncodingWide);
  const HANDLE lock = CreateFileW(WinLayer::wideUnits(path), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(lock, INVALID_HANDLE_VALUE);
  key(VK_DELETE);
  CloseHandle(lock);
  EXPECT_EQ(names(), "b");
  EXPECT_TRUE(hasNotified());
  EXPECT_NE(file(), "");
}

// --- Dropped files

TEST_F(GuiButtonBoxDrops, FilesRunAButtonThatTakesThem) {
  open(button("a") + button("d", "DropRun=True\r\n"));
  pointAt(1);
  drop({L"C:/x y.txt", L"C:/z.txt"}); // a report would resolve backslashes
  ASSERT_EQ(runs().size(), 1U);
  EXPECT_EQ(runs()[0].substr(0, runs()[0].find('\r')),
            "d DropC:/x y.txt\"C:/x y.txt\" \"C:/z.txt\"");
  EXPECT_EQ(cursor(), 1);
  EXPECT_NE(bed.log().find("(Drop)d"), std::string::npos);
}

TEST_F(GuiButtonBoxDrops, OtherButtonsOnlyBecomeCurrent) {
  open(button("a") + button("d", "DropRun=True\r\n"));
  pointAt(0);
  drop({L"C:\\x.txt"});
  EXPECT_TRUE(runs().empty());
  EXPECT_EQ(cursor(), 0);
  movePointer(20, 20);
  drop({L"C:\\x.txt"});
  EXPECT_TRUE(runs().empty());
  EXPECT_EQ(cursor(), -1);
  EXPECT_EQ(names(), "a,d");
}

TEST_F(GuiButtonBoxDrops, OnTheLineOfAHiddenButtonNothingRuns) {
  open(button("h", "Hidden=True\r\nDropRun=True\r\n") + button("d", "DropRun=True\r\n"));
  const WinPoint line = onScreen(3, 0);
  movePointer(line.x, line.y);
  drop({L"C:\\x.txt"});
  EXPECT_EQ(cursor(), 0);
  EXPECT_TRUE(runs().empty());
}

TEST_F(GuiButtonBoxDrops, WithAltFilesOnAButtonComeInReverseOrder) {
  openWith("ab", 0);
  pointAt(1);
  keyDown(VK_MENU);
  settle();
  drop({L"C:\\x.txt", L"C:\\y.txt"});
  keyUp(VK_MENU);
  settle();
  EXPECT_EQ(names(), "a,y.txt,x.txt,b");
  EXPECT_EQ(dialog().codes, std::vector<uint32_t>{MainCommandButtonsChanged});
  const std::string blocks = "[Button:y.txt]\r\nIconFile=C:\\y.txt\r\nShell {\r\n"
                             "  Command=C:\\y.txt\r\n}\r\n\r\n"
                             "[Button:x.txt]\r\nIconFile=C:\\x.txt\r\nShell {\r\n"
                             "  Command=C:\\x.txt\r\n}\r\n\r\n";
  EXPECT_EQ(file(), Head + plain("a") + blocks + plain("b") + "[Option]\r\n" + Tail);
  EXPECT_NE(bed.log().find("(Drop-Insert)"), std::string::npos);
}

TEST_F(GuiButtonBoxDrops, WithAltFilesOnAFreePlaceComeAtTheEndInTheirOrder) {
  openWith("ab", 0);
  movePointer(20, 20);
  keyDown(VK_MENU);
  settle();
  drop({L"C:\\x.txt", L"C:\\y.txt"});
  keyUp(VK_MENU);
  settle();
  EXPECT_EQ(names(), "a,b,x.txt,y.txt");
}

TEST_F(GuiButtonBoxDrops, NamesBeyondTheBasicPlaneStayWhole) {
  openWith("a", 0);
  movePointer(20, 20);
  keyDown(VK_MENU);
  settle();
  drop({L"C:\\\u65E5\u672C\U00020BB7.txt"});
  keyUp(VK_MENU);
  settle();
  EXPECT_EQ(names(), "a,\xE6\x97\xA5\xE6\x9C\xAC\xF0\xA0\xAE\xB7.txt");
  EXPECT_NE(file().find("Command=C:\\\xE6\x97\xA5\xE6\x9C\xAC\xF0\xA0\xAE\xB7.txt\r\n"),
            std::string::npos);
}

TEST_F(GuiButtonBoxDrops, TheBoxMayBeGoneWhenTheScriptEnds) {
  open(button("d", "DropRun=True\r\n"));
  bed.dialogs.onReport = [&] {
    buttons().clear();
    DestroyWindow(dialog().window);
  };
  pointAt(0);
  drop({L"C:\\x.txt"});
  EXPECT_EQ(runs().size(), 1U);
  EXPECT_FALSE(box().window);
}
