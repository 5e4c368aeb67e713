#include "launcher/LauncherWindow.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr DWORD EndLimit = 15000;   // milliseconds
constexpr UINT AnswerLimit = 10000; // of one message
constexpr int FirstChildId = 2500;
constexpr int32_t DragSteps = 5;

struct Search {
  DWORD processId;
  bool isOther; // of any process but that one
  std::wstring className;
  std::vector<HWND> found;
};

BOOL CALLBACK collect(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if ((owner == search.processId) == search.isOther || !IsWindowVisible(window)) return TRUE;
  wchar_t name[256] = {};
  GetClassNameW(window, name, 255);
  if (search.className == name) search.found.push_back(window);
  return TRUE;
}

std::vector<HWND> topWindows(DWORD processId, bool isOther, const std::wstring& className) {
  Search search{processId, isOther, className, {}};
  EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

int32_t countOf(const std::string& text, const std::string& part) {
  int32_t count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

POINT onScreen(HWND where, int32_t x, int32_t y) {
  POINT point{x, y};
  ClientToScreen(where, &point);
  return point;
}

} // namespace

LauncherWindow::LauncherWindow() {
  WindowTest::movePointer(1, 1);
}

LauncherWindow::~LauncherWindow() {
  kill();
  WindowTest::movePointer(1, 1);
}

void LauncherWindow::adopt(HANDLE process) {
  if (process_) CloseHandle(process_);
  process_ = process;
  processId_ = process ? GetProcessId(process) : 0;
  window_ = nullptr;
}

bool LauncherWindow::start(const std::string& arguments) {
  adopt(run.start(arguments));
  return process_ != nullptr;
}

bool LauncherWindow::open(const std::string& arguments) {
  return start(arguments) && waitForWindow();
}

bool LauncherWindow::waitForWindow() {
  const bool stands = waitUntil([this] {
    const auto found = visibleWindows(MainClass);
    window_ = found.empty() ? nullptr : found.front();
    return window_ != nullptr || !isRunning();
  });
  return stands && window_ && settle();
}

bool LauncherWindow::takeSuccessor() {
  const DWORD oldId = processId_;
  DWORD newId = 0;
  if (!waitUntil([&] {
        for (HWND found : topWindows(oldId, true, MainClass))
          GetWindowThreadProcessId(found, &newId);
        return newId != 0;
      }))
    return false;
  adopt(OpenProcess(PROCESS_ALL_ACCESS, FALSE, newId));
  return process_ && waitForWindow();
}

bool LauncherWindow::close() {
  if (window_) PostMessageW(window_, WM_CLOSE, 0, 0);
  return waitForEnd() && exitCode() == 0;
}

bool LauncherWindow::waitForEnd() {
  return process_ && waitUntil([this] { return !isRunning(); });
}

void LauncherWindow::kill() {
  if (!process_) return;
  TerminateProcess(process_, 1);
  WaitForSingleObject(process_, EndLimit);
  adopt(nullptr);
}

bool LauncherWindow::isRunning() const {
  return process_ && WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

DWORD LauncherWindow::exitCode() const {
  DWORD code = STILL_ACTIVE;
  if (process_) GetExitCodeProcess(process_, &code);
  return code;
}

// --- Windows

HWND LauncherWindow::buttons() const {
  const HWND second = GetDlgItem(window_, FirstChildId + 1);
  return second ? second : GetDlgItem(window_, FirstChildId);
}

HWND LauncherWindow::selectors() const {
  return GetDlgItem(window_, FirstChildId + 1) ? GetDlgItem(window_, FirstChildId) : nullptr;
}

std::vector<HWND> LauncherWindow::visibleWindows(const std::wstring& className) const {
  return topWindows(processId_, false, className);
}

HWND LauncherWindow::waitForClass(const std::wstring& className) {
  std::vector<HWND> found;
  waitUntil([&] {
    found = visibleWindows(className);
    return !found.empty() || !isRunning();
  });
  return found.empty() ? nullptr : found.front();
}

bool LauncherWindow::waitUntilGone(HWND other) {
  return waitUntil([&] { return !IsWindow(other) || !IsWindowVisible(other); });
}

bool LauncherWindow::settle() const {
  DWORD_PTR answer = 0;
  return SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, AnswerLimit, &answer) != 0;
}

bool LauncherWindow::bringToFront() const {
  return waitUntil([this] { return WindowTest::bringToFront(window_); });
}

// --- Input

void LauncherWindow::pointAt(HWND where, int32_t x, int32_t y) {
  const POINT point = onScreen(where, x, y);
  WindowTest::movePointer(point.x, point.y);
}

void LauncherWindow::press(HWND where, int32_t x, int32_t y) {
  pointAt(where, x, y);
  WindowTest::mouseButton(MOUSEEVENTF_LEFTDOWN);
  WindowTest::mouseButton(MOUSEEVENTF_LEFTUP);
}

void LauncherWindow::rightPress(HWND where, int32_t x, int32_t y) {
  pointAt(where, x, y);
  WindowTest::mouseButton(MOUSEEVENTF_RIGHTDOWN);
  WindowTest::mouseButton(MOUSEEVENTF_RIGHTUP);
}

void LauncherWindow::drag(HWND where, POINT from, POINT to) {
  const POINT first = onScreen(where, from.x, from.y);
  const POINT last = onScreen(where, to.x, to.y);
  const auto isServed = [where] {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(where, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, AnswerLimit, &answer) != 0;
  };
  WindowTest::movePointer(first.x, first.y);
  WindowTest::mouseButton(MOUSEEVENTF_LEFTDOWN);
  // Input that comes while a window is being moved may be lost, so each step is let through.
  for (int32_t step = 1; step <= DragSteps; ++step) {
    const POINT next{first.x + (last.x - first.x) * step / DragSteps,
                     first.y + (last.y - first.y) * step / DragSteps};
    WindowTest::movePointer(next.x, next.y);
    WindowTest::settle();
    isServed();
  }
  WindowTest::mouseButton(MOUSEEVENTF_LEFTUP);
}

void LauncherWindow::keyWith(const std::vector<uint16_t>& modifiers, uint16_t key) {
  for (uint16_t modifier : modifiers) WindowTest::keyDown(modifier);
  WindowTest::pressKey(key);
  for (auto each = modifiers.rbegin(); each != modifiers.rend(); ++each) WindowTest::keyUp(*each);
}

// --- Looking

RECT LauncherWindow::screenRect(HWND where) {
  RECT area{};
  GetWindowRect(where, &area);
  return area;
}

SIZE LauncherWindow::clientSize(HWND where) {
  RECT area{};
  GetClientRect(where, &area);
  return {area.right, area.bottom};
}

RECT LauncherWindow::rectIn(HWND child) const {
  RECT area = screenRect(child);
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

COLORREF LauncherWindow::screenPixel(HWND where, int32_t x, int32_t y) {
  const POINT point = onScreen(where, x, y);
  const WinLayer::WinWindowDc screen(nullptr);
  return GetPixel(screen.get(), point.x, point.y);
}

// --- Log and files

int32_t LauncherWindow::countInLog(const std::string& part) const {
  return countOf(run.log(), part);
}

bool LauncherWindow::waitForLog(const std::string& part, int32_t times) const {
  return waitUntil([&] { return countInLog(part) >= times; });
}

bool LauncherWindow::waitForFile(const std::string& name, const std::string& part) const {
  return waitUntil([&] { return run.readFile(name).find(part) != std::string::npos; });
}
