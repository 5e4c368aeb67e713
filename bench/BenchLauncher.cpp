// The launcher with its window. From the start of the process until the window has been painted and
// nothing is left to do: beside an empty window of the same size, and with ever more buttons. Then
// one edit with its save, from the key to the end of the new layout.
//
// Up to 900 buttons have an icon each, more share them: the cache on disk takes no more than 1000
// images. It is warm.
#include <windows.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int Runs = 15;
constexpr int Edits = 19; // fewer than there are buttons
constexpr std::array<int, 4> Counts{20, 200, 1000, 2000};
constexpr int MostIcons = 900;
constexpr DWORD Limit = 60000; // milliseconds
constexpr int FirstChildId = 2500;
constexpr wchar_t LauncherClass[] = L"Tarvellon";
constexpr wchar_t EmptyClass[] = L"Class_BenchWindow";

double since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

fs::path ownFolder() {
  wchar_t path[MAX_PATH + 1] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return fs::path(path).parent_path();
}

// --- What is opened

struct Content {
  int buttons;
  int selectors;
};

void put(std::ofstream& file, uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) file.put(static_cast<char>(value >> 8 * i));
}

// A file of icons takes one image of 32 pixels in one colour.
void writeIcon(const fs::path& path, uint32_t number) {
  constexpr uint32_t Side = 32;
  constexpr uint32_t Size = 40 + Side * Side * 4 + Side * 4;
  std::ofstream file(path, std::ios::binary);
  put(file, 0x10000, 4);
  put(file, 1, 2);
  put(file, Side | Side << 8, 4);
  put(file, 1 | 32 << 16, 4);
  put(file, Size, 4);
  put(file, 22, 4);
  put(file, 40, 4);
  put(file, Side, 4);
  put(file, 2 * Side, 4);
  put(file, 1 | 32 << 16, 4);
  for (int i = 0; i < 6; ++i) put(file, 0, 4);
  for (uint32_t i = 0; i < Side * Side; ++i) put(file, 0xFF000000 | number * 2654435761U >> 8, 4);
  for (uint32_t i = 0; i < Side; ++i) put(file, 0, 4);
}

std::string digitsOf(int number) {
  char text[16];
  std::snprintf(text, sizeof text, "%04d", number);
  return text;
}

// A folder with the program, its configuration and its icons.
class Place {
 public:
  explicit Place(const Content& content) : content_(content) {
    folder_ = ownFolder() / ("bench_launcher_" + std::to_string(GetCurrentProcessId()));
    fs::create_directories(folder_ / "Icons");
    fs::copy_file(ownFolder() / "Tarvellon.exe", folder_ / "Tarvellon.exe");
    for (int i = 0; i < icons(); ++i)
      writeIcon(folder_ / "Icons" / (digitsOf(i) + ".ico"), static_cast<uint32_t>(i + 1));
    writeConfiguration();
  }
  ~Place() {
    std::error_code error;
    fs::remove_all(folder_, error);
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  [[nodiscard]] std::wstring line() const {
    return L"\"" + (folder_ / "Tarvellon.exe").wstring() + L"\"";
  }
  [[nodiscard]] int buttonsInFile() const {
    return linesWith("[Button:", folder_ / "Tarvellon.ini");
  }
  // Says so when the cache has not got all icons in the time.
  void waitForCache() const {
    const auto start = Clock::now();
    while (cachedIcons() < icons() && since(start) < Limit) Sleep(100);
    const int count = cachedIcons();
    if (count < icons()) std::printf("only %d of %d icons are in the cache\n", count, icons());
  }

 private:
  [[nodiscard]] int icons() const { return std::min(content_.buttons, MostIcons); }
  static int linesWith(const char* start, const fs::path& path) {
    std::ifstream file(path);
    int count = 0;
    for (std::string text; std::getline(file, text);) count += text.rfind(start, 0) == 0;
    return count;
  }
  [[nodiscard]] int cachedIcons() const {
    std::error_code error;
    for (const auto& each : fs::directory_iterator(folder_ / "Cache", error))
      return linesWith("[Item]", each.path() / "IconCache.ini");
    return 0;
  }
  void writeConfiguration() const {
    std::ofstream file(folder_ / "Tarvellon.ini", std::ios::binary);
    file << "[Common]\r\nProgram=Tarvellon\r\n\r\n[Option]\r\nLogFolder=Log\r\n"
         << "IconCacheFolder=Cache\r\nViewSelector=" << (content_.selectors > 0 ? "True" : "False")
         << "\r\n\r\n";
    for (int i = 0; i < content_.selectors; ++i)
      file << "[Selector:Selector " << digitsOf(i) << "]\r\nTitle=Selector " << digitsOf(i)
           << "\r\n\r\n";
    for (int i = 0; i < content_.buttons; ++i)
      file << "[Button:Button " << digitsOf(i) << "]\r\nTitle=Button " << digitsOf(i)
           << "\r\nIconFile=" << (folder_ / "Icons").string() << "\\" << digitsOf(i % MostIcons)
           << ".ico\r\nShell {\r\n  Command=notepad.exe\r\n"
           << "  Parameter=" << digitsOf(i) << ".txt\r\n}\r\n\r\n";
  }

  Content content_;
  fs::path folder_;
};

// --- A running program

struct Search {
  DWORD processId;
  const wchar_t* className;
  HWND found;
};

BOOL CALLBACK look(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  DWORD owner = 0;
  GetWindowThreadProcessId(window, &owner);
  if (owner != search.processId || !IsWindowVisible(window)) return TRUE;
  wchar_t name[64] = {};
  GetClassNameW(window, name, 63);
  if (std::wstring(search.className) != name) return TRUE;
  search.found = window;
  return FALSE;
}

class Program {
 public:
  // Returns when its window has been painted: its thread waits for messages, and none is left.
  Program(std::wstring line, const wchar_t* className) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    const auto start = Clock::now();
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process_))
      return;
    WaitForInputIdle(process_.hProcess, Limit);
    while (!isPainted(className) && since(start) < Limit) Sleep(1);
    milliseconds = since(start);
  }
  ~Program() {
    PostMessageW(window, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(process_.hProcess, Limit) != WAIT_OBJECT_0)
      TerminateProcess(process_.hProcess, 1);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] SIZE clientSize() const {
    RECT area{};
    GetClientRect(window, &area);
    return {area.right, area.bottom};
  }
  [[nodiscard]] HWND buttons() const {
    const HWND second = GetDlgItem(window, FirstChildId + 1);
    return second ? second : GetDlgItem(window, FirstChildId);
  }

  HWND window = nullptr;
  double milliseconds = 0;

 private:
  bool isPainted(const wchar_t* className) {
    Search search{process_.dwProcessId, className, nullptr};
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    window = search.found;
    return window && !GetUpdateRect(window, nullptr, FALSE);
  }

  PROCESS_INFORMATION process_{};
};

// --- The benchmarks

// Once, so that every icon is in the cache.
SIZE warmUp(const Place& place) {
  const Program program(place.line(), LauncherClass);
  const SIZE size = program.clientSize();
  place.waitForCache();
  return size;
}

void compareStart() {
  const Place place({200, 0});
  const SIZE size = warmUp(place);
  std::vector<double> launcher;
  std::vector<double> empty;
  const std::wstring peer = L"\"" + (ownFolder() / "bench_window.exe").wstring() + L"\" " +
                            std::to_wstring(size.cx) + L" " + std::to_wstring(size.cy);
  for (int i = 0; i < Runs; ++i) { // by turns, so that both see the same machine
    launcher.push_back(Program(place.line(), LauncherClass).milliseconds);
    empty.push_back(Program(peer, EmptyClass).milliseconds);
  }
  const double own = median(launcher);
  const double other = median(empty);
  std::printf("start to painted, 200 buttons: %.1f ms, empty window of %ld x %ld %.1f ms, "
              "ratio %.2f (goal 1.20)\n",
              own, size.cx, size.cy, other, own / other);
}

double timeOpening(const Place& place) {
  std::vector<double> times;
  for (int i = 0; i < Runs; ++i) times.push_back(Program(place.line(), LauncherClass).milliseconds);
  return median(times);
}

// A button goes, from the middle on: list, file, set-up, layout and size have followed when the
// message is answered.
double timeEdit(const Place& place, const Content& content) {
  const Program program(place.line(), LauncherClass);
  const HWND box = program.buttons();
  for (int i = 0; i < content.buttons / 2; ++i) SendMessageW(box, WM_KEYDOWN, VK_DOWN, 0);
  std::vector<double> times;
  for (int i = 0; i < Edits; ++i) {
    UpdateWindow(box);
    const auto start = Clock::now();
    SendMessageW(box, WM_KEYDOWN, VK_DELETE, 0);
    times.push_back(since(start));
  }
  if (place.buttonsInFile() != content.buttons - Edits) std::printf("an edit was not saved\n");
  return median(times);
}

// What one more button costs in a list of thousands, beside one of hundreds. A fixed cost, however
// great, does not hide how the rest grows.
void reportGrowth(const char* name, const std::vector<double>& times) {
  std::printf("%s:", name);
  for (size_t i = 0; i < Counts.size(); ++i)
    std::printf(" %d buttons %.1f ms%s", Counts[i], times[i], i + 1 < Counts.size() ? "," : "\n");
  const auto slope = [&](size_t from, size_t to) {
    return 1000 * (times[to] - times[from]) / (Counts[to] - Counts[from]);
  };
  const double first = slope(0, 2);
  const double second = slope(2, 3);
  std::printf("%s: one more button %.1f us above 1000, %.1f us below, ratio %.2f (linear 1.00)\n",
              name, second, first, second / first);
}

void measureGrowth() {
  std::vector<double> opening;
  std::vector<double> edit;
  for (const int count : Counts) {
    const Content content{count, 0};
    const Place place(content);
    warmUp(place);
    opening.push_back(timeOpening(place));
    edit.push_back(timeEdit(place, content));
  }
  reportGrowth("opening", opening);
  reportGrowth("an edit with its save", edit);
}

void measureSelectors() {
  const Content content{2000, 500};
  const Place place(content);
  warmUp(place);
  std::printf("opening 2000 buttons and 500 selectors: %.1f ms\n", timeOpening(place));
  std::printf("an edit with 2000 buttons and 500 selectors: %.1f ms\n", timeEdit(place, content));
}

} // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  compareStart();
  measureGrowth();
  measureSelectors();
  return 0;
}
