// The platform's search through one folder, for RawFolderWalker alone. Belongs to one thread.
#pragma once

#include "raw/RawFolder.h"

namespace RawLayer {

// Starts a search with the first entry that fits the pattern, which ends in a name with wildcards.
// A pattern in Shift-JIS goes to the narrow call, any other to the wide one. Fills everything but
// the full path of `entry`. Without an entry the owner is invalid and `entry` untouched.
RawFindOwner findFirstEntry(const RawString& pattern, RawFindFileData& entry);
// The next entry; false at the end. The pattern is the one that the search was started with.
bool findNextEntry(const RawFindOwner& search, const RawString& pattern, RawFindFileData& entry);

} // namespace RawLayer
