// LauncherMessages: what the program says before its own dialogs stand, in message boxes titled
// with the program's name. Main thread; each call returns when the user has pressed OK.
#pragma once

#include "raw/RawString.h"

namespace AppLayer {

class LauncherMessages {
 public:
  static void registerTexts(); // makes them known to the catalogue
  // The catalogue's text of the id, its first "%s" replaced by `argument`.
  static void show(const RawLayer::RawString& id,
                   const RawLayer::RawString& argument = RawLayer::RawString::emptyStatic());
  static void showUsage();
};

} // namespace AppLayer
