// Saves one version after the other:  SaveKillChild MODE PATH FIRST COUNT
// Ends with 0 when at least one save said true, with 1 when none did, with 2 when called wrongly.
#include "SaveKillModes.h"

#include <cstdlib>

int main(int argc, char** argv) {
  const SaveKill::Mode* mode = argc == 5 ? SaveKill::modeNamed(argv[1]) : nullptr;
  if (!mode) return 2;
  const RawLayer::RawString path = RawLayer::RawString::fromChars(argv[2]);
  const int32_t first = std::atoi(argv[3]);
  const int32_t count = std::atoi(argv[4]);
  bool saved = false;
  for (int32_t i = 0; i < count; ++i)
    if (mode->save(path, SaveKill::listOf(first + i))) saved = true;
  return saved ? 0 : 1;
}
