// JobProduct: what the program calls itself, in logs, captions and menus.
#pragma once

#include "job/JobFacts.h"

namespace JobLayer {

struct JobProduct {
  static const RawString& name() { return "Tarvellon"_text; }
  static const RawString& version() { return "Version 1.37.2024.0907"_text; }
};

} // namespace JobLayer
