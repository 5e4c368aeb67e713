// From the start of the process to its end: the launcher running an empty action, beside a program
// that only loads the same libraries.
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int Runs = 25;

std::wstring ownFolder() {
  wchar_t path[MAX_PATH + 1] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring folder(path);
  return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

// Milliseconds from creation to end; below 0 when it could not be started.
double runOnce(std::wstring line) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const auto start = std::chrono::steady_clock::now();
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process))
    return -1;
  WaitForSingleObject(process.hProcess, INFINITE);
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return taken.count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

bool writeProfile(const std::wstring& path) {
  static const char text[] = "[Common]\r\nProgram=Tarvellon\r\n[Action:Empty]\r\n";
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  const BOOL done = WriteFile(file, text, sizeof text - 1, &written, nullptr);
  CloseHandle(file);
  return done != FALSE;
}

} // namespace

int main() {
  const std::wstring folder = ownFolder();
  const std::wstring profile = folder + L"bench_start.ini";
  if (!writeProfile(profile)) return 1;
  std::vector<double> launcher;
  std::vector<double> empty;
  for (int i = 0; i < Runs; ++i) { // by turns, so that both see the same machine
    launcher.push_back(
        runOnce(L"\"" + folder + L"Tarvellon.exe\" -p \"" + profile + L"\" -a Empty"));
    empty.push_back(runOnce(L"\"" + folder + L"bench_empty.exe\""));
  }
  const double ours = median(launcher);
  const double peer = median(empty);
  std::printf("empty one-shot run: %.1f ms, empty program %.1f ms, ratio %.2f (goal 1.15)\n", ours,
              peer, ours / peer);
  DeleteFileW(profile.c_str());
  return 0;
}
