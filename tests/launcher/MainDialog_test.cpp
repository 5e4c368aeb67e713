// The main window of the real launcher: its layout, place, keys, tray icon, restart and end.
#include "launcher/LauncherProcess.h"
#include "launcher/LauncherWindow.h"

#include <cstdio>

namespace {

constexpr int32_t RowHeight = 24; // of a button: its icon of 16 and the margins

// Two selectors and two buttons whose scripts leave a trace in the log.
constexpr const char* Sections =
    "[Selector:One]\r\nTitle=One\r\nDefine {\r\nStage=1\r\n}\r\n"
    "[Selector:Two]\r\nTitle=Two\r\nDefine {\r\nStage=2\r\n}\r\n"
    "[Button:Hello]\r\nTitle=Hello\r\nDefine {\r\nGreeting=hello\r\n}\r\n"
    "[Button:Leave]\r\nTitle=Leave\r\nQuitLauncher\r\nDefine {\r\nBehind=1\r\n}\r\n"
    "[Button:Again]\r\nTitle=Again\r\nRebootLauncher\r\n";

std::string withOptions(const std::string& options) {
  return "[Option]\r\n" + options + "\r\n" + Sections;
}

RECT workArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return area;
}

POINT cornerOf(HWND window) {
  const RECT area = LauncherWindow::screenRect(window);
  return {area.left, area.top};
}

// Where the icon stands in the tray of the system; (0, 0) without one.
POINT trayPoint() {
  const HWND tray = FindWindowW(L"__winex11_standalone_tray", nullptr);
  const HWND icon = tray ? FindWindowExW(tray, nullptr, L"__winex11_tray_icon", nullptr) : nullptr;
  if (!icon || !IsWindowVisible(icon)) return {};
  const RECT area = LauncherWindow::screenRect(icon);
  return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

class MainDialog : public ::testing::Test {
 protected:
  // Of section MainDialog in the profile.
  [[nodiscard]] int32_t stored(const std::string& letter) const {
    const std::string text = launcher.configuration();
    const size_t at = text.find("WindowRect_" + letter + "=");
    return at == std::string::npos ? -1 : std::atoi(text.c_str() + at + 13);
  }
  void expectCentred() const {
    const RECT area = workArea();
    const RECT place = LauncherWindow::screenRect(launcher.window());
    EXPECT_EQ(place.left, (area.right - area.left - (place.right - place.left)) / 2 + area.left);
    EXPECT_EQ(place.top, (area.bottom - area.top - (place.bottom - place.top)) / 2 + area.top);
  }
  // The window that has the keyboard in the launcher's thread.
  [[nodiscard]] HWND focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(launcher.window(), nullptr), &info);
    return info.hwndFocus;
  }
  // The middle of a button's row.
  void pressButton(int32_t row) const {
    LauncherWindow::press(launcher.buttons(), 12, row * RowHeight + RowHeight / 2);
  }

  LauncherWindow launcher;
};

} // namespace

// --- Layout

TEST_F(MainDialog, ColumnStandsBelowTheStrip) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(launcher.selectors(), nullptr);
  const RECT buttons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(buttons.left, 3);
  EXPECT_EQ(buttons.top, 15);
  EXPECT_EQ(buttons.bottom - buttons.top, 3 * RowHeight);
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  EXPECT_EQ(client.cx, buttons.right + 3);
  EXPECT_EQ(client.cy, buttons.bottom + 3);
  expectCentred();
}

TEST_F(MainDialog, RowHasTheStripAtItsRightEndAndNoSelectorsWhateverTheOptionSays) {
  launcher.configure(withOptions("Horizontal=True\r\nViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(launcher.selectors(), nullptr);
  const RECT buttons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(buttons.left, 3);
  EXPECT_EQ(buttons.top, 3);
  EXPECT_EQ(buttons.bottom - buttons.top, RowHeight);
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  EXPECT_EQ(client.cx, buttons.right + 3 + 13);
  EXPECT_EQ(client.cy, buttons.bottom + 3);
  EXPECT_TRUE(launcher.close());
  EXPECT_FALSE(launcher.run.logHas("(Selector)")) << "no selector may run";
}

TEST_F(MainDialog, SelectorsStandAtTheLeftAndBothBoxesAreEquallyHigh) {
  launcher.configure(withOptions("ViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  ASSERT_NE(launcher.selectors(), nullptr);
  const RECT selectors = launcher.rectIn(launcher.selectors());
  const RECT buttons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(selectors.left, 3);
  EXPECT_EQ(selectors.top, 15);
  EXPECT_EQ(buttons.left, selectors.right + 2);
  EXPECT_EQ(buttons.top, 15);
  EXPECT_EQ(selectors.bottom, buttons.bottom);
  EXPECT_EQ(buttons.bottom - buttons.top, 3 * RowHeight);
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  EXPECT_EQ(client.cx, buttons.right + 3);
  EXPECT_EQ(client.cy, buttons.bottom + 3);
}

TEST_F(MainDialog, MeasuresOfTheProfileCount) {
  launcher.configure("[WindowParameter]\r\nFrameMargin=7\r\nCaptionHeight=30\r\n" +
                     withOptions("ViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  const RECT selectors = launcher.rectIn(launcher.selectors());
  const RECT buttons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(selectors.left, 8);
  EXPECT_EQ(selectors.top, 38);
  EXPECT_EQ(buttons.left, selectors.right + 7);
  EXPECT_EQ(LauncherWindow::clientSize(launcher.window()).cx, buttons.right + 8);
}

TEST_F(MainDialog, IsAPopupOfItsOwnClassWithTheProductsName) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(launcher.window(), GWL_STYLE));
  EXPECT_EQ(style & (WS_POPUP | WS_SYSMENU | WS_CAPTION | WS_THICKFRAME), WS_POPUP | WS_SYSMENU);
  EXPECT_EQ(GetWindowLongPtrW(launcher.window(), GWL_EXSTYLE) & (WS_EX_TOPMOST | WS_EX_TOOLWINDOW),
            0);
  EXPECT_EQ(WindowTest::textOf(launcher.window()), L"Tarvellon");
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  const RECT frame = LauncherWindow::screenRect(launcher.window());
  EXPECT_EQ(frame.right - frame.left, client.cx);
  EXPECT_EQ(frame.bottom - frame.top, client.cy);
  for (const HWND box : {launcher.buttons()})
    EXPECT_TRUE(GetWindowLongPtrW(box, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
}

TEST_F(MainDialog, AFirstStartMakesTheProfileAndComesUpEmpty) {
  ASSERT_TRUE(launcher.open());
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  EXPECT_EQ(client.cy, 18) << "margins and strip alone";
  EXPECT_TRUE(launcher.close());
  EXPECT_NE(launcher.configuration().find("Program=Tarvellon"), std::string::npos);
}

// --- Place

TEST_F(MainDialog, PlaceIsSavedAtTheEndAndRestored) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  SetWindowPos(launcher.window(), nullptr, 321, 234, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ASSERT_TRUE(waitUntil([this] { return cornerOf(launcher.window()).x == 321; }));
  ASSERT_TRUE(launcher.settle());
  EXPECT_EQ(launcher.configuration().find("MainDialog"), std::string::npos)
      << "a plain move writes nothing";
  const RECT place = LauncherWindow::screenRect(launcher.window());
  ASSERT_TRUE(launcher.close());
  EXPECT_EQ(stored("L"), 321);
  EXPECT_EQ(stored("T"), 234);
  EXPECT_EQ(stored("R"), place.right);
  EXPECT_EQ(stored("B"), place.bottom);

  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(cornerOf(launcher.window()).x, 321);
  EXPECT_EQ(cornerOf(launcher.window()).y, 234);
}

TEST_F(MainDialog, PlaceIsSavedAtOnceWhenTheWindowLeavesItsNormalState) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  SetWindowPos(launcher.window(), nullptr, 111, 122, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ASSERT_TRUE(waitUntil([this] { return cornerOf(launcher.window()).x == 111; }));
  const RECT place = LauncherWindow::screenRect(launcher.window());
  ShowWindowAsync(launcher.window(), SW_MINIMIZE);
  ASSERT_TRUE(launcher.waitForFile("Tarvellon.ini", "WindowRect_B="));
  EXPECT_TRUE(launcher.isRunning());
  EXPECT_EQ(stored("L"), 111);
  EXPECT_EQ(stored("T"), 122);
  EXPECT_EQ(stored("R"), place.right);
  EXPECT_EQ(stored("B"), place.bottom);
}

TEST_F(MainDialog, TheStripMovesTheWindow) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  const POINT before = cornerOf(launcher.window());
  LauncherWindow::drag(launcher.window(), {5, 6}, {45, -14});
  EXPECT_TRUE(waitUntil([&] { return cornerOf(launcher.window()).x == before.x + 40; }));
  EXPECT_EQ(cornerOf(launcher.window()).y, before.y - 20);
  ASSERT_TRUE(launcher.close());
  EXPECT_EQ(stored("L"), before.x + 40);
}

TEST_F(MainDialog, StoredRightAndBottomDoNotChangeTheSize) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  const SIZE size = LauncherWindow::clientSize(launcher.window());
  ASSERT_TRUE(launcher.close());
  launcher.configure(withOptions("") + "[MainDialog]\r\nWindowRect_L=50\r\nWindowRect_T=60\r\n"
                                       "WindowRect_R=900\r\nWindowRect_B=800\r\n");
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(cornerOf(launcher.window()).x, 50);
  EXPECT_EQ(cornerOf(launcher.window()).y, 60);
  EXPECT_EQ(LauncherWindow::clientSize(launcher.window()).cx, size.cx);
  EXPECT_EQ(LauncherWindow::clientSize(launcher.window()).cy, size.cy);
}

TEST_F(MainDialog, AMissingKeyOfThePlaceCountsAsZero) {
  launcher.configure(withOptions("") + "[MainDialog]\r\nWindowRect_L=50\r\n");
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(cornerOf(launcher.window()).x, 50);
  EXPECT_EQ(cornerOf(launcher.window()).y, 0);
}

TEST_F(MainDialog, ShiftAtTheStartIgnoresTheStoredPlaceAndSavesTheMiddle) {
  launcher.configure(withOptions("") + "[MainDialog]\r\nWindowRect_L=-5000\r\n"
                                       "WindowRect_T=-5000\r\n");
  WindowTest::keyDown(VK_SHIFT);
  const bool isOpen = launcher.open();
  WindowTest::keyUp(VK_SHIFT);
  ASSERT_TRUE(isOpen);
  expectCentred();
  const POINT corner = cornerOf(launcher.window());
  ASSERT_TRUE(launcher.close());
  EXPECT_EQ(stored("L"), corner.x);
  EXPECT_EQ(stored("T"), corner.y);
}

// --- Selectors at the start

TEST_F(MainDialog, TheFirstSelectorRunsAtEachStart) {
  launcher.configure(withOptions("ViewSelector=True"));
  for (int32_t start = 0; start < 2; ++start) {
    ASSERT_TRUE(launcher.open());
    ASSERT_TRUE(launcher.close());
    EXPECT_EQ(launcher.countInLog("|$ (Selector)One\r\n"), 1) << launcher.run.log();
    EXPECT_FALSE(launcher.run.logHas("(Selector)Two"));
  }
}

// --- Keys and focus

TEST_F(MainDialog, EscDoesNothing) {
  launcher.configure(withOptions("ViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  WindowTest::pressKey(VK_ESCAPE);
  pressButton(0); // and the window still serves
  ASSERT_TRUE(launcher.waitForLog("|$ (Button)Hello\r\n"));
  WindowTest::pressKey(VK_ESCAPE); // now in a box
  pressButton(0);
  EXPECT_TRUE(launcher.waitForLog("|$ (Button)Hello\r\n", 2));
  EXPECT_TRUE(launcher.isRunning());
}

TEST_F(MainDialog, NoBoxHasTheFocusUntilTabOrAPress) {
  launcher.configure(withOptions("ViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  EXPECT_TRUE(waitUntil([this] { return focus() == launcher.window(); }));
  WindowTest::pressKey(VK_TAB);
  EXPECT_TRUE(waitUntil([this] { return focus() == launcher.selectors(); }));
  WindowTest::pressKey(VK_TAB);
  EXPECT_TRUE(waitUntil([this] { return focus() == launcher.buttons(); }));
  LauncherWindow::press(launcher.selectors(), 5, 5);
  EXPECT_TRUE(waitUntil([this] { return focus() == launcher.selectors(); }));
}

// --- Options of the window

TEST_F(MainDialog, TopMostKeepsItAboveOthers) {
  launcher.configure(withOptions("TopMost=True"));
  ASSERT_TRUE(launcher.open());
  EXPECT_TRUE(GetWindowLongPtrW(launcher.window(), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST_F(MainDialog, TheTrayIconOpensTheSystemMenuWithEitherButton) {
  launcher.configure(withOptions("SysTray=True"));
  ASSERT_TRUE(launcher.open());
  EXPECT_TRUE(GetWindowLongPtrW(launcher.window(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW)
      << "which keeps it off the task bar";
  ASSERT_TRUE(waitUntil([] { return trayPoint().x != 0; }));
  for (const bool isLeft : {true, false}) {
    const POINT icon = trayPoint();
    WindowTest::movePointer(icon.x, icon.y);
    WindowTest::mouseButton(isLeft ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
    WindowTest::mouseButton(isLeft ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
    const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
    ASSERT_NE(menu, nullptr);
    WindowTest::pressKey(VK_ESCAPE);
    EXPECT_TRUE(launcher.waitUntilGone(menu));
  }
  EXPECT_TRUE(launcher.close());
  EXPECT_TRUE(waitUntil([] { return trayPoint().x == 0; })) << "the icon goes with the launcher";
}

// --- Size after edits

TEST_F(MainDialog, AnInsertedSeparatorLengthensTheWindow) {
  launcher.configure(withOptions("ViewSelector=True"));
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  const SIZE window = LauncherWindow::clientSize(launcher.window());
  const RECT selectors = launcher.rectIn(launcher.selectors());
  const RECT buttons = launcher.rectIn(launcher.buttons());
  pressButton(0);
  WindowTest::pressKey(VK_RIGHT);
  const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
  ASSERT_NE(menu, nullptr);
  LauncherWindow::press(menu, 20, 12); // its first entry
  ASSERT_TRUE(launcher.waitUntilGone(menu));
  ASSERT_TRUE(
      waitUntil([&] { return LauncherWindow::clientSize(launcher.window()).cy != window.cy; }));
  ASSERT_TRUE(launcher.settle());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.window()).cy, window.cy + 7);
  EXPECT_EQ(LauncherWindow::clientSize(launcher.window()).cx, window.cx);
  const RECT newSelectors = launcher.rectIn(launcher.selectors());
  const RECT newButtons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(newSelectors.right, selectors.right);
  EXPECT_EQ(newSelectors.bottom, selectors.bottom + 7);
  EXPECT_EQ(newButtons.left, buttons.left);
  EXPECT_EQ(newButtons.bottom, buttons.bottom + 7);
}

TEST_F(MainDialog, ADeletedButtonTakesItsWidthFromTheButtonsAlone) {
  launcher.configure(withOptions("ViewSelector=True") +
                     "[Button:Wide]\r\nTitle=A very much wider button than the others\r\n");
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  const SIZE window = LauncherWindow::clientSize(launcher.window());
  const RECT selectors = launcher.rectIn(launcher.selectors());
  const RECT buttons = launcher.rectIn(launcher.buttons());
  pressButton(3);
  WindowTest::pressKey(VK_DELETE);
  ASSERT_TRUE(
      waitUntil([&] { return LauncherWindow::clientSize(launcher.window()).cy != window.cy; }));
  ASSERT_TRUE(launcher.settle());
  const SIZE after = LauncherWindow::clientSize(launcher.window());
  const RECT newSelectors = launcher.rectIn(launcher.selectors());
  const RECT newButtons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(after.cy, window.cy - RowHeight);
  EXPECT_LT(after.cx, window.cx);
  EXPECT_EQ(newSelectors.left, selectors.left);
  EXPECT_EQ(newSelectors.right, selectors.right) << "the list keeps its width";
  EXPECT_EQ(newButtons.left, buttons.left);
  EXPECT_EQ(buttons.right - newButtons.right, window.cx - after.cx);
  EXPECT_EQ(after.cx, newButtons.right + 3);
  EXPECT_EQ(newSelectors.bottom, newButtons.bottom);
}

TEST_F(MainDialog, ADeletedButtonShrinksAColumn) {
  launcher.configure(withOptions("") +
                     "[Button:Wide]\r\nTitle=A very much wider button than the others\r\n");
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  const SIZE window = LauncherWindow::clientSize(launcher.window());
  pressButton(3);
  WindowTest::pressKey(VK_DELETE);
  ASSERT_TRUE(
      waitUntil([&] { return LauncherWindow::clientSize(launcher.window()).cy != window.cy; }));
  ASSERT_TRUE(launcher.settle());
  const SIZE after = LauncherWindow::clientSize(launcher.window());
  EXPECT_EQ(after.cy, window.cy - RowHeight);
  EXPECT_LT(after.cx, window.cx);
  EXPECT_EQ(after.cx, launcher.rectIn(launcher.buttons()).right + 3);
}

TEST_F(MainDialog, ADeletedSelectorMovesTheButtonsAlong) {
  launcher.configure(withOptions("ViewSelector=True") +
                     "[Selector:Wide]\r\nTitle=A very much wider selector than the others\r\n");
  ASSERT_TRUE(launcher.open());
  ASSERT_TRUE(launcher.bringToFront());
  const SIZE window = LauncherWindow::clientSize(launcher.window());
  const RECT selectors = launcher.rectIn(launcher.selectors());
  const RECT buttons = launcher.rectIn(launcher.buttons());
  LauncherWindow::press(launcher.selectors(), 5, 1);
  ASSERT_TRUE(waitUntil([this] { return focus() == launcher.selectors(); }));
  WindowTest::pressKey(VK_END);
  WindowTest::pressKey(VK_DELETE);
  ASSERT_TRUE(
      waitUntil([&] { return LauncherWindow::clientSize(launcher.window()).cx != window.cx; }));
  ASSERT_TRUE(launcher.settle());
  const SIZE after = LauncherWindow::clientSize(launcher.window());
  const RECT newButtons = launcher.rectIn(launcher.buttons());
  EXPECT_EQ(newButtons.right - newButtons.left, buttons.right - buttons.left);
  EXPECT_EQ(selectors.right - launcher.rectIn(launcher.selectors()).right, window.cx - after.cx);
  EXPECT_EQ(newButtons.left, launcher.rectIn(launcher.selectors()).right + 2);
  EXPECT_EQ(after.cx, newButtons.right + 3);
}

// --- End and restart

TEST_F(MainDialog, EndsByItsCloseAndRecordsTheTermination) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  EXPECT_TRUE(launcher.close());
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1) << launcher.run.log();
}

TEST_F(MainDialog, TheCloseButtonEndsIt) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  const SIZE client = LauncherWindow::clientSize(launcher.window());
  LauncherWindow::press(launcher.window(), client.cx - 8, 6);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
}

TEST_F(MainDialog, TheEndOfTheSessionRunsTheSameClosingSteps) {
  launcher.configure(withOptions("SysTray=True"));
  ASSERT_TRUE(launcher.open());
  const POINT corner = cornerOf(launcher.window());
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(launcher.window(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, 10000, &answer);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(stored("L"), corner.x);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

TEST_F(MainDialog, QuitLauncherEndsItWhenItsScriptHasRun) {
  launcher.configure(withOptions(""));
  ASSERT_TRUE(launcher.open());
  pressButton(1);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  const std::string log = launcher.run.log();
  const size_t behind = log.find("Define");
  EXPECT_NE(behind, std::string::npos) << "the command behind runs";
  EXPECT_GT(log.find("|$ Terminate\r\n"), behind);
}

TEST_F(MainDialog, QuitLauncherThatADialogOfItsRunKeptWaitingEndsItBehindTheRun) {
  launcher.configure("[Button:Fault]\r\nTitle=Fault\r\nQuitLauncher\r\nOpenFile {\r\n}\r\n");
  ASSERT_TRUE(launcher.open());
  pressButton(0);
  const HWND report = launcher.waitForClass(L"Class_InfoDialog");
  ASSERT_NE(report, nullptr);
  PostMessageW(launcher.window(), WM_CLOSE, 0, 0); // a close that meets a blocked window is lost
  ASSERT_TRUE(waitUntil([&] { return WindowTest::bringToFront(report); }));
  EXPECT_TRUE(launcher.isRunning());
  WindowTest::pressKey(VK_RETURN);
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

TEST_F(MainDialog, ACloseThatMeetsADialogIsLost) {
  launcher.configure("[Button:Fault]\r\nTitle=Fault\r\nOpenFile {\r\n}\r\n");
  ASSERT_TRUE(launcher.open());
  pressButton(0);
  const HWND report = launcher.waitForClass(L"Class_InfoDialog");
  ASSERT_NE(report, nullptr);
  PostMessageW(launcher.window(), WM_CLOSE, 0, 0);
  ASSERT_TRUE(waitUntil([&] { return WindowTest::bringToFront(report); }));
  WindowTest::pressKey(VK_RETURN);
  ASSERT_TRUE(launcher.waitUntilGone(report));
  pressButton(0); // it still serves
  EXPECT_NE(launcher.waitForClass(L"Class_InfoDialog"), nullptr);
}

TEST_F(MainDialog, ASelectorsScriptMayQuitAtTheStart) {
  launcher.configure("[Option]\r\nViewSelector=True\r\n[Selector:One]\r\nQuitLauncher\r\n");
  ASSERT_TRUE(launcher.start());
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

TEST_F(MainDialog, RestartReplacesTheProcessAndKeepsTheSwitches) {
  launcher.run.writeFile("Other.ini", "[Common]\r\nProgram=Tarvellon\r\n" + withOptions("") +
                                          "[Initialize]\r\nDefine {\r\nOther=1\r\n}\r\n");
  ASSERT_TRUE(launcher.open("-p Other.ini name"));
  const DWORD oldId = launcher.processId();
  const HANDLE old = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, oldId);
  SetWindowPos(launcher.window(), nullptr, 77, 88, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ASSERT_TRUE(waitUntil([this] { return cornerOf(launcher.window()).x == 77; }));
  pressButton(2);
  ASSERT_TRUE(launcher.takeSuccessor());
  EXPECT_NE(launcher.processId(), oldId);
  EXPECT_EQ(WaitForSingleObject(old, 10000), WAIT_OBJECT_0);
  CloseHandle(old);
  EXPECT_EQ(cornerOf(launcher.window()).x, 77) << "the place was saved";
  EXPECT_EQ(cornerOf(launcher.window()).y, 88);
  EXPECT_EQ(launcher.run.logFiles().size(), 2U);
  EXPECT_NE(commandLineOf(launcher.process())
                .find(" -@ " + std::to_string(oldId) + " -p Other.ini -NoTag_1 name"),
            std::string::npos)
      << commandLineOf(launcher.process());
  EXPECT_FALSE(launcher.run.hasFile("Tarvellon.ini"));

  pressButton(2); // and once more, with the id replaced
  const DWORD secondId = launcher.processId();
  ASSERT_TRUE(launcher.takeSuccessor());
  const std::string line = commandLineOf(launcher.process());
  EXPECT_NE(line.find(" -@ " + std::to_string(secondId) + " -p Other.ini"), std::string::npos)
      << line;
  EXPECT_EQ(line.find(std::to_string(oldId)), std::string::npos) << line;
  EXPECT_TRUE(launcher.close());
}
