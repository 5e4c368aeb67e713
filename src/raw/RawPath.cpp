#include "raw/RawPath.h"

#include "raw/RawFile.h"
#include "raw/RawSystem.h"

#include <vector>

namespace RawLayer {

namespace {

// No platform call takes a longer path: 32767 wide units, each three bytes of UTF-8 at most.
constexpr int32_t LongestPath = 32767 * 3;

bool isSeparator(uint16_t unit) {
  return unit == '\\' || unit == '/';
}

bool isLetter(uint16_t unit) {
  const uint16_t folded = rawFold(unit);
  return folded >= 'A' && folded <= 'Z';
}

// Position of the last separator before `end`; -1 when there is none.
int32_t lastSeparator(const RawString& path, int32_t end) {
  int32_t position = end - 1;
  while (position >= 0 && !isSeparatorAt(path, position)) --position;
  return position;
}

bool endsInSeparator(const RawString& path) {
  return isSeparatorAt(path, path.length() - 1);
}

// Position of the "." that parts the extension from the name; the range's end when there is none.
int32_t extensionDot(const RawString& path, RawRange range) {
  for (int32_t i = range.end - 1; i >= range.start; --i) {
    if (path.at(i) == '.') return i;
    if (isSeparatorAt(path, i)) break;
  }
  return range.end;
}

RawString partOf(const RawString& path, RawRange range) {
  return RawString::fromRange(path.encoding(), path, range);
}

// How many units of the prefix "." or ".." with a separator stand at the position; 0 for neither.
int32_t dotPrefix(const RawString& path, int32_t position) {
  if (path.at(position) != '.') return 0;
  if (isSeparator(path.at(position + 1))) return 2;
  return path.at(position + 1) == '.' && isSeparator(path.at(position + 2)) ? 3 : 0;
}

} // namespace

bool isSeparatorAt(const RawString& path, int32_t position) {
  if (!isSeparator(path.at(position))) return false;
  if (path.encoding() != EncodingShiftJis) return true;
  // A trail byte may look like "\". Counting the lead-range bytes in front of it tells them apart.
  int32_t leads = 0;
  while (position - leads > 0 && path.extraUnits(position - leads - 1) != 0) ++leads;
  return leads % 2 == 0;
}

RawRange folderRange(const RawString& path) {
  const int32_t separator = lastSeparator(path, path.length());
  return {0, separator < 0 ? 0 : separator};
}

RawRange nameRange(const RawString& path) {
  return {lastSeparator(path, path.length()) + 1, path.length()};
}

RawRange stemRange(const RawString& path, RawRange name) {
  const RawRange range = name.clamped(path.length());
  return {range.start, extensionDot(path, range)};
}

RawRange extensionRange(const RawString& path) {
  const int32_t dot = extensionDot(path, path.all());
  return {dot < path.length() ? dot + 1 : dot, path.length()};
}

RawString folderOf(const RawString& path) {
  return partOf(path, folderRange(path));
}

RawString nameOf(const RawString& path) {
  return partOf(path, nameRange(path));
}

RawString withoutTrailingSeparator(const RawString& path) {
  return endsInSeparator(path) ? partOf(path, {0, path.length() - 1}) : path;
}

RawString joinPath(const RawString& folder, const RawString& name) {
  if (folder.isEmpty()) return name;
  const RawString& separator = endsInSeparator(folder) ? RawString::emptyStatic() : "\\"_text;
  return RawString::concat(folder, separator, name);
}

bool isAbsolutePath(const RawString& path) {
  return (isLetter(path.at(0)) && path.at(1) == ':') || (path.at(0) == '\\' && path.at(1) == '\\');
}

RawString absolutePath(const RawString& base, const RawString& relative) {
  if (relative.isEmpty() || isAbsolutePath(relative)) return relative;
  RawString folder = withoutTrailingSeparator(base);
  int32_t position = 0;
  while (const int32_t prefix = dotPrefix(relative, position)) {
    if (prefix == 3) folder = folderOf(folder);
    position += prefix;
  }
  if (!folder.isEmpty()) folder.appendChar('\\');
  folder.append(relative, {position, relative.length()});
  return folder;
}

RawString resolveUserPath(const RawString& productName, const RawString& path,
                          const RawString& base) {
  const RawString& placeholder = "$(User)"_text;
  const int32_t position = path.find(placeholder);
  if (position == path.length()) return absolutePath(base, path);

  const RawString folder = joinPath(userFolder(path.encoding()), productName);
  makeFolders(folder);
  RawString result = path;
  result.replaceRange({position, position + placeholder.length()}, folder, folder.all());
  return absolutePath(base, result);
}

RawString resolveUserPath(const RawString& productName, const RawString& path) {
  return resolveUserPath(productName, path, programFolder().shareAs(path.encoding()));
}

RawString programFolder() {
  return folderOf(moduleName());
}

// Up to the first part that is there, then down again: a recursion over a path of thousands of
// parts would overrun the stack. A level that fails does not stop the rest, for it may be there
// without being readable; the last one decides.
bool makeFolders(const RawString& path) {
  if (path.length() > LongestPath) return false;
  RawString level = withoutTrailingSeparator(path);
  std::vector<int32_t> missing;
  uint32_t attributes = fileAttributes(level);
  while (attributes == RawNoAttributes) {
    missing.push_back(level.length());
    const RawString folder = folderOf(level);
    if (folder.isEmpty()) break;
    level = withoutTrailingSeparator(folder);
    attributes = fileAttributes(level);
  }
  if (missing.empty()) return (attributes & RawAttributeFolder) != 0;

  bool made = false;
  for (auto length = missing.rbegin(); length != missing.rend(); ++length)
    made = createFolder(partOf(path, {0, *length}));
  return made;
}

} // namespace RawLayer
