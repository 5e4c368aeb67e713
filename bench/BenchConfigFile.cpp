// The configuration file, from opening to the finished tree of selectors, buttons and actions,
// beside what else reads such files into a tree of its own.

#include "Bench.h"
#include "ConfigInput.h"
#include "ConfigPeer.h"
#include "job/JobConfigFile.h"

using namespace JobLayer;

namespace {

int32_t countEntries(const JobParamList& list) {
  int32_t entries = 0;
  for (const JobParamUnit& unit : list.elements())
    entries += unit.type() == JobParamUnit::TypeText
                   ? 1
                   : countEntries(static_cast<const JobParamCommand&>(unit).params);
  return entries;
}

// Values in the tree. Its end is part of the time, as it is with the peer.
int32_t readTree(const RawString& path, bool counted) {
  LauncherData data;
  JobConfigFile::load(path, data.selectors, data.buttons, data.actions);
  int32_t entries = data.buttons.count();
  if (counted)
    for (const JobButtonUnit& button : data.buttons.elements())
      entries += countEntries(button.params);
  return entries;
}

void benchFile(const char* sizeName, std::size_t size, const ConfigInput::Kind& kind) {
  const ConfigInput::File file(size, kind.encoding);
  const RawString path = file.path();
  const std::string peerPath = file.name();
  std::printf("%d and %d entries; ", readTree(path, true), ConfigPeer::readTree(peerPath.c_str()));
  const Bench::Pair pair =
      Bench::measure([&] { Bench::keep(readTree(path, false)); },
                     [&] { Bench::keep(ConfigPeer::readTree(peerPath.c_str())); });
  const std::string name = std::string("tree of ") + sizeName + " " + kind.name;
  Bench::report(name.c_str(), "us", pair.own / 1000, ConfigPeer::name(), pair.peer / 1000,
                ConfigPeer::goal());
}

} // namespace

int main() {
  for (const ConfigInput::Kind& kind : ConfigInput::kinds) {
    benchFile("64 KB", 64 << 10, kind);
    benchFile("4 MB", 4 << 20, kind);
  }
}
