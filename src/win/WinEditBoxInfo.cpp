#include "win/WinEditBoxInfo.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::EncodingWide;

namespace {

constexpr int32_t LineEndUnits = 2;
// Up to here one step back is always one unit, even over the halves of a line end.
constexpr int32_t PlainSteps = 2;

constexpr int32_t LeftEdge = 7; // pixels in which a drag scrolls
constexpr int32_t RightEdge = 8;
constexpr int32_t EdgeStep = 2;

// Classes of units for the choice of a word. Everything that is neither a blank nor a sign of ASCII
// nor one of the scripts below is a letter.
enum class UnitClass { Blank, Letter, Sign, Hiragana, Katakana, Ideograph };

struct UnitRange {
  uint16_t first;
  uint16_t last;
  UnitClass unitClass;
};

constexpr UnitRange unitRanges[] = {
    {0x0000, 0x0020, UnitClass::Blank},     {0x0021, 0x002F, UnitClass::Sign},
    {0x003A, 0x0040, UnitClass::Sign},      {0x005B, 0x005E, UnitClass::Sign},
    {0x0060, 0x0060, UnitClass::Sign},      {0x007B, 0x007E, UnitClass::Sign},
    {0x007F, 0x00A0, UnitClass::Blank},     {0x00A1, 0x00A9, UnitClass::Sign},
    {0x00AB, 0x00B4, UnitClass::Sign},      {0x00B6, 0x00B9, UnitClass::Sign},
    {0x00BB, 0x00BF, UnitClass::Sign},      {0x2000, 0x206F, UnitClass::Sign},
    {0x3000, 0x3000, UnitClass::Blank},     {0x3001, 0x3004, UnitClass::Sign},
    {0x3005, 0x3007, UnitClass::Ideograph}, {0x3008, 0x3020, UnitClass::Sign},
    {0x3040, 0x309F, UnitClass::Hiragana},  {0x30A0, 0x30FF, UnitClass::Katakana},
    {0x3400, 0x4DBF, UnitClass::Ideograph}, {0x4E00, 0x9FFF, UnitClass::Ideograph},
    {0xF900, 0xFAFF, UnitClass::Ideograph}, {0xFF01, 0xFF0F, UnitClass::Sign},
    {0xFF1A, 0xFF20, UnitClass::Sign},      {0xFF3B, 0xFF40, UnitClass::Sign},
    {0xFF5B, 0xFF65, UnitClass::Sign},      {0xFF66, 0xFF9F, UnitClass::Katakana},
};

UnitClass classOf(uint16_t unit) {
  for (const UnitRange& range : unitRanges)
    if (unit >= range.first && unit <= range.last) return range.unitClass;
  return UnitClass::Letter;
}

} // namespace

void WinEditBoxInfo::setFlag(Flag flag, bool value) {
  flags = static_cast<uint16_t>(value ? flags | flag : flags & ~flag);
}

// --- Text and selection

void WinEditBoxInfo::setText(const RawString& newText) {
  text = newText.shareAs(EncodingWide);
  undoText = RawString(EncodingWide);
  undoStart = undoEnd = 0;
  wantedColumn = -1;
  composition = {};
  select(anchor, caret);
  ++changeCount;
  drawer_.onTextChanged();
}

void WinEditBoxInfo::select(int32_t newAnchor, int32_t newCaret) {
  anchor = std::clamp(newAnchor, 0, text.length());
  caret = std::clamp(newCaret, 0, text.length());
}

RawLayer::RawRange WinEditBoxInfo::selection() const {
  return {std::min(anchor, caret), std::max(anchor, caret)};
}

RawLayer::RawString WinEditBoxInfo::selectedText() const {
  return RawString::fromRange(EncodingWide, text, selection());
}

// --- Edits

void WinEditBoxInfo::splice(RawRange range, const RawString& newText) {
  caret = anchor = range.start;
  ++changeCount;
  text.replaceRange(range, newText, newText.all());
  drawer_.onTextChanged();
}

void WinEditBoxInfo::replace(RawRange range, const RawString& newText) {
  const RawRange place = range.clamped(text.length());
  const RawString units = newText.shareAs(EncodingWide);
  if (place.isEmpty() && units.isEmpty()) return;
  undoText = RawString::fromRange(EncodingWide, text, place);
  undoStart = place.start;
  undoEnd = place.start + units.length();
  splice(place, units);
  caret = anchor = undoEnd;
}

void WinEditBoxInfo::insert(const RawString& newText) {
  replace(selection(), newText);
}

void WinEditBoxInfo::eraseSelection() {
  replace(selection(), RawString::emptyStatic());
}

void WinEditBoxInfo::eraseBack() {
  if (anchor != caret) return eraseSelection();
  replace({stepBack(caret), caret}, RawString::emptyStatic());
}

void WinEditBoxInfo::eraseForward() {
  if (anchor != caret) return eraseSelection();
  replace({caret, stepForward(caret)}, RawString::emptyStatic());
}

bool WinEditBoxInfo::canUndo() const {
  return !undoText.isEmpty() || undoStart != undoEnd;
}

void WinEditBoxInfo::undo() {
  if (!canUndo()) return;
  const RawString back = undoText;
  replace({undoStart, undoEnd}, back);
  select(undoStart, undoEnd);
}

// --- Moving

int32_t WinEditBoxInfo::stepBack(int32_t position) const {
  const int32_t from = std::min(position, text.length());
  if (from <= PlainSteps) return std::max(from - 1, 0);
  return isLineEnd(from - LineEndUnits) ? from - LineEndUnits : from - 1;
}

int32_t WinEditBoxInfo::stepForward(int32_t position) const {
  const int32_t from = std::max(position, 0);
  return std::min(isLineEnd(from) ? from + LineEndUnits : from + 1, text.length());
}

void WinEditBoxInfo::moveTo(int32_t position, bool extend) {
  select(extend ? anchor : position, position);
}

void WinEditBoxInfo::moveLeft(bool extend) {
  moveTo(!extend && anchor != caret ? selection().start : stepBack(caret), extend);
}

void WinEditBoxInfo::moveRight(bool extend) {
  moveTo(!extend && anchor != caret ? selection().end : stepForward(caret), extend);
}

void WinEditBoxInfo::moveRows(int32_t rows, bool extend) {
  const RawRange line = lineOf(caret);
  if (wantedColumn < 0) wantedColumn = drawer_.textWidth({line.start, caret});
  const int32_t row = rowOf(caret) + rows;
  if (row < 0 || row >= rowCount()) return moveTo(caret, extend);
  moveTo(drawer_.positionAt(lineOfRow(row), wantedColumn), extend);
}

// --- Lines and words

bool WinEditBoxInfo::isLineEnd(int32_t position) const {
  return text.at(position) == u'\r' && text.at(position + 1) == u'\n';
}

int32_t WinEditBoxInfo::endOfLine(int32_t start) const {
  if (!has(MultiLine)) return text.length();
  int32_t end = start;
  while (end < text.length() && !isLineEnd(end)) ++end;
  return end;
}

// A position between the halves of a line end belongs to the line in front of it.
RawLayer::RawRange WinEditBoxInfo::lineOf(int32_t position) const {
  int32_t start = 0;
  if (has(MultiLine)) {
    start = std::clamp(position, 0, text.length());
    while (start > 0 && !(start >= LineEndUnits && isLineEnd(start - LineEndUnits))) --start;
  }
  return {start, endOfLine(start)};
}

RawLayer::RawRange WinEditBoxInfo::lineBehind(RawRange line) const {
  if (line.end >= text.length()) return {-1, -1};
  const int32_t start = line.end + LineEndUnits;
  return {start, endOfLine(start)};
}

int32_t WinEditBoxInfo::rowOf(int32_t position) const {
  int32_t row = 0;
  RawRange line{0, endOfLine(0)};
  for (;;) {
    line = lineBehind(line);
    if (line.start < 0 || line.start > position) return row;
    ++row;
  }
}

RawLayer::RawRange WinEditBoxInfo::lineOfRow(int32_t row) const {
  RawRange line{0, endOfLine(0)};
  for (; row > 0; --row) {
    const RawRange following = lineBehind(line);
    if (following.start < 0) break;
    line = following;
  }
  return line;
}

int32_t WinEditBoxInfo::rowCount() const {
  return rowOf(text.length()) + 1;
}

// A click on the right half of a word's last letter gives the position behind it, so a blank there
// gives way to the word.
RawLayer::RawRange WinEditBoxInfo::wordAt(int32_t position) const {
  const RawRange line = lineOf(position);
  int32_t inside = std::clamp(position, line.start, line.end);
  if (line.isEmpty()) return {inside, inside};
  const bool atEnd = inside == line.end;
  if (inside > line.start && (atEnd || classOf(text.at(inside)) == UnitClass::Blank)) --inside;
  const UnitClass wanted = classOf(text.at(inside));
  RawRange word{inside, inside + 1};
  while (word.start > line.start && classOf(text.at(word.start - 1)) == wanted) --word.start;
  while (word.end < line.end && classOf(text.at(word.end)) == wanted) ++word.end;
  return word;
}

// --- Where things are

WinPoint WinEditBoxInfo::pointOf(int32_t position) const {
  const int32_t inside = std::clamp(position, 0, text.length());
  const RawRange line = lineOf(inside);
  const int32_t end = std::min(inside, line.end);
  return {scrollX + drawer_.textWidth({line.start, end}), scrollY + rowOf(inside) * rowHeight()};
}

int32_t WinEditBoxInfo::positionAt(WinPoint point) const {
  const bool hasRows = has(MultiLine) && rowHeight() > 0;
  const int32_t row = hasRows ? std::max(point.y - scrollY, 0) / rowHeight() : 0;
  return drawer_.positionAt(lineOfRow(row), point.x - scrollX);
}

bool WinEditBoxInfo::scrollToCaret(const WinRect& view, int32_t caretWidth) {
  const int32_t oldX = scrollX;
  const int32_t oldY = scrollY;
  const auto shown = [](int32_t place, int32_t size, int32_t first, int32_t end) {
    if (place < first) return first - place;
    return place + size > end ? std::min(end - size - place, 0) : 0;
  };
  const WinPoint point = pointOf(caret);
  scrollX = std::min(scrollX + shown(point.x, caretWidth, view.left, view.right), view.left);
  scrollY = std::min(scrollY + shown(point.y, lineHeight, view.top, view.bottom), view.top);
  return scrollX != oldX || scrollY != oldY;
}

bool WinEditBoxInfo::scrollAtEdge(int32_t x, const WinRect& client, int32_t viewLeft) {
  if (x - client.left <= LeftEdge && scrollX < viewLeft) {
    scrollX = std::min(scrollX + EdgeStep, viewLeft);
    return true;
  }
  if (client.right - x <= RightEdge && caret < text.length()) {
    scrollX -= EdgeStep;
    return true;
  }
  return false;
}

// --- The input method

void WinEditBoxInfo::beginComposition() {
  composing = true;
  eraseSelection();
  composition = {caret, caret};
}

void WinEditBoxInfo::putComposition(const RawString& running) {
  replace(composition, running);
  lastComposed = running.shareAs(EncodingWide);
  composition = {caret - lastComposed.length(), caret};
  select(composition.start, composition.end);
}

void WinEditBoxInfo::putResult(const RawString& result) {
  replace(composition, result);
  lastComposed = result.shareAs(EncodingWide);
  composition = {caret, caret};
}

void WinEditBoxInfo::endComposition() {
  composing = false;
  if (!composition.isEmpty()) replace(composition, RawString::emptyStatic());
  composition = {};
}

RawLayer::RawRange WinEditBoxInfo::reconversion() const {
  const RawRange before{caret - lastComposed.length(), caret};
  const bool stands = !before.isEmpty() && before.start >= 0 &&
                      text.rangeEquals(before, lastComposed, lastComposed.all());
  return stands ? before : RawRange{caret, caret};
}

} // namespace WinLayer
