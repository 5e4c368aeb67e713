#include "window/WindowTest.h"

#include <algorithm>
#include <iterator>

namespace WindowTest {

namespace {

constexpr DWORD PollStep = 5; // milliseconds
constexpr UINT TickStep = 10;

void takeMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void sendKey(uint16_t virtualKey, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

// Wine does not count, but it keeps the process's table of drawing objects where Windows does.
uint32_t entriesOfHandleTable() {
  struct Entry {
    uint64_t object;
    uint32_t owner;
    uint16_t unique;
    uint8_t type; // 0: the entry is free
    uint8_t flags;
    uint64_t user;
  };
  static_assert(sizeof(Entry) == 24);
  constexpr size_t EntryCount = 0x10000;
  constexpr unsigned long BlockOfProcess = 0x60; // in the thread's block
  constexpr size_t TableOfDrawing = 0xF8;        // in the process's block
  const auto* block = reinterpret_cast<const char*>(__readgsqword(BlockOfProcess));
  const auto* table = *reinterpret_cast<const Entry* const*>(block + TableOfDrawing);
  return table ? static_cast<uint32_t>(std::count_if(
                     table, table + EntryCount, [](const Entry& each) { return each.type != 0; }))
               : 0;
}

std::string describe(HWND window) {
  if (!window) return "nothing";
  char name[256] = {};
  GetClassNameA(window, name, static_cast<int>(std::size(name)));
  RECT area{};
  GetWindowRect(window, &area);
  return std::string(name) + " at " + std::to_string(area.left) + "," + std::to_string(area.top);
}

struct Search {
  DWORD processId = GetCurrentProcessId();
  const wchar_t* className = nullptr;
  std::vector<HWND> found;
};

BOOL CALLBACK collect(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != search.processId) return TRUE;
  wchar_t name[256] = {};
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  if (!search.className || wcscmp(name, search.className) == 0) search.found.push_back(window);
  return TRUE;
}

} // namespace

bool pumpUntil(const Condition& condition, uint32_t limit) {
  const uint64_t start = GetTickCount64();
  for (;;) {
    takeMessages();
    if (condition()) return true;
    if (GetTickCount64() - start > limit) return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, PollStep, QS_ALLINPUT);
  }
}

// A message of our own behind all input: what was sent before it has been served when it comes.
void settle() {
  static bool hasArrived;
  hasArrived = false;
  const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM,
                                  [](HWND, UINT, UINT_PTR, DWORD) { hasArrived = true; });
  pumpUntil([] { return hasArrived && !GetQueueStatus(QS_INPUT); });
  KillTimer(nullptr, timer);
}

void movePointer(int32_t x, int32_t y) {
  SetCursorPos(x, y);
}

void mouseButton(DWORD flags) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

void pressMouse(int32_t x, int32_t y) {
  movePointer(x, y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  mouseButton(MOUSEEVENTF_LEFTUP);
}

void keyDown(uint16_t virtualKey) {
  sendKey(virtualKey, 0);
}

void keyUp(uint16_t virtualKey) {
  sendKey(virtualKey, KEYEVENTF_KEYUP);
}

void pressKey(uint16_t virtualKey) {
  keyDown(virtualKey);
  keyUp(virtualKey);
}

void pressShiftTab() {
  keyDown(VK_SHIFT);
  pressKey(VK_TAB);
  keyUp(VK_SHIFT);
}

COLORREF pixel(HWND window, int32_t x, int32_t y) {
  const WinLayer::WinWindowDc dc(window);
  return GetPixel(dc.get(), x, y);
}

WinLayer::WinPoint centreOf(HWND window) {
  RECT area{};
  GetWindowRect(window, &area);
  return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

bool isInFront(HWND window) {
  return window && IsWindowVisible(window) && GetForegroundWindow() == window;
}

bool bringToFront(HWND window) {
  if (!isInFront(window)) SetForegroundWindow(window);
  return isInFront(window);
}

std::vector<HWND> windowsOfClass(const wchar_t* className) {
  Search search;
  search.className = className;
  EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::vector<HWND> standingDialogs() {
  std::vector<HWND> found = windowsOfClass(nullptr);
  const auto procedure = reinterpret_cast<ULONG_PTR>(&WinLayer::WinDialog::WindowProcedure);
  found.erase(std::remove_if(found.begin(), found.end(),
                             [procedure](HWND each) {
                               return GetClassLongPtrW(each, GCLP_WNDPROC) != procedure;
                             }),
              found.end());
  return found;
}

std::wstring textOf(HWND window) {
  wchar_t text[1024] = {};
  GetWindowTextW(window, text, static_cast<int>(std::size(text)));
  return text;
}

uint32_t drawingObjects() {
  const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  return counted ? counted : entriesOfHandleTable();
}

uint32_t windowCount() {
  Search search;
  EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
  const std::vector<HWND> tops = search.found;
  for (HWND top : tops) EnumChildWindows(top, collect, reinterpret_cast<LPARAM>(&search));
  return static_cast<uint32_t>(search.found.size());
}

// --- Steps

Steps* Steps::current_ = nullptr;

Steps::Steps() : since_(GetTickCount64()), timer_(SetTimer(nullptr, 0, TickStep, tick)) {
  current_ = this;
}

Steps::~Steps() {
  KillTimer(nullptr, timer_);
  current_ = nullptr;
}

Steps& Steps::when(Condition condition, Action action) {
  steps_.push_back({std::move(condition), std::move(action)});
  return *this;
}

void CALLBACK Steps::tick(HWND, UINT, UINT_PTR, DWORD) {
  if (current_) current_->advance();
}

void Steps::advance() {
  if (hasFailed_) {
    PostQuitMessage(0); // for each loop that still runs
    return;
  }
  if (isActing_ || areDone()) return; // an action may run a loop of its own
  if (steps_[next_].condition()) {
    isActing_ = true;
    const Action action = steps_[next_++].action;
    action();
    isActing_ = false;
    since_ = GetTickCount64();
  } else if (GetTickCount64() - since_ > Limit) {
    ADD_FAILURE() << "step " << next_ << " waited in vain; in front "
                  << describe(GetForegroundWindow()) << ", focus " << describe(GetFocus());
    hasFailed_ = true;
    PostQuitMessage(0);
  }
}

// --- Fixture

Fixture::~Fixture() {
  for (const HWND each : standingDialogs()) ADD_FAILURE() << "left standing: " << describe(each);
}

void Fixture::SetUp() {
  movePointer(1, 1);
  settle();
}

void Fixture::TearDown() {
  settle();
  EXPECT_FALSE(GetAsyncKeyState(VK_SHIFT) & 0x8000);
}

} // namespace WindowTest
