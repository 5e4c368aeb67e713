// Codes of a WM_COMMAND that the main dialog serves: the high word, with the identifier of the
// sending view in the low word.
#pragma once

#include <cstdint>

namespace AppLayer {

inline constexpr uint32_t MainCommandRestart = 0x1100;          // by the title menu
inline constexpr uint32_t MainCommandSelectorsChanged = 0x1101; // after an edit of the selectors
inline constexpr uint32_t MainCommandButtonsChanged = 0x1102;   // after an edit of the buttons
inline constexpr uint32_t MainCommandRepaint = 0x1103;          // by the icon thread
inline constexpr uint32_t MainCommandRepaintMenu = 0x1104;      // by the icon thread

} // namespace AppLayer
