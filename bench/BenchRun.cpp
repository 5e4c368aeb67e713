// A whole press of a button whose script runs twenty commands, with its log, beside the bare
// writes of the same number of lines. The press itself ends when its lines are queued; "in all"
// goes on until they are in the file.

#include "Bench.h"
#include "job/JobCommandList.h"
#include "job/JobLog.h"
#include "job/LauncherData.h"
#include "raw/RawFile.h"
#include "raw/RawFolder.h"
#include "raw/RawPath.h"

#include <algorithm>
#include <filesystem>

using namespace JobLayer;

namespace {

constexpr int32_t Presses = 200;
constexpr int32_t Runs = 15;
constexpr int32_t Commands = 20;

using Clock = std::chrono::steady_clock;

double perPress(Clock::time_point start) {
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count() / Presses;
}

JobParamList block(const RawString& key, const RawString& value) {
  JobParamList params;
  params.addText(key, value);
  return params;
}

// Five times an If with an Else behind it, and a loop of one round around a command.
JobParamList makeScript() {
  JobParamList script;
  for (int32_t i = 0; i < Commands / 4; ++i) {
    script.addText("Title"_text, "A value among the commands"_text);
    script.addBlock("If"_text, block("Condition"_text, "$(KeyState)"_text));
    script.addBlock("Else"_text, JobParamList());
    JobParamList loop = block("Parameter"_text, "\"C:\\Program Files\\A name\""_text);
    loop.addBlock("If"_text, block("Condition"_text, "$(Each)"_text));
    script.addBlock("Foreach"_text, loop);
  }
  return script;
}

struct Cost {
  double press = 1e300;
  double total = 1e300;
  double bare = 1e300;
};

void runPresses(const RawString& folder, Cost& cost) {
  JobLogServer& log = JobLogServer::instance();
  log.start(folder, 1);
  const auto start = Clock::now();
  for (int32_t i = 0; i < Presses; ++i) JobCommandList::instance().RunButton(0, "LButton"_text, {});
  cost.press = std::min(cost.press, perPress(start));
  log.stop();
  cost.total = std::min(cost.total, perPress(start));
}

// The lines and bytes of one press, as the log file holds them.
struct Volume {
  int32_t lines = 0;
  int32_t bytes = 0;
};

Volume volumeOf(const RawString& path) {
  const RawLayer::RawFileOwner file = RawLayer::openFile(
      path, RawLayer::RawAccessRead, RawLayer::RawShareRead, RawLayer::RawOpenExisting);
  Volume volume;
  char buffer[4096];
  for (int32_t size; (size = RawLayer::readFile(file, buffer, sizeof buffer)) > 0;) {
    volume.bytes += size;
    volume.lines += static_cast<int32_t>(std::count(buffer, buffer + size, '\n'));
  }
  return {volume.lines / Presses, volume.bytes / Presses};
}

void runBare(const RawString& folder, const Volume& volume, Cost& cost) {
  const RawString line(RawLayer::EncodingUtf8, 4096);
  const int32_t length = volume.bytes / volume.lines;
  const auto start = Clock::now();
  RawLayer::RawFileOwner file =
      RawLayer::openFile(RawLayer::joinPath(folder, "Bare.log"_text), RawLayer::RawAccessWrite,
                         RawLayer::RawShareRead, RawLayer::RawCreateAlways);
  for (int32_t i = 0; i < Presses * volume.lines; ++i)
    RawLayer::writeFile(file, line.text(), length);
  RawLayer::flushFile(file);
  file.reset();
  cost.bare = std::min(cost.bare, perPress(start));
}

} // namespace

int main() {
  std::error_code error;
  const auto place = std::filesystem::temp_directory_path(error) / "TarvellonBenchRun";
  const RawString folder = RawString::fromChars(place.string().c_str());
  LauncherData::instance().buttons.add("Bench"_text)->params = makeScript();

  Cost cost;
  Volume volume;
  for (int32_t i = 0; i < Runs; ++i) {
    runPresses(folder, cost);
    volume = volumeOf(JobLogServer::instance().path());
    runBare(folder, volume, cost);
  }
  std::printf("press of %d commands: %d lines, %d bytes of log\n", static_cast<int>(Commands),
              static_cast<int>(volume.lines), static_cast<int>(volume.bytes));
  Bench::report("press until its end", "us", cost.press, "bare writes", cost.bare, 2.0);
  std::printf("press in all: %.1f us, ratio %.2f\n", cost.total, cost.total / cost.bare);

  std::filesystem::remove_all(place, error);
  return 0;
}
