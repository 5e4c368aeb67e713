#include "raw/RawProcess.h"

#include "HostFaults.h"
#include "HostProcesses.h"

#include <unistd.h>

namespace HostProcesses {

// Never destroyed: other statics' destructors may still ask.
State& state() {
  static State& only = *new State;
  return only;
}

} // namespace HostProcesses

namespace RawLayer {

void listProcesses(RawProcessInfoList& list) {
  if (HostFaults::fails(HostFaults::Walk)) return;
  for (const HostProcesses::Process& process : HostProcesses::state().processes) {
    auto* unit = new RawProcessInfoUnit;
    unit->name = process.name;
    unit->processId = process.processId;
    unit->parentId = process.parentId;
    list.append(unit);
  }
}

uint32_t currentProcessId() {
  return static_cast<uint32_t>(getpid());
}

void terminateProcess(uint32_t processId, uint32_t) {
  if (HostFaults::fails(HostFaults::Process)) return;
  auto& state = HostProcesses::state();
  const auto removed = std::erase_if(
      state.processes, [processId](const auto& process) { return process.processId == processId; });
  if (removed != 0) state.terminated.push_back(processId);
}

} // namespace RawLayer
