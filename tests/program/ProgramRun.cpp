#include "program/ProgramRun.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace {

constexpr DWORD RunLimit = 30000; // milliseconds
constexpr DWORD PollStep = 20;

std::wstring programFolder() {
  wchar_t path[MAX_PATH + 1] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path().wstring();
}

struct WindowSearch {
  DWORD processId;
  std::vector<HWND> windows;
};

BOOL CALLBACK collectWindow(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<WindowSearch*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner == search.processId && IsWindowVisible(window)) search.windows.push_back(window);
  return TRUE;
}

std::wstring textOf(HWND window) {
  wchar_t text[4096] = {};
  // By message: the window belongs to another process.
  SendMessageTimeoutW(window, WM_GETTEXT, 4095, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG,
                      2000, nullptr);
  return text;
}

std::wstring classOf(HWND window) {
  wchar_t name[256] = {};
  GetClassNameW(window, name, 255);
  return name;
}

BOOL CALLBACK collectText(HWND window, LPARAM parameter) {
  if (_wcsicmp(classOf(window).c_str(), L"Static") == 0)
    *reinterpret_cast<std::wstring*>(parameter) += textOf(window);
  return TRUE;
}

bool isDialog(HWND window) {
  const std::wstring name = classOf(window);
  return name == L"#32770" || name.rfind(L"Class_", 0) == 0;
}

ProgramDialog readDialog(HWND window) {
  std::wstring text;
  EnumChildWindows(window, collectText, reinterpret_cast<LPARAM>(&text));
  RECT place{};
  GetWindowRect(window, &place);
  return {utf8Of(textOf(window)),
          utf8Of(text),
          utf8Of(classOf(window)),
          {place.left, place.top, place.right, place.bottom}};
}

// Presses Enter on the dialog until it has gone.
void answer(HWND window) {
  for (int i = 0; i < 100 && IsWindow(window); ++i) {
    SetForegroundWindow(window);
    if (GetForegroundWindow() == window) pressKey(VK_RETURN);
    for (int wait = 0; wait < 5 && IsWindow(window); ++wait) Sleep(PollStep);
  }
}

} // namespace

std::string utf8Of(const std::wstring& text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size,
                      nullptr, nullptr);
  return bytes;
}

std::wstring wideOf(const std::string& text) {
  const int size =
      MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring units(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), units.data(), size);
  return units;
}

void pressKey(uint16_t virtualKey) {
  INPUT inputs[2] = {};
  inputs[0].type = INPUT_KEYBOARD;
  inputs[0].ki.wVk = virtualKey;
  inputs[1] = inputs[0];
  inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
  SendInput(2, inputs, sizeof(INPUT));
}

ProgramRun::ProgramRun() {
  std::error_code error;
  std::filesystem::copy_file(std::filesystem::path(programFolder()) / L"Tarvellon.exe",
                             std::filesystem::path(wideOf(path("Tarvellon.exe"))), error);
}

std::string ProgramRun::path(const std::string& name) const {
  const RawLayer::RawString file = folder_.file(name);
  return {file.text(), static_cast<std::size_t>(file.length())};
}

void ProgramRun::writeProfile(const std::string& sections) {
  folder_.write("Tarvellon.ini", "[Common]\r\nProgram=Tarvellon\r\n\r\n" + sections);
}

void* ProgramRun::start(const std::string& arguments) {
  // The child's temporary folder is this test's: its log, cache and dumps land there.
  folder_.makeFolder("Temp");
  const std::wstring temp = wideOf(path("Temp"));
  wchar_t oldTemp[MAX_PATH + 1] = {};
  GetEnvironmentVariableW(L"TEMP", oldTemp, MAX_PATH);
  wchar_t oldTmp[MAX_PATH + 1] = {};
  GetEnvironmentVariableW(L"TMP", oldTmp, MAX_PATH);
  SetEnvironmentVariableW(L"TEMP", temp.c_str());
  SetEnvironmentVariableW(L"TMP", temp.c_str());

  std::wstring line = L"\"" + wideOf(path("Tarvellon.exe")) + L"\" " + wideOf(arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  const BOOL started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                      nullptr, &startup, &process);
  SetEnvironmentVariableW(L"TEMP", oldTemp);
  SetEnvironmentVariableW(L"TMP", oldTmp);
  if (!started) return nullptr;
  CloseHandle(process.hThread);
  return process.hProcess;
}

uint32_t ProgramRun::run(const std::string& arguments) {
  dialogs_.clear();
  HANDLE process = start(arguments);
  if (!process) return 0xBAD;
  const DWORD processId = GetProcessId(process);

  uint32_t code = 0xDEAD;
  for (DWORD waited = 0; waited < RunLimit; waited += PollStep) {
    if (WaitForSingleObject(process, PollStep) == WAIT_OBJECT_0) {
      DWORD exitCode = 0;
      GetExitCodeProcess(process, &exitCode);
      code = exitCode;
      break;
    }
    WindowSearch search{processId, {}};
    EnumWindows(collectWindow, reinterpret_cast<LPARAM>(&search));
    for (HWND window : search.windows) {
      if (!isDialog(window)) continue;
      dialogs_.push_back(readDialog(window));
      answer(window);
      break;
    }
  }
  if (code == 0xDEAD) TerminateProcess(process, code);
  CloseHandle(process);
  return code;
}

std::vector<std::string> ProgramRun::logFiles() const {
  std::vector<std::string> files;
  std::error_code error;
  const std::filesystem::path folder(wideOf(path("Temp\\Tarvellon\\Log")));
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    files.push_back(utf8Of(entry.path().filename().wstring()));
  std::sort(files.begin(), files.end());
  return files;
}

std::string ProgramRun::log() const {
  const auto files = logFiles();
  return files.empty() ? std::string() : folder_.read("Temp/Tarvellon/Log/" + files.back());
}

std::vector<std::string> ProgramRun::logLines() const {
  static const std::regex stamp(":[0-9]{8}\\.[0-9]{6}\\.[0-9]{3}");
  std::vector<std::string> lines;
  std::string text = log();
  for (std::size_t end; (end = text.find("\r\n")) != std::string::npos; text.erase(0, end + 2))
    lines.push_back(std::regex_replace(text.substr(0, end), stamp, ""));
  return lines;
}

bool ProgramRun::logHas(const std::string& part) const {
  return log().find(part) != std::string::npos;
}
