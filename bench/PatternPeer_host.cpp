#ifndef _GNU_SOURCE
#define _GNU_SOURCE // for FNM_CASEFOLD
#endif

#include "PatternPeer.h"

#include <fnmatch.h>

namespace PatternPeer {

const char* name() {
  return "fnmatch";
}
double goal() {
  return 1.0;
}
bool matches(const Text& pattern, const Text& name) {
  return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) == 0;
}

} // namespace PatternPeer
