// A dialog without a frame under the hook that stands in for one.
#pragma once

#include "win/WinEdgePicker.h"
#include "window/TestDialog.h"

namespace WindowTest {

class TestPicker : public WinLayer::WinEdgePicker {
 public:
  using WinEdgePicker::WinEdgePicker;
  bool mayMove = true;
  bool mayResize = true;
  bool mayOpenMenu = true;
  WinLayer::WinRect askedClient;
  WinLayer::WinPoint askedPoint;
  uint32_t askedEdges = 0;

  bool CanMoveAt(const WinLayer::WinRect& client, WinLayer::WinPoint point) override;
  bool CanResizeAt(const WinLayer::WinRect& client, WinLayer::WinPoint, uint32_t edges) override;
  bool CanOpenSystemMenuAt(const WinLayer::WinRect&, WinLayer::WinPoint point) override;
};

struct SystemCommand {
  WPARAM command = 0;
  WinLayer::WinPoint point; // on the screen
};

// Writes system commands down and obeys none.
class EdgeDialog : public TestDialog {
 public:
  static constexpr int32_t Left = 100; // on the screen
  static constexpr int32_t Top = 100;
  static constexpr int32_t Width = ClientSize.width;
  static constexpr int32_t Height = ClientSize.height;
  static constexpr int32_t ButtonWidth = 40;
  static constexpr int32_t ButtonHeight = 16;
  static constexpr int32_t GlyphSize = 9;
  static constexpr uint16_t AllButtons =
      WinLayer::EdgeCloseButton | WinLayer::EdgeMaximizeButton | WinLayer::EdgeMinimizeButton;

  TestPicker picker;
  std::vector<SystemCommand> commands;
  WinLayer::WinSize least{150, 60}; // what it answers to WM_GETMINMAXINFO
  WinLayer::WinSize greatest{400, 200};

  explicit EdgeDialog(uint16_t flags, DWORD extraStyle = 0);
  // Stands in front with the pointer on it, so that the hook hears of every step.
  void open();
  void pointAt(int32_t x, int32_t y); // of the client
  void drag(WinLayer::WinPoint from, WinLayer::WinPoint by);
  void startResize(int32_t x, int32_t y);            // presses and holds an edge
  void send(UINT message, WinLayer::WinPoint point); // of the mouse, with the left button down
  WinLayer::WinEdgeButton& edgeButton(WinLayer::WinEdgeButtons::Kind kind) {
    return picker.edgeButtons.buttons[kind];
  }

 private:
  int32_t answerMessage(UINT message, WPARAM wParam, LPARAM lParam);
};

// The pointer comes to rest there: what a moving window reports of it may still be on its way.
void holdPointer(int32_t x, int32_t y);

} // namespace WindowTest
