// TourBed: the life of a launcher without windows, as often as a test wants it.
//
//   TourBed bed(configFile, logFolder);
//   bed.start();              // the log, the configuration, the start-up script
//   bed.runAction("Tour");    // as the command line's -a does it
//   bed.end();                // the log is written, all that was loaded is forgotten
//
// Its user answers every question with the first button, leaves every form as it is and takes the
// last entry of every new menu.
#pragma once

#include "TestText.h"
#include "job/JobCommandList.h"
#include "job/JobConfigFile.h"
#include "job/JobExecutionRecord.h"
#include "job/JobLog.h"
#include "job/JobMenuList.h"
#include "job/JobVariable.h"
#include "job/JobWindowContext.h"
#include "job/LauncherData.h"

#include <string>

class TourDialogs : public JobLayer::JobDialogs {
 public:
  int32_t reports = 0;

  void showReport(const RawLayer::RawString&, const RawLayer::RawString&) override { ++reports; }
  int32_t ask(const RawLayer::RawString&, const RawLayer::RawStringList&) override { return 1; }
  bool input(WinLayer::WinInputParameterList& fields) override {
    for (WinLayer::WinInputParameterUnit& field : fields.elements()) field.value = field.initial;
    return true;
  }
  uint32_t trackMenu(const WinLayer::WinMenuHandle&, const JobLayer::JobRectangle&) override {
    return static_cast<uint32_t>(JobLayer::JobMenuList::instance().counter);
  }
};

class TourBed {
 public:
  static constexpr int32_t LogsKept = 2;
  int32_t bufferSize = RawLayer::RawLineFile::DefaultBufferSize; // for the configuration
  TourDialogs dialogs;

  TourBed(const RawLayer::RawString& configFile, const RawLayer::RawString& logFolder)
      : configFile_(configFile), logFolder_(logFolder) {
    JobLayer::JobWindowContext::instance().installDialogs(&dialogs);
  }
  ~TourBed() {
    end();
    JobLayer::JobWindowContext::instance().installDialogs(nullptr);
  }
  TourBed(const TourBed&) = delete;
  TourBed& operator=(const TourBed&) = delete;

  static JobLayer::JobCommandList& runner() { return JobLayer::JobCommandList::instance(); }
  static JobLayer::LauncherData& data() { return JobLayer::LauncherData::instance(); }

  void start() {
    using namespace JobLayer;
    JobFacts::instance().configFile = configFile_;
    JobFacts::instance().logCategories = raw("UCPV");
    startLog();
    JobExecutionRecord record(JobExecutorPair::system(), JobExecutorPair::executor(),
                              raw("Initialize"));
    JobConfigFile::load(configFile_, data().selectors, data().buttons, data().actions, bufferSize);
    if (const JobActionUnit* script = data().actions.find(raw("#Initialize"))) {
      const JobParamList params = script->params;
      JobCommandList::SetResult(record, runner().Execute(params, JobExecutorPair::executor()));
    }
    data().selectors.setup(JobExecutorPair::executor());
    data().buttons.setup(JobExecutorPair::executor());
  }
  static bool runAction(const std::string& name) {
    return runner().RunCommandLine({raw("a"), raw(name), {}, {}});
  }
  // Every selector with the left key and every button with both, as in a main dialog.
  void pressAll() {
    using namespace JobLayer;
    JobWindowContext& context = JobWindowContext::instance();
    // Never looked into here: that it is there is what counts.
    context.dialog = reinterpret_cast<WinLayer::WinDialog*>(this);
    for (int32_t i = 0; i < data().selectors.count(); ++i)
      runner().RunSelector(i, raw("LButton"), {});
    for (int32_t i = 0; i < data().buttons.count(); ++i) {
      runner().RunButton(i, raw("LButton"), {});
      runner().RunButton(i, raw("RButton"), {});
      runner().RunDrop(i, raw("C:\\a.txt"), raw("\"C:\\a.txt\""), {});
    }
    context.dialog = nullptr;
  }
  void startLog() { JobLayer::JobLogServer::instance().start(logFolder_, LogsKept); }
  static void stopLog() { JobLayer::JobLogServer::instance().stop(); }
  void end() {
    stopLog();
    data().selectors.clear();
    data().selectors.templateUnit = {};
    data().buttons.clear();
    data().buttons.templateUnit = {};
    data().actions.clear();
    runner().flags = 0;
    forgetVariables();
  }

  // All but the built-in ones.
  static void forgetVariables() {
    JobLayer::JobVariableStore& store = JobLayer::JobVariableStore::instance();
    for (RawLayer::RawListNode* node = store.first(); !store.isEnd(node);) {
      RawLayer::RawListNode* next = store.next(node);
      const uint16_t flags = JobLayer::JobVariableStore::element(node)->flags;
      if ((flags & JobLayer::JobVariableUnit::UserVariable) != 0) store.erase(node);
      node = next;
    }
    store.lastState = JobLayer::VariableSuccess;
  }

 private:
  RawLayer::RawString configFile_;
  RawLayer::RawString logFolder_;
};
