// JobTestBed: a clean script engine for one test.
//
//   JobTestBed bed;
//   EXPECT_TRUE(bed.run("Define {\n x=1\n}"));
//   EXPECT_EQ(bed.variable("x"), "1");
//   EXPECT_EQ(bed.diary()[0], "#Begin:Command#1");
//
// It clears variables, flags, launcher data and the window context, shows reports to nobody but
// the test, and keeps the log of the process in a real file, from which `diary` reads back.
#pragma once

#include "job/JobCommandList.h"
#include "job/JobLog.h"
#include "job/JobToolMessage.h"
#include "job/JobVariable.h"
#include "job/JobWindowContext.h"
#include "job/LauncherData.h"

#include "TestDiary.h"
#include "TestFolder.h"
#include "TestText.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

// Texts that a script meant for the user's eyes.
class JobTestDialogs : public JobLayer::JobDialogs {
 public:
  std::vector<std::string> reports; // the texts of the dialogs
  std::vector<std::string> captions;
  std::vector<uint32_t> posted;   // messages for the main dialog
  std::function<void()> onReport; // what happens while a dialog is up

  void showReport(const RawLayer::RawString& caption, const RawLayer::RawString& text) override {
    captions.push_back(bytesOf(caption));
    reports.push_back(bytesOf(text));
    if (onReport) onReport();
  }
  void postToMainDialog(uint32_t message, uintptr_t, intptr_t) override {
    posted.push_back(message);
  }
};

// The log of the test process, in one file from the first test to the last.
class JobTestLog {
 public:
  static JobTestLog& instance() {
    static JobTestLog log;
    return log;
  }
  // Puts a line of its own into the log and gives it.
  std::string mark() {
    const std::string line = "// mark " + std::to_string(++marks_) + "\r\n";
    JobLayer::JobLogServer::instance().post(raw(line));
    return line;
  }
  // What was logged behind the mark; waits until all of it is in the file.
  std::string textSince(const std::string& mark) {
    const std::string last = this->mark();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    std::string text;
    std::size_t end = std::string::npos;
    while (end == std::string::npos && std::chrono::steady_clock::now() < deadline) {
      text = read();
      end = text.find(last);
      if (end == std::string::npos) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const std::size_t start = text.find(mark);
    EXPECT_TRUE(start != std::string::npos && end != std::string::npos) << "the log is off";
    if (start == std::string::npos || end == std::string::npos) return {};
    return withoutMarks(text.substr(start + mark.size(), end - start - mark.size()));
  }

 private:
  JobTestLog() { JobLayer::JobLogServer::instance().start(folder_.path(), 0); }
  ~JobTestLog() { JobLayer::JobLogServer::instance().stop(); }
  // Without what earlier looks into the log left there.
  static std::string withoutMarks(std::string text) {
    for (std::size_t i; (i = text.find("// mark ")) != std::string::npos;)
      text.erase(i, text.find("\r\n", i) + 2 - i);
    return text;
  }
  [[nodiscard]] std::string read() const {
    const std::string path = bytesOf(JobLayer::JobLogServer::instance().path());
    return folder_.read(path.substr(path.find_last_of("\\/") + 1));
  }
  TestFolder folder_;
  int marks_ = 0;
};

class JobTestBed {
 public:
  JobTestDialogs dialogs;

  JobTestBed() : mark_(JobTestLog::instance().mark()) {
    reset();
    JobLayer::JobWindowContext::instance().installDialogs(&dialogs);
  }
  ~JobTestBed() {
    reset();
    JobLayer::JobWindowContext::instance().installDialogs(nullptr);
  }
  JobTestBed(const JobTestBed&) = delete;
  JobTestBed& operator=(const JobTestBed&) = delete;

  static JobLayer::JobCommandList& runner() { return JobLayer::JobCommandList::instance(); }

  // The tree of a script, as the configuration reader makes it; lines end in "\n".
  static JobLayer::JobParamList script(const std::string& text) {
    RawLayer::RawRangedTextList lines;
    std::istringstream stream(text);
    int32_t number = 0;
    for (std::string line; std::getline(stream, line); ++number) {
      auto unit = std::make_unique<RawLayer::RawRangedTextUnit>();
      unit->text = raw(line);
      unit->range = unit->text.trimRange(unit->text.all(), RawLayer::RawString::whiteSpace());
      unit->lineNumber = number;
      if (unit->range.isEmpty() || unit->text.at(unit->range.start) == '/') continue;
      lines.append(unit.release());
    }
    JobLayer::JobParamList list;
    EXPECT_TRUE(list.Parse(lines)) << text;
    return list;
  }

  // Runs a script with nothing around it, and gives its truth.
  static bool run(const std::string& text) {
    return runner().Execute(script(text), JobLayer::JobExecutorPair::executor());
  }
  static std::string variable(const std::string& name) {
    return bytesOf(JobLayer::JobVariableStore::instance().valueOf(raw(name)));
  }
  static bool hasVariable(const std::string& name) {
    return JobLayer::JobVariableStore::instance().find(raw(name)) != nullptr;
  }
  static void setVariable(const std::string& name, const std::string& value) {
    JobLayer::JobVariableStore::instance().set(raw(name), raw(value));
  }

  static JobLayer::JobButtonUnit& addButton(const std::string& name, const std::string& text) {
    JobLayer::JobButtonUnit* button = JobLayer::LauncherData::instance().buttons.add(raw(name));
    button->params = script(text);
    return *button;
  }
  static JobLayer::JobSelectorUnit& addSelector(const std::string& name, const std::string& text) {
    JobLayer::JobSelectorUnit* selector =
        JobLayer::LauncherData::instance().selectors.add(raw(name));
    selector->params = script(text);
    return *selector;
  }
  static void addAction(const std::string& name, const std::string& text) {
    JobLayer::LauncherData::instance().actions.add(raw(name))->params = script(text);
  }

  // What was logged since the bed was made: the bytes, or the lines without their time stamps and
  // with command and variable numbers counted from 1 as they appear.
  [[nodiscard]] std::string log() const { return JobTestLog::instance().textSince(mark_); }
  [[nodiscard]] std::vector<std::string> diary() const { return diaryOf(log()); }

 private:
  static void reset() {
    JobLayer::JobVariableStore& store = JobLayer::JobVariableStore::instance();
    for (RawLayer::RawListNode* node = store.first(); !store.isEnd(node);) {
      RawLayer::RawListNode* next = store.next(node);
      const uint16_t flags = JobLayer::JobVariableStore::element(node)->flags;
      if ((flags & JobLayer::JobVariableUnit::UserVariable) != 0) store.erase(node);
      node = next;
    }
    store.defineInitialVariables();
    store.lastState = JobLayer::VariableSuccess;
    runner().flags = 0;
    JobLayer::LauncherData& data = JobLayer::LauncherData::instance();
    data.selectors.clear();
    data.selectors.templateUnit = {};
    data.buttons.clear();
    data.buttons.templateUnit = {};
    data.actions.clear();
    JobLayer::JobFacts::instance().logCategories = raw("UCPV");
    JobLayer::JobFacts::instance().configIsWhole = true;
    JobLayer::JobWindowContext::instance().dialog = nullptr;
    JobLayer::JobWindowContext::instance().rectangle = {};
  }

  std::string mark_;
};
