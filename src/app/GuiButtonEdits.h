// GuiButtonEdits: the edits of the list of buttons, apart from any window. Each edit that changes
// the list says so; an index outside the list changes nothing. `save` brings the list into the
// configuration file, where a failure changes nothing and is not reported. Main thread.
#pragma once

#include "job/JobButtonList.h"
#include "raw/RawStringList.h"

namespace AppLayer {

class GuiButtonEdits {
 public:
  using RawString = RawLayer::RawString;

  explicit GuiButtonEdits(JobLayer::JobButtonList& buttons) : buttons_(buttons) {}

  bool insertSeparator(int32_t index); // before the entry
  // Destroys the entry. A cursor that is past the end then goes to the last usable entry, or to -1.
  bool remove(int32_t& cursor);
  // By one place up (-1) or down (+1); the cursor goes with the entry.
  bool move(int32_t& cursor, int32_t delta);
  // New entries, each before the one that stands at `index` now: they come out in reverse order.
  // At the end in their own order for an index outside the list. Runs their set-up, which may show
  // reports.
  void insertPaths(int32_t index, const RawLayer::RawStringList& paths);

  void save(); // the sections of the buttons
  // What follows a move: the sections of the selectors. The new order of the buttons reaches the
  // file with the next edit that saves them.
  static void saveSelectors();

  // All paths, each in double quotes, with a blank between them.
  static RawString quotedPaths(const RawLayer::RawStringList& paths);

 private:
  JobLayer::JobButtonList& buttons_;
};

} // namespace AppLayer
