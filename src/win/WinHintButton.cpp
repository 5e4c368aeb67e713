#include "win/WinHintButton.h"

#include "win/WinEditBox.h"

#include <algorithm>
#include <vector>

namespace WinLayer {

using RawLayer::RawLabelList;
using RawLayer::RawLabelUnit;

namespace {

const RawString& takenText(const RawLabelUnit& unit) {
  return unit.text.isEmpty() ? unit.label : unit.text;
}

// The platform takes a single "&" for the mark of a key.
RawString menuText(const RawString& label) {
  RawString text(label.encoding(), label.length());
  for (int32_t i = 0; i < label.length(); ++i) {
    if (label.at(i) == '&') text.appendChar('&');
    text.appendChar(label.at(i));
  }
  return text;
}

// A picture of pixels that know how much they let through, over what is there.
void blendOver(HDC dc, WinPoint place, WinSize size, const std::vector<uint32_t>& pixels) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = -size.height; // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  const WinBitmapOwner bitmap(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  const WinMemoryDcOwner memory(CreateCompatibleDC(dc));
  if (!bitmap || !memory) return;
  std::copy(pixels.begin(), pixels.end(), static_cast<uint32_t*>(bits));
  const WinSelect selected(memory.get(), bitmap.get());
  AlphaBlend(dc, place.x, place.y, size.width, size.height, memory.get(), 0, 0, size.width,
             size.height, {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
}

} // namespace

WinHintButton::WinHintButton() = default;

void WinHintButton::Connect(WinEditBox& editBox, uint32_t pressCode, uint32_t chosenCode) {
  edit = &editBox;
  command = pressCode;
  chosenCommand = chosenCode;
}

void WinHintButton::SetLabels(const RawLayer::RawParameterList& hints) {
  labels = RawLabelList();
  for (const RawLayer::RawParameterUnit& unit : hints.elements())
    labels.addText(unit.key, unit.value);
  caseSensitive = hints.caseSensitive;
}

void WinHintButton::MeasureText(WinRect& area) {
  WinButton::MeasureText(area);
  if (GetTitle().isEmpty()) area.right = area.left + area.height();
}

// --- Input

bool WinHintButton::onKey(WPARAM key) {
  if (key != VK_DOWN) return WinButton::onKey(key);
  postCode(WinCodePress);
  return true;
}

// The owner hears of the press first: behind the menu it may be gone.
int32_t WinHintButton::OnChildNotify(uint32_t code) {
  const int32_t answer = WinButton::OnChildNotify(code);
  if (code == WinCodePress) ShowMenu(false);
  return answer;
}

WinMenuHandle WinHintButton::builtMenu() const {
  WinMenuHandle menu;
  const RawString shown = edit ? edit->GetTitle() : RawString();
  uint32_t id = 0;
  for (const RawLabelUnit& unit : labels.elements()) {
    ++id;
    if (unit.label.equals("-"_text)) {
      menu.appendLine();
      continue;
    }
    const RawString text = takenText(unit).shareAs(RawLayer::EncodingUtf8);
    const bool isShown = edit && (caseSensitive ? text.equals(shown) : text.equalsNoCase(shown));
    menu.appendText(id, menuText(unit.label),
                    isShown ? WinMenuHandle::Checked : WinMenuHandle::Enabled);
  }
  return menu;
}

void WinHintButton::ShowMenu(bool marksFirst) {
  if (labels.count() == 0 || !window || (menu_ && menu_->isOpen())) return;
  menu_ = builtMenu();
  const auto handle = static_cast<HMENU>(menu_->menu());
  if (marksFirst) SetMenuDefaultItem(handle, 0, TRUE);
  const WinRect place = windowRect();
  menu_->setOpen(true);
  const auto chosen = static_cast<WPARAM>(
      TrackPopupMenuEx(handle, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON | TPM_RETURNCMD,
                       place.left, place.bottom, window, nullptr));
  menu_->setOpen(false);
  if (chosen != 0 && window) SendMessageW(window, WinMessageMenuResult, chosen, 0);
}

int32_t WinHintButton::OnMenuCommand(uint32_t entry, LPARAM) {
  const RawLabelUnit* unit = RawLabelList::element(labels.nodeAt(static_cast<int32_t>(entry) - 1));
  if (!unit || !edit) return -1;
  const RawString taken = takenText(*unit).shareAs(RawLayer::EncodingWide);
  edit->SetTitle(taken);
  edit->setSelection(0, taken.length());
  if (edit->window) SetFocus(edit->window);
  if (chosenCommand != 0) postCode(chosenCommand);
  return 0;
}

// --- Painting

void WinHintButton::DrawContent(HDC dc, const WinRect& area, uint32_t flags) {
  if (GetTitle().isEmpty())
    drawArrow(dc, area);
  else
    WinButton::DrawContent(dc, area, flags);
}

void WinHintButton::drawArrow(HDC dc, const WinRect& area) const {
  const int32_t height = clientRect().height() - margins.top - margins.bottom;
  const WinSize size{height / 2, height / 3};
  if (size.width <= 0 || size.height <= 0) return;
  std::vector<uint32_t> pixels(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
  WinButtonDraw::paintArrow(pixels.data(), size);
  blendOver(
      dc,
      {area.left + (area.width() - size.width) / 2, area.top + (area.height() - size.height) / 2},
      size, pixels);
}

} // namespace WinLayer
