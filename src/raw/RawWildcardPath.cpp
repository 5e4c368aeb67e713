#include "raw/RawWildcardPath.h"

#include "raw/RawFolder.h"
#include "raw/RawPath.h"
#include "raw/RawPattern.h"

namespace RawLayer {

namespace {

// End of the part that starts at `start`: the next separator or the end of the path.
int32_t partEnd(const RawString& path, int32_t start) {
  int32_t end = start;
  while (end < path.length() && !isSeparatorAt(path, end)) ++end;
  return end;
}

bool isPattern(const RawString& path, RawRange part) {
  if (path.at(part.start) == '@' && !part.isEmpty()) return true;
  for (int32_t i = part.start; i < part.end; ++i)
    if (path.at(i) == '*' || path.at(i) == '?') return true;
  return false;
}

bool holdsPattern(const RawString& path) {
  for (int32_t start = 0; start < path.length();) {
    const int32_t end = partEnd(path, start);
    if (isPattern(path, {start, end})) return true;
    start = end + 1;
  }
  return false;
}

// Name of the first entry of the folder that matches; empty when there is none.
RawString firstMatch(const RawString& folder, const RawString& name) {
  RawPattern pattern(name);
  RawFolderWalker walker(folder);
  while (walker.next())
    if (walker.isEntry() && pattern.match(walker.name, true)) return walker.name;
  return RawString::emptyStatic();
}

} // namespace

int32_t countEntries(const RawString& pattern, bool folders) {
  const RawString path = pattern.shareAs(EncodingUtf8);
  RawPattern name(nameOf(path));
  RawFolderWalker walker(resolveWildcardPath(folderOf(path)));
  int32_t count = 0;
  while (walker.next())
    if (walker.isEntry() && walker.isFolder() == folders && name.match(walker.name, true)) ++count;
  return count;
}

RawString resolveWildcardPath(const RawString& path) {
  if (!holdsPattern(path)) return path;
  // Entries have UTF-8 names.
  const RawString source = path.shareAs(EncodingUtf8);
  RawString result;
  for (int32_t start = 0; start < source.length();) {
    const int32_t end = partEnd(source, start);
    RawString part = RawString::fromRange(EncodingUtf8, source, {start, end});
    if (isPattern(source, {start, end})) {
      const RawString folder = folderOf(result);
      if (!folder.isEmpty()) part = firstMatch(folder, part);
      if (part.isEmpty()) return "???"_text;
    }
    result.append(part);
    // The separators stay as they stand.
    if (end < source.length()) result.appendChar(source.at(end));
    start = end + 1;
  }
  return result;
}

} // namespace RawLayer
