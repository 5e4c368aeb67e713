// A harness for tests that drive real windows by real input: messages are pumped until a condition
// holds, keys and mouse presses go through the platform's input queue, pixels are read back.
// Nothing waits for a guessed time; what does not happen within the limit is a failure.
//
// Everything here belongs to the thread of the test, whose windows it serves.
#pragma once

#include "win/WinDialog.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace WindowTest {

constexpr uint32_t Limit = 20000; // milliseconds that anything may take on a busy machine

using Condition = std::function<bool()>;
using Action = std::function<void()>;

// Serves the messages of this thread until the condition holds; false when it never did. A WM_QUIT
// on the way is taken as any other message.
bool pumpUntil(const Condition& condition, uint32_t limit = Limit);
// Serves what is queued now, input that is still on its way included.
void settle();

// --- Input, by screen pixels
void movePointer(int32_t x, int32_t y);
void pressMouse(int32_t x, int32_t y); // left button, down and up
void mouseButton(DWORD flags);         // MOUSEEVENTF_..., where the pointer stands
void keyDown(uint16_t virtualKey);
void keyUp(uint16_t virtualKey);
void pressKey(uint16_t virtualKey); // down and up
void pressShiftTab();

// --- Looking
COLORREF pixel(HWND window, int32_t x, int32_t y); // of its client
WinLayer::WinPoint centreOf(HWND window);          // on the screen
bool isInFront(HWND window);
// Asks for it to be in front, and says whether it is; for conditions, as a window manager may give
// the front away late to the window that came before.
bool bringToFront(HWND window);
// Top-level windows of this process with the class.
std::vector<HWND> windowsOfClass(const wchar_t* className);
std::wstring textOf(HWND window);
// The process's drawing objects, and its windows with their children.
uint32_t drawingObjects();
uint32_t windowCount();

// What happens while a modal dialog runs its own loop: steps that wait for a condition each and
// then act, in order, on a timer of this thread. A step whose condition does not come fails the
// test and ends the loops.
class Steps {
 public:
  Steps();
  ~Steps();
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;
  Steps& when(Condition condition, Action action);
  [[nodiscard]] bool areDone() const { return next_ == steps_.size(); }

 private:
  struct Step {
    Condition condition;
    Action action;
  };
  static void CALLBACK tick(HWND window, UINT message, UINT_PTR id, DWORD time);
  void advance();

  static Steps* current_;
  std::vector<Step> steps_;
  size_t next_ = 0;
  bool isActing_ = false;
  bool hasFailed_ = false;
  uint64_t since_;
  UINT_PTR timer_;
};

// The dialogs of this process that stand, of whatever class.
std::vector<HWND> standingDialogs();

// Leaves a clean thread to the next test: no window, no WM_QUIT, the pointer out of the way.
class Fixture : public ::testing::Test {
 public:
  ~Fixture() override; // after the members of a test's own fixture, which may be dialogs

 protected:
  void SetUp() override;
  void TearDown() override;
};

} // namespace WindowTest
