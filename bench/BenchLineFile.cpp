// Text files from opening to the last line, beside what else reads such files.

#include "Bench.h"
#include "ConfigInput.h"
#include "ConfigPeer.h"
#include "raw/RawEncodings.h"
#include "raw/RawLineFile.h"

#include <cstring>
#include <vector>

using namespace RawLayer;

namespace {

// Every line, trimmed and judged as the reader of the configuration does it first.
int32_t readLines(const RawString& path) {
  RawLineFile file(path);
  int32_t entries = 0;
  if (!file.openRead()) return 0;
  for (;;) {
    const RawLineRecord& record = file.nextLine();
    if (!record.valid) break;
    const RawRange range = record.text.trimRange(record.text.all(), RawString::whiteSpace());
    if (record.text.findChar(range, u'=') < range.end) ++entries;
  }
  file.close();
  return file.state == RawLineFile::Closed ? entries : 0;
}

void benchFile(const char* sizeName, std::size_t size, const ConfigInput::Kind& kind) {
  const ConfigInput::File file(size, kind.encoding);
  const RawString path = file.path();
  const std::string peerPath = file.name();
  std::printf("%d and %d entries; ", readLines(path), ConfigPeer::read(peerPath.c_str()));
  const Bench::Pair pair = Bench::measure([&] { Bench::keep(readLines(path)); },
                                          [&] { Bench::keep(ConfigPeer::read(peerPath.c_str())); });
  const std::string name = std::string("lines of ") + sizeName + " " + kind.name;
  Bench::report(name.c_str(), "us", pair.own / 1000, ConfigPeer::name(), pair.peer / 1000,
                ConfigPeer::goal());
}

// A file of ASCII is looked through to its end: that should cost no more than copying it.
void benchDetection() {
  const std::vector<uint8_t> block(16 << 20, 'a');
  std::vector<uint8_t> copy(block.size());
  const auto size = static_cast<int32_t>(block.size());
  Bench::compare(
      "detection over 16 MB of ASCII", "memcpy", 1.0,
      [&] { Bench::keep(detectTextEncoding(block.data(), size)); },
      [&] {
        std::memcpy(copy.data(), block.data(), block.size());
        Bench::keep(copy);
      });
}

} // namespace

int main() {
  benchDetection();
  for (const ConfigInput::Kind& kind : ConfigInput::kinds) {
    benchFile("64 KB", 64 << 10, kind);
    benchFile("4 MB", 4 << 20, kind);
  }
}
