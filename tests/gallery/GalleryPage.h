// The page of the gallery: groups of widgets under captions.
#pragma once

#include "gallery/GalleryParts.h"
#include "win/WinButton.h"
#include "win/WinDialog.h"
#include "win/WinEditBox.h"
#include "win/WinHintButton.h"
#include "win/WinImageBox.h"
#include "win/WinRadioButton.h"

#include <deque>
#include <memory>

namespace Gallery {

class Page : public WinLayer::WinDialog {
 public:
  Page();
  void OnCreateChildren() override;
  void OnCreated() override;
  int32_t OnCommand(WinLayer::WinView& view, uint32_t code) override;

 private:
  using RawString = RawLayer::RawString;

  // Each group adds its widgets from `top` on in its column and gives where the next one starts.
  int32_t faces(int32_t left, int32_t top);
  int32_t buttons(int32_t left, int32_t top);
  int32_t rows(int32_t left, int32_t top);
  int32_t statics(int32_t left, int32_t top);
  int32_t images(int32_t left, int32_t top);
  int32_t edits(int32_t left, int32_t top);
  int32_t lists(int32_t left, int32_t top);
  int32_t planes(int32_t left, int32_t top);
  int32_t edges(int32_t left, int32_t top);

  // The view is kept for the life of the page.
  template <class View>
  View& keep() {
    auto made = std::make_unique<View>();
    View& view = *made;
    views_.push_back(std::move(made));
    return view;
  }
  void place(WinLayer::WinView& view, const WinLayer::WinRect& area);
  int32_t caption(const RawString& text, int32_t left, int32_t top);
  WinLayer::WinButton& button(const RawString& text, uint32_t flags, const WinLayer::WinRect& area);
  WinLayer::WinEditBox& edit(const RawString& text, uint16_t flags, const WinLayer::WinRect& area);

  WinLayer::WinEditBox* firstEdit_ = nullptr; // gets the focus
  std::deque<std::unique_ptr<WinLayer::WinView>> views_;
  RawLayer::RawLabelList labels_;
  int32_t values_[4] = {2, 2, 2, 2};
  bool enabledCells_[3] = {true, false, true};
  WinLayer::WinIconHolder icons_[4];
};

// What holds the program while a tip is shown.
class TipPage : public WinLayer::WinDialog {
 public:
  TipPage();
};

} // namespace Gallery
