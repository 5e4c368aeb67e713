#include "app/GuiSelectorBox.h"

#include "app/GuiMainCommands.h"
#include "app/GuiSelectorMenu.h"
#include "job/JobCommandList.h"
#include "job/JobExecutionRecord.h"
#include "raw/RawGui.h"
#include "win/WinMenuHandle.h"
#include "win/WindowMetrics.h"

#include <shellapi.h>

#include <algorithm>

namespace AppLayer {

using JobLayer::JobExecutionRecord;
using JobLayer::JobExecutorPair;
using JobLayer::JobSelectorList;
using JobLayer::JobSelectorUnit;
using RawLayer::RawListNode;
using RawLayer::RawString;
using WinLayer::WinListBoxItemUnit;
using WinLayer::WinMenuHandle;
using namespace RawLayer::RawLiterals;

namespace {

// Blue in the high byte.
constexpr COLORREF MarkColour = 0x00FFD0C0;
constexpr COLORREF MarkColourUnfocused = 0x00FFE3D8;
constexpr COLORREF RowLineColour = 0x00A0A0A0;
constexpr COLORREF FrameColour = 0x00808080;

constexpr int32_t TitlePadding = 4; // of the width
constexpr int32_t RowPadding = 3;   // of the height
constexpr int32_t MeasureLimit = 0x7FFF;
constexpr UINT MeasureFormat = DT_SINGLELINE | DT_NOPREFIX;
constexpr UINT DrawFormat = DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER;

bool isSeparator(const JobSelectorUnit& unit) {
  return (unit.flags & JobSelectorUnit::IsSeparator) != 0;
}

WinLayer::WinRect extentOf(HDC dc, const RawString& text) {
  return WinLayer::measureText(dc, text, {0, 0, MeasureLimit, MeasureLimit}, MeasureFormat);
}

} // namespace

GuiSelectorBox::GuiSelectorBox(JobSelectorList& selectors)
    : selectors_(selectors), edits_(selectors) {
  style &= ~static_cast<DWORD>(WS_VSCROLL);
  extendedStyle |= WS_EX_ACCEPTFILES;
  margins = {1, 1, 1, 1};
  setFlag(MultipleSelection, true);
}

// --- Rows

void GuiSelectorBox::fill() {
  items = WinLayer::WinListBoxItemList();
  for (JobSelectorUnit& unit : selectors_.elements()) add(&unit).mark(unit.isMarked());
  scrollX = scrollY = 0;
  dirty = 1;
}

// Both lists are walked together; a row without its entry keeps its mark to itself.
void GuiSelectorBox::copyMarks() {
  RawListNode* row = items.first();
  for (JobSelectorUnit& unit : selectors_.elements()) {
    if (items.isEnd(row)) return;
    const WinListBoxItemUnit* item = items.element(row);
    if (item->data != &unit) continue;
    const int32_t others = unit.flags & ~JobSelectorUnit::IsMarked;
    unit.flags = static_cast<uint16_t>(others | (item->isMarked() ? JobSelectorUnit::IsMarked : 0));
    row = items.next(row);
  }
}

// --- Measuring

void GuiSelectorBox::MeasureText(WinRect& extent) {
  {
    const JobExecutionRecord record(JobExecutorPair::system(), JobExecutorPair::executor(),
                                    "SetupSelectors"_text);
    selectors_.setup(JobExecutorPair::executor());
  }
  const WinLayer::WinWindowDc dc(window);
  const WinLayer::WinSelect selected(dc.get(), fontHandle());
  measureSelectors(dc.get());
  const WinSize size = selectorExtent();
  extent.right = extent.left + size.width;
  extent.bottom = extent.top + size.height;
}

void GuiSelectorBox::measureSelectors(HDC dc) {
  rowHeight_ = extentOf(dc, "A"_text).height() + RowPadding;
  const int32_t separatorHeight = WinLayer::WindowMetrics::instance().selectorSeparator;
  for (JobSelectorUnit& unit : selectors_.elements()) {
    const bool isLine = isSeparator(unit);
    unit.itemData1 = isLine ? 0 : extentOf(dc, unit.title).width() + TitlePadding;
    unit.itemData2 = isLine ? separatorHeight : rowHeight_;
  }
}

GuiSelectorBox::WinSize GuiSelectorBox::selectorExtent() const {
  WinSize size{LeastWidth, 0};
  for (const JobSelectorUnit& unit : selectors_.elements()) {
    size.width = std::max(size.width, unit.itemData1);
    size.height += unit.itemData2;
  }
  return size;
}

GuiSelectorBox::WinSize GuiSelectorBox::itemExtent() {
  UpdateScroll();
  return selectorExtent();
}

void GuiSelectorBox::Measure(HDC dc, WinSize& size) {
  measureSelectors(dc);
  WinListBox::Measure(dc, size);
  size = selectorExtent();
  contentWidth = size.width;
  contentHeight = size.height;
  lineStepX = lineStepY = rowHeight_;
}

void GuiSelectorBox::MeasureRow(HDC, WinRect& row, int32_t, Item& item) {
  const JobSelectorUnit* unit = dataOf(item);
  row = {0, 0, unit->itemData1, unit->itemData2};
}

// --- Drawing

void GuiSelectorBox::RememberItemArea(const WinRect& itemArea) {
  itemArea_ = itemArea;
}

COLORREF GuiSelectorBox::rowColour(const Item& item) const {
  if (isSeparator(*dataOf(item))) return dialogColour();
  if (!item.isMarked() || hasFlag(DisplayOnly)) return paintedBackground();
  return hasFlag(HasFocus) ? MarkColour : MarkColourUnfocused;
}

void GuiSelectorBox::DrawRow(HDC dc, const WinRect& place, int32_t, Item& item) {
  const JobSelectorUnit& unit = *dataOf(item);
  const WinRect row{itemArea_.left, place.top, itemArea_.right, place.bottom};
  WinLayer::fillRect(dc, row, rowColour(item));
  if (!isSeparator(unit)) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, windowTextColour());
    WinLayer::drawText(dc, unit.title, {row.left + 2, row.top + 1, row.right - 2, row.bottom - 2},
                       DrawFormat);
  }
  WinLayer::fillRect(dc, {row.left, row.bottom - 1, row.right, row.bottom}, RowLineColour);
}

void GuiSelectorBox::FinishDrawing(HDC dc, const WinRect& surface) {
  WinLayer::frameRect(dc, surface, FrameColour);
}

// --- Running

int32_t GuiSelectorBox::OnChildNotify(uint32_t code) {
  switch (code) {
  case WinLayer::WinCodeSelection:
    runSelector("LButton"_text);
    return 0;
  case WinLayer::WinCodeDoubleClick:
    runSelector("DClick"_text);
    return 0;
  default:
    return WinListBox::OnChildNotify(code);
  }
}

void GuiSelectorBox::runSelector(const RawString& key) {
  const WinRect place = windowRect();
  JobLayer::JobCommandList::instance().RunSelector(
      cursor, key, {place.left, place.top, place.right, place.bottom});
}

// --- Editing

int32_t GuiSelectorBox::OnMenuCommand(uint32_t entry, LPARAM) {
  return edit(entry) ? 0 : -1;
}

// False for an entry that is none of the menu's.
bool GuiSelectorBox::edit(uint32_t entry) {
  copyMarks();
  bool isDone = false;
  switch (entry) {
  case GuiSelectorMenu::InsertSeparator:
    isDone = edits_.insertSeparators();
    break;
  case GuiSelectorMenu::DeleteItems:
    isDone = edits_.deleteMarked(cursor);
    break;
  case GuiSelectorMenu::MoveUpItems:
    isDone = edits_.moveUp();
    break;
  case GuiSelectorMenu::MoveDownItems:
    isDone = edits_.moveDown();
    break;
  case GuiSelectorMenu::SortItems:
  case GuiSelectorMenu::ReverseSortItems:
    isDone = edits_.sort(entry == GuiSelectorMenu::ReverseSortItems);
    break;
  default:
    return false;
  }
  if (isDone) finishEdit();
  return true;
}

void GuiSelectorBox::finishEdit() {
  fill();
  sendCode(MainCommandSelectorsChanged);
  invalidate();
  edits_.save();
}

// --- Menu

void GuiSelectorBox::OpenContextMenu(WinPoint point, int32_t) {
  copyMarks();
  WinMenuHandle menu;
  for (const GuiSelectorMenu::Entry& entry : GuiSelectorMenu::entries(selectors_.markedRange())) {
    if (entry.id == 0)
      menu.appendLine();
    else
      menu.appendText(entry.id, entry.text,
                      entry.isEnabled ? WinMenuHandle::Enabled : WinMenuHandle::Disabled);
  }
  POINT place{point.x, point.y};
  ClientToScreen(window, &place);
  const auto chosen = static_cast<WPARAM>(TrackPopupMenuEx(static_cast<HMENU>(menu.menu()),
                                                           TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x,
                                                           place.y, window, nullptr));
  if (chosen && window) SendMessageW(window, WinLayer::WinMessageMenuResult, chosen, 0);
}

void GuiSelectorBox::openMenuAtCursor() {
  UpdateScroll();
  const WinListBoxItemUnit* item = cursor >= 0 ? unitAt(cursor) : nullptr;
  if (!item) return;
  const WinRect row = item->rect.movedBy(-scrollX, -scrollY);
  OpenContextMenu({row.left + clientRect().width(), row.top}, cursor);
}

// --- Messages

int32_t GuiSelectorBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_KEYDOWN:
  case WM_SYSKEYDOWN:
    if (pressOwnKey(wParam, message == WM_SYSKEYDOWN)) return 0;
    break;
  case WM_DROPFILES:
    handleDrop(reinterpret_cast<HDROP>(wParam));
    return 0;
  default:
    break;
  }
  return WinListBox::OnMessage(message, wParam, lParam);
}

bool GuiSelectorBox::pressOwnKey(WPARAM key, bool withAlt) {
  switch (key) {
  case VK_LEFT:
  case VK_RIGHT:
    openMenuAtCursor();
    return true;
  case VK_DELETE:
    edit(GuiSelectorMenu::DeleteItems);
    return true;
  case VK_UP:
  case VK_DOWN:
    if (withAlt) edit(key == VK_UP ? GuiSelectorMenu::MoveUpItems : GuiSelectorMenu::MoveDownItems);
    return withAlt;
  default:
    return false;
  }
}

// --- Dropping

void GuiSelectorBox::handleDrop(HDROP drop) {
  UpdateScroll();
  const bool isAltDown = GetKeyState(VK_MENU) < 0;
  POINT place{};
  GetCursorPos(&place);
  ScreenToClient(window, &place);
  const int32_t row = hitTest({place.x, place.y});
  const int32_t index = isAltDown || row < 0 ? selectors_.count() : row;

  const JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(),
                                  "(Drop-Insert)"_text);
  const int32_t behind = insertDropped(drop, index);
  if (behind > index) {
    sendCode(MainCommandSelectorsChanged);
    SetCursorRow(behind - 1);
    invalidate();
    edits_.save();
  }
  DragFinish(drop);
}

// Gives the index behind the last new entry. The set-up of an entry may show a report, during which
// the rows can be made anew.
int32_t GuiSelectorBox::insertDropped(HDROP drop, int32_t index) {
  const uint32_t count = RawLayer::dropFileCount(drop);
  for (uint32_t i = 0; i < count; ++i) {
    const RawString path = RawLayer::dropFile(drop, i);
    if (path.isEmpty()) continue;
    RawListNode* node = selectors_.insertFromName(index, path, JobExecutorPair::executor());
    insert(index, JobSelectorList::element(node));
    ++index;
  }
  return index;
}

} // namespace AppLayer
