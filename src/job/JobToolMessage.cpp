#include "job/JobToolMessage.h"

#include "job/JobLog.h"
#include "job/JobLogLine.h"
#include "job/JobProduct.h"
#include "job/JobWindowContext.h"
#include "raw/RawLanguage.h"

namespace JobLayer {

namespace {

using RawLayer::RawLocaleRecord;

const RawLocaleRecord* messageTable() {
  static const RawLocaleRecord table[] = {
      {"RequiredParameterIsMissing"_text, "Required parameter is missing !"_text},
      {"RequiredParameterIsEmpty"_text, "Required parameter is empty !"_text},
      {"UnexpectedParameter"_text, "Unexpected parameter !"_text},
      {"UserAborted"_text, "User aborted !"_text},
      {"NoSuchDefinedAction"_text, "No such defined action !"_text},
      {"MissingTargetWindow"_text, "Missing target window !"_text},
      {"OutOfMenuScope"_text, "Out of menu scope !"_text},
      {"NoSuchCommand"_text, "No such command !"_text},
      {"UnbalancedSectionBlocks"_text, "Unbalanced section blocks !"_text},
      {"NoSuchDefinedName"_text, "No such defined name !"_text},
      {"UnbalancedVariableBlock"_text, "Unbalanced variable block !"_text},
      {"TooFewVariableArguments"_text, "Too few variable arguments !"_text},
      {"IncorrectNumberFormat"_text, "Incorrect number format !"_text},
      {"OutOfRangeNumber"_text, "Number is out of range !"_text},
      {"TooManyVariableExpansions"_text, "Too many variable expansions !"_text},
      {"VariableNameIsMissing"_text, "Variable name is missing !"_text},
      {"InvalidVariableArgument"_text, "Invalid variable argument !"_text},
      {RawString(), RawString()},
  };
  return table;
}

const RawLayer::RawLanguageGroup& messages() {
  static const RawLayer::RawLanguageGroup group("ToolMessage"_text, messageTable());
  return group;
}

} // namespace

void JobToolMessage::registerTexts() {
  messages();
}

void JobToolMessage::add(const RawString& tag, const RawString& value) {
  if (value.isEmpty() || count == MaxLines) return;
  lines[count++] = {tag, value};
}

void JobToolMessage::report() const {
  JobLogServer::instance().post(JobLogLine::event("Error"_text, RawString::emptyStatic(),
                                                  RawString::emptyStatic(), RawLayer::localTime(),
                                                  JobLogLine::prefix(), logDetail()));
  JobWindowContext::instance().dialogs().showReport(JobProduct::name(), dialogText());
}

RawString JobToolMessage::dialogText() const {
  RawString text = messages().text(key);
  for (int32_t i = 0; i < count; ++i)
    text.append5("\r\n  "_text, lines[i].tag, " "_text, lines[i].value);
  return text;
}

RawString JobToolMessage::logDetail() const {
  RawString detail = key;
  for (int32_t i = 0; i < count; ++i)
    detail.append5(" "_text, lines[i].tag, " "_text, lines[i].value);
  return detail;
}

void JobToolMessage::ReportCommandError(const RawString& key, const RawString& command,
                                        const RawString& parameter, const RawString& value) {
  JobToolMessage message;
  message.key = key;
  message.add("[command]"_text, command);
  message.add("[parameter]"_text, parameter);
  message.add("[value]"_text, value);
  message.report();
}

void JobToolMessage::ReportVariableError(const RawString& key, const RawString& variable,
                                         const RawString& value, const RawString& script) {
  JobToolMessage message;
  message.key = key;
  message.add("[variable]"_text, variable);
  message.add("[value]"_text, value);
  message.add("[script]"_text, script);
  message.report();
}

} // namespace JobLayer
