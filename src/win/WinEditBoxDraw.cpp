#include "win/WinEditBoxDraw.h"

#include "raw/RawGui.h"
#include "win/WinEditBox.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::RawRange;

namespace {

constexpr int32_t TabLetters = 4;
constexpr char16_t FirstVisible = u' ';
constexpr int32_t Unlimited = 0x7FFFFFFF;
constexpr DWORD InvertDestination = 0x550009;

bool isControl(uint16_t unit) {
  return unit < FirstVisible;
}

// The end of the run of control characters, or of others, that begins at the range's start.
int32_t endOfRun(const RawString& text, RawRange range) {
  const bool wanted = isControl(text.at(range.start));
  int32_t end = range.start + 1;
  while (end < range.end && isControl(text.at(end)) == wanted) ++end;
  return end;
}

const wchar_t* unitsAt(const RawString& text, int32_t position) {
  return wideUnits(text) + position;
}

// The font of a view in a context of its window.
struct FontScope {
  WinWindowDc window;
  WinSelect selected;
  explicit FontScope(const WinView& view)
      : window(view.window), selected(window.get(), view.fontHandle()) {}
  [[nodiscard]] HDC dc() const { return window.get(); }
};

} // namespace

// --- Measuring

std::vector<int32_t> WinEditBoxDraw::edgesOf(HDC dc, RawRange range) const {
  const RawString& text = box_.info.text;
  std::vector<int32_t> edges(static_cast<size_t>(range.size()));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  const int32_t blank = std::max<int32_t>(metrics.tmAveCharWidth, 1);
  int32_t x = 0;
  for (int32_t place = range.start; place < range.end;) {
    int32_t* const edge = edges.data() + (place - range.start);
    if (isControl(text.at(place))) {
      const int32_t tab = blank * TabLetters;
      x = text.at(place) == u'\t' ? (x / tab + 1) * tab : x + blank;
      *edge = x;
      ++place;
      continue;
    }
    const int32_t end = endOfRun(text, {place, range.end});
    int32_t fit = 0;
    RawLayer::textExtent(dc, text, {place, end}, Unlimited, fit, edge);
    for (int32_t i = 0; i < end - place; ++i) edge[i] += x;
    x = edge[end - place - 1];
    place = end;
  }
  return edges;
}

int32_t WinEditBoxDraw::textWidth(RawRange range) {
  const RawRange part = range.clamped(box_.info.text.length());
  if (part.isEmpty()) return 0;
  const FontScope font(box_);
  return edgesOf(font.dc(), part).back();
}

int32_t WinEditBoxDraw::positionAt(RawRange line, int32_t offset) {
  const RawRange part = line.clamped(box_.info.text.length());
  if (part.isEmpty()) return part.start;
  const FontScope font(box_);
  const std::vector<int32_t> edges = edgesOf(font.dc(), part);
  int32_t left = 0;
  for (int32_t i = 0; i < part.size(); ++i) {
    const int32_t right = edges[static_cast<size_t>(i)];
    if (right == left) continue; // the rest of a character
    if (offset - left < right - offset) return part.start + i;
    left = right;
  }
  return part.end;
}

void WinEditBoxDraw::onTextChanged() {
  box_.onTextChanged();
}

void WinEditBoxDraw::measureFont() {
  const FontScope font(box_);
  TEXTMETRICW metrics{};
  if (GetTextMetricsW(font.dc(), &metrics)) box_.info.lineHeight = metrics.tmHeight;
}

WinSize WinEditBoxDraw::contentSize() {
  const WinEditBoxInfo& info = box_.info;
  const FontScope font(box_);
  int32_t width = 0;
  int32_t rows = 0;
  for (RawRange line = info.lineOfRow(0); line.start >= 0; line = info.lineBehind(line)) {
    if (!line.isEmpty()) width = std::max(width, edgesOf(font.dc(), line).back());
    ++rows;
  }
  const int32_t gaps = info.has(WinEditBoxInfo::MultiLine) ? rows * info.lineGap : 0;
  return {width + CaretWidth, rows * info.lineHeight + gaps};
}

// --- Painting

WinRect WinEditBoxDraw::caretRect() {
  const WinPoint place = box_.info.pointOf(box_.info.caret);
  return {place.x, place.y, place.x + CaretWidth, place.y + box_.info.lineHeight};
}

void WinEditBoxDraw::invertCaret(HDC dc, const WinRect& view) {
  const WinRect caret = caretRect();
  const int32_t left = std::max(caret.left, view.left);
  const int32_t top = std::max(caret.top, view.top);
  const int32_t right = std::min(caret.right, view.right);
  const int32_t bottom = std::min(caret.bottom, view.bottom);
  if (left < right && top < bottom)
    BitBlt(dc, left, top, right - left, bottom - top, nullptr, 0, 0, InvertDestination);
}

void WinEditBoxDraw::paintText(HDC dc, const WinRect& view) {
  const WinEditBoxInfo& info = box_.info;
  const WinSelect font(dc, box_.fontHandle());
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, view.left, view.top, view.right, view.bottom);
  SetBkMode(dc, TRANSPARENT);
  const int32_t height = info.rowHeight();
  const int32_t firstRow =
      info.has(WinEditBoxInfo::MultiLine) && height > 0 && view.top > info.scrollY
          ? (view.top - info.scrollY) / height
          : 0;
  int32_t top = info.scrollY + firstRow * height;
  RawRange line = info.lineOfRow(firstRow);
  for (; line.start >= 0 && top < view.bottom; line = info.lineBehind(line), top += height)
    paintLine(dc, line, top, view);
  RestoreDC(dc, saved);
}

// Only what the view shows of a line goes to the platform, as far as whole pieces allow: one
// piece in front of the selection, one in it, one behind.
void WinEditBoxDraw::paintLine(HDC dc, RawRange line, int32_t top, const WinRect& view) {
  if (line.isEmpty()) return;
  const WinEditBoxInfo& info = box_.info;
  const std::vector<int32_t> edges = edgesOf(dc, line);
  const auto xOf = [&](int32_t position) {
    return position <= line.start
               ? info.scrollX
               : info.scrollX + edges[static_cast<size_t>(position - line.start - 1)];
  };
  RawRange shown = line;
  while (shown.start < shown.end && xOf(shown.start + 1) < view.left) ++shown.start;
  while (shown.end > shown.start && xOf(shown.end - 1) > view.right) --shown.end;
  const RawRange selection = info.selection();
  for (int32_t place = shown.start; place < shown.end;) {
    const bool isSelected = place >= selection.start && place < selection.end;
    int32_t end = endOfRun(info.text, {place, shown.end});
    if (isSelected) end = std::min(end, selection.end);
    if (place < selection.start) end = std::min(end, selection.start);
    if (isSelected)
      fillRect(dc, {xOf(place), top, xOf(end), top + info.lineHeight},
               GetSysColor(COLOR_HIGHLIGHT));
    SetTextColor(dc, isSelected ? GetSysColor(COLOR_HIGHLIGHTTEXT) : box_.textColour);
    if (!isControl(info.text.at(place)))
      ExtTextOutW(dc, xOf(place), top, 0, nullptr, unitsAt(info.text, place),
                  static_cast<UINT>(end - place), nullptr);
    place = end;
  }
}

} // namespace WinLayer
