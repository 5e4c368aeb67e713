// JobIconInfoUnit, JobIconInfoList: which image of the pool came from which file.
//
// The position of an entry in the list is its handle, so entries are appended and never taken out
// while the program runs. No lock: the owner guards the list, also where nothing but looks things
// up, for that keeps an index.
#pragma once

#include "job/JobFacts.h"

#include "raw/RawList.h"
#include "raw/RawProfile.h"

#include <unordered_map>
#include <vector>

namespace JobLayer {

class JobIconInfoUnit {
 public:
  enum State : int32_t {
    Ready = 1,
    Requested = 2,  // not yet extracted
    Loaded = 3,     // from the cache files, to be refreshed
    Evicted = 4,    // its image is gone
    FirstMark = 5,  // no icon: tells the main window that the pass over what was loaded is done
    SecondMark = 6, // no icon: tells the main window the second message
  };
  int32_t state = Ready;
  int32_t imageId = -1; // cell of the pool
  RawString file;       // empty when the entry is not to be saved
  int32_t iconIndex = 0;
  int32_t unused = 0; // runs since it was last asked for
};

class JobIconInfoListAllocator : public RawLayer::RawListAllocator<JobIconInfoUnit> {
 public:
  void destroy(JobIconInfoUnit* element) override { delete element; }
};

class JobIconInfoList : public RawLayer::RawListR<JobIconInfoListAllocator, JobIconInfoUnit>,
                        public RawLayer::RawProfileEnumeration::Saver,
                        public RawLayer::RawProfileEnumeration::Enumerator {
 public:
  // Cells up to this one are built-in images, which are neither saved nor freed.
  int32_t firstFreeId = -1;

  // The entry at a position; null outside the list. Does not walk.
  [[nodiscard]] JobIconInfoUnit* at(int32_t position) const;
  // The position of the first entry with the index and the file, in any case; -1 without one. Does
  // not walk. An entry keeps its file and index from when it is appended.
  [[nodiscard]] int32_t find(const RawString& file, int32_t iconIndex) const;
  [[nodiscard]] bool isBuiltIn(int32_t imageId) const { return imageId <= firstFreeId; }
  // Gives all entries up for an empty list.
  void renew();
  void destroy(JobIconInfoUnit* element) override;

  // The name of an entry's section in the profile.
  static const RawString& sectionName();
  // Writes a section for each entry that has an image of its own and a file.
  bool saveSections(RawLayer::RawLineFile& writer, const RawString& prefix) override;
  // Appends the entry of such a section, one run older; sections of other names are passed over.
  void onSection(const RawString& name, const RawLayer::RawParameterList& parameters) override;

 private:
  void clearIndex() const;
  void extendIndex() const; // by what was appended since

  mutable std::vector<JobIconInfoUnit*> units_;               // by position
  mutable std::unordered_map<uint64_t, int32_t> firstByHash_; // the first position with the hash
};

} // namespace JobLayer
