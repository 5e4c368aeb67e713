// The log: what a line of 80 bytes costs whoever logs it, and what it costs in all until it is in
// the file, beside one bare write to a file for each line. The log's thread offers the processor
// behind each line; what that alone costs stands in a line of its own.

#include "Bench.h"
#include "job/JobLog.h"
#include "job/JobLogLine.h"
#include "raw/RawFile.h"
#include "raw/RawFolder.h"
#include "raw/RawPath.h"

#include <algorithm>
#include <filesystem>

using namespace JobLayer;

namespace {

constexpr int32_t Lines = 20000;
constexpr int32_t LineLength = 80;
constexpr int32_t Runs = 15;

using Clock = std::chrono::steady_clock;

double perLine(Clock::time_point start) {
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count() / Lines;
}

RawString makeLine() {
  return JobLogLine::transition("Executor"_text, "Command#17"_text, RawLayer::localTime(), ""_text,
                                "[Shell][Command=notepad.exe][X=12345]"_text);
}

struct Cost {
  double producer = 1e300;
  double total = 1e300;
  double bare = 1e300;
  double bareAndYield = 1e300;
};

void runLog(const RawString& folder, Cost& cost) {
  JobLogServer server;
  const auto start = Clock::now();
  server.start(folder, 1); // the file of the last run goes
  const auto first = Clock::now();
  for (int32_t i = 0; i < Lines; ++i) server.post(makeLine());
  cost.producer = std::min(cost.producer, perLine(first));
  server.stop();
  cost.total = std::min(cost.total, perLine(start));
}

// Opens, flushes and closes as the log does.
double runBare(const RawString& folder, bool yields) {
  const RawString line = makeLine();
  const auto start = Clock::now();
  RawLayer::RawFileOwner file =
      RawLayer::openFile(RawLayer::joinPath(folder, "Bare.log"_text), RawLayer::RawAccessWrite,
                         RawLayer::RawShareRead, RawLayer::RawCreateAlways);
  for (int32_t i = 0; i < Lines; ++i) {
    RawLayer::writeFile(file, line.text(), line.length());
    if (yields) RawLayer::rawSleep(0);
  }
  RawLayer::flushFile(file);
  file.reset();
  return perLine(start);
}

} // namespace

int main() {
  if (makeLine().length() != LineLength) return 1;
  std::error_code error;
  const auto place = std::filesystem::temp_directory_path(error) / "TarvellonBenchLog";
  const RawString folder = RawString::fromChars(place.string().c_str());
  Cost cost;
  for (int32_t i = 0; i < Runs; ++i) {
    runLog(folder, cost);
    cost.bare = std::min(cost.bare, runBare(folder, false));
    cost.bareAndYield = std::min(cost.bareAndYield, runBare(folder, true));
  }
  Bench::report("log producer", "ns", cost.producer, "bare write", cost.bare, 1.2);
  Bench::report("log in total", "ns", cost.total, "bare write", cost.bare, 1.2);
  Bench::report("log in total", "ns", cost.total, "bare write and yield", cost.bareAndYield, 1.2);

  std::filesystem::remove_all(place, error);
  return 0;
}
