// The order of the steps matters: the log runs before the predecessor is ended and the
// configuration is read, and the start-up script has run before the switches are looked at.
#include "app/Launcher.h"

#include "app/GuiDialogs.h"
#include "app/GuiMainDialog.h"
#include "app/GuiProfileFile.h"
#include "app/GuiSelectorMenu.h"
#include "app/LauncherFiles.h"
#include "app/LauncherMessages.h"
#include "job/JobCommandList.h"
#include "job/JobConfigFile.h"
#include "job/JobExecutionRecord.h"
#include "job/JobFacts.h"
#include "job/JobIconControl.h"
#include "job/JobLog.h"
#include "job/JobToolMessage.h"
#include "job/LauncherData.h"
#include "raw/RawPath.h"
#include "raw/RawProcess.h"
#include "raw/RawStringList.h"
#include "raw/RawSystem.h"
#include "raw/RawThread.h"
#include "win/WinEditBoxMenu.h"
#include "win/WinInputDialog.h"

namespace AppLayer {

using JobLayer::JobActionUnit;
using JobLayer::JobCommandLineRun;
using JobLayer::JobCommandList;
using JobLayer::JobExecutionRecord;
using JobLayer::JobExecutorPair;
using JobLayer::JobFacts;
using JobLayer::JobIconControl;
using JobLayer::JobLogServer;
using JobLayer::LauncherData;

namespace {
constexpr uint32_t PredecessorWait = 3000; // milliseconds
} // namespace

void Launcher::installCrashHandler() {
  static RawLayer::RawThreadDump dump;
  dump.folder = RawLayer::joinPath(RawLayer::tempFolder(), "Dump"_text);
  dump.name = productName();
  RawLayer::RawThreadHook::install(&dump);
  RawLayer::RawThreadHook::installProcessFilter();
}

int32_t Launcher::run(const RawString& commandLine) {
  RawParameterList arguments;
  RawLayer::RawStringList switches;
  switches.caseSensitive = true;
  switches.add("h"_text);
  arguments.fromCommandLine(RawLayer::stripProgramName(commandLine), switches);
  if (arguments.contains("h"_text)) {
    LauncherMessages::showUsage();
    return 0;
  }
  bool accepted = false;
  const bool success = startUp(arguments, accepted);
  return !accepted || success ? 0 : 1;
}

// `accepted` tells whether the profile is ours; nothing else has happened when it is not.
bool Launcher::startUp(const RawParameterList& arguments, bool& accepted) {
  LauncherFiles files;
  accepted = files.find(RawLayer::moduleName(), arguments);
  if (!accepted) return false;

  registerTexts();
  GuiProfileFile::instance().load(files.guiProfile);
  LauncherOptions& options = LauncherOptions::instance();
  options.load(files.configFile, arguments);
  GuiDialogs::install(options.horizontal);

  JobFacts& facts = JobFacts::instance();
  facts.configFile = options.path;
  facts.logCategories = options.logCategories;
  JobLogServer::instance().start(options.logFolder, options.maxLogFiles);
  endPredecessor(options.terminateId);
  initialize();

  if (!options.switchName.isEmpty()) return runOneShot(options);
  runWindow();
  return true;
}

// All of them before the language is loaded, so that a fresh section of its file holds every text.
void Launcher::registerTexts() {
  LauncherMessages::registerTexts();
  JobLayer::JobToolMessage::registerTexts();
  WinLayer::WinInputDialog::registerTexts();
  WinLayer::registerEditBoxTexts();
  GuiButtonBox::registerTexts();
  GuiSelectorMenu::registerTexts();
  GuiTitleMenu::registerTexts();
}

void Launcher::endPredecessor(int32_t processId) {
  if (processId != 0) RawLayer::terminateProcess(static_cast<uint32_t>(processId), PredecessorWait);
}

void Launcher::initialize() {
  JobExecutionRecord record(JobExecutorPair::system(), JobExecutorPair::executor(),
                            "Initialize"_text);
  LauncherData& data = LauncherData::instance();
  JobLayer::JobConfigFile::load(data.selectors, data.buttons, data.actions);
  if (const JobActionUnit* script = data.actions.find("#Initialize"_text)) {
    const JobLayer::JobParamList params = script->params;
    const bool success = JobCommandList::instance().Execute(params, JobExecutorPair::executor());
    JobCommandList::SetResult(record, success);
  }
}

// The icon thread may still log while it stops, so the log goes last; the dialog's members outlive
// both.
void Launcher::runWindow() {
  const LauncherOptions& options = LauncherOptions::instance();
  JobIconControl& icons = JobIconControl::instance();
  icons.setOptions(options.iconDelay, options.iconCache, options.iconExtension, options.cacheFile);
  JobLayer::JobIconSource::install(&icons);

  GuiMainDialog dialog;
  dialog.Prepare();
  dialog.Create();
  dialog.RunLoop();
  icons.stop();
  JobLogServer::instance().stop();
}

bool Launcher::runOneShot(const LauncherOptions& options) {
  LauncherData::instance().buttons.setup(JobExecutorPair::executor());
  const JobCommandLineRun run{options.switchName, options.switchValue, options.firstPath,
                              options.pathList};
  return JobCommandList::instance().RunCommandLine(run);
}

} // namespace AppLayer
