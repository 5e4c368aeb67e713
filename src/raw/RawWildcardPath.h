// Paths with wildcards in any of their parts. Both functions walk folders; any thread.
//
// A part is a pattern (raw/RawPattern.h, in any case) when it holds "*" or "?" or starts with "@".
// The same marks in a root, as "\\?\" has one, make a pattern of it, too.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// How many folders, or else files, of the pattern's folder match its last part. The folder is
// resolved first; without one it is the current folder.
int32_t countEntries(const RawString& pattern, bool folders);
// The path with each pattern replaced by the first entry that matches it, from the left; "???" when
// one of them has none. A path without patterns, or without a folder in front of them, stays.
RawString resolveWildcardPath(const RawString& path);

} // namespace RawLayer
