// The gallery's own views: what shows a look that a live widget takes only under the user's hand.
#pragma once

#include "win/WinButtonFaces.h"
#include "win/WinEdgePicker.h"
#include "win/WinListBox.h"
#include "win/WinPlaneBox.h"
#include "win/WinStaticBox.h"

#include <memory>
#include <vector>

namespace Gallery {

using namespace RawLayer::RawLiterals;

// All looks of a button's face, each with rounded corners, and with frames.
class FaceSheet : public WinLayer::WinStaticBox {
 public:
  static constexpr WinLayer::WinSize Size{330, 170};
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paint(HDC dc);
  WinLayer::WinButtonFaces faces_;
};

// Rows of texts, some of them marked, one without extent.
class TextList : public WinLayer::WinListBoxR<RawLayer::RawString> {
 public:
  static constexpr int32_t RowHeight = 18;
  void addRow(const char* text);
  void BeforeMeasure(HDC dc) override;
  void MeasureRow(HDC dc, WinLayer::WinRect& row, int32_t index, Item& item) override;
  void DrawRow(HDC dc, const WinLayer::WinRect& row, int32_t index, Item& item) override;
  void DrawHeader(HDC dc, const WinLayer::WinRect& row) override;
  void DrawFooter(HDC dc, const WinLayer::WinRect& row) override;

  bool hasHeaders = false;

 private:
  std::vector<std::unique_ptr<RawLayer::RawString>> texts_;
};

// A large content with a grid.
class GridPlane : public WinLayer::WinPlaneBox {
 public:
  WinLayer::WinSize wanted{600, 400};
  GridPlane();
  void MeasureContent(HDC dc) override;
  void DrawContent(HDC dc, WinLayer::WinPoint place) override;
};

// A view that its edge hook paints, with one of its buttons in a look.
class EdgeSample : public WinLayer::WinView {
 public:
  WinLayer::WinEdgePicker picker;
  EdgeSample();
  void setLook(WinLayer::WinEdgeButtons::Kind kind, bool hovered, bool pressed, bool maximised);
};

} // namespace Gallery
