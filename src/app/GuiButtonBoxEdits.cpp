// The box's edits: by its menu, by keys and by dropped files.
#include "app/GuiButtonBox.h"

#include "app/GuiButtonEdits.h"
#include "app/GuiMainCommands.h"
#include "app/LauncherOptions.h"
#include "job/JobCommandList.h"
#include "raw/RawGui.h"
#include "raw/RawLanguage.h"
#include "raw/RawSystem.h"
#include "win/WinMenuHandle.h"

namespace AppLayer {

using RawLayer::RawLanguageGroup;
using RawLayer::RawLocaleRecord;
using RawLayer::RawStringList;
using WinLayer::WinMenuHandle;
using Property = GuiButtonBoxProperty;

namespace {

const RawLanguageGroup& menuTexts() {
  static const RawLocaleRecord table[] = {
      {"InsertSeparator"_text, "Insert separator."_text},
      {"DeleteItems"_text, "Delete selected buttons."_text},
      {"MoveUpItems"_text, "Move up selected buttons."_text},
      {"MoveDownItems"_text, "Move down selected buttons."_text},
      {""_text, ""_text},
  };
  static const RawLanguageGroup group("ButtonMenu"_text, table);
  return group;
}

WinMenuHandle buttonMenu(bool enabled) {
  const uint32_t state = enabled ? WinMenuHandle::Enabled : WinMenuHandle::Disabled;
  const RawLanguageGroup& texts = menuTexts();
  WinMenuHandle menu;
  menu.appendText(GuiButtonBox::MenuInsertSeparator, texts.text("InsertSeparator"_text), state);
  menu.appendText(GuiButtonBox::MenuDeleteItems, texts.text("DeleteItems"_text), state);
  menu.appendLine();
  menu.appendText(GuiButtonBox::MenuMoveUpItems, texts.text("MoveUpItems"_text), state);
  menu.appendText(GuiButtonBox::MenuMoveDownItems, texts.text("MoveDownItems"_text), state);
  return menu;
}

// The files of a drop, which is given back to the platform at the end of the scope.
class DroppedFiles {
 public:
  explicit DroppedFiles(HDROP drop) : drop_(drop) {
    const uint32_t count = RawLayer::dropFileCount(drop);
    for (uint32_t i = 0; i < count; ++i)
      if (const RawString path = RawLayer::dropFile(drop, i); !path.isEmpty()) paths.add(path);
  }
  ~DroppedFiles() { DragFinish(drop_); }
  DroppedFiles(const DroppedFiles&) = delete;
  DroppedFiles& operator=(const DroppedFiles&) = delete;

  RawStringList paths;

 private:
  HDROP drop_;
};

} // namespace

void GuiButtonBox::registerTexts() {
  menuTexts();
}

// --- The menu

// The entry comes back as a message of its own: it is served when this has returned.
void GuiButtonBox::ShowButtonMenu(WinPoint point) {
  const HWND own = window;
  if (!own) return;
  const WinMenuHandle menu = buttonMenu(current() != nullptr);
  POINT place{point.x, point.y};
  ClientToScreen(own, &place);
  const auto entry = static_cast<WPARAM>(TrackPopupMenuEx(static_cast<HMENU>(menu.menu()),
                                                          TPM_RIGHTBUTTON | TPM_RETURNCMD, place.x,
                                                          place.y, own, nullptr));
  if (!IsWindow(own)) return;
  property_.set(Property::FocusLook, true);
  invalidate();
  if (entry != 0) PostMessageW(own, WinLayer::WinMessageMenuResult, entry, 0);
}

int32_t GuiButtonBox::OnMenuCommand(uint32_t entry, LPARAM) {
  switch (entry) {
  case MenuInsertSeparator:
    insertSeparator();
    return 0;
  case MenuDeleteItems:
    deleteCurrent();
    return 0;
  case MenuMoveUpItems:
    moveCurrent(-1);
    return 0;
  case MenuMoveDownItems:
    moveCurrent(1);
    return 0;
  default:
    return -1;
  }
}

// --- The edits

void GuiButtonBox::insertSeparator() {
  GuiButtonEdits edits(*property_.buttons);
  if (!edits.insertSeparator(property_.cursor)) return;
  edits.save();
  notify();
}

void GuiButtonBox::deleteCurrent() {
  GuiButtonEdits edits(*property_.buttons);
  if (!edits.remove(property_.cursor)) return;
  edits.save();
  notify();
}

// The file gets the new order with the next edit that saves the buttons; their number is the same,
// so nobody has to know.
void GuiButtonBox::moveCurrent(int32_t delta) {
  GuiButtonEdits edits(*property_.buttons);
  if (!edits.move(property_.cursor, delta)) return;
  (void)layout().arrange(*property_.buttons);
  invalidate();
  GuiButtonEdits::saveSelectors();
}

// The owner measures the box, which sets all buttons up and can show reports.
void GuiButtonBox::notify() {
  invalidate();
  sendCode(MainCommandButtonsChanged);
}

// --- Dropped files

void GuiButtonBox::dropped(HDROP drop) {
  const bool withAlt = RawLayer::isKeyDown(VK_MENU);
  const DroppedFiles files(drop);
  if (!withAlt) return runDrop(files.paths);
  const HWND own = window;
  GuiButtonEdits(*property_.buttons).insertPaths(hitTest(pointerInClient()), files.paths);
  if (IsWindow(own)) notify();
}

void GuiButtonBox::runDrop(const RawStringList& paths) {
  const int32_t index = hitTest(pointerInClient());
  property_.cursor = index;
  invalidate();
  const JobButtonUnit* unit = current();
  if (!unit || (unit->flags & JobButtonUnit::IsHidden) != 0 || paths.count() == 0) return;
  JobLayer::JobCommandList::instance().RunDrop(index, *RawStringList::element(paths.first()),
                                               GuiButtonEdits::quotedPaths(paths),
                                               screenRect(index));
}

} // namespace AppLayer
