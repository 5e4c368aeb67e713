// JobIconSource: where buttons and menus get their icon numbers from. The upper part of the
// system installs the real one; without it every request gives -1, no icon.
#pragma once

#include "job/JobFacts.h"

namespace JobLayer {

// The icon index in a text: a whole decimal number with an optional sign; 0 for all else, also for
// what the general parser would take, such as "0x10".
int32_t decimalIndexOf(const RawString& text);

class JobIconSource {
 public:
  virtual ~JobIconSource() = default;
  // The number of the icon for file and index; -1 for none.
  virtual int32_t request(const RawString& file, int32_t iconIndex) = 0;

  // A popup menu is about to open: repaint it once the icons asked for so far are there.
  virtual void repaintMenu() {}

  static void install(JobIconSource* source); // null removes it; the caller keeps it alive
  static int32_t iconNumber(const RawString& file, int32_t iconIndex);
  static void requestMenuRepaint();
};

} // namespace JobLayer
