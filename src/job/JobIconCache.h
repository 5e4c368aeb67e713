// JobIconCache: all icons ever shown, in a pool of images that lives on between runs, and the list
// of where each came from.
//
// On disk it is two files of one folder: the profile "IconCache.ini" and a data file that the
// profile names. At every moment they are a whole cache or none: while they change, the profile
// names no file that is there. A fault of the cache means a slower start and nothing else.
//
// Locks: whoever needs several takes `list`, `state`, `pool` in this order. `list` guards the ring
// of entries and queuePosition, `state` the fields of entries and workPending, `pool` the pool.
// `save`, `load`, `evict` and `imageOf` take what they need. `load` is called before there is a
// second thread.
#pragma once

#include "job/JobIconInfoList.h"
#include "raw/RawLock.h"
#include "raw/RawSystem.h"
#include "win/WinBitmapPool.h"

namespace JobLayer {

struct JobIconLocks {
  RawLayer::RawLock list;
  RawLayer::RawLock state;
  RawLayer::RawLock pool;
};

class JobIconCache {
 public:
  mutable JobIconLocks locks;
  WinLayer::WinBitmapPoolEx pool;
  JobIconInfoList list;
  int32_t queuePosition = 0; // of the next entry to be worked on
  bool workPending = false;  // there are such entries

  bool persistent = false; // without it, no file is touched
  RawString profile;       // path of "IconCache.ini"; the data file stands beside it

  // The cells of the two built-in images.
  [[nodiscard]] int32_t failedId() const { return failedId_; }
  [[nodiscard]] int32_t loadingId() const { return loadingId_; }
  // Cells up to the loading image are neither saved nor freed from now on.
  void setBuiltIn(int32_t failedId, int32_t loadingId);

  // The image of an entry, which counts as used; -1 for a bad handle.
  int32_t imageOf(int32_t handle);
  // Frees the images of all entries that were not used for so many runs. The entries stay, and
  // with them all handles, but are not saved.
  void evict(int32_t unusedCount);

  // True when both files are written, or when there was nothing to do. False: nothing is left,
  // unless the data file could not be written, which leaves the old cache.
  bool save();
  // Takes pool, list and built-in images from the files; all entries are to be refreshed then, and
  // the queue starts at the first. True also when there was nothing to do. False: there is no such
  // cache for cells of this size; pool and list are empty, and the built-in images must be added
  // again.
  bool load();

  // "YYYYMMDDHHMMSS.dat"; a higher number stands for the names behind it that are free when this
  // one is taken.
  static RawString dataFileName(const RawLayer::RawMoment& moment, int32_t number = 0);

 private:
  RawString writeData();
  bool writeProfile(const RawString& data);
  bool writeTopInfo(RawLayer::RawProfile& file) const;
  bool saveItems();
  bool readFiles();
  bool readData(const RawString& data);
  bool readSections();
  bool takeTopInfo(const RawLayer::RawParameterList& values);
  void freeUnnamedCells();

  int32_t failedId_ = -1;
  int32_t loadingId_ = -1;
};

} // namespace JobLayer
