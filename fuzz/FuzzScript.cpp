// A whole configuration through the reader and the runner, over the stand-ins of the platform: the
// start-up script, each action by the command line, each selector and button by its keys. Whatever
// it says, nothing may crash, leak or run for ever, and what starts also ends.
//
// Input: from which call on the platform fails (0: late), how keys are held and forms are answered,
// then the text of the file.
//
// Some scripts never end, as they are asked to. Here the runner refuses blocks past a number of
// runs and a depth, which ends loops and recursion as a failing command does; a Replace whose text
// would grow is not made; and inputs with many calls, whose values could fill any memory, are not
// taken.

#include "TestText.h"
#include "TourBed.h"
#include "host/HostClipboard.h"
#include "host/HostFaults.h"
#include "host/HostProcesses.h"
#include "host/HostShell.h"
#include "host/HostSystem.h"
#include "job/JobVariableExpander.h"
#include "job/JobVariableText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

using namespace JobLayer;
using std::string;

namespace {

constexpr std::size_t LongestInput = 2048;
constexpr int32_t MostCalls = 20;       // "$(" in an input: what they give may multiply
constexpr int32_t MostRuns = 300;       // of blocks, in one input
constexpr int32_t DeepestRun = 40;      // blocks in blocks
constexpr int32_t LongestValues = 4096; // code units of all variables, before a block runs
constexpr int32_t PatientCalls = 2000;  // of the platform: walks over large folders end then

enum How : uint8_t {
  Shift = 0x01,
  RefuseForms = 0x02,
  MainDialog = 0x04,
  NoPress = 0x08,
  Escape = 0x10,
};

void require(bool holds) {
  if (!holds) std::abort();
}

// The runner, with an end to everything.
class EndingRunner : public JobCommandList {
 public:
  int32_t runs = 0;

  bool Execute(const JobParamList& list, const JobExecutorPair& executor) override {
    if (++runs > MostRuns || depth_ >= DeepestRun || lengthOfValues() > LongestValues) return false;
    ++depth_;
    const bool result = JobCommandList::Execute(list, executor);
    --depth_;
    return result;
  }

 private:
  static int32_t lengthOfValues() {
    int32_t length = 0;
    for (const JobVariableUnit& unit : JobVariableStore::instance().elements())
      length += unit.value.length();
    return length;
  }
  int32_t depth_ = 0;
};

// Replaces only where nothing new can be found in what was put in, or the text gets shorter.
class EndingReplace : public JobVariableReplace {
 public:
  using JobVariableReplace::JobVariableReplace;
  JobVariableResult evaluate(JobVariableArgument& argument) override {
    const string from = bytesOf(argument.get(2));
    const string to = bytesOf(argument.get(3));
    if (argument.failure != 0) return argument.fault();
    if (to.size() >= from.size() && to.find_first_of(from) != string::npos)
      return {VariableSuccess, argument.get(1)};
    return JobVariableReplace::evaluate(argument);
  }
};

class FuzzDialogs : public TourDialogs {
 public:
  uint8_t how = 0;
  int32_t ask(const RawString& message, const RawLayer::RawStringList& labels) override {
    return (how & RefuseForms) != 0 ? 0 : std::min(message.length(), labels.count());
  }
  bool input(WinLayer::WinInputParameterList& fields) override {
    return (how & RefuseForms) == 0 && TourDialogs::input(fields);
  }
};

string& workFolder() {
  static string folder;
  return folder;
}

// Once for the process: an empty folder, a log that is off, and a Replace that ends.
bool prepare() {
  char name[] = "/tmp/TarvellonFuzz"
                "XX"
                "XX"
                "XX";
  require(::mkdtemp(name) != nullptr);
  workFolder() = name;
  std::atexit([] {
    ::unlink((workFolder() + "/a.ini").c_str());
    ::rmdir(workFolder().c_str());
  });
  JobLogServer::instance().start(raw("/proc/none"), 0);
  require(!JobLogServer::instance().storer().isAccepting());
  JobVariableStore& store = JobVariableStore::instance();
  store.defineInitialVariables();
  for (auto* node = store.first(); !store.isEnd(node); node = store.next(node))
    if (JobVariableStore::element(node)->name.equals(raw("Replace"))) {
      store.erase(node);
      break;
    }
  store.append(new EndingReplace(raw("Replace")));
  return true;
}

void setUpMachine(HostSystem::Scope& system, uint8_t how) {
  const auto folder = raw(workFolder());
  system.facts().tempFolder = folder;
  system.facts().userFolder = folder;
  system.facts().desktop = folder;
  system.fixClock({2024, 9, 7, 12, 0, 0, 5}, 540);
  system.setKey(0xA0, (how & Shift) != 0);
  system.setKey(0x1B, (how & Escape) != 0);
}

void runAll(EndingRunner& runner, uint8_t how) {
  LauncherData& data = LauncherData::instance();
  if (const JobActionUnit* script = data.actions.find(raw("#Initialize"))) {
    const JobParamList params = script->params;
    runner.Execute(params, JobExecutorPair::executor());
  }
  data.selectors.setup(JobExecutorPair::executor());
  data.buttons.setup(JobExecutorPair::executor());
  for (const JobActionUnit& action : data.actions.elements())
    runner.RunCommandLine({raw("a"), action.name, {}, {}});
  if ((how & NoPress) != 0) return;
  for (int32_t i = 0; i < data.selectors.count(); ++i) runner.RunSelector(i, raw("LButton"), {});
  for (int32_t i = 0; i < data.buttons.count(); ++i) {
    runner.RunButton(i, raw("RButton"), {});
    runner.RunDrop(i, raw("a.txt"), raw("\"a.txt\""), {});
  }
}

// What the process keeps of an input would make the later ones depend on it.
void forget(EndingRunner& runner) {
  TourBed::data().selectors.clear();
  TourBed::data().selectors.templateUnit = {};
  TourBed::data().buttons.clear();
  TourBed::data().buttons.templateUnit = {};
  TourBed::data().actions.clear();
  runner.flags = 0;
  JobMenuList::instance().clear();
  JobMenuList::instance().current = nullptr;
  TourBed::forgetVariables();
}

void runInput(uint8_t failing, uint8_t how, const string& text) {
  std::ofstream(workFolder() + "/a.ini", std::ios::binary) << text;
  HostSystem::Scope system;
  setUpMachine(system, how);
  HostShell::Scope shell;
  HostClipboard::Scope clipboard;
  clipboard.put(RawString::fromWide(u"C:\\a b\\c.txt"));
  HostProcesses::Scope processes;
  processes.add("notepad.exe", 17);
  processes.addWindow(1, "Notepad", "a - Notepad");

  FuzzDialogs dialogs;
  dialogs.how = how;
  JobWindowContext& context = JobWindowContext::instance();
  context.installDialogs(&dialogs);
  // Never looked into here: that it is there is what counts.
  context.dialog =
      (how & MainDialog) != 0 ? reinterpret_cast<WinLayer::WinDialog*>(&dialogs) : nullptr;
  EndingRunner runner;
  {
    HostFaults::Scope faults;
    faults.failFrom(failing == 0 ? PatientCalls : failing);
    JobFacts::instance().configFile = raw(workFolder() + "/a.ini");
    LauncherData& data = LauncherData::instance();
    JobConfigFile::load(data.selectors, data.buttons, data.actions);
    runAll(runner, how);
  }
  context.dialog = nullptr;
  context.installDialogs(nullptr);
  require(shell.openProcesses() == 0);
  require(shell.takeLaunches().size() <= LongestInput * MostRuns);
  require(JobMenuList::instance().current == nullptr);
  forget(runner);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  static const bool isReady = prepare();
  if (!isReady || size < 2 || size > LongestInput) return 0;
  const string text(reinterpret_cast<const char*>(data + 2), size - 2);
  int32_t calls = 0;
  for (std::size_t i = text.find("$("); i != string::npos; i = text.find("$(", i + 1)) ++calls;
  if (calls <= MostCalls) runInput(data[0], data[1], text);
  return 0;
}
