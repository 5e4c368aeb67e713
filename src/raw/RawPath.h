// Paths as texts: both "\" and "/" separate everywhere. The range functions do not allocate; the
// ones that touch the disk say so. Any thread. A part that is not there is an empty range.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

RawRange folderRange(const RawString& path);                 // up to the last separator, without it
RawRange nameRange(const RawString& path);                   // behind the last separator
RawRange stemRange(const RawString& path, RawRange name);    // the range without its extension
RawRange extensionRange(const RawString& path);              // behind the last "." of the name
bool isSeparatorAt(const RawString& path, int32_t position); // knows Shift-JIS trail bytes
RawString folderOf(const RawString& path);
RawString nameOf(const RawString& path);

RawString withoutTrailingSeparator(const RawString& path); // drops one at most
// The folder, a "\" unless the folder is empty or ends in a separator, and the name. Both hold one
// encoding or ASCII: nothing is converted.
RawString joinPath(const RawString& folder, const RawString& name);
bool isAbsolutePath(const RawString& path); // letter and ":", or two backslashes
// `relative` itself when it is empty or absolute. Otherwise on `base`, with the ".\" and "..\" at
// its front worked out; a base of no more parts goes away.
RawString absolutePath(const RawString& base, const RawString& relative);
// Replaces the first "$(User)" by the user's folder of the product, which is created, and makes
// the result absolute on the folder of the executable or on `base`. Touches the disk.
RawString resolveUserPath(const RawString& productName, const RawString& path);
RawString resolveUserPath(const RawString& productName, const RawString& path,
                          const RawString& base);
RawString programFolder();

// The folder and all its parents; true also when it is there, false when it is a file or could not
// be made. Touches the disk.
bool makeFolders(const RawString& path);

} // namespace RawLayer
