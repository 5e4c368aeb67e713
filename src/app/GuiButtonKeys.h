// GuiButtonKeys: what the keys do in the box of buttons. Pure; keys are the platform's virtual
// codes. Along means the direction in which the buttons stand, across the other one.
#pragma once

#include "job/JobButtonList.h"

namespace AppLayer {

enum class GuiButtonAction {
  None, // the key means nothing here
  Run,
  ToFirst,
  ToLast,
  ToPrevious,
  ToNext,
  ShowMenu,
  Delete,
  MoveUp,
  MoveDown,
};

// Of a key by itself, and of a key with Alt.
GuiButtonAction buttonActionOf(uint32_t virtualKey, bool withAlt, bool horizontal);

// Where one of the four To actions takes the cursor: over separators and hidden buttons. -1 when it
// stays. From no current button (-1) ToNext gives the first usable one.
int32_t buttonCursorAfter(const JobLayer::JobButtonList& buttons, int32_t cursor,
                          GuiButtonAction action);

} // namespace AppLayer
