#include "job/JobWindowContext.h"

#include "job/JobExecutionRecord.h"
#include "raw/RawStringTokenizer.h"

namespace JobLayer {

JobWindowContext& JobWindowContext::instance() {
  static JobWindowContext context;
  return context;
}

void JobWindowContext::installDialogs(JobDialogs* implementation) {
  dialogs_ = implementation;
}

JobDialogs& JobWindowContext::dialogs() {
  static JobMessageBoxDialogs standIn;
  return dialogs_ == nullptr ? standIn : *dialogs_;
}

using RawLayer::RawAutoFlag;
using RawLayer::RawStringList;
using RawLayer::RawStringTokenizer;

void JobWindowContext::splitLabels(const RawString& buttons, RawStringList& labels) {
  RawStringTokenizer tokenizer(buttons);
  tokenizer.flags |= RawStringTokenizer::ProtectQuoted;
  tokenizer.terminator = '/';
  tokenizer.stopsAtTerminator = true;
  if (buttons.isEmpty()) return;
  for (bool more = true; more;) {
    RawRange label = tokenizer.next();
    more = !(tokenizer.flags & RawStringTokenizer::Finished);
    // A slash is left unread by the tokenizer: here it separates just like a comma.
    if (more && tokenizer.position == label.end) ++tokenizer.position;
    if (label.size() > 1 && buttons.at(label.start) == '"' && buttons.at(label.end - 1) == '"')
      label = {label.start + 1, label.end - 1};
    labels.add(RawString::fromRange(buttons.encoding(), buttons, label));
  }
}

RawString JobWindowContext::AskDialog(const RawString& message, const RawString& buttons,
                                      const JobExecutorPair& caller) {
  if (!dialog) return {};
  RawStringList labels;
  splitLabels(buttons, labels);
  JobExecutionRecord record(JobExecutorPair::user(), caller,
                            RawString::concat("(Ask)"_text, message));
  const int32_t number = dialogs().ask(message, labels);
  const RawString* label = RawStringList::element(labels.nodeAt(number - 1));
  const RawString answer = label ? *label : RawString::emptyStatic();
  record.setResult(answer);
  return answer;
}

bool JobWindowContext::InputDialog(WinLayer::WinInputParameterList& fields,
                                   const JobExecutorPair& caller) {
  if (!dialog) return false;
  JobExecutionRecord record(JobExecutorPair::user(), caller,
                            RawString::concat("(Input)"_text, fields.prompt));
  const bool finished = dialogs().input(fields);
  record.setResult(finished);
  return finished;
}

uint32_t JobWindowContext::TrackMenu(WinLayer::WinMenuHandle& menu) {
  if (!dialog) return 0;
  const RawAutoFlag flag(menuOpen);
  menu.setOpen(true);
  const uint32_t chosen = dialogs().trackMenu(menu, rectangle);
  menu.setOpen(false);
  return chosen;
}

void JobWindowContext::postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) {
  if (!dialog) return;
  if (message == JobDialogs::MessageClose) closePosted_ = true;
  dialogs().postToMainDialog(message, first, second);
}

void JobWindowContext::runEnded() {
  if (closePosted_) postToMainDialog(JobDialogs::MessageClose, 0, 0);
  closePosted_ = false;
}

} // namespace JobLayer
