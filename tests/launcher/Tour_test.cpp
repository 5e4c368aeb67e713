// The tour of the sample configuration, which uses every command in one button, from its press to
// its end; and menus, questions and forms again and again.
#include "launcher/LauncherProcess.h"
#include "launcher/ScriptLauncher.h"

#include <psapi.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

class ScriptTour : public ScriptLauncher {
 protected:
  // The sample's button alone, with the script that it calls.
  static std::string sectionOfSample(const std::string& name) {
    std::ifstream stream(TARVELLON_SAMPLE, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const size_t start = text.find("\n[" + name + "]");
    if (start == std::string::npos) return {};
    return text.substr(start + 1, text.find("\n[", start + 1) - start);
  }
  void openTour() {
    openWith(sectionOfSample("Button:Tour") + "\r\n" + sectionOfSample("Action:Greet"));
    ASSERT_NE(launcher.configuration().find("AbortExecution"), std::string::npos);
    ASSERT_NE(launcher.configuration().find("[Action:Greet]"), std::string::npos);
  }
  // From the press to the last question, which is left open. No programs are started.
  HWND lastQuestion() {
    const HWND way = menuAfterPress();
    if (!way) return nullptr;
    keys({VK_DOWN, VK_RETURN});
    launcher.waitUntilGone(way);
    const HWND drinks = launcher.waitForClass(LauncherWindow::MenuClass);
    if (!drinks) return nullptr;
    keys({VK_DOWN, VK_DOWN, VK_RETURN});
    const HWND form = dialog(FormClass);
    if (!form || !answer(form, {VK_END, 'X', VK_RETURN})) return nullptr;
    const HWND message = dialog(QuestionClass);
    if (!message) return nullptr;
    EXPECT_NE(textsOf(message).find(L"x takes with milk."), std::wstring::npos);
    if (!answer(message, {VK_RETURN})) return nullptr;
    const HWND programs = dialog(QuestionClass);
    if (!programs) return nullptr;
    keys({VK_RIGHT, VK_RETURN});
    if (!launcher.waitUntilGone(programs)) return nullptr;
    return dialog(QuestionClass);
  }
  // For messages: where the run stands.
  [[nodiscard]] std::string endOfLog() const {
    const std::string log = launcher.run.log();
    constexpr size_t Length = 1500;
    return log.size() > Length ? log.substr(log.size() - Length) : log;
  }
  void expectCommandsInLog(const std::vector<const char*>& names) const {
    for (const char* name : names)
      EXPECT_GE(launcher.countInLog(std::string("|[") + name + "]"), 1) << name;
  }
};

} // namespace

TEST_F(ScriptTour, AbortsWhenNothingFollows) {
  openTour();
  const HWND last = lastQuestion();
  ASSERT_NE(last, nullptr) << endOfLog();
  ASSERT_TRUE(answer(last, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("|[AbortExecution]"));
  expectCommandsInLog({"Define", "Foreach", "For", "If", "Break", "While", "Pickup", "Action",
                       "Menu", "MenuItem", "Separator", "PickupMenu", "InputText", "PutMessage",
                       "Expand", "ToClipboard", "AskMessage", "PopupWindow"});
  EXPECT_TRUE(isBack());
  EXPECT_EQ(launcher.countInLog("#Error"), 1) << "of the message alone";
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptTour, StartsTheLauncherAgain) {
  openTour();
  const HWND last = lastQuestion();
  ASSERT_NE(last, nullptr) << endOfLog();
  keys({VK_RIGHT, VK_RETURN});
  ASSERT_TRUE(launcher.takeSuccessor());
  EXPECT_EQ(launcher.run.logFiles().size(), 2U);
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptTour, QuitsTheLauncher) {
  openTour();
  const HWND last = lastQuestion();
  ASSERT_NE(last, nullptr) << endOfLog();
  keys({VK_RIGHT, VK_RIGHT, VK_RETURN});
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  expectCommandsInLog({"QuitLauncher"});
}

// TARVELLON_SOAK in the environment says how many menus, questions and forms; 2,000 take a while.
TEST_F(ScriptTour, MenusQuestionsAndFormsLeaveNothingBehind) {
  const char* wished = std::getenv("TARVELLON_SOAK");
  const int32_t rounds = std::max(wished ? std::atoi(wished) : 0, 20);
  constexpr int32_t WarmUp = 20;
  constexpr SIZE_T MemorySlack = 2 * 1024 * 1024;
  openWith(button("Menu", block("Menu", item("First") + item("Second"))) +
           button("Ask", block("AskMessage", "Parameter=Go on ?\r\n")) +
           button("Form", block("InputText", "0:Variable=Name\r\n0:Initial=x\r\n")));
  int32_t ends = 0;
  // The window takes presses and closes again once a run is recorded as ended.
  const auto hasEnded = [&] { return launcher.waitForLog("@Executor>User", ++ends); };
  const auto once = [&] {
    const HWND shown = menuAfterPress(0);
    if (!shown) return false;
    pressEntry(shown, 0, 2);
    if (!launcher.waitUntilGone(shown) || !hasEnded()) return false;
    for (const auto& [name, row] : {std::pair{QuestionClass, 1}, std::pair{FormClass, 2}}) {
      const HWND opened = dialogAfterPress(name, row);
      if (!opened || !answer(opened, {VK_RETURN}) || !hasEnded()) return false;
    }
    return launcher.settle();
  };
  const auto memory = [this] {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(launcher.process(), &counters, sizeof counters);
    return counters.PagefileUsage;
  };
  for (int32_t round = 0; round < WarmUp; ++round) ASSERT_TRUE(once()) << round;
  const uint32_t handles = handleCountOf(launcher.process());
  const uint32_t drawing = drawingObjectsOf(launcher.process());
  const SIZE_T used = memory();
  ASSERT_GT(handles, 0U);
  ASSERT_GT(drawing, 0U);
  ASSERT_GT(used, 0U);
  for (int32_t round = 0; round < rounds; ++round) ASSERT_TRUE(once()) << round;
  EXPECT_LE(handleCountOf(launcher.process()), handles + 2);
  EXPECT_LE(drawingObjectsOf(launcher.process()), drawing + 2);
  EXPECT_LE(memory(), used + MemorySlack);
  EXPECT_EQ(marks("First"), WarmUp + rounds);
  EXPECT_EQ(launcher.countInLog("|$ Failed\r\n"), 0);
  EXPECT_TRUE(launcher.close());
}
