#include "raw/RawFolder.h"

#include "raw/RawFolderFind.h"
#include "raw/RawPath.h"

namespace RawLayer {

namespace {

int32_t order(uint64_t a, uint64_t b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

bool isSelfOrParent(const RawString& name) {
  return name.equals("."_text) || name.equals(".."_text);
}

} // namespace

bool isShortcut(const RawFindFileData& entry) {
  const RawString& suffix = ".lnk"_text;
  const int32_t position = entry.name.length() - suffix.length();
  return position >= 0 && entry.name.startsWithAt(position, suffix, suffix.length());
}

RawFolderWalker::RawFolderWalker(const RawString& folder)
    : folder_(withoutTrailingSeparator(folder)), pattern_(joinPath(folder_, "*.*"_text)) {
  // The names that come are UTF-8, and so is the folder that they are joined to.
  folder_ = folder_.shareAs(EncodingUtf8);
}

bool RawFolderWalker::next() {
  do {
    if (!step()) return false;
  } while (isSelfOrParent(name));
  fullPath = joinPath(folder_, name);
  return true;
}

bool RawFolderWalker::step() {
  if (!started_) {
    started_ = true;
    findHandle_ = findFirstEntry(pattern_, *this);
    finished_ = !findHandle_.isValid();
  } else if (!finished_) {
    finished_ = !findNextEntry(findHandle_, pattern_, *this);
  }
  if (!finished_) return true;
  findHandle_.reset();
  static_cast<RawFindFileData&>(*this) = RawFindFileData();
  return false;
}

void RawFolderFileList::add(const RawFindFileData& entry) {
  append(new RawFindFileData(entry));
}

int32_t RawFolderFileListSort::compare(const RawFindFileData* a, const RawFindFileData* b) {
  switch (mode) {
  case ByWriteTime:
    return order(a->writeTime, b->writeTime);
  case BySize:
    return order(a->size, b->size);
  default:
    return a->fullPath.compareNoCase(b->fullPath);
  }
}

} // namespace RawLayer
