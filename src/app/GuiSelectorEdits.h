// GuiSelectorEdits: the edits of the list of selectors, apart from any window. All work on the
// marks of the entries, which the selector box copies there first. Each says whether it was
// carried out, which is not whether anything moved: without a mark nothing is. Main thread; each
// walks the list once or twice, but for the sorts.
#pragma once

#include "job/JobSelectorList.h"

namespace AppLayer {

class GuiSelectorEdits {
 public:
  explicit GuiSelectorEdits(JobLayer::JobSelectorList& selectors) : selectors_(selectors) {}

  bool insertSeparators(); // one before each marked entry
  // Destroys the marked entries and marks the one that takes the cursor's place: the first unmarked
  // one at or behind it, else the nearest before it.
  bool deleteMarked(int32_t cursor);
  // One run of marked entries moves by one place; scattered ones gather behind the first run, or
  // ahead of the last one, where they come out in reverse order.
  bool moveUp();
  bool moveDown();
  bool sort(bool descending); // one run of marked entries only

  void save(); // the sections of the selectors; a failure changes nothing and is not reported

 private:
  void gatherDown();
  void moveRunDown();
  JobLayer::JobSelectorList& selectors_;
};

} // namespace AppLayer
