// JobCommandList: the runner and the table of commands. One instance in the process; it keeps no
// state of a run but a small flags word that lives as long as the process. All runs happen on the
// main thread, synchronously, and end with the first command that returns false. Blocks inside
// blocks are calls inside calls: the stack is the only limit.
#pragma once

#include "job/JobCommand.h"
#include "raw/RawList.h"

namespace JobLayer {

class JobExecutionRecord;

class JobCommandListAllocator : public RawLayer::RawListAllocator<JobCommandUnit> {
 public:
  void destroy(JobCommandUnit*) override {} // the commands are static
};

// What a run is given: the shared list of a button or selector, and how it was pressed.
struct JobRunBlock : public JobParamList {
  RawString key; // "LButton", "RButton", "DClick" or "Drop": the first word of KeyState
  RawString drop;
  RawString dropList;
  JobRectangle rectangle;
  bool saveVariables = false;

  explicit JobRunBlock(const JobParamList& params) : JobParamList(params) {}
};

// The one-shot switch of the command line, as the upper layer read it.
struct JobCommandLineRun {
  RawString switchName; // "a", "l", "r" or "d"
  RawString name;
  RawString drop;
  RawString dropList;
};

class JobCommandList : public RawLayer::RawListR<JobCommandListAllocator, JobCommandUnit>,
                       public JobParamExecutor {
 public:
  enum Flag : uint16_t {
    BreakTravels = 0x0001, // a Break is travelling up to its loop
    ElseRuns = 0x0002,     // the last If found its condition false
  };
  uint16_t flags = 0;

  JobCommandList();
  static JobCommandList& instance();

  // Each runs the whole script before it returns the truth of the run. An index or name that does
  // not fit ends the call with false, nothing done and nothing logged. Rectangles are those of the
  // pressed thing, in screen pixels. What was pressed may be gone when the call returns.
  bool RunSelector(int32_t index, const RawString& key, const JobRectangle& rectangle);
  bool RunButton(int32_t index, const RawString& key, const JobRectangle& rectangle);
  bool RunDrop(int32_t index, const RawString& drop, const RawString& dropList,
               const JobRectangle& rectangle);
  bool RunCommandLine(const JobCommandLineRun& run);
  // The body of a press, with its record, its variables and its result.
  bool RunBlock(const JobRunBlock& block, const RawString& title);
  // Runs the blocks of a list in their order, in the name of `executor`; values are passed over.
  bool Execute(const JobParamList& list, const JobExecutorPair& executor) override;
  // One block with its record; an unknown keyword is reported.
  bool RunCommand(const RawString& keyword, const JobParamList& params,
                  const JobExecutorPair& caller);
  static void SetResult(JobExecutionRecord& record, bool success);

  [[nodiscard]] JobCommandUnit* findCommand(const RawString& keyword) const; // null when unknown

  [[nodiscard]] bool hasFlag(Flag flag) const { return (flags & flag) != 0; }
  void setFlag(Flag flag, bool on) {
    flags = static_cast<uint16_t>(on ? flags | flag : flags & ~flag);
  }

 private:
  void add(JobCommandUnit& command);
  bool runAction(const RawString& name);
};

} // namespace JobLayer
