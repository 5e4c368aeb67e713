#include "raw/RawShell.h"

#include "raw/RawWinText.h"

#include <windows.h>

#include <shellapi.h>

namespace RawLayer {

namespace {

constexpr ULONG LaunchMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_DOENVSUBST | SEE_MASK_FLAG_NO_UI;
static_assert(LaunchMask == 0x640);

// One form for all four: that of verb, file and parameters together, which decide alone unless the
// directory has characters that only the wide form can pass.
int32_t formOf(const RawString& verb, const RawString& file, const RawString& parameters,
               const RawString& directory) {
  const int32_t form = RawString::combinePlatformClasses(
      verb.classifyForPlatform(), file.classifyForPlatform(), parameters.classifyForPlatform());
  return RawString::combinePlatformClasses(form, directory.classifyForPlatform());
}

} // namespace

void RawProcessCloser::close(Handle handle) {
  CloseHandle(handle);
}

bool shellExecute(const RawString& verb, const RawString& file, const RawString& parameters,
                  const RawString& directory, uint8_t showMode, RawProcessOwner& process) {
  const int32_t form = formOf(verb, file, parameters, directory);
  const RawPlatformText verbText(verb, form);
  const RawPlatformText fileText(file, form);
  const RawPlatformText parameterText(parameters, form);
  const RawPlatformText directoryText(directory, form);
  const auto launch = [&](auto call, auto info, auto textOf) {
    info.cbSize = sizeof info;
    info.fMask = LaunchMask;
    info.lpVerb = textOf(verbText);
    info.lpFile = textOf(fileText);
    info.lpParameters = textOf(parameterText);
    info.lpDirectory = textOf(directoryText);
    info.nShow = showMode;
    const bool started = call(&info) != 0;
    process.reset(started ? info.hProcess : nullptr);
    return started;
  };
  return fileText.isWide() ? launch(ShellExecuteExW, SHELLEXECUTEINFOW(), wideOrNull)
                           : launch(ShellExecuteExA, SHELLEXECUTEINFOA(), narrowOrNull);
}

uint32_t processIdOf(const RawProcessOwner& process) {
  return process ? GetProcessId(process.get()) : 0;
}

void RawShell::waitForEnd(uint32_t milliseconds) const {
  if (process) WaitForSingleObject(process.get(), milliseconds);
}

void RawShell::waitForIdle(uint32_t milliseconds) const {
  if (process) WaitForInputIdle(process.get(), milliseconds);
}

uint32_t RawShell::exitCode() const {
  DWORD code = 0;
  return process && GetExitCodeProcess(process.get(), &code) ? code : 0;
}

} // namespace RawLayer
