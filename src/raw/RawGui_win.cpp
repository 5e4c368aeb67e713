#include "raw/RawGui.h"

#include "raw/RawWinText.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

namespace RawLayer {

namespace {

constexpr int32_t DropPathUnits = 260;
constexpr UINT CountDropped = 0xFFFFFFFF;

bool measureWide(HDC context, const RawString& text, RawRange part, int32_t width, int32_t& fit,
                 int32_t* positions) {
  SIZE size;
  return GetTextExtentExPointW(context, reinterpret_cast<const wchar_t*>(text.wide()) + part.start,
                               part.size(), width, &fit, positions, &size) != 0;
}

bool measureNarrow(HDC context, const RawString& text, RawRange part, int32_t width, int32_t& fit,
                   int32_t* positions) {
  SIZE size;
  return GetTextExtentExPointA(context, text.text() + part.start, part.size(), width, &fit,
                               positions, &size) != 0;
}

bool measureUtf8(HDC context, const RawString& text, RawRange part, int32_t width, int32_t& fit,
                 int32_t* positions) {
  const RawString wide = RawString::fromRange(EncodingWide, text, part);
  const auto widePositions =
      std::make_unique<int32_t[]>(static_cast<std::size_t>(wide.length()) + 1);
  int32_t wideFit = 0;
  if (!measureWide(context, wide, wide.all(), width, wideFit, widePositions.get())) return false;
  fit = spreadTextExtent(text, part, wide, wideFit, widePositions.get(), positions);
  return true;
}

} // namespace

bool insertMenu(void* menu, uint32_t position, uint32_t flags, uintptr_t item,
                const RawString& text) {
  const auto handle = static_cast<HMENU>(menu);
  const RawPlatformText caption(text);
  return caption.isWide() ? InsertMenuW(handle, position, flags, item, wideOf(caption)) != 0
                          : InsertMenuA(handle, position, flags, item, caption.narrow()) != 0;
}

RawString dropFile(void* drop, uint32_t index, int32_t encoding) {
  // The number of all ones asks for a count.
  if (index == CountDropped) return RawString(encoding);
  const auto handle = static_cast<HDROP>(drop);
  // Cut down, a longer path would name something else.
  if (DragQueryFileW(handle, index, nullptr, 0) > static_cast<UINT>(DropPathUnits))
    return RawString(encoding);
  return queryText(
      encoding, DropPathUnits,
      [=](char* buffer, int32_t room) { return DragQueryFileA(handle, index, buffer, room) != 0; },
      [=](wchar_t* buffer, int32_t room) {
        return DragQueryFileW(handle, index, buffer, room) != 0;
      });
}

uint32_t dropFileCount(void* drop) {
  return DragQueryFileA(static_cast<HDROP>(drop), CountDropped, nullptr, 0);
}

bool textExtent(void* deviceContext, const RawString& text, RawRange range, int32_t width,
                int32_t& fit, int32_t* positions) {
  const auto context = static_cast<HDC>(deviceContext);
  const RawRange part = range.clamped(text.length());
  fit = 0;
  if (part.isEmpty()) return true;
  switch (text.classifyForPlatform()) {
  case RawString::PlatformNarrow:
    return measureNarrow(context, text, part, width, fit, positions);
  case RawString::PlatformWide:
    return measureWide(context, text, part, width, fit, positions);
  default:
    return text.encoding() == EncodingUtf8 &&
           measureUtf8(context, text, part, width, fit, positions);
  }
}

} // namespace RawLayer
