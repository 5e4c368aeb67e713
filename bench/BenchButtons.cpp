// A frame of 200 buttons, each with an icon and a title, drawn into an off-screen buffer. Beside it
// what plain owner-drawn buttons do for the same picture, and the sum of what cannot be spared: a
// fill of memory, a copy of an icon and one text call for each button.
#include "Bench.h"

#include "app/GuiButtonPainter.h"
#include "win/WinText.h"

#include <algorithm>
#include <string>
#include <vector>

using namespace AppLayer;
using namespace RawLayer::RawLiterals;
using JobLayer::JobIconOwner;

namespace {

constexpr int32_t ButtonCount = 200;
constexpr int32_t IconSide = 16;

// Of a plate with a soft edge, by the distance from the icon's border.
uint32_t alphaAt(int32_t distance, int32_t side) {
  if (distance < side / 8) return 0;
  return distance == side / 8 ? 0x80000000 : 0xFF000000;
}

HICON makeIcon(int32_t side, uint32_t colour) {
  const auto count = static_cast<size_t>(side) * static_cast<size_t>(side);
  std::vector<uint32_t> colours(count);
  for (int32_t y = 0; y < side; ++y)
    for (int32_t x = 0; x < side; ++x)
      colours[static_cast<size_t>(y * side + x)] =
          alphaAt(std::min({x, y, side - 1 - x, side - 1 - y}), side) | (colour & 0xFFFFFF);
  const std::vector<uint8_t> mask(count / 8, 0);
  const WinLayer::WinBitmapOwner colourBitmap(CreateBitmap(side, side, 1, 32, colours.data()));
  const WinLayer::WinBitmapOwner maskBitmap(CreateBitmap(side, side, 1, 1, mask.data()));
  ICONINFO info{TRUE, 0, 0, maskBitmap.get(), colourBitmap.get()};
  return CreateIconIndirect(&info);
}

// Icons without a disk.
class BenchIcons : public JobLayer::JobIconPlatform {
 public:
  JobIconOwner builtInIcon(BuiltIn, WinSize size) override {
    return JobIconOwner(makeIcon(size.width, 0x808080));
  }
  JobIconOwner fileIcon(const RawString&, int32_t iconIndex, WinSize size) override {
    return JobIconOwner(makeIcon(size.width, static_cast<uint32_t>(iconIndex) * 2654435761U));
  }
  JobIconOwner documentIcon(const RawString&) override { return {}; }
  void postCommand(WinLayer::WinDialog&, uint16_t) override {}
};

class Buttons {
 public:
  explicit Buttons(int32_t cellSide) : control_(platform_, {cellSide, cellSide}) {
    control_.delayed = false;
    control_.extensions.add("exe"_text);
    for (int32_t i = 0; i < ButtonCount; ++i) {
      JobButtonUnit* unit = list.add("b"_text);
      unit->title = "Button "_text;
      unit->title.appendInt64(i);
      unit->flags = JobButtonUnit::HasIcon | JobButtonUnit::ShowTitle;
      unit->icon = control_.request("b.exe"_text, i);
    }
    const WinLayer::WinWindowDc screen(nullptr);
    const WinLayer::WinSelect font(screen.get(), font_);
    layout_.measureAll(list, [&](const RawString& title) {
      const WinRect box = WinLayer::measureText(screen.get(), title, {0, 0, 999, 99}, 0);
      return WinSize{box.width(), box.height()};
    });
    size = layout_.arrange(list);
  }
  void drawOwn() {
    painter_.draw(screen_.get(), {list, layout_, font_, size, 3, WinLayer::WinButtonDraw::Focused});
  }
  [[nodiscard]] GuiButtonLayout::Content contentOf(const JobButtonUnit& unit) const {
    return layout_.contentOf(unit);
  }
  [[nodiscard]] HFONT font() const { return font_; }

  JobButtonList list;
  WinSize size;

 private:
  WinLayer::WinWindowDc screen_{nullptr};
  BenchIcons platform_;
  JobLayer::JobIconControl control_;
  GuiButtonPainter painter_{control_};
  GuiButtonLayout layout_;
  HFONT font_ = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
};

// Owner-drawn buttons of the platform's own making.
class PlainButtons {
 public:
  explicit PlainButtons(Buttons& buttons) : buttons_(buttons) {
    const WinLayer::WinWindowDc screen(nullptr);
    dc_.reset(CreateCompatibleDC(screen.get()));
    bitmap_.reset(CreateCompatibleBitmap(screen.get(), buttons.size.width, buttons.size.height));
    old_ = SelectObject(dc_.get(), bitmap_.get());
    for (uint32_t i = 0; i < ButtonCount; ++i) {
      icons_.emplace_back(makeIcon(IconSide, i * 2654435761U));
      const JobButtonUnit& unit = *buttons.list.at(static_cast<int32_t>(i));
      const RawString wide = unit.title.shareAs(RawLayer::EncodingWide);
      titles_.emplace_back(WinLayer::wideUnits(wide), static_cast<size_t>(wide.length()));
    }
  }
  ~PlainButtons() { SelectObject(dc_.get(), old_); }
  PlainButtons(const PlainButtons&) = delete;
  PlainButtons& operator=(const PlainButtons&) = delete;

  void draw() {
    const WinLayer::WinSelect font(dc_.get(), buttons_.font());
    SetBkMode(dc_.get(), TRANSPARENT);
    const RECT all{0, 0, buttons_.size.width, buttons_.size.height};
    FillRect(dc_.get(), &all, GetSysColorBrush(COLOR_3DFACE));
    size_t i = 0;
    for (const JobButtonUnit& unit : buttons_.list.elements()) {
      RECT area = WinLayer::platformRect(GuiButtonLayout::rectOf(unit));
      DrawFrameControl(dc_.get(), &area, DFC_BUTTON, DFCS_BUTTONPUSH);
      const GuiButtonLayout::Content content = buttons_.contentOf(unit);
      DrawIconEx(dc_.get(), content.icon.left, content.icon.top, icons_[i].get(), IconSide,
                 IconSide, 0, nullptr, DI_NORMAL);
      RECT text = WinLayer::platformRect(content.text);
      DrawTextW(dc_.get(), titles_[i].c_str(), -1, &text, DT_NOPREFIX | DT_CENTER);
      ++i;
    }
    GdiFlush();
  }

 private:
  Buttons& buttons_;
  WinLayer::WinMemoryDcOwner dc_;
  WinLayer::WinBitmapOwner bitmap_;
  HGDIOBJ old_ = nullptr;
  std::vector<WinLayer::WinIconOwner> icons_;
  std::vector<std::wstring> titles_;
};

// A fill, a copy of an icon and a text for each button, on a surface in memory.
class BareParts {
 public:
  explicit BareParts(Buttons& buttons) : buttons_(buttons), icon_(IconSide * IconSide, 0x123456) {
    const WinLayer::WinWindowDc screen(nullptr);
    buffer_.reserve(screen.get(), buttons.size);
    for (const JobButtonUnit& unit : buttons.list.elements()) {
      const RawString wide = unit.title.shareAs(RawLayer::EncodingWide);
      titles_.emplace_back(WinLayer::wideUnits(wide), static_cast<size_t>(wide.length()));
    }
  }
  void draw() {
    const WinLayer::WinSelect font(buffer_.dc(), buttons_.font());
    SetBkMode(buffer_.dc(), TRANSPARENT);
    const GuiPixelView view = buffer_.view();
    for (const JobButtonUnit& unit : buttons_.list.elements()) {
      view.fill(GuiButtonLayout::rectOf(unit), 0xF0F0F0);
      const GuiButtonLayout::Content content = buttons_.contentOf(unit);
      view.copy({content.icon.left, content.icon.top}, icon_.data(), {IconSide, IconSide});
    }
    size_t i = 0;
    for (const JobButtonUnit& unit : buttons_.list.elements()) {
      const WinRect text = buttons_.contentOf(unit).text;
      const std::wstring& title = titles_[i++];
      ExtTextOutW(buffer_.dc(), text.left, text.top, 0, nullptr, title.c_str(),
                  static_cast<UINT>(title.size()), nullptr);
    }
    GuiPixelBuffer::flush();
  }

 private:
  Buttons& buttons_;
  GuiPixelBuffer buffer_;
  std::vector<uint32_t> icon_;
  std::vector<std::wstring> titles_;
};

void compareAll(const char* name, int32_t cellSide) {
  Buttons buttons(cellSide);
  PlainButtons plain(buttons);
  BareParts bare(buttons);
  std::printf("-- %s\n", name);
  Bench::compare(
      "a frame of 200 buttons", "plain owner-draw", 1 / 13.0, [&] { buttons.drawOwn(); },
      [&] { plain.draw(); });
  Bench::compare(
      "a frame of 200 buttons", "fills, icon copies and texts alone", 1.6,
      [&] { buttons.drawOwn(); }, [&] { bare.draw(); });
}

} // namespace

int main() {
  compareAll("icons of the buttons' size", IconSide);
  compareAll("icons of 32 pixels, scaled", 32);
  return 0;
}
