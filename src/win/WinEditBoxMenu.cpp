#include "win/WinEditBoxMenu.h"

#include "raw/RawLanguage.h"

namespace WinLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawLocaleRecord;
using RawLayer::RawString;

namespace {

// In the order of the entries; the number of a row plus one is its id.
const RawLocaleRecord* entryTexts() {
  static const RawLocaleRecord table[] = {
      {"Cancel"_text, "Cancel edit."_text},          {"Undo"_text, "Undo text."_text},
      {"Copy"_text, "Copy to clipboard."_text},      {"Paste"_text, "Paste from clipboard."_text},
      {"Delete"_text, "Delete text."_text},          {"Select"_text, "Select all text."_text},
      {"InsertTab"_text, "Insert tab code."_text},   {"IME"_text, "Open IME."_text},
      {"Register"_text, "Register selection."_text}, {RawString(), RawString()},
  };
  return table;
}

const RawLayer::RawLanguageGroup& messages() {
  static const RawLayer::RawLanguageGroup group("EditBar"_text, entryTexts());
  return group;
}

bool isEnabled(uint32_t entry, const WinEditBoxInfo& info, bool hasInputContext) {
  switch (entry) {
  case EditEntryUndo:
    return !info.has(WinEditBoxInfo::ReadOnly) && info.canUndo();
  case EditEntryInputMethod:
  case EditEntryRegister:
    return hasInputContext;
  default:
    return true;
  }
}

} // namespace

// The tip stands in the column that menus have for short cuts.
WinMenuHandle buildEditBoxMenu(const WinEditBoxInfo& info, bool hasInputContext) {
  WinMenuHandle menu;
  for (uint32_t entry = EditEntryCancel; entry <= EditEntryRegister; ++entry) {
    if (entry == EditEntryCancel && !info.has(WinEditBoxInfo::HasCancel)) continue;
    const RawString& label = entryTexts()[entry - EditEntryCancel].id;
    menu.appendText(entry, RawString::concat(label, "\t"_text, messages().text(label)),
                    isEnabled(entry, info, hasInputContext) ? WinMenuHandle::Enabled
                                                            : WinMenuHandle::Disabled);
  }
  return menu;
}

void registerEditBoxTexts() {
  messages();
}

} // namespace WinLayer
