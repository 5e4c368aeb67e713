#include "SaveKillProcess.h"

#include "raw/RawPath.h"
#include "raw/RawSystem.h"

#include <windows.h>

namespace SaveKill {

namespace {

constexpr UINT KilledCode = 0xFFFFFFFF; // -1, as for a child that never ran

HANDLE handleOf(intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

} // namespace

Process::Process(const std::string& name, const std::vector<std::string>& arguments) {
  using RawLayer::RawString;
  RawString command = RawLayer::folderOf(RawLayer::moduleName());
  std::string words = "\\" + name + ".exe\"";
  for (const std::string& argument : arguments) words += " \"" + argument + "\"";
  const RawString quote = RawString::fromChars("\"");
  command = RawString::concat(quote, command, RawString::fromChars(words.c_str()));
  command = command.shareAs(RawLayer::EncodingWide);
  command.unshare();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  started_ = CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(command.mutableWide()), nullptr,
                            nullptr, FALSE, 0, nullptr, nullptr, &startup, &process) != 0;
  ended_ = !started_;
  if (!started_) return;
  CloseHandle(process.hThread);
  handle_ = reinterpret_cast<intptr_t>(process.hProcess);
}

Process::~Process() {
  kill();
  if (started_) CloseHandle(handleOf(handle_));
}

bool Process::isRunning() {
  if (!ended_ && WaitForSingleObject(handleOf(handle_), 0) == WAIT_OBJECT_0) waitForEnd();
  return !ended_;
}

void Process::kill() {
  if (!isRunning()) return;
  TerminateProcess(handleOf(handle_), KilledCode);
  waitForEnd();
}

int32_t Process::waitForEnd() {
  if (ended_) return exitCode_;
  DWORD code = KilledCode;
  WaitForSingleObject(handleOf(handle_), INFINITE);
  GetExitCodeProcess(handleOf(handle_), &code);
  exitCode_ = static_cast<int32_t>(code);
  ended_ = true;
  return exitCode_;
}

} // namespace SaveKill
