// Patterns: 24 of them over 20,000 file names in any case, beside the platform's matcher; and the
// one that makes matchers of the plain kind try everything.
#include "Bench.h"
#include "PatternPeer.h"
#include "raw/RawPattern.h"

#include <cstdio>
#include <random>
#include <string>
#include <vector>

using namespace RawLayer;

namespace {

constexpr int NameCount = 20000;

const char* const Patterns[] = {
    "*.txt",     "*.EXE",      "readme*",  "*report*",     "a*",         "*.t?t",
    "?????.ini", "setup*.exe", "*backup*", "*.doc*",       "img_????.*", "*2024*",
    "data*.csv", "*old*new*",  "*.*",      "*e*e*e*",      "log_*.log",  "*final*.pdf",
    "z*z",       "*_v?.*",     "Project*", "*config*.ini", "*.mp3",      "notes.txt",
};
constexpr int PatternCount = sizeof Patterns / sizeof Patterns[0];

std::vector<std::string> makeNames() {
  const char* const words[] = {"report", "Backup", "setup",  "IMG",   "data",    "Project",
                               "notes",  "readme", "config", "final", "old",     "new",
                               "log",    "Music",  "letter", "draft", "invoice", "Zebra"};
  const char* const ends[] = {"txt", "exe", "ini", "DOCX", "pdf", "csv", "log", "mp3", "jpg"};
  std::mt19937 random(20240907);
  const auto below = [&random](std::size_t count) { return random() % count; };
  std::vector<std::string> names;
  for (int i = 0; i < NameCount; ++i) {
    std::string name = words[below(std::size(words))];
    if (below(2) == 0) name.append(1, '_').append(words[below(std::size(words))]);
    if (below(2) == 0) name.append(1, '_').append(std::to_string(below(3000)));
    if (below(4) == 0) name.append("_v").append(std::to_string(below(10)));
    names.push_back(name.append(1, '.').append(ends[below(std::size(ends))]));
  }
  return names;
}

RawString rawOf(const std::string& text) {
  return RawString::fromChars(text.data(), static_cast<int32_t>(text.size()));
}

void benchNames() {
  const std::vector<std::string> names = makeNames();
  std::vector<RawString> own;
  std::vector<PatternPeer::Text> peer;
  for (const std::string& name : names) {
    own.push_back(rawOf(name));
    peer.emplace_back(name.begin(), name.end());
  }
  std::vector<RawPattern> ownPatterns;
  std::vector<PatternPeer::Text> peerPatterns;
  for (const std::string pattern : Patterns) {
    ownPatterns.emplace_back(rawOf(pattern));
    peerPatterns.emplace_back(pattern.begin(), pattern.end());
  }
  int ownCount = 0;
  int peerCount = 0;
  const Bench::Pair pair = Bench::measure(
      [&] {
        ownCount = 0;
        for (RawPattern& pattern : ownPatterns)
          for (const RawString& name : own) ownCount += pattern.match(name, true) ? 1 : 0;
      },
      [&] {
        peerCount = 0;
        for (const auto& pattern : peerPatterns)
          for (const auto& name : peer) peerCount += PatternPeer::matches(pattern, name) ? 1 : 0;
      });
  if (ownCount != peerCount) std::printf("matches differ: %d and %d\n", ownCount, peerCount);
  constexpr double Matches = static_cast<double>(NameCount) * PatternCount;
  Bench::report("pattern, one of 24 over 20,000 names", "ns", pair.own / Matches,
                PatternPeer::name(), pair.peer / Matches, PatternPeer::goal());
}

void benchHostile() {
  constexpr double Bound = 2000;
  RawPattern pattern(rawOf("*a*a*a*a*a*b"));
  const RawString subject = rawOf(std::string(60, 'a'));
  const double time = Bench::nanoseconds([&] { Bench::keep(pattern.match(subject, false)); });
  Bench::report("pattern *a*a*a*a*a*b on sixty a", "ns", time, "bound", Bound, 1.0);
}

} // namespace

int main() {
  benchNames();
  benchHostile();
  return 0;
}
