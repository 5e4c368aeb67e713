#include "SaveKillProcess.h"

#include <csignal>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace SaveKill {

namespace {

int32_t codeOf(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

Process::Process(const std::string& name, const std::vector<std::string>& arguments) {
  std::error_code error;
  const std::string program =
      (std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / name).string();
  std::vector<char*> words{const_cast<char*>(program.c_str())};
  for (const std::string& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  pid_t pid = 0;
  started_ = posix_spawn(&pid, program.c_str(), nullptr, nullptr, words.data(), environ) == 0;
  handle_ = pid;
  ended_ = !started_;
}

Process::~Process() {
  kill();
}

bool Process::isRunning() {
  int status = 0;
  if (!ended_ && waitpid(static_cast<pid_t>(handle_), &status, WNOHANG) != 0) {
    exitCode_ = codeOf(status);
    ended_ = true;
  }
  return !ended_;
}

void Process::kill() {
  if (!isRunning()) return;
  ::kill(static_cast<pid_t>(handle_), SIGKILL);
  waitForEnd();
}

int32_t Process::waitForEnd() {
  int status = 0;
  if (!ended_ && waitpid(static_cast<pid_t>(handle_), &status, 0) != 0) exitCode_ = codeOf(status);
  ended_ = true;
  return exitCode_;
}

} // namespace SaveKill
