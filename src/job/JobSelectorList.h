// JobSelectorUnit, JobSelectorList: the selectors. Changed on the main thread only.
#pragma once

#include "job/JobDataSaver.h"
#include "job/JobExecutorPair.h"
#include "job/JobParam.h"

namespace JobLayer {

class JobSelectorUnit {
 public:
  enum Flag : uint16_t {
    IsSeparator = 0x0001, // the name is "-"
    IsMarked = 0x0002,
  };
  uint16_t flags = 0;
  RawString name;
  RawString title;
  int32_t itemData1 = 0; // of the list box
  int32_t itemData2 = 0;
  JobParamList params;

  void rename(const RawString& newName);
  void setup(const JobExecutorPair& executor);
  [[nodiscard]] bool isMarked() const { return (flags & IsMarked) != 0; }
};
class JobSelectorListAllocator : public RawLayer::RawListAllocator<JobSelectorUnit> {
 public:
  void destroy(JobSelectorUnit* element) override { delete element; }
};

// The marked entries: first and last index (-1 without any), and whether none between is unmarked.
struct JobMarkedRange {
  int32_t first = -1;
  int32_t last = -1;
  bool contiguous = false;
};

class JobSelectorList : public RawLayer::RawListR<JobSelectorListAllocator, JobSelectorUnit>,
                        public JobDataSaver::Caller {
 public:
  JobSelectorUnit templateUnit; // of section "Selector:*"; no template while its name is empty
  int32_t current = 0;
  int32_t reserved = 0;

  static const RawString& sectionPrefix(); // "Selector:"
  [[nodiscard]] JobSelectorUnit* find(const RawString& name) const;
  [[nodiscard]] JobSelectorUnit* at(int32_t index) const; // null outside
  JobSelectorUnit* add(const RawString& name);
  void setup(const JobExecutorPair& executor); // each entry, without a record of its own
  // A new entry before `index` or at the end; gives where it stands.
  RawLayer::RawListNode* insertFromName(int32_t index, const RawString& name,
                                        const JobExecutorPair& executor);
  // The node at `index`, moved to the nearest unmarked one: forward first, then backward from the
  // last; the sentinel outside the list.
  [[nodiscard]] RawLayer::RawListNode* iteratorAt(int32_t index) const;
  [[nodiscard]] JobMarkedRange markedRange() const;
  void gatherMarked(); // behind the first marked one
  void moveMarkedUp();
  void writeAll(RawLayer::RawLineFile& file) override;
};

// By names, folding ASCII letters.
class JobSelectorListSort : public RawLayer::RawListSortR<JobSelectorUnit> {
 public:
  using RawListSortR<JobSelectorUnit>::RawListSortR;
  int32_t compare(const JobSelectorUnit* a, const JobSelectorUnit* b) override;
};

} // namespace JobLayer
