// The selector box: what runs, how it looks, and what keys, menu and drops edit, in the list and in
// the configuration file.
#include "app/GuiMainCommands.h"
#include "gui/SelectorBoxTest.h"
#include "win/WindowMetrics.h"

using namespace WindowTest;
using namespace AppLayer;
using WinLayer::WinRect;
using WinLayer::WinSize;
using Lines = std::vector<std::string>;

namespace {

class SelectorBox : public SelectorBoxFixture {};

constexpr COLORREF MarkColour = 0x00FFD0C0;
constexpr COLORREF MarkColourUnfocused = 0x00FFE3D8;
constexpr COLORREF LineColour = 0x00A0A0A0;
constexpr COLORREF FrameColour = 0x00808080;
constexpr COLORREF CursorColour = 0x00FF0000;

WinSize textSize(HFONT font, const wchar_t* text) {
  const WinLayer::WinWindowDc dc(nullptr);
  const WinLayer::WinSelect selected(dc.get(), font);
  RECT area{0, 0, 0x7FFF, 0x7FFF};
  DrawTextW(dc.get(), text, -1, &area, DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT);
  return {area.right, area.bottom};
}

} // namespace

// --- Running

TEST_F(SelectorBox, APressRunsTheSelector) {
  showRows({"a", "b"});
  pressRow(1);
  EXPECT_EQ(takeSeen(), "b:LButton;");
  pressRow(0);
  EXPECT_EQ(takeSeen(), "a:LButton;");
}

TEST_F(SelectorBox, ADoubleClickRunsItTwice) {
  showRows({"a", "b"});
  pressRow(1);
  pressRow(1);
  EXPECT_EQ(takeSeen(), "b:LButton;b:DClick;");
}

TEST_F(SelectorBox, ArrowsRunEachRowThatTheyPass) {
  showRows({"a", "b", "c"});
  key(VK_DOWN);
  key(VK_DOWN);
  key(VK_DOWN);
  key(VK_DOWN);
  key(VK_HOME);
  key(VK_END);
  EXPECT_EQ(takeSeen(), "a:LButton;b:LButton;c:LButton;a:LButton;c:LButton;");
}

TEST_F(SelectorBox, EnterIsADoubleClick) {
  showRows({"a"});
  key(VK_RETURN);
  EXPECT_EQ(takeSeen(), ""); // without a cursor
  key(VK_DOWN);
  key(VK_RETURN);
  EXPECT_EQ(takeSeen(), "a:LButton;a:DClick;");
}

TEST_F(SelectorBox, AProgramsMoveRunsIt) {
  showRows({"a", "b"});
  box.SetCursorRow(0);
  EXPECT_EQ(takeSeen(), "a:LButton;");
  box.SetCursorRow(2);
  box.SetCursorRow(-1);
  EXPECT_EQ(takeSeen(), "");
}

TEST_F(SelectorBox, WithoutAWindowTheCursorMovesAndNothingRuns) {
  load(sections({"a"}));
  box.SetCursorRow(0);
  EXPECT_EQ(box.cursor, 0);
  EXPECT_EQ(takeSeen(), "");
}

TEST_F(SelectorBox, ChangesOfMarksRunTheRowUnderTheCursor) {
  showRows({"a", "b", "c"});
  pressRow(0);
  takeSeen();
  pressWith(VK_CONTROL, 20, middleOf(2));
  EXPECT_EQ(takeSeen(), "c:LButton,LControl;");
  pressWith(VK_SHIFT, 20, middleOf(1));
  EXPECT_EQ(takeSeen(), "b:LButton,LShift;");
  EXPECT_EQ(shown(), "[a][b]c");
  key(VK_SPACE);
  EXPECT_EQ(takeSeen(), "b:LButton;");
  EXPECT_EQ(shown(), "[a]bc");
  keyWith(VK_CONTROL, 'A');
  EXPECT_EQ(takeSeen(), "b:LButton,LControl;");
  EXPECT_EQ(shown(), "[a][b][c]");
}

TEST_F(SelectorBox, ASeparatorRunsItsOwnBlock) {
  show("[Selector:a]\r\n\r\n[Selector:-]\r\nDefine {\r\n  Seen=line\r\n}\r\n");
  pressRow(1);
  EXPECT_EQ(takeSeen(), "line");
  EXPECT_EQ(shown(), "a[-]");
}

TEST_F(SelectorBox, APressBesideTheRowsRunsNothing) {
  showRows({"a"});
  pressRow(0);
  takeSeen();
  press(20, middleOf(0) + 30);
  EXPECT_EQ(takeSeen(), "");
  EXPECT_EQ(shown(), "a");
}

TEST_F(SelectorBox, ARunIsLoggedAndKnowsTheBoxesPlace) {
  showRows({"a"});
  const size_t before = bed.diary().size();
  pressRow(0);
  const Lines diary = bed.diary();
  ASSERT_GT(diary.size(), before + 1);
  EXPECT_EQ(diary[before + 1], "@User>Executor|$ (Selector)a") << diary[before];
  const JobLayer::JobRectangle& place = JobLayer::JobWindowContext::instance().rectangle;
  EXPECT_EQ((WinRect{place.left, place.top, place.right, place.bottom}), box.windowRect());
}

TEST_F(SelectorBox, OtherCodesGoToTheOwner) {
  showRows({"a", "b"});
  dialog.mayClose = false;
  pressRow(0);
  key(VK_ESCAPE);
  EXPECT_EQ(dialog.diary, (Diary{"command 2500 1004"}));
}

// --- Measuring

TEST_F(SelectorBox, RowsAreAsHighAsTheFontAndAsWideAsTheirTitles) {
  load("[Selector:a]\r\nTitle=Some longer "
       "title\r\n\r\n[Selector:-]\r\nTitle=x\r\n\r\n[Selector:b]\r\n");
  measure();
  const WinSize letter = textSize(box.fontHandle(), L"A");
  const WinSize title = textSize(box.fontHandle(), L"Some longer title");
  const int32_t separator = WinLayer::WindowMetrics::instance().selectorSeparator;
  EXPECT_EQ(separator, 5);
  EXPECT_EQ(selectors.at(0)->itemData1, title.width + 4);
  EXPECT_EQ(selectors.at(0)->itemData2, letter.height + 3);
  EXPECT_EQ(selectors.at(1)->itemData1, 0);
  EXPECT_EQ(selectors.at(1)->itemData2, separator);
  EXPECT_EQ(selectors.at(2)->itemData1, textSize(box.fontHandle(), L"b").width + 4);
  EXPECT_EQ(selectors.at(2)->itemData2, letter.height + 3);
  EXPECT_EQ(box.clientWidth, title.width + 4);
  EXPECT_EQ(box.clientHeight, 2 * (letter.height + 3) + separator);
  EXPECT_EQ(box.windowWidth, box.clientWidth + 2);
  EXPECT_EQ(box.windowHeight, box.clientHeight + 2);
}

TEST_F(SelectorBox, AnEmptyListIsTenWide) {
  load("");
  measure();
  EXPECT_EQ(box.windowWidth, 12);
  EXPECT_EQ(box.windowHeight, 2);
  EXPECT_EQ(box.itemExtent(), (WinSize{10, 0}));
}

TEST_F(SelectorBox, MeasuringStartsWhereItIsTold) {
  load(sections({"a"}));
  WinRect place{7, 9, 0, 0};
  box.MeasureText(place);
  EXPECT_EQ(place.left, 7);
  EXPECT_EQ(place.top, 9);
  EXPECT_EQ(place.bottom, 9 + textSize(box.fontHandle(), L"A").height + 3);
}

TEST_F(SelectorBox, TitlesAreSetUpInARecordOfTheSystem) {
  JobTestBed::setVariable("Word", "Tools");
  load("[Selector:a]\r\nTitle=$(Word)\r\n");
  EXPECT_EQ(bytesOf(selectors.at(0)->title), "");
  measure();
  EXPECT_EQ(bytesOf(selectors.at(0)->title), "Tools");
  const Lines diary = bed.diary();
  EXPECT_EQ(diary[0], "#Begin:Executor");
  EXPECT_NE(std::find(diary.begin(), diary.end(), "@System>Executor|$ SetupSelectors"),
            diary.end());
}

TEST_F(SelectorBox, TitlesOfAnyScriptAreMeasured) {
  load("[Selector:a]\r\nTitle=\xE9\x81\xB8\xE6\x8A\x9E\xE8\x82\xA2 \xF0\x9F\x98\x80\r\n");
  measure();
  EXPECT_EQ(box.clientWidth,
            std::max(10, textSize(box.fontHandle(), L"\u9078\u629E\u80A2 \xD83D\xDE00").width + 4));
}

// --- Drawing

TEST_F(SelectorBox, RowsHaveTheirColours) {
  showRows({"a", "b"});
  pressRow(1);
  paint();
  const int32_t marked = middleOf(1);
  const int32_t last = box.shownRect(box.unitAt(0)->rect).bottom - 1;
  EXPECT_EQ(at(90, middleOf(0)), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(at(90, marked), MarkColour);
  EXPECT_EQ(at(1, last), LineColour);
  EXPECT_EQ(at(98, last), LineColour);
  EXPECT_EQ(at(90, last - 1), GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(at(90, last + 1), CursorColour);
  EXPECT_EQ(at(1, marked), CursorColour);
  EXPECT_EQ(at(98, marked), CursorColour);
  SetFocus(dialog.window);
  settle();
  EXPECT_EQ(at(90, marked), MarkColourUnfocused);
}

TEST_F(SelectorBox, AFrameStandsAroundTheBox) {
  showRows({"a"});
  SetFocus(dialog.window);
  settle();
  paint();
  const WinRect client = box.clientRect();
  for (const int32_t x : {0, 50, client.right - 1}) {
    EXPECT_EQ(at(x, 0), FrameColour);
    EXPECT_EQ(at(x, client.bottom - 1), FrameColour);
  }
  EXPECT_EQ(at(0, 20), FrameColour);
  EXPECT_EQ(at(client.right - 1, 20), FrameColour);
  EXPECT_NE(at(1, 1), FrameColour);
  SetFocus(box.window);
  settle();
  EXPECT_EQ(at(50, 0), CursorColour);
}

TEST_F(SelectorBox, ASeparatorKeepsTheDialogsColourAlsoWhenMarked) {
  show("[Selector:a]\r\n\r\n[Selector:-]\r\n\r\n[Selector:b]\r\n");
  mark({0, 1});
  paint();
  const WinRect row = box.shownRect(box.unitAt(1)->rect);
  EXPECT_EQ(row.height(), 5);
  for (int32_t x = 1; x < 99; ++x) {
    ASSERT_EQ(at(x, row.top), GetSysColor(COLOR_3DFACE)) << x;
    ASSERT_EQ(at(x, row.top + 2), GetSysColor(COLOR_3DFACE)) << x;
    ASSERT_EQ(at(x, row.bottom - 1), LineColour) << x;
  }
}

TEST_F(SelectorBox, ForDisplayOnlyMarksAreNotColoured) {
  showRows({"a", "b"});
  pressRow(1);
  box.setFlag(Box::DisplayOnly, true);
  paint();
  EXPECT_EQ(at(90, middleOf(1)), GetSysColor(COLOR_WINDOW));
}

TEST_F(SelectorBox, TheTitleIsWrittenInsideItsRow) {
  show("[Selector:a]\r\nTitle=M&MMM\r\n");
  paint();
  const WinRect row = box.shownRect(box.unitAt(0)->rect);
  int written = 0;
  for (int32_t y = row.top; y < row.bottom - 1; ++y)
    for (int32_t x = row.left; x < 99; ++x)
      if (at(x, y) != GetSysColor(COLOR_WINDOW)) {
        ++written;
        EXPECT_GE(x, row.left + 2);
        EXPECT_LE(x, row.left + 2 + textSize(box.fontHandle(), L"M&MMM").width);
        EXPECT_GE(y, row.top + 1);
      }
  EXPECT_GT(written, 20);
}

// --- The menu

TEST_F(SelectorBox, ARightPressOpensTheMenuFromTheMarksAsTheyStand) {
  showRows({"a", "b", "c"});
  pressRow(0);
  takeSeen();
  std::string entries;
  Steps steps;
  steps.when([] { return openMenu() != nullptr; },
             [&] {
               entries = entriesOfMenu();
               pressKey(VK_ESCAPE);
             });
  rightPress(20, middleOf(2));
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone(); }));
  EXPECT_EQ(entries, "[1][2]|[4][5]|[6][7]");
  EXPECT_EQ(shown(), "[a]bc");
  EXPECT_EQ(box.cursor, 0);
  EXPECT_EQ(takeSeen(), "");
  EXPECT_EQ(file(), sections({"a", "b", "c"}));
}

TEST_F(SelectorBox, WithoutMarksNothingCanBeChosenAndScatteredOnesCannotBeSorted) {
  showRows({"a", "b", "c"});
  std::vector<std::string> entries;
  const auto look = [&] {
    entries.push_back(entriesOfMenu());
    pressKey(VK_ESCAPE);
  };
  for (const std::vector<int32_t>& marks : {std::vector<int32_t>{}, std::vector<int32_t>{0, 2}}) {
    mark(marks);
    Steps steps;
    steps.when([] { return openMenu() != nullptr; }, look);
    rightPress(20, middleOf(1));
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
  }
  EXPECT_EQ(entries, (Lines{"12|45|67", "[1][2]|[4][5]|67"}));
}

TEST_F(SelectorBox, TheChosenEntryIsCarriedOutWhenTheMenuHasClosed) {
  showRows({"a", "b", "c"});
  pressRow(1);
  bool wasOpen = true;
  dialog.onCommand = [&](uint32_t code) {
    if (code == MainCommandSelectorsChanged) wasOpen = openMenu() != nullptr;
  };
  Steps steps;
  steps.when([] { return openMenu() != nullptr; },
             [] {
               pressKey(VK_DOWN);
               pressKey(VK_RETURN);
             });
  rightPress(20, middleOf(0));
  EXPECT_TRUE(pumpUntil([&] { return names() == "a-bc"; }));
  EXPECT_FALSE(wasOpen);
  EXPECT_EQ(shown(), "a-[b]c");
}

TEST_F(SelectorBox, LeftAndRightOpenTheMenuAtTheEndOfTheCursorsRow) {
  showRows({"a", "b", "c"});
  pressRow(1);
  for (const uint16_t code : std::initializer_list<uint16_t>{VK_LEFT, VK_RIGHT}) {
    RECT place{};
    Steps steps;
    steps.when([] { return openMenu() != nullptr; },
               [&] {
                 GetWindowRect(openMenu(), &place);
                 pressKey(VK_ESCAPE);
               });
    key(code);
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
    const WinRect window = box.windowRect();
    EXPECT_EQ(place.left, window.right);
    EXPECT_EQ(place.top, window.top + box.unitAt(1)->rect.top);
  }
}

TEST_F(SelectorBox, AltLeftAndAltRightOpenItToo) {
  showRows({"a", "b"});
  pressRow(1);
  int opened = 0;
  for (const uint16_t code : std::initializer_list<uint16_t>{VK_LEFT, VK_RIGHT}) {
    Steps steps;
    steps.when([] { return openMenu() != nullptr; },
               [&] {
                 ++opened;
                 pressKey(VK_ESCAPE);
               });
    SendMessageW(box.window, WM_SYSKEYDOWN, code, 0x20000001);
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
  }
  EXPECT_EQ(opened, 2);
}

TEST_F(SelectorBox, WithoutACursorNoMenuOpens) {
  showRows({"a"});
  key(VK_RIGHT);
  keyWithAlt(VK_LEFT);
  EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(SelectorBox, UnknownEntriesAreNotHandled) {
  showRows({"a"});
  EXPECT_EQ(box.OnMenuCommand(3, 0), -1);
  EXPECT_EQ(box.OnMenuCommand(8, 0), -1);
  EXPECT_EQ(box.OnMenuCommand(0, 0), -1);
  EXPECT_EQ(box.OnMenuCommand(Menu::DeleteItems, 0), 0);
}

// --- Edits

TEST_F(SelectorBox, EachEntryEditsTheListAndTheFile) {
  struct Case {
    uint32_t entry;
    std::vector<int32_t> marks;
    const char* expected;
  };
  const Case cases[] = {
      {Menu::InsertSeparator, {1, 2}, "d-[b]-[c]a"},
      {Menu::DeleteItems, {1, 2}, "d[a]"},
      {Menu::MoveUpItems, {1, 2}, "[b][c]da"},
      {Menu::MoveDownItems, {1, 2}, "da[b][c]"},
      {Menu::MoveUpItems, {1, 3}, "d[b][a]c"},
      {Menu::MoveDownItems, {0, 3}, "bc[d][a]"},
      {Menu::SortItems, {0, 1, 2, 3}, "[a][b][c][d]"},
      {Menu::ReverseSortItems, {1, 2, 3}, "d[c][b][a]"},
  };
  showRows({"d", "b", "c", "a"});
  for (const Case& each : cases) {
    folder.write("c.ini", sections({"d", "b", "c", "a"}));
    selectors.clear();
    load(file());
    box.fill();
    box.cursor = 1;
    mark(each.marks);
    box.OnMenuCommand(each.entry, 0);
    EXPECT_EQ(shown(), each.expected) << each.entry;
    JobLayer::JobSelectorList again;
    JobLayer::JobButtonList buttons;
    JobLayer::JobActionList actions;
    JobLayer::JobConfigFile::load(again, buttons, actions);
    std::string saved;
    for (const JobLayer::JobSelectorUnit& unit : again.elements()) saved += bytesOf(unit.name);
    EXPECT_EQ(saved, names()) << each.entry;
  }
}

TEST_F(SelectorBox, AnEditRewritesTheSelectorsSectionsAndNothingElse) {
  const std::string head = "\xEF\xBB\xBF// top\r\n[Option]\r\nViewSelector=True\n\r\n";
  const std::string tail =
      "[Button:x]\r\nTitle=\xE9\x81\xB8\n// kept\r\n[Action:y]\rShell {\r}\r\n";
  show(head + sections({"a", "b"}) + tail);
  mark({0});
  box.OnMenuCommand(Menu::MoveDownItems, 0);
  EXPECT_EQ(file(), head + sections({"b", "a"}) + tail);
}

TEST_F(SelectorBox, WhatFollowsAnEditComesInItsOrder) {
  showRows({"a", "b", "c", "d", "e", "f", "g", "h"});
  box.rect.bottom = box.rect.top + 60;
  box.moveWindow(true);
  box.scrollTo({0, 10});
  box.cursor = 1;
  mark({1});
  UpdateWindow(box.window);
  const std::string before = file();
  int told = 0;
  dialog.onCommand = [&](uint32_t code) {
    if (code != MainCommandSelectorsChanged) return;
    ++told;
    EXPECT_EQ(shown(), "a[c]defgh"); // the rows are there,
    EXPECT_EQ(box.scrollY, 0);
    EXPECT_EQ(box.cursor, 1);
    EXPECT_FALSE(GetUpdateRect(box.window, nullptr, FALSE)); // and nothing else as yet
    EXPECT_EQ(file(), before);
  };
  box.OnMenuCommand(Menu::DeleteItems, 0);
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(GetUpdateRect(box.window, nullptr, FALSE));
  EXPECT_EQ(file(), sections({"a", "c", "d", "e", "f", "g", "h"}));
  EXPECT_EQ(box.cursor, 1);
}

TEST_F(SelectorBox, NewRowsAreMeasuredWhenTheOwnerAsks) {
  showRows({"a", "b"});
  const int32_t height = box.itemExtent().height;
  mark({0, 1});
  int32_t seen = 0;
  dialog.onCommand = [&](uint32_t) { seen = box.itemExtent().height; };
  box.OnMenuCommand(Menu::InsertSeparator, 0);
  EXPECT_EQ(seen, height + 10);
}

TEST_F(SelectorBox, AnEditRunsNothing) {
  showRows({"a", "b", "c"});
  pressRow(1);
  takeSeen();
  box.OnMenuCommand(Menu::DeleteItems, 0);
  EXPECT_EQ(takeSeen(), "");
  EXPECT_EQ(shown(), "a[c]");
}

TEST_F(SelectorBox, WithoutAMarkNoEntryDoesAnything) {
  showRows({"b", "a"});
  folder.write("c.ini", "untouched");
  for (uint32_t entry = 1; entry <= 7; ++entry) box.OnMenuCommand(entry, 0);
  key(VK_DELETE);
  keyWithAlt(VK_DELETE);
  keyWithAlt(VK_UP);
  keyWithAlt(VK_DOWN);
  EXPECT_EQ(shown(), "ba");
  EXPECT_EQ(file(), "untouched");
  EXPECT_EQ(dialog.diary, Diary());
}

TEST_F(SelectorBox, ScatteredMarksAreNotSorted) {
  showRows({"c", "b", "a"});
  mark({0, 2});
  box.OnMenuCommand(Menu::SortItems, 0);
  box.OnMenuCommand(Menu::ReverseSortItems, 0);
  EXPECT_EQ(shown(), "[c]b[a]");
  EXPECT_EQ(dialog.diary, Diary());
}

TEST_F(SelectorBox, AllRowsCanBeDeleted) {
  showRows({"a", "b"});
  mark({0, 1});
  key(VK_DELETE);
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(file(), "");
  EXPECT_EQ(box.itemExtent(), (WinSize{10, 0}));
  key(VK_DOWN);
  key(VK_DELETE);
  EXPECT_EQ(takeSeen(), "");
}

TEST_F(SelectorBox, AMarkedSeparatorGetsOneMoreAboveIt) {
  show("[Selector:-]\r\n\r\n[Selector:a]\r\n\r\n");
  pressRow(0);
  box.OnMenuCommand(Menu::InsertSeparator, 0);
  EXPECT_EQ(shown(), "-[-]a");
  EXPECT_EQ(file(), "[Selector:-]\r\n\r\n[Selector:-]\r\n\r\n[Selector:a]\r\n\r\n");
}

// --- Keys

TEST_F(SelectorBox, DeleteDeletes) {
  showRows({"a", "b", "c"});
  pressRow(1);
  key(VK_DELETE);
  EXPECT_EQ(shown(), "a[c]");
  EXPECT_EQ(file(), sections({"a", "c"}));
  keyWithAlt(VK_DELETE);
  EXPECT_EQ(shown(), "[a]");
}

TEST_F(SelectorBox, AltArrowsMove) {
  showRows({"a", "b", "c"});
  pressRow(1);
  takeSeen();
  keyWithAlt(VK_UP);
  EXPECT_EQ(shown(), "[b]ac");
  keyWithAlt(VK_UP);
  EXPECT_EQ(shown(), "[b]ac");
  keyWithAlt(VK_DOWN);
  keyWithAlt(VK_DOWN);
  keyWithAlt(VK_DOWN);
  EXPECT_EQ(shown(), "ac[b]");
  EXPECT_EQ(file(), sections({"a", "c", "b"}));
  EXPECT_EQ(takeSeen(), "");
  EXPECT_EQ(box.cursor, 1); // keeps its index
}

TEST_F(SelectorBox, TheReleaseOfAltOpensNoMenuOfTheWindow) {
  showRows({"a", "b"});
  pressRow(1);
  keyDown(VK_MENU);
  pressKey(VK_UP);
  keyUp(VK_MENU);
  settle();
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetCurrentThreadId(), &info);
  EXPECT_FALSE(info.flags & (GUI_INMENUMODE | GUI_SYSTEMMENUMODE));
  EXPECT_EQ(shown(), "[b]a");
}

TEST_F(SelectorBox, SearchKeysDoNothing) {
  showRows({"a", "b"});
  pressRow(0);
  takeSeen();
  for (const uint16_t code : std::initializer_list<uint16_t>{'D', 'F', 'S'})
    keyWith(VK_CONTROL, code);
  key(VK_F3);
  keyWith(VK_SHIFT, VK_F3);
  EXPECT_EQ(takeSeen(), "");
  EXPECT_EQ(shown(), "[a]b");
}

// --- Dropping

TEST_F(SelectorBox, ADropInsertsAboveTheRowAndRunsTheLastNewOne) {
  showRows({"a", "b"});
  drop({L"C:\\x\\one.txt", L"C:\\x\\two"}, 20, middleOf(1));
  EXPECT_EQ(shown(), "aone.txt[two]b");
  EXPECT_EQ(box.cursor, 2);
  EXPECT_EQ(JobTestBed::variable("Selector"), "C:\\x\\two");
  EXPECT_EQ(JobTestBed::variable("KeyState"), "LButton");
  EXPECT_EQ(file(), sections({"a"}) +
                        "[Selector:one.txt]\r\nDefine {\r\n  Selector=C:\\x\\one.txt\r\n}\r\n\r\n"
                        "[Selector:two]\r\nDefine {\r\n  Selector=C:\\x\\two\r\n}\r\n\r\n" +
                        sections({"b"}));
  EXPECT_EQ(timesOf(dialog.diary, "command 2500 1101"), 1);
}

TEST_F(SelectorBox, ADropBesideTheRowsAppends) {
  showRows({"a", "b"});
  drop({L"C:\\one"}, 20, middleOf(1) + 30);
  EXPECT_EQ(shown(), "ab[one]");
}

TEST_F(SelectorBox, ADropWithAltAppendsInItsOrder) {
  showRows({"a", "b"});
  drop({L"C:\\1", L"C:\\2", L"C:\\3"}, 20, middleOf(0), true);
  EXPECT_EQ(shown(), "ab12[3]");
  EXPECT_EQ(JobTestBed::variable("Selector"), "C:\\3");
}

TEST_F(SelectorBox, ADropUsesTheTemplate) {
  show("[Selector:*]\r\nTitle=New\r\nDefine {\r\n  Seen=<$(APPEND)>\r\n}\r\n\r\n" +
       sections({"a"}));
  drop({L"C:\\one"}, 20, middleOf(0));
  EXPECT_EQ(shown(), "[one]a");
  EXPECT_EQ(takeSeen(), "<C:\\one>");
  EXPECT_EQ(bytesOf(selectors.at(0)->title), "New");
}

TEST_F(SelectorBox, ADropIsARecordInTheLog) {
  showRows({"a"});
  const size_t before = bed.diary().size();
  drop({L"C:\\one"}, 20, middleOf(0));
  const Lines diary = bed.diary();
  const auto lineOf = [&](const std::string& line) {
    return std::find(diary.begin() + static_cast<int64_t>(before), diary.end(), line);
  };
  const auto opened = lineOf("@User>Executor|$ (Drop-Insert)");
  ASSERT_NE(opened, diary.end());
  EXPECT_NE(std::find(opened, diary.end(), "@User>Executor|$ (Selector)one"), diary.end());
  EXPECT_EQ(diary.end()[-2], "@Executor>User|$ Success");
  EXPECT_EQ(diary.end()[-1], "#End:Executor");
  EXPECT_EQ(std::count(opened, diary.end(), "#End:Executor"), 2); // of the run and of the drop
}

TEST_F(SelectorBox, NamesOfAnyScriptAreKept) {
  showRows({"a"});
  drop({L"C:\\\u9078\u629E \xD83D\xDE00.txt"}, 20, middleOf(0));
  EXPECT_EQ(names(), "\xE9\x81\xB8\xE6\x8A\x9E \xF0\x9F\x98\x80.txt"
                     "a");
  EXPECT_NE(file().find("[Selector:\xE9\x81\xB8\xE6\x8A\x9E \xF0\x9F\x98\x80.txt]"),
            std::string::npos);
}

TEST_F(SelectorBox, APathThatIsTooLongIsPassedOverWhole) {
  showRows({"a"});
  const std::wstring longest = L"C:\\" + std::wstring(257, L'x');
  drop({longest + L"y", longest, L"C:\\two"}, 20, middleOf(0));
  EXPECT_EQ(shown(), std::string(257, 'x') + "[two]a");
  drop({longest + L"y"}, 20, middleOf(0));
  EXPECT_EQ(box.items.count(), 3);
}

TEST_F(SelectorBox, ADropOfNothingChangesNothing) {
  showRows({"a"});
  drop({}, 20, middleOf(0));
  EXPECT_EQ(shown(), "a");
  EXPECT_EQ(dialog.diary, Diary());
  EXPECT_EQ(takeSeen(), "");
}

// --- Nothing dangles

TEST_F(SelectorBox, ASelectorMayBeDeletedWhileItsScriptRuns) {
  show("[Selector:a]\r\n\r\n[Selector:b]\r\nNoSuchThing\r\nDefine {\r\n  Seen=x\r\n}\r\n");
  bed.dialogs.onReport = [this] {
    box.OnMenuCommand(Menu::DeleteItems, 0);
    settle();
    paint();
  };
  pressRow(1);
  EXPECT_EQ(bed.dialogs.reports.size(), 1u);
  EXPECT_EQ(shown(), "[a]");
  EXPECT_EQ(file(), "[Selector:a]\r\n\r\n");
  bed.dialogs.onReport = nullptr;
  key(VK_UP);
  paint();
  EXPECT_EQ(shown(), "[a]");
}

TEST_F(SelectorBox, ADropThatIsRunMayEmptyTheList) {
  show("[Selector:*]\r\nNoSuchThing\r\n\r\n" + sections({"a"}));
  bed.dialogs.onReport = [this] {
    box.markAll();
    box.OnMenuCommand(Menu::DeleteItems, 0);
    settle();
  };
  drop({L"C:\\one", L"C:\\two"}, 20, middleOf(0));
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(file(), "[Selector:*]\r\nNoSuchThing\r\n\r\n");
}

TEST_F(SelectorBox, ASetUpOfADropMayEmptyTheList) {
  show("[Selector:*]\r\nTitle=$(Calc\r\n\r\n" + sections({"a", "b"}));
  int reports = 0;
  bed.dialogs.onReport = [&] {
    if (++reports != 1) return;
    box.markAll();
    box.OnMenuCommand(Menu::DeleteItems, 0);
  };
  drop({L"C:\\one", L"C:\\two"}, 20, middleOf(1));
  EXPECT_GE(reports, 1);
  paint();
  EXPECT_EQ(box.items.count(), selectors.count());
  EXPECT_EQ(names(), "onetwo");
}

TEST_F(SelectorBox, AScriptMayEndTheDialog) {
  show("[Selector:a]\r\nNoSuchThing\r\n");
  bed.dialogs.onReport = [this] { DestroyWindow(dialog.window); };
  POINT place{20, middleOf(0)};
  ClientToScreen(box.window, &place);
  pressMouse(place.x, place.y);
  EXPECT_TRUE(pumpUntil([this] { return box.window == nullptr; }));
  EXPECT_EQ(box.cursor, 0);
}

// --- Many rows

TEST_F(SelectorBox, FiveHundredRowsAreEditedAtOnce) {
  std::vector<std::string> many;
  for (int i = 0; i < 500; ++i) many.push_back("s" + std::to_string(1000 - i));
  showRows(many);
  box.markAll();
  const uint64_t start = GetTickCount64();
  box.OnMenuCommand(Menu::SortItems, 0);
  box.OnMenuCommand(Menu::ReverseSortItems, 0);
  box.OnMenuCommand(Menu::InsertSeparator, 0);
  paint();
  EXPECT_LT(GetTickCount64() - start, 10000u);
  EXPECT_EQ(box.items.count(), 1000);
  EXPECT_EQ(bytesOf(selectors.at(1)->name), "s999");
}
