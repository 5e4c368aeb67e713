#include "win/WinEditBoxBasic.h"

#include "raw/RawClipboard.h"

namespace WinLayer {

using namespace RawLayer::RawLiterals;

namespace {

// Virtual keys of the platform; those of letters are the letters.
enum Key : uint32_t {
  KeyBackspace = 0x08,
  KeyTab = 0x09,
  KeyEnter = 0x0D,
  KeyShift = 0x10,
  KeyControl = 0x11,
  KeyAlt = 0x12,
  KeyEscape = 0x1B,
  KeyEnd = 0x23,
  KeyHome = 0x24,
  KeyLeft = 0x25,
  KeyUp = 0x26,
  KeyRight = 0x27,
  KeyDown = 0x28,
  KeyDelete = 0x2E,
};

// Text beyond 8 bits comes from the input method.
constexpr uint32_t TypedBits = 0xFF;
constexpr uint32_t FirstTyped = 32;
constexpr uint32_t DeleteCharacter = 127;

// Held down for another key, they are none themselves.
bool isModifier(uint32_t key) {
  return key == KeyShift || key == KeyControl || key == KeyAlt;
}

constexpr int32_t ClipboardLimit = 0x100000; // units

} // namespace

const WinEditBoxBasic::KeyRule WinEditBoxBasic::keyRules[] = {
    {KeyBackspace, false, &WinEditBoxBasic::onBackspace},
    {'H', true, &WinEditBoxBasic::onBackspace},
    {KeyDelete, false, &WinEditBoxBasic::onDelete},
    {'X', true, &WinEditBoxBasic::onDeleteSelection},
    {KeyTab, false, &WinEditBoxBasic::onTab},
    {KeyEnter, false, &WinEditBoxBasic::onEnter},
    {'M', true, &WinEditBoxBasic::onLineEnd},
    {KeyEscape, false, &WinEditBoxBasic::onEscape},
    {KeyLeft, true, &WinEditBoxBasic::onHome},
    {KeyLeft, false, &WinEditBoxBasic::onLeft},
    {'J', true, &WinEditBoxBasic::onLeft},
    {KeyRight, true, &WinEditBoxBasic::onEnd},
    {KeyRight, false, &WinEditBoxBasic::onRight},
    {'L', true, &WinEditBoxBasic::onRight},
    {KeyUp, false, &WinEditBoxBasic::onUp},
    {'I', true, &WinEditBoxBasic::onUp},
    {KeyDown, false, &WinEditBoxBasic::onDown},
    {'K', true, &WinEditBoxBasic::onDown},
    {KeyHome, false, &WinEditBoxBasic::onHome},
    {KeyEnd, false, &WinEditBoxBasic::onEnd},
    {'A', true, &WinEditBoxBasic::onSelectAll},
    {'C', true, &WinEditBoxBasic::onCopy},
    {'V', true, &WinEditBoxBasic::onPaste},
    {'Z', true, &WinEditBoxBasic::onUndo},
};

bool WinEditBoxBasic::pressKey(uint32_t virtualKey, bool shift, bool control) {
  if (isModifier(virtualKey)) return false;
  const KeyRule* found = nullptr;
  for (const KeyRule& rule : keyRules)
    if (!found && rule.key == virtualKey && (control || !rule.needsControl)) found = &rule;
  const bool keepsColumn =
      found && (found->act == &WinEditBoxBasic::onUp || found->act == &WinEditBoxBasic::onDown);
  if (!keepsColumn) info.wantedColumn = -1;
  return found && (this->*found->act)({shift, control});
}

void WinEditBoxBasic::typeCharacter(uint32_t code) {
  const uint32_t unit = code & TypedBits;
  if (unit < FirstTyped || unit == DeleteCharacter) return;
  const auto wide = static_cast<char16_t>(unit);
  insertTyped(RawString::fromWide(&wide, 1));
}

void WinEditBoxBasic::insertTyped(const RawString& text) {
  if (!isReadOnly()) info.insert(text);
}

// --- The operations that keys and menu share

void WinEditBoxBasic::undo() {
  if (!isReadOnly()) info.undo();
}

void WinEditBoxBasic::copy() const {
  if (!info.selection().isEmpty()) RawLayer::setClipboard(info.text, info.selection());
}

void WinEditBoxBasic::paste() {
  if (isReadOnly()) return;
  const RawString text = RawLayer::getClipboard(ClipboardLimit);
  if (text.isEmpty()) return; // no text, or no clipboard: the selection stays
  info.insert(pasteFilter && !isMultiLine() ? pasteFilter->textToInsert(text) : text);
}

void WinEditBoxBasic::erase() {
  if (!isReadOnly()) info.eraseSelection();
}

void WinEditBoxBasic::selectAll() {
  info.select(0, info.text.length());
}

void WinEditBoxBasic::insertTab() {
  insertTyped("\t"_text);
}

void WinEditBoxBasic::dropPaths(const RawLayer::RawStringList& paths) {
  if (isReadOnly()) return;
  RawString joined;
  for (const RawString& path : paths.elements()) {
    if (!joined.isEmpty()) joined.append(" "_text);
    joined.append(path.shareAs(RawLayer::EncodingUtf8));
  }
  info.replace(info.text.all(), joined);
  tellParent(WinEditDropped);
}

// --- The keys

bool WinEditBoxBasic::onBackspace(Press) {
  if (!isReadOnly()) info.eraseBack();
  return true;
}

bool WinEditBoxBasic::onDelete(Press) {
  if (!isReadOnly()) info.eraseForward();
  return true;
}

// Ctrl+X does not copy: it only deletes.
bool WinEditBoxBasic::onDeleteSelection(Press) {
  erase();
  return true;
}

bool WinEditBoxBasic::onTab(Press press) {
  if (info.has(WinEditBoxInfo::TabMovesFocus) || press.control || press.shift) return false;
  insertTab();
  return true;
}

bool WinEditBoxBasic::onEnter(Press press) {
  if (isMultiLine() && !press.control)
    insertTyped("\r\n"_text);
  else
    tellParent(WinEditEnter);
  return true;
}

bool WinEditBoxBasic::onLineEnd(Press press) {
  return onEnter({press.shift, false});
}

bool WinEditBoxBasic::onEscape(Press) {
  tellParent(WinEditEscape);
  return true;
}

bool WinEditBoxBasic::onLeft(Press press) {
  info.moveLeft(press.shift);
  return true;
}

bool WinEditBoxBasic::onRight(Press press) {
  info.moveRight(press.shift);
  return true;
}

bool WinEditBoxBasic::onUp(Press press) {
  if (!isMultiLine()) return false;
  info.moveRows(-1, press.shift);
  return true;
}

bool WinEditBoxBasic::onDown(Press press) {
  if (isMultiLine()) {
    info.moveRows(1, press.shift);
    return true;
  }
  if (!info.has(WinEditBoxInfo::OpensHints)) return false;
  tellParent(WinEditHint);
  return true;
}

bool WinEditBoxBasic::onHome(Press press) {
  info.moveTo(0, press.shift);
  return true;
}

bool WinEditBoxBasic::onEnd(Press press) {
  info.moveTo(info.text.length(), press.shift);
  return true;
}

bool WinEditBoxBasic::onSelectAll(Press) {
  selectAll();
  return true;
}

bool WinEditBoxBasic::onCopy(Press) {
  copy();
  return true;
}

bool WinEditBoxBasic::onPaste(Press) {
  paste();
  return true;
}

bool WinEditBoxBasic::onUndo(Press) {
  undo();
  return true;
}

} // namespace WinLayer
