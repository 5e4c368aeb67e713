// The real launcher under load and among others: many presses, large and broken configurations, two
// launchers on one file.
#include "launcher/LauncherProcess.h"
#include "launcher/LauncherWindow.h"

#include <algorithm>

namespace {

constexpr int32_t RowHeight = 24;
constexpr const char* Marker = "|$ (Button)Hello\r\n";

std::string button(const std::string& name, const std::string& script = {}) {
  return "[Button:" + name + "]\r\nTitle=" + name + "\r\n" + script;
}

std::string selector(const std::string& name) {
  return "[Selector:" + name + "]\r\nTitle=" + name + "\r\nDefine {\r\nStage=" + name + "\r\n}\r\n";
}

void pressRow(const LauncherWindow& launcher, int32_t row) {
  LauncherWindow::press(launcher.buttons(), 12, row * RowHeight + RowHeight / 2);
}

int32_t countOf(const std::string& text, const std::string& part) {
  int32_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

class Endurance : public ::testing::Test {
 protected:
  LauncherWindow launcher;
};

} // namespace

TEST_F(Endurance, FiveHundredPressesLeaveTheHandleCountsFlat) {
  constexpr int32_t WarmUp = 50;
  constexpr int32_t Presses = 500;
  launcher.configure("[Option]\r\nViewSelector=True\r\n" + selector("One") + selector("Two") +
                     button("Hello", "IconFile=shell32.dll\r\nDefine {\r\nx=1\r\n}\r\n"));
  ASSERT_TRUE(launcher.open());
  for (int32_t press = 1; press <= WarmUp; ++press) {
    pressRow(launcher, 0);
    ASSERT_TRUE(launcher.waitForLog(Marker, press));
  }
  ASSERT_TRUE(launcher.settle());
  const uint32_t handles = handleCountOf(launcher.process());
  const uint32_t drawing = drawingObjectsOf(launcher.process());
  ASSERT_GT(handles, 0U);
  ASSERT_GT(drawing, 0U);
  for (int32_t press = 1; press <= Presses; ++press) {
    pressRow(launcher, 0);
    // The log is read now and then only: it grows.
    const bool looksUp = press % 25 == 0;
    ASSERT_TRUE(!looksUp || launcher.waitForLog(Marker, WarmUp + press));
    ASSERT_TRUE(launcher.settle());
  }
  EXPECT_EQ(launcher.countInLog(Marker), WarmUp + Presses) << "each press runs once";
  EXPECT_LE(handleCountOf(launcher.process()), handles + 2);
  EXPECT_LE(drawingObjectsOf(launcher.process()), drawing + 2);
  EXPECT_TRUE(launcher.close());
}

TEST_F(Endurance, TwoThousandButtonsAndFiveHundredSelectorsOpen) {
  std::string sections = "[Option]\r\nViewSelector=True\r\n";
  for (int32_t i = 0; i < 500; ++i) sections += selector("Selector " + std::to_string(i));
  // Every other one a separator: no window can be higher than 32,767 pixels.
  for (int32_t i = 0; i < 1000; ++i)
    sections +=
        button("Button " + std::to_string(i), "Define {\r\nx=1\r\n}\r\n") + "[Button:-]\r\n";
  launcher.configure(sections);
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.buttons()).cy, 1000 * (RowHeight + 7));
  EXPECT_TRUE(launcher.waitForLog("|$ (Selector)Selector 0\r\n"));
  // The window is higher than any screen: its top is brought into view.
  SetWindowPos(launcher.window(), nullptr, 100, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ASSERT_TRUE(waitUntil([this] { return LauncherWindow::screenRect(launcher.window()).top == 0; }));
  ASSERT_TRUE(launcher.bringToFront());
  LauncherWindow::press(launcher.buttons(), 12, 3 * (RowHeight + 7) + RowHeight / 2);
  EXPECT_TRUE(launcher.waitForLog("|$ (Button)Button 3\r\n"));
  EXPECT_TRUE(launcher.close());
}

TEST_F(Endurance, ABrokenConfigurationKeepsWhatCameBeforeTheFault) {
  launcher.configure("[Option]\r\nViewSelector=True\r\n" + selector("One") + button("Hello") +
                     "[Button:Broken]\r\nIf {\r\nCondition=True\r\nDefine {\r\nx=1\r\n" +
                     button("Later"));
  ASSERT_TRUE(launcher.start());
  // One report, answered by Enter, and the window comes up.
  const std::wstring reports[] = {L"Class_InfoDialog", L"#32770"};
  HWND report = nullptr;
  ASSERT_TRUE(waitUntil([&] {
    for (const std::wstring& name : reports)
      for (HWND each : launcher.visibleWindows(name)) report = each;
    return report != nullptr;
  }));
  ASSERT_TRUE(waitUntil([&] { return WindowTest::bringToFront(report); }));
  WindowTest::pressKey(VK_RETURN);
  ASSERT_TRUE(launcher.waitForWindow());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.buttons()).cy, 3 * RowHeight);
  EXPECT_TRUE(launcher.close());
}

TEST_F(Endurance, ABinaryConfigurationComesUpEmpty) {
  std::string bytes = "[Common]\r\nProgram=Tarvellon\r\n";
  for (int32_t i = 0; i < 4096; ++i) bytes += static_cast<char>((i * 167 + 13) & 0xFF);
  launcher.run.writeFile("Tarvellon.ini", bytes);
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.buttons()).cy, 0);
  EXPECT_TRUE(launcher.close());
}

TEST_F(Endurance, AMissingConfigurationComesUpEmpty) {
  launcher.run.writeFile("Tarvellon.ini",
                         "[Common]\r\nProgram=Tarvellon\r\nConfigFile=Nowhere.ini\r\n");
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(LauncherWindow::clientSize(launcher.buttons()).cy, 0);
  EXPECT_TRUE(launcher.close());
}

// Both delete and insert at once, again and again: whoever writes last wins with the whole file.
TEST_F(Endurance, TwoLaunchersOnOneConfigurationLeaveAWholeFile) {
  std::string sections = "[Option]\r\nViewSelector=True\r\n// a remark\r\n[Other]\r\nKept=1\r\n";
  for (const char* name : {"A", "B", "C"}) sections += selector(name);
  for (const char* name : {"D", "E", "F"}) sections += button(name);
  launcher.configure(sections);
  ASSERT_TRUE(launcher.open());
  LauncherWindow second;
  const std::string profile = launcher.run.path("Tarvellon.ini");
  ASSERT_TRUE(second.open("-p \"" + profile + "\""));
  SetWindowPos(second.window(), nullptr, 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ASSERT_TRUE(waitUntil([&] { return LauncherWindow::screenRect(second.window()).left == 100; }));

  const auto expectWhole = [](const std::string& file) {
    EXPECT_NE(file.find("[Common]\r\nProgram=Tarvellon\r\n"), std::string::npos) << file;
    EXPECT_NE(file.find("[Other]\r\nKept=1\r\n"), std::string::npos) << file;
    for (const char* name : {"A", "B", "C"})
      EXPECT_EQ(countOf(file, std::string("[Selector:") + name + "]"), 1) << file;
    for (const char* name : {"D", "E", "F"})
      EXPECT_EQ(countOf(file, std::string("[Button:") + name + "]"), 1) << file;
  };
  constexpr int32_t Rounds = 20;
  const LONG height = LauncherWindow::clientSize(launcher.window()).cy;
  // The menu's insertion, posted; the window grows behind the save.
  const auto insert = [](const LauncherWindow& each) {
    const LPARAM middle = MAKELPARAM(12, RowHeight / 2);
    PostMessageW(each.buttons(), WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(each.buttons(), WM_LBUTTONUP, 0, middle);
    PostMessageW(each.buttons(), WinLayer::WinMessageMenuResult, 1, 0);
  };
  const auto hasInserted = [height](const LauncherWindow& each, int32_t count) {
    return LauncherWindow::clientSize(each.window()).cy == height + 7 * count;
  };
  for (int32_t round = 1; round <= Rounds && !HasFailure(); ++round) {
    insert(launcher);
    insert(second);
    ASSERT_TRUE(
        waitUntil([&] { return hasInserted(launcher, round) && hasInserted(second, round); }));
    expectWhole(launcher.configuration());
  }
  insert(launcher); // all that it has done is in the file once it is the last
  ASSERT_TRUE(waitUntil([&] { return hasInserted(launcher, Rounds + 1); }));
  EXPECT_EQ(countOf(launcher.configuration(), "[Button:-]"), Rounds + 1);
  EXPECT_TRUE(second.close());
  EXPECT_TRUE(launcher.close());
  expectWhole(launcher.configuration());
  EXPECT_FALSE(launcher.run.hasFile("Tarvellon.ini.tmp"));
}
