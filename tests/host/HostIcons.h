// HostIcons: what stands for icons and device contexts on the host. A test makes a HostIcon or a
// HostCanvas, keeps it, and hands its address out as the platform's handle.
#pragma once

#include "win/WinRect.h"

#include <cstdint>
#include <vector>

struct HostIcon {
  WinLayer::WinSize size;
  std::vector<uint32_t> colours; // rows from the top
  std::vector<uint32_t> mask;    // 0 where the icon shows
};

struct HostCanvas {
  WinLayer::WinSize size;
  std::vector<uint32_t> pixels; // rows from the top
};
