// The configuration file, from opening to the finished tree of selectors, buttons and actions,
// beside what else reads such files into a tree of its own. Taking the trees down is not measured.

#include "Bench.h"
#include "ConfigInput.h"
#include "ConfigPeer.h"
#include "job/JobConfigFile.h"

#include <algorithm>
#include <memory>

using namespace JobLayer;

namespace {

int32_t countValues(const JobParamList& list) {
  int32_t values = 0;
  for (const JobParamUnit& unit : list.elements())
    values += unit.type() == JobParamUnit::TypeText
                  ? 1
                  : countValues(static_cast<const JobParamCommand&>(unit).params);
  return values;
}

int32_t countValues(const LauncherData& data) {
  int32_t values = 0;
  for (const JobButtonUnit& button : data.buttons.elements()) values += countValues(button.params);
  return values;
}

// Takes the time of one call into the best so far; gives it.
template <typename Operation>
double takeTime(double& best, Operation&& operation) {
  const double time = Bench::timeOf(operation, 1);
  best = std::min(best, time);
  return time;
}

// The peer on Windows looks for each section from the start of the file, so a large one takes it
// seconds: a few runs have to do then.
constexpr double PeerBudget = 3e9;
constexpr int MaxRuns = 500;

void benchFile(const char* sizeName, std::size_t size, const ConfigInput::Kind& kind) {
  const ConfigInput::File file(size, kind.encoding);
  const RawString path = file.path();
  const std::string peerPath = file.name();
  Bench::Pair best{1e300, 1e300};
  int32_t ownValues = 0;
  int peerValues = 0;
  double spent = 0;
  for (int run = 0; run < MaxRuns && spent < PeerBudget; ++run) {
    const auto data = std::make_unique<LauncherData>();
    takeTime(best.own,
             [&] { JobConfigFile::load(path, data->selectors, data->buttons, data->actions); });
    ownValues = countValues(*data);
    spent += takeTime(best.peer, [&] { peerValues = ConfigPeer::readTree(peerPath.c_str()); });
    ConfigPeer::dropTree();
  }
  std::printf("%d and %d values; ", ownValues, peerValues);
  const std::string name = std::string("tree of ") + sizeName + " " + kind.name;
  Bench::report(name.c_str(), "us", best.own / 1000, ConfigPeer::name(), best.peer / 1000,
                ConfigPeer::goal());
}

} // namespace

int main() {
  for (const ConfigInput::Kind& kind : ConfigInput::kinds) {
    benchFile("64 KB", 64 << 10, kind);
    benchFile("4 MB", 4 << 20, kind);
  }
}
