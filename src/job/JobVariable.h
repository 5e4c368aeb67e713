// JobVariableUnit, JobVariableList, JobVariableStore: the table in which the user's variables and
// the built-in functions stand side by side. A built-in is a variable whose value is computed.
//
// Names compare with exact case and the first entry wins: built-ins stand in front, so a variable
// with a built-in's name is never seen. `find` and `set` hold the list's lock; whoever walks the
// list holds it himself.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawList.h"
#include "raw/RawLock.h"

#include <vector>

namespace JobLayer {

class JobVariableArgument;

enum JobVariableState : int32_t {
  VariableSuccess = 0,
  VariableOverflow = 1, // too many expansions; the text is empty
  VariableInvalid = 2,  // a fault; a message was reported
  VariableUnknown = 3,  // no variable of that name
  VariableExpanded = 4, // internal
};
// "Success", "Overflow", "Invalid", "Unknown", "Expanded".
const RawString& variableStateWord(int32_t state);

struct JobVariableResult {
  int32_t state = VariableSuccess;
  RawString text;
};

class JobVariableUnit {
 public:
  enum Flag : uint16_t {
    UserVariable = 0x0001,    // made by a script or the system at run time
    SetSinceRestore = 0x0002, // the value was set since the last restore
  };
  uint16_t flags = 0;
  RawString name;
  RawString value;
  RawString savedValue;

  explicit JobVariableUnit(const RawString& variableName) : name(variableName) {}
  // Slot order: evaluate (before the destructor's).
  virtual JobVariableResult evaluate(JobVariableArgument& argument);
  virtual ~JobVariableUnit() = default;
};

class JobVariableListAllocator : public RawLayer::RawListAllocator<JobVariableUnit> {
 public:
  void destroy(JobVariableUnit* element) override { delete element; }
};

// Entries are appended and erased; their names stay as they are. A lookup costs the same however
// many there are.
class JobVariableList : public RawLayer::RawListR<JobVariableListAllocator, JobVariableUnit> {
 public:
  int32_t lastState = VariableSuccess; // of the last expansion, stored by whoever expands
  RawLayer::RawLock lock;

  [[nodiscard]] JobVariableUnit* find(const RawString& name);
  void set(const RawString& name, const RawString& value);
  [[nodiscard]] RawString valueOf(const RawString& name); // empty when missing
  // What the variable answers; VariableUnknown and nothing when there is none. The lock is held
  // while a user's value is copied, and not while a built-in runs.
  JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument);
  // All variables, built-ins included, around a run.
  void saveAll();
  void restoreAll();
  void destroy(JobVariableUnit* element) override;

 private:
  JobVariableUnit* findLocked(const RawString& name); // the caller holds the lock
  void makeIndex();
  std::vector<JobVariableUnit*> index_; // by the hash of the name; null where none is
  int32_t indexed_ = 0;                 // entries in the list when the index was made
};

class JobVariableStore : public JobVariableList {
 public:
  JobVariableStore(); // with the whole table of built-ins
  static JobVariableStore& instance();
  // "ExitCode" with "0" and "Missing" with nothing.
  void defineInitialVariables();
};

// Empty and "False" in any ASCII case are false, all else is true.
bool isTrueText(const RawString& text);

} // namespace JobLayer
