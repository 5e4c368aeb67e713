// A dialog with a row of buttons that writes down what happens to it and to them.
#pragma once

#include "window/WindowTest.h"

#include <memory>

namespace WindowTest {

using namespace RawLayer::RawLiterals;
using Diary = std::vector<std::string>;

class TestButton : public WinLayer::WinView {
 public:
  explicit TestButton(Diary& diary);
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnDestroyed() override;

 private:
  Diary& diary_; // input as "down 2500", "up 2500", "key 2500 41"; the end as "destroyed 2500"
};

class TestDialog : public WinLayer::WinDialog {
 public:
  static constexpr WinLayer::WinSize ClientSize{300, 120};

  // At (100, 100) on the screen, with a caption.
  TestDialog();
  void addButtons(int count); // before Create
  TestButton& button(int index) { return *buttons_[static_cast<size_t>(index)]; }
  [[nodiscard]] HWND focusOf(int index) { return button(index).window; }

  // "state 5 0", "resized", "destroyed", "created", "command 2500 1004", in order.
  Diary diary;
  bool mayClose = true;
  // Leaves the front to others once it was there: a window manager may bring the focus late.
  bool isShy = false;
  std::function<int32_t(UINT, WPARAM, LPARAM)> answer; // asked before the dialog itself
  std::function<bool(WinLayer::WinSize&, WinLayer::WinSize&)> limits;
  Action whenCreated;

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreateChildren() override;
  void OnCreated() override;
  void OnDestroyed() override;
  void OnResized() override { diary.push_back("resized"); }
  void OnShowState(int32_t oldState, int32_t newState) override;
  bool OnMinMaxInfo(WinLayer::WinSize& shrink, WinLayer::WinSize& growth) override;
  int32_t OnCommand(WinLayer::WinView& view, uint32_t code) override;
  bool CanClose() override { return mayClose; }

 private:
  std::vector<std::unique_ptr<TestButton>> buttons_;
};

// How often the line stands in the diary.
int64_t timesOf(const Diary& diary, const std::string& line);

} // namespace WindowTest
