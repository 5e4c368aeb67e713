// JobFacts: what this layer has to know from above, handed down once at start-up as plain values.
// Written by the main thread before the first script runs, read by any thread after that.
#pragma once

#include "raw/RawString.h"

namespace JobLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawRange;
using RawLayer::RawString;

struct JobFacts {
  RawString configFile;    // path of the configuration file
  RawString logCategories; // letters of what is logged; "UCPV" from the start
  // Whether all of the configuration file was loaded; set by the load. Entries that never came into
  // memory would be lost with the next save, so none is made then.
  bool configIsWhole = true;

  static JobFacts& instance();
};

// A rectangle in screen or view coordinates, in pixels.
struct JobRectangle {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  friend constexpr bool operator==(const JobRectangle&, const JobRectangle&) = default;
};

} // namespace JobLayer
