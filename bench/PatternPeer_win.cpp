#include "PatternPeer.h"

#include <windows.h>

#include <shlwapi.h>

namespace PatternPeer {

const char* name() {
  return "PathMatchSpecW";
}
double goal() {
  return 1.0 / 8;
}
bool matches(const Text& pattern, const Text& name) {
  return PathMatchSpecW(name.c_str(), pattern.c_str()) != 0;
}

} // namespace PatternPeer
