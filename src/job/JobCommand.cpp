#include "job/JobCommand.h"

#include "job/JobToolMessage.h"
#include "job/JobVariableExpander.h"
#include "raw/RawNumber.h"

namespace JobLayer {

RawString JobCommandUnitEx::optionalValue(const JobParamList& params, const RawString& key,
                                          const JobExecutorPair& caller) {
  return expandText(params.text(key), caller);
}

RawString JobCommandUnitEx::requiredValue(const JobParamList& params, const RawString& key,
                                          const JobExecutorPair& caller) const {
  const RawString rawValue = params.text(key);
  if (rawValue.isEmpty()) {
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, keyword, key,
                                       RawString::emptyStatic());
    return {};
  }
  const RawString value = expandText(rawValue, caller);
  if (expansionFailed()) return {};
  if (value.isEmpty())
    JobToolMessage::ReportCommandError("RequiredParameterIsEmpty"_text, keyword, key, rawValue);
  return value;
}

bool JobCommandUnitEx::expansionFailed() {
  return JobVariableStore::instance().lastState != VariableSuccess;
}

RawString JobCommandUnitEx::expandText(const RawString& text, const JobExecutorPair& caller) {
  return JobVariableExpander(caller).expandAndStore(text);
}

void JobCommandUnitEx::setVariable(const RawString& name, const RawString& value) {
  JobVariableStore::instance().set(name, value);
}

void JobCommandUnitEx::setVariables(const JobParamList& params, const RawString& except) {
  for (const JobParamUnit& unit : params.elements())
    if (unit.type() == JobParamUnit::TypeText && (except.isEmpty() || !unit.key.equals(except)))
      setVariable(unit.key, static_cast<const JobParamText&>(unit).value);
}

bool JobCommandUnitEx::readNumber(const RawString& text, int32_t& number) {
  if (!RawLayer::isNumber(text)) return false;
  number = RawLayer::toInt(text);
  return true;
}

} // namespace JobLayer
