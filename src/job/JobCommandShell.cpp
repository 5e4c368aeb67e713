#include "job/JobCommandShell.h"

#include "job/JobToolMessage.h"
#include "raw/RawShell.h"

namespace JobLayer {

namespace {

// The number of a show mode; the end of the table is the default.
uint8_t showModeOf(const RawString& name) {
  const RawLayer::RawShowMode* mode = RawLayer::rawShowModes();
  while (*mode->name && !name.equals(RawString::fromChars(mode->name))) ++mode;
  return mode->number;
}

void waitFor(const RawLayer::RawShell& shell, const RawString& wait, int32_t timeout) {
  const auto milliseconds = static_cast<uint32_t>(timeout); // -1 is for ever
  if (wait.equals("WaitForDone"_text))
    shell.waitForEnd(milliseconds);
  else if (wait.equals("WaitForIdle"_text))
    shell.waitForIdle(milliseconds);
}

} // namespace

bool JobCommandShell::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString command = optionalValue(params, "Command"_text, caller);
  const RawString parameter = optionalValue(params, "Parameter"_text, caller);
  const RawString directory = optionalValue(params, "Directory"_text, caller);
  const RawString showStatus = optionalValue(params, "ShowStatus"_text, caller);
  const RawString verb = optionalValue(params, "Verb"_text, caller);
  const RawString wait = optionalValue(params, "Wait"_text, caller);
  int32_t timeout = 0;
  if (!readNumber(optionalValue(params, "Timeout"_text, caller), timeout)) timeout = 0;
  if (expansionFailed()) return false; // of the last one alone

  if (command.isEmpty() && parameter.isEmpty()) {
    // This report names the key in the command's place and the command in the value's.
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Command"_text,
                                       RawString::emptyStatic(), keyword);
    return false;
  }
  RawLayer::RawShell shell(command);
  shell.directory = directory;
  shell.showMode = showModeOf(showStatus);
  const bool result = shell.execute(parameter, verb);
  shell.closeProcess();
  waitFor(shell, wait, timeout);
  setVariable("ExitCode"_text, RawString::fromInt64(shell.exitCode()));
  return result;
}

JobCommandUnit& jobCommandShell() {
  static JobCommandShell command;
  return command;
}

} // namespace JobLayer
