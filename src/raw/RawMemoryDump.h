// The platform's memory dump, apart from RawThreadDump because it needs the debug help library.
#pragma once

#include "raw/RawFile.h"

namespace RawLayer {

// Writes a dump of this process with its full memory, as of the exception in this thread. The
// pointers are the platform's, null for a dump without an exception. False on failure.
bool writeMemoryDump(const RawFileOwner& file, void* exceptionPointers);

} // namespace RawLayer
