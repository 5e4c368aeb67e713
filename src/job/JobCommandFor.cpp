#include "job/JobCommandFor.h"

#include "job/JobCommandLoop.h"
#include "job/JobToolMessage.h"

namespace JobLayer {

bool JobCommandFor::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString beginText = requiredValue(params, "Begin"_text, caller);
  const RawString endText = requiredValue(params, "End"_text, caller);
  const RawString addText = requiredValue(params, "Add"_text, caller);
  if (beginText.isEmpty() || endText.isEmpty() || addText.isEmpty()) return false;

  int32_t begin = 0;
  int32_t end = 0;
  int32_t add = 0;
  if (!readOrReport("Begin"_text, beginText, begin)) return false;
  beginLoop(*executor);
  for (;;) {
    setVariable("Counter"_text, RawString::fromInt64(begin));
    if (!readOrReport("End"_text, endText, end)) return false;
    if (begin == end) return true;
    const JobLoopRound round = runLoopBody(*executor, params, caller);
    if (round != JobLoopRound::Done) return round == JobLoopRound::Broken;
    // The step has to be a number, but nothing is added: the body decides when the loop ends.
    if (!readOrReport("Add"_text, addText, add)) return false;
    if (isLoopAborted()) {
      JobToolMessage::ReportCommandError("UserAborted"_text, keyword, RawString::emptyStatic(),
                                         RawString::emptyStatic());
      return false;
    }
  }
}

bool JobCommandFor::readOrReport(const RawString& key, const RawString& text,
                                 int32_t& number) const {
  if (readNumber(text, number)) return true;
  JobToolMessage::ReportCommandError("IncorrectNumberFormat"_text, keyword, key, text);
  return false;
}

JobCommandUnit& jobCommandFor() {
  static JobCommandFor command;
  return command;
}

} // namespace JobLayer
