// The context menu of edit boxes: its entries in order, and their texts. The group of the messages
// is "EditBar"; its keys are the labels, its texts the tips that stand beside them.
#pragma once

#include "win/WinEditBoxInfo.h"
#include "win/WinMenuHandle.h"

namespace WinLayer {

enum WinEditBoxEntry : uint32_t {
  EditEntryCancel = 1,
  EditEntryUndo,
  EditEntryCopy,
  EditEntryPaste,
  EditEntryDelete,
  EditEntrySelect,
  EditEntryInsertTab,
  EditEntryInputMethod,
  EditEntryRegister,
};

// The menu for the box as it is now. Main thread.
WinMenuHandle buildEditBoxMenu(const WinEditBoxInfo& info, bool hasInputContext);

// Makes the menu's texts known to the catalogue.
void registerEditBoxTexts();

} // namespace WinLayer
