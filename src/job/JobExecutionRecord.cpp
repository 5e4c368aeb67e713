#include "job/JobExecutionRecord.h"

#include "job/JobLog.h"
#include "job/JobLogLine.h"

namespace JobLayer {

namespace {

// Letters of the log categories.
constexpr uint16_t RunRecords = 'U';
constexpr uint16_t CommandRecords = 'C';
constexpr uint16_t CommandParameters = 'P';

bool isLogged(uint16_t category) {
  return JobFacts::instance().logCategories.containsChar(category);
}

} // namespace

JobExecutionRecord::JobExecutionRecord(const JobExecutorPair& user, const JobExecutorPair& executor,
                                       const RawString& title)
    : active_(isLogged(RunRecords)), user_(user), executor_(executor), title_(title),
      result_("Success"_text) {
  open(JobLogLine::prefix(), title_);
}

JobExecutionRecord::JobExecutionRecord(const JobExecutorPair& user, const JobExecutorPair& executor,
                                       const RawString& title, const RawString& summary)
    : active_(isLogged(CommandRecords)), user_(user), executor_(executor), title_(title),
      detail_(summary), result_("Success"_text) {
  if (isLogged(CommandParameters))
    open(RawString::emptyStatic(), detail_);
  else
    open(JobLogLine::prefix(), title_);
}

JobExecutionRecord::~JobExecutionRecord() {
  close();
}

void JobExecutionRecord::open(const RawString& prefix, const RawString& detail) {
  if (!active_) return;
  const RawLayer::RawMoment now = RawLayer::localTime();
  const RawString name = executor_.text();
  JobLogServer& log = JobLogServer::instance();
  log.post(JobLogLine::event("Begin"_text, name, RawString::emptyStatic(), now,
                             RawString::emptyStatic(), RawString::emptyStatic()));
  log.post(JobLogLine::transition(user_.text(), name, now, prefix, detail));
}

void JobExecutionRecord::setResult(const RawString& text) {
  result_ = text;
}

void JobExecutionRecord::setResult(bool success) {
  result_ = success ? "Success"_text : "Failed"_text;
}

void JobExecutionRecord::close() {
  if (!active_) return;
  active_ = false;
  const RawLayer::RawMoment now = RawLayer::localTime();
  const RawString name = executor_.text();
  JobLogServer& log = JobLogServer::instance();
  log.post(JobLogLine::transition(name, user_.text(), now, JobLogLine::prefix(), result_));
  log.post(JobLogLine::event("End"_text, name, RawString::emptyStatic(), now,
                             RawString::emptyStatic(), RawString::emptyStatic()));
}

} // namespace JobLayer
