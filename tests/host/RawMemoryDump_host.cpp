// The host's dump is its signature alone: enough to see that the road to it was taken.
#include "raw/RawMemoryDump.h"

namespace RawLayer {

bool writeMemoryDump(const RawFileOwner& file, void*) {
  return writeFile(file, "MDMP", 4);
}

} // namespace RawLayer
