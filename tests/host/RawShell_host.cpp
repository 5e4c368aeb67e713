#include "raw/RawShell.h"

#include "HostFaults.h"
#include "HostShell.h"

namespace HostShell {

// Never destroyed: other statics' destructors may still ask.
State& state() {
  static State& only = *new State;
  return only;
}

} // namespace HostShell

namespace RawLayer {

namespace {

const HostShell::Answer& answerOf(const RawProcessOwner& process) {
  return *static_cast<HostShell::Answer*>(process.get());
}

void wait(const RawProcessOwner& process, bool forIdle, uint32_t milliseconds) {
  if (process) HostShell::state().waits.push_back({forIdle, milliseconds});
}

} // namespace

void RawProcessCloser::close(Handle handle) {
  --HostShell::state().openProcesses;
  delete static_cast<HostShell::Answer*>(handle);
}

bool shellExecute(const RawString& verb, const RawString& file, const RawString& parameters,
                  const RawString& directory, uint8_t showMode, RawProcessOwner& process) {
  process.reset();
  if (HostFaults::fails(HostFaults::Process)) return false;
  auto& state = HostShell::state();
  state.launches.push_back({verb, file, parameters, directory, showMode});
  if (!state.answer.started) return false;
  if (state.answer.hasProcess) {
    process.reset(new HostShell::Answer(state.answer));
    ++state.openProcesses;
  }
  return true;
}

uint32_t processIdOf(const RawProcessOwner& process) {
  return process ? answerOf(process).processId : 0;
}

void RawShell::waitForEnd(uint32_t milliseconds) const {
  wait(process, false, milliseconds);
}

void RawShell::waitForIdle(uint32_t milliseconds) const {
  wait(process, true, milliseconds);
}

uint32_t RawShell::exitCode() const {
  if (!process || HostFaults::fails(HostFaults::Process)) return 0;
  return answerOf(process).exitCode;
}

} // namespace RawLayer
