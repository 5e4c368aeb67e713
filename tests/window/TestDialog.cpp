#include "window/TestDialog.h"

#include <algorithm>
#include <cstdio>

namespace WindowTest {

using namespace WinLayer;

namespace {

constexpr int32_t ButtonWidth = 60;
constexpr int32_t ButtonStep = 70;

std::string line(const char* what, uint32_t identifier) {
  return std::string(what) + " " + std::to_string(identifier);
}

std::string hex(uint32_t value) {
  char text[16];
  std::snprintf(text, sizeof text, "%x", value);
  return text;
}

} // namespace

TestButton::TestButton(Diary& diary) : diary_(diary) {
  className = "BUTTON"_text;
  style = WS_CHILD | WS_VISIBLE;
}

int32_t TestButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_LBUTTONDOWN:
    diary_.push_back(line("down", identifier));
    break;
  case WM_LBUTTONUP:
    diary_.push_back(line("up", identifier));
    break;
  case WM_MOUSEMOVE:
    if (wParam & MK_LBUTTON) diary_.push_back(line("drag", identifier));
    break;
  case WM_KEYDOWN:
    diary_.push_back(line("key", identifier) + " " + hex(static_cast<uint32_t>(wParam)));
    break;
  default:
    break;
  }
  return WinView::OnMessage(message, wParam, lParam);
}

void TestButton::OnDestroyed() {
  diary_.push_back(line("destroyed", identifier));
}

TestDialog::TestDialog() {
  className = "Class_TestDialog"_text;
  style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  fitToClient(ClientSize);
  rect = rect.movedTo(100, 100);
}

void TestDialog::addButtons(int count) {
  for (int i = 0; i < count; ++i) {
    buttons_.push_back(std::make_unique<TestButton>(diary));
    buttons_.back()->rect = WinRect{0, 10, ButtonWidth, 40}.movedBy(10 + i * ButtonStep, 0);
  }
}

int32_t TestDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (isShy && message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
  if (answer) {
    const int32_t given = answer(message, wParam, lParam);
    if (given != WinNotHandled) return given;
  }
  return WinDialog::OnMessage(message, wParam, lParam);
}

void TestDialog::OnCreateChildren() {
  for (const auto& each : buttons_) addChild(*each);
}

void TestDialog::OnCreated() {
  diary.push_back("created");
  if (!buttons_.empty()) SetFocus(focusOf(0));
  if (whenCreated) whenCreated();
}

void TestDialog::OnDestroyed() {
  diary.push_back("destroyed");
}

void TestDialog::OnShowState(int32_t oldState, int32_t newState) {
  diary.push_back("state " + std::to_string(oldState) + " " + std::to_string(newState));
}

bool TestDialog::OnMinMaxInfo(WinSize& shrink, WinSize& growth) {
  return limits && limits(shrink, growth);
}

int32_t TestDialog::OnCommand(WinView& view, uint32_t code) {
  diary.push_back(line("command", view.identifier) + " " + hex(code));
  return WinDialog::OnCommand(view, code);
}

int64_t timesOf(const Diary& diary, const std::string& line) {
  return std::count(diary.begin(), diary.end(), line);
}

} // namespace WindowTest
