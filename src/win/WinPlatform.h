// The platform's windows for the sources of this layer. Headers that can do without it do.
#pragma once

#include <windows.h>

#include "raw/RawOwner.h"
#include "raw/RawString.h"

namespace WinLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawRange;
using RawLayer::RawString;

// A 16-bit text as the platform's wide calls take it; `text` has EncodingWide.
inline const wchar_t* wideUnits(const RawString& text) {
  return reinterpret_cast<const wchar_t*>(text.wide());
}

} // namespace WinLayer
