// Codes of a WM_COMMAND between views: the high word, with the view's identifier in the low word.
#pragma once

#include <cstdint>

namespace WinLayer {

inline constexpr uint32_t WinCodePress = 0;
inline constexpr uint32_t WinCodeDoubleClick = 0x1002; // or Enter, in a list
inline constexpr uint32_t WinCodeEscape = 0x1004;
inline constexpr uint32_t WinCodeFocusLost = 0x1005;
inline constexpr uint32_t WinCodeSelection = 0x1008; // cursor or marks of a list
inline constexpr uint32_t WinCodeScrolled = 0x100A;

} // namespace WinLayer
