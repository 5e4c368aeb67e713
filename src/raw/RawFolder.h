// RawFolderWalker: the entries of one folder, one at a time, and a list to sort them.
//
// A walker belongs to one thread. A folder that cannot be read has no entries.
#pragma once

#include "raw/RawList.h"
#include "raw/RawOwner.h"
#include "raw/RawString.h"

namespace RawLayer {

class RawFindFileData {
 public:
  uint32_t attributes = 0xFFFFFFFF; // all bits set: no entry
  uint64_t writeTime = 0;           // file times
  uint64_t createTime = 0;
  uint64_t accessTime = 0;
  uint64_t size = 0;
  RawString name; // in the folder, EncodingUtf8
  RawString fullPath;

  [[nodiscard]] bool isEntry() const { return attributes != 0xFFFFFFFF; }
  [[nodiscard]] bool isFolder() const { return isEntry() && (attributes & 0x10) != 0; }
};

// Whether the name ends in ".lnk", in any case.
bool isShortcut(const RawFindFileData& entry);

struct RawFindCloser {
  using Handle = void*;
  static Handle none();
  static void close(Handle handle);
};
using RawFindOwner = RawOwner<RawFindCloser>;

class RawFolderWalker : public RawFindFileData {
 public:
  // An empty folder is the current one.
  explicit RawFolderWalker(const RawString& folder);
  // Fills the fields with the next entry, in the platform's order ("." and ".." are passed over).
  // False at the end and from then on, with the fields of no entry.
  bool next();
  [[nodiscard]] bool isFinished() const { return finished_; } // also before the first entry

 private:
  bool step(); // one entry of the platform's, or no entry at the end

  RawFindOwner findHandle_;
  bool finished_ = true; // before the first entry and behind the last one
  bool started_ = false;
  RawString folder_;
  RawString pattern_;
};

class RawFolderFileListAllocator : public RawListAllocator<RawFindFileData> {
 public:
  void destroy(RawFindFileData* element) override { delete element; }
};
class RawFolderFileList : public RawListR<RawFolderFileListAllocator, RawFindFileData> {
 public:
  void add(const RawFindFileData& entry); // appends a copy
};

class RawFolderFileListSort : public RawListSortR<RawFindFileData> {
 public:
  enum Mode : int32_t { ByPath = 0, ByWriteTime = 1, BySize = 2 };
  int32_t mode = ByPath;
  using RawListSortR<RawFindFileData>::RawListSortR;
  int32_t compare(const RawFindFileData* a, const RawFindFileData* b) override;
};

} // namespace RawLayer
