// The text record of an edit box without a window: every unit is ten pixels wide, and the changes
// that it reports are counted.
#pragma once

#include "win/WinEditBoxBasic.h"

#include <algorithm>
#include <string>
#include <vector>

class EditBoxRuler : public WinLayer::WinEditBoxInfo::Drawer {
 public:
  static constexpr int32_t UnitWidth = 10;
  int32_t changes = 0;

  int32_t textWidth(RawLayer::RawRange range) override { return range.size() * UnitWidth; }
  int32_t positionAt(RawLayer::RawRange line, int32_t offset) override {
    const int32_t units = (std::max(offset, 0) + UnitWidth / 2) / UnitWidth;
    return line.start + std::min(units, line.size());
  }
  void onTextChanged() override { ++changes; }
};

// Stands before the record that measures by it.
struct EditBoxBedRuler {
  EditBoxRuler ruler;
};

// The record with the keys, and what the parent was told.
class EditBoxBed : public EditBoxBedRuler, public WinLayer::WinEditBoxBasic {
 public:
  std::vector<uint32_t> told;

  EditBoxBed() : WinEditBoxBasic(ruler) { info.lineHeight = 12; }
  explicit EditBoxBed(const std::u16string& text, uint16_t flags = 0) : EditBoxBed() {
    info.flags = flags;
    info.setText(RawLayer::RawString::fromWide(text.data(), static_cast<int32_t>(text.size())));
    info.moveTo(info.text.length(), false);
    ruler.changes = info.changeCount = 0;
  }
  [[nodiscard]] std::u16string text() const {
    return {info.text.wide(), static_cast<std::size_t>(info.text.length())};
  }
  [[nodiscard]] std::u16string selected() const {
    const RawLayer::RawString part = info.selectedText();
    return {part.wide(), static_cast<std::size_t>(part.length())};
  }
  // Where the caret and the anchor are: "3", or "1-3" from the anchor to the caret.
  [[nodiscard]] std::string place() const {
    const std::string caret = std::to_string(info.caret);
    return info.anchor == info.caret ? caret : std::to_string(info.anchor) + "-" + caret;
  }
  EditBoxBed& at(int32_t caret) {
    info.select(caret, caret);
    return *this;
  }
  EditBoxBed& selecting(int32_t anchor, int32_t caret) {
    info.select(anchor, caret);
    return *this;
  }

 protected:
  void tellParent(uint32_t code) override { told.push_back(code); }
};
