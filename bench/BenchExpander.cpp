// The expander: a text of 180 bytes with ten calls, and 100 references in 4 KB. On the host beside
// the programs that do the like, which run over many such texts at once, so that their start does
// not count. The log is off for these; what its lines cost stands by itself. And the arithmetic
// beside a bare loop over the numbers in its text.

#include "Bench.h"
#include "job/JobLog.h"
#include "job/JobVariableCalc.h"
#include "job/JobVariableExpander.h"

#include <cstdlib>
#include <string>

#ifndef _WIN32
#include <filesystem>
#include <fstream>
#endif

using namespace JobLayer;

namespace {

constexpr int32_t References = 100;
constexpr const char* Input = "C:/Users/Someone/Documents/Reports/summary.2024.txt";
constexpr const char* Title = "a_title_of_words";
constexpr const char* Value = "some value";

RawString textOf(const std::string& bytes) {
  return RawString::fromChars(bytes.data(), static_cast<int32_t>(bytes.size()));
}

// Made as long as wanted with words that mean nothing.
std::string filled(std::string text, std::size_t size) {
  while (text.size() < size) text += " and more text"[text.size() % 14];
  return text;
}

std::string callText() {
  return filled("/open \"$(Base:$(Input))/$(Body:$(Input)).backup\" /type $(Extension:$(Input)) "
                "$(Cond:$(Quiet):/no-window /no-questions:/show-all-messages) "
                "/title \"$(Replace:$(Title):_: )\"",
                180);
}

std::string nameOf(int32_t number) {
  return std::string("NAME_") + static_cast<char>('0' + number / 10) +
         static_cast<char>('0' + number % 10);
}

// References in `open` and `close`, from number `first` up to `end`, in 41 bytes each.
std::string referenceText(int32_t first, int32_t end, const char* open, const char* close) {
  std::string text;
  for (int32_t i = first; i < end; ++i)
    text = filled(text + open + nameOf(i) + close,
                  static_cast<std::size_t>(i + 1 - first) * 4096 / References);
  return text;
}

void defineVariables(JobVariableList& table) {
  for (const char* name : {"KeyState", "Drop", "DropList", "Result", "Counter", "Each"})
    table.set(textOf(name), "LButton"_text);
  table.set("Input"_text, textOf(Input));
  table.set("Quiet"_text, "True"_text);
  table.set("Title"_text, textOf(Title));
  for (int32_t i = 0; i < References; ++i) table.set(textOf(nameOf(i)), textOf(Value));
}

double expansionOf(const RawString& text) {
  JobVariableExpander expander(JobExecutorPair::executor());
  return Bench::nanoseconds([&] { Bench::keep(expander.expand(text).text); });
}

double callsTime() {
  return expansionOf(textOf(callText()));
}

// One expansion replaces 99 calls at most: two texts of half the size.
double referencesTime() {
  return expansionOf(textOf(referenceText(0, References / 2, "$(", ")"))) +
         expansionOf(textOf(referenceText(References / 2, References, "$(", ")")));
}

#ifndef _WIN32

// A file for a program to read; gone with the value.
class PeerFile {
 public:
  PeerFile(const char* name, const std::string& text)
      : path_(std::filesystem::temp_directory_path() / name) {
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~PeerFile() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  PeerFile(const PeerFile&) = delete;
  PeerFile& operator=(const PeerFile&) = delete;
  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

// Nanoseconds of a run; 0 when it failed.
double timeOfCommand(const std::string& command) {
  const auto start = std::chrono::steady_clock::now();
  if (std::system(command.c_str()) != 0) return 0;
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

// The best of both, in turns: the own time, and what the long run of the peer takes above the
// short one.
void compareWithProgram(const char* name, const char* peerName, double goal, double (*own)(),
                        const std::string& shortRun, const std::string& longRun, int32_t texts) {
  double ownTime = 1e300;
  double shortTime = 1e300;
  double longTime = 1e300;
  for (int32_t run = 0; run < Bench::runs; ++run) {
    ownTime = std::min(ownTime, own());
    shortTime = std::min(shortTime, timeOfCommand(shortRun));
    longTime = std::min(longTime, timeOfCommand(longRun));
  }
  if (shortTime == 0 || longTime == 0)
    std::printf("%s: %.1f ns (%s is missing)\n", name, ownTime, peerName);
  else
    Bench::report(name, "ns", ownTime, peerName, (longTime - shortTime) / texts, goal);
}

constexpr int32_t MakeRounds = 40;

// Expands a text for each of MakeRounds times 1000 words, into nothing. The variables are those
// whose values are expanded when they are read, as all of ours are.
std::string makeFile(const std::string& text) {
  std::string words[2];
  for (int32_t i = 0; i < MakeRounds; ++i) words[0] += " x";
  for (int32_t i = 0; i < 1000; ++i) words[1] += " x";
  return std::string("Input = ") + Input + "\nQuiet = True\nTitle = " + Title +
         "\nA :=" + words[0] + "\nB :=" + words[1] + "\nTEXT = " + text +
         "\nX := $(foreach a,$(A),$(foreach b,$(B),$(if $(TEXT),)))\nall:;@:\n";
}

void benchCalls() {
  const std::string text =
      filled("/open \"$(dir $(Input))$(basename $(Input)).backup\" /type $(suffix $(Input)) "
             "$(if $(Quiet),/no-window /no-questions,/show-all-messages) "
             "/title \"$(subst _, ,$(Title))\"",
             180);
  const PeerFile empty("TarvellonBenchEmpty.mk", makeFile("x"));
  const PeerFile full("TarvellonBenchFull.mk", makeFile(text));
  compareWithProgram("expand ten calls", "make", 1, callsTime, "make -s -f " + empty.path(),
                     "make -s -f " + full.path(), MakeRounds * 1000);
}

void benchReferences() {
  constexpr int32_t texts = 400;
  const std::string text = referenceText(0, References, "${", "}");
  std::string many;
  for (int32_t i = 0; i < texts; ++i) many += text;
  for (int32_t i = 0; i < References; ++i) setenv(nameOf(i).c_str(), Value, 1);
  const PeerFile none("TarvellonBenchNone.txt", "");
  const PeerFile full("TarvellonBenchFull.txt", many);
  compareWithProgram("expand 100 references", "envsubst", 0.5, referencesTime,
                     "envsubst < " + none.path() + " > /dev/null",
                     "envsubst < " + full.path() + " > /dev/null", texts);
}

#else

void benchCalls() {
  std::printf("expand ten calls: %.1f ns\n", callsTime());
}
void benchReferences() {
  std::printf("expand 100 references: %.1f ns\n", referencesTime());
}

#endif

void benchCalc() {
  const char* const expression = "3*(4+5)-2";
  const RawString text = textOf(expression);
  RawString result;
  const auto sumOfNumbers = [expression] {
    long sum = 0;
    for (const char* at = expression; *at != 0;) {
      char* end = nullptr;
      const long number = std::strtol(at, &end, 10);
      at = end == at ? at + 1 : end;
      sum += number;
    }
    Bench::keep(sum);
  };
  Bench::compare(
      "Calc", "strtol", 200.0 / 26,
      [&] {
        calculate(text, result);
        Bench::keep(result);
      },
      sumOfNumbers);
}

} // namespace

int main() {
  JobLogServer::instance().stop(); // lines that are built all the same are dropped
  defineVariables(JobVariableStore::instance());
  JobFacts::instance().logCategories = RawString();
  benchCalls();
  benchReferences();
  benchCalc();
  JobFacts::instance().logCategories = "UCPV"_text;
  std::printf("expand ten calls, with their lines of the log: %.1f ns\n", callsTime());
}
