// GuiSelectorMenu: the entries of the selector box's menu, as data in their order.
#pragma once

#include "job/JobSelectorList.h"

#include <vector>

namespace AppLayer {

struct GuiSelectorMenu {
  enum Id : uint32_t {
    InsertSeparator = 1,
    DeleteItems = 2,
    MoveUpItems = 4,
    MoveDownItems = 5,
    SortItems = 6,
    ReverseSortItems = 7,
  };
  struct Entry {
    uint32_t id = 0; // 0: a line
    RawLayer::RawString text;
    bool isEnabled = false;
  };
  static void registerTexts(); // makes them known to the catalogue
  // In the language of the user, enabled as the marked entries have it.
  static std::vector<Entry> entries(const JobLayer::JobMarkedRange& marked);
};

} // namespace AppLayer
