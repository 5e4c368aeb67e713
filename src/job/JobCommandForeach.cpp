#include "job/JobCommandForeach.h"

#include "job/JobCommandLoop.h"
#include "job/JobToolMessage.h"

namespace JobLayer {

namespace {

// The first place of the sign at or behind `start`; the length when there is none.
int32_t findSign(const RawString& list, int32_t start, const RawString& sign) {
  return list.find({start, list.length()}, sign, sign.all());
}

} // namespace

bool JobCommandForeach::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString list = requiredValue(params, "Parameter"_text, caller);
  if (list.isEmpty()) return false;
  beginLoop(*executor);
  int32_t position = 0;
  while (position < list.length()) {
    setVariable("Each"_text, takeElement(list, position));
    const JobLoopRound round = runLoopBody(*executor, params, caller);
    if (round != JobLoopRound::Done) return round == JobLoopRound::Broken;
    if (isLoopAborted()) {
      // The name stands in the value's place in this one.
      JobToolMessage::ReportCommandError("UserAborted"_text, RawString::emptyStatic(),
                                         RawString::emptyStatic(), keyword);
      return false;
    }
  }
  return true;
}

RawString JobCommandForeach::takeElement(const RawString& list, int32_t& position) {
  RawRange element{position, 0};
  int32_t comma = 0;
  if (list.at(position) == '"') {
    ++element.start;
    element.end = findSign(list, element.start, "\""_text);
    comma = findSign(list, element.end, ","_text);
  } else {
    element.end = comma = findSign(list, position, ","_text);
  }
  position = comma + 1;
  return RawString::fromRange(list.encoding(), list, element);
}

JobCommandUnit& jobCommandForeach() {
  static JobCommandForeach command;
  return command;
}

} // namespace JobLayer
