// JobMainDialog: a JobTestBed with a main dialog whose user answers as the test says.
#pragma once

#include "JobTestBed.h"

#include <functional>
#include <string>
#include <vector>

class JobAnsweringDialogs : public JobTestDialogs {
 public:
  std::vector<std::string> asked;  // messages of the questions
  std::vector<std::string> labels; // of the last question
  int32_t answer = 1;
  std::function<bool(WinLayer::WinInputParameterList&)> fill;     // the user at a form
  std::function<uint32_t(const WinLayer::WinMenuHandle&)> choose; // the user at a menu
  int32_t menusShown = 0;

  int32_t ask(const RawLayer::RawString& message, const RawLayer::RawStringList& list) override {
    asked.push_back(bytesOf(message));
    labels.clear();
    for (const RawLayer::RawString& label : list.elements()) labels.push_back(bytesOf(label));
    return answer;
  }
  bool input(WinLayer::WinInputParameterList& fields) override { return fill && fill(fields); }
  uint32_t trackMenu(const WinLayer::WinMenuHandle& menu, const JobLayer::JobRectangle&) override {
    ++menusShown;
    return choose ? choose(menu) : 0;
  }
};

class JobMainDialog : public JobTestBed {
 public:
  JobAnsweringDialogs user;

  JobMainDialog() {
    JobLayer::JobWindowContext& context = JobLayer::JobWindowContext::instance();
    context.installDialogs(&user);
    // Never looked into here: that it is there is what counts.
    context.dialog = reinterpret_cast<WinLayer::WinDialog*>(this);
  }
  ~JobMainDialog() {
    JobLayer::JobWindowContext::instance().dialog = nullptr;
    JobLayer::JobWindowContext::instance().installDialogs(&dialogs);
  }
};
