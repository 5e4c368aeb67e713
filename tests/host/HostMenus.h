// HostMenus: the popup menus that the host's stand-in holds.
#pragma once

#include "raw/RawString.h"

#include <cstdint>
#include <vector>

namespace HostMenus {

struct Entry {
  uint32_t flags;
  uintptr_t item;
  uintptr_t data;
  RawLayer::RawString text{};
};
using Menu = std::vector<Entry>;

// The entries of a menu that stands.
inline const Menu& entriesOf(const void* menu) {
  return *static_cast<const Menu*>(menu);
}

} // namespace HostMenus
