// JobButtonUnit, JobButtonList: the buttons. `name` and `params` are the truth; title, tip, icon
// and flags are computed by set-up and can be computed again at any time. Changed on the main
// thread only.
#pragma once

#include "job/JobDataSaver.h"
#include "job/JobExecutorPair.h"
#include "job/JobParam.h"

namespace JobLayer {

class JobButtonUnit {
 public:
  enum Flag : uint16_t {
    IsSeparator = 0x0001, // the name is "-"
    IsHidden = 0x0002,
    HasIcon = 0x0004,   // the unexpanded IconFile is not empty
    ShowTitle = 0x0008, // the title is drawn as text
    CanDrop = 0x0010,   // files dropped on it run it
  };
  uint16_t flags = 0;
  RawString name;
  RawString title;
  JobParamList params;
  int32_t icon = -1;
  RawString tip;
  int32_t width = 0; // of its content in its box, in pixels; not touched by set-up
  int32_t height = 0;
  JobRectangle rectangle; // in its box

  void rename(const RawString& newName); // sets the name and the separator bit
  void setup(const JobExecutorPair& executor);
  [[nodiscard]] bool isUsable() const { return (flags & (IsSeparator | IsHidden)) == 0; }
};
class JobButtonListAllocator : public RawLayer::RawListAllocator<JobButtonUnit> {
 public:
  void destroy(JobButtonUnit* element) override { delete element; }
};

class JobButtonList : public RawLayer::RawListR<JobButtonListAllocator, JobButtonUnit>,
                      public JobDataSaver::Caller {
 public:
  JobButtonUnit templateUnit; // of section "Button:*"; no template while its name is empty

  static const RawString& sectionPrefix(); // "Button:"
  [[nodiscard]] JobButtonUnit* find(const RawString& name) const;
  [[nodiscard]] JobButtonUnit* at(int32_t index) const; // null outside
  JobButtonUnit* add(const RawString& name);
  void setup(const JobExecutorPair& executor);
  // From `index`, itself included, to the nearest entry that can be pressed; -1 when there is none.
  [[nodiscard]] int32_t previousUsable(int32_t index) const;
  [[nodiscard]] int32_t nextUsable(int32_t index) const;
  // A new entry for a dropped path, before `index` or at the end; gives it.
  JobButtonUnit* insertFromPath(int32_t index, const RawString& path,
                                const JobExecutorPair& executor);
  void writeAll(RawLayer::RawLineFile& file) override;
};

// The expanded value of a key: empty when missing, a block, or when the expansion failed.
RawString expandedSetupValue(const JobParamList& params, const RawString& key,
                             const JobExecutorPair& executor);

} // namespace JobLayer
