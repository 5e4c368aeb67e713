#include "job/JobVariableSystem.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"
#include "raw/RawClipboard.h"
#include "raw/RawFile.h"
#include "raw/RawProcess.h"
#include "raw/RawSystem.h"
#include "raw/RawWildcardPath.h"

namespace JobLayer {

static RawString missingValue(JobVariableArgument& argument) {
  return argument.ask("Missing"_text);
}

static JobVariableResult foundOrMissing(JobVariableArgument& argument, const RawString& found) {
  return variableText(found.isEmpty() ? missingValue(argument) : found);
}

JobVariableResult JobVariableIsMissing::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return variableTruth(text.equals(missingValue(argument)));
}

struct PathWord {
  const char* word;
  RawString (*value)();
};

static constexpr PathWord pathWords[] = {
    {"Desktop", [] { return RawLayer::specialFolder(RawLayer::RawFolderDesktop); }},
    {"Temp", [] { return RawLayer::tempFolder(); }},
    {"User", [] { return RawLayer::specialFolder(RawLayer::RawFolderAppData); }},
    {"HostName", [] { return RawLayer::computerName(); }},
    {"UserName", [] { return RawLayer::userName(); }},
    {"Launcher", [] { return RawLayer::moduleName(); }},
    {"ConfigFile", [] { return JobFacts::instance().configFile; }},
};

JobVariableResult JobVariablePath::evaluate(JobVariableArgument& argument) {
  const RawString word = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  for (const PathWord& each : pathWords)
    if (word.equals(RawString::fromChars(each.word))) return variableText(each.value());
  argument.reportError("InvalidVariableArgument"_text, word);
  return {VariableUnknown, RawString()};
}

// The path that the first argument names: empty when an argument failed or `accepts` refuses what
// it resolves to.
static RawString findPath(JobVariableArgument& argument, bool (*accepts)(const RawString&)) {
  const RawString pattern = argument.get(1);
  if (argument.failure != 0) return RawString();
  const RawString path = RawLayer::resolveWildcardPath(pattern);
  return accepts(path) ? path : RawString();
}

JobVariableResult JobVariableIsFile::evaluate(JobVariableArgument& argument) {
  const RawString path = findPath(argument, RawLayer::isFile);
  return argument.failure != 0 ? argument.fault() : variableTruth(!path.isEmpty());
}

JobVariableResult JobVariableIsFolder::evaluate(JobVariableArgument& argument) {
  const RawString path = findPath(argument, RawLayer::isFolder);
  return argument.failure != 0 ? argument.fault() : variableTruth(!path.isEmpty());
}

JobVariableResult JobVariableFile::evaluate(JobVariableArgument& argument) {
  const RawString path = findPath(argument, RawLayer::isFile);
  return argument.failure != 0 ? argument.fault() : foundOrMissing(argument, path);
}

JobVariableResult JobVariableFolder::evaluate(JobVariableArgument& argument) {
  const RawString path = findPath(argument, RawLayer::isFolder);
  return argument.failure != 0 ? argument.fault() : foundOrMissing(argument, path);
}

static JobVariableResult count(JobVariableArgument& argument, bool folders) {
  const RawString pattern = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return variableNumber(RawLayer::countEntries(pattern, folders));
}

JobVariableResult JobVariableFileCount::evaluate(JobVariableArgument& argument) {
  return count(argument, false);
}

JobVariableResult JobVariableFolderCount::evaluate(JobVariableArgument& argument) {
  return count(argument, true);
}

static RawString findNamedProcess(JobVariableArgument& argument) {
  const RawString pattern = argument.get(1);
  return argument.failure != 0 ? RawString() : RawLayer::findProcess(pattern);
}

JobVariableResult JobVariableIsProcess::evaluate(JobVariableArgument& argument) {
  const RawString process = findNamedProcess(argument);
  return argument.failure != 0 ? argument.fault() : variableTruth(!process.isEmpty());
}

JobVariableResult JobVariableProcess::evaluate(JobVariableArgument& argument) {
  const RawString process = findNamedProcess(argument);
  return argument.failure != 0 ? argument.fault() : foundOrMissing(argument, process);
}

static RawString findTopWindow(JobVariableArgument& argument) {
  const RawString title = argument.get(1);
  const RawString className = argument.get(2, JobVariableArgument::Optional);
  return argument.failure != 0 ? RawString() : RawLayer::findWindow(className, title);
}

JobVariableResult JobVariableIsWindow::evaluate(JobVariableArgument& argument) {
  const RawString window = findTopWindow(argument);
  return argument.failure != 0 ? argument.fault() : variableTruth(!window.isEmpty());
}

JobVariableResult JobVariableWindow::evaluate(JobVariableArgument& argument) {
  const RawString window = findTopWindow(argument);
  return argument.failure != 0 ? argument.fault() : foundOrMissing(argument, window);
}

JobVariableResult JobVariableClipboard::evaluate(JobVariableArgument&) {
  return variableText(RawLayer::getClipboard(ClipboardLimit).shareAs(RawLayer::EncodingUtf8));
}

} // namespace JobLayer
