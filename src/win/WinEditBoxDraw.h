// WinEditBoxDraw: measures and paints the text of an edit box, in the font of its view. Tabs reach
// to the next multiple of four average letters; other control characters are as wide as a blank.
//
// Belongs to its box and the box's thread.
#pragma once

#include "win/WinEditBoxInfo.h"
#include "win/WinGdi.h"

#include <vector>

namespace WinLayer {

class WinEditBox;

class WinEditBoxDraw : public WinEditBoxInfo::Drawer {
 public:
  static constexpr int32_t CaretWidth = 2; // pixels

  explicit WinEditBoxDraw(WinEditBox& box) : box_(box) {}
  int32_t textWidth(RawLayer::RawRange range) override;
  int32_t positionAt(RawLayer::RawRange line, int32_t offset) override;
  void onTextChanged() override;

  // Takes the height of a line from the font.
  void measureFont();
  // Of all lines, the caret behind them included.
  [[nodiscard]] WinSize contentSize();
  // The lines that the view shows, with the selection. The context is the client's.
  void paintText(HDC dc, const WinRect& view);
  // Where the caret is, in pixels of the client.
  [[nodiscard]] WinRect caretRect();
  // Shows the caret where it does not show, and the other way round.
  void invertCaret(HDC dc, const WinRect& view);

 private:
  // The pixel offsets of the right edges of the range's units, from the start of the line.
  [[nodiscard]] std::vector<int32_t> edgesOf(HDC dc, RawLayer::RawRange range) const;
  void paintLine(HDC dc, RawLayer::RawRange line, int32_t top, const WinRect& view);

  WinEditBox& box_;
};

} // namespace WinLayer
