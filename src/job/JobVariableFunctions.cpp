#include "job/JobVariableFunctions.h"

#include "job/JobVariableCalc.h"
#include "job/JobVariableLogic.h"
#include "job/JobVariableSystem.h"
#include "job/JobVariableText.h"

#include <cstring>

namespace JobLayer {

template <class Function>
static JobVariableUnit* make(const RawString& name) {
  return new Function(name);
}

struct BuiltIn {
  const char* name;
  JobVariableUnit* (*make)(const RawString& name);
};

// The order is the order of lookups.
static constexpr BuiltIn builtIns[] = {
    {"Not", make<JobVariableNot>},
    {"Equal", make<JobVariableIsEqual>},
    {"EqualNoCase", make<JobVariableIsEqualNoCase>},
    {"<", make<JobVariableIsSmall>},
    {">", make<JobVariableIsLarge>},
    {"<=", make<JobVariableIsSmallEqual>},
    {">=", make<JobVariableIsLargeEqual>},
    {"==", make<JobVariableIsNumberEqual>},
    {"!=", make<JobVariableIsNumberNotEqual>},
    {"&&", make<JobVariableLogicAnd>},
    {"||", make<JobVariableLogicOr>},
    {"Calc", make<JobVariableCalc>},
    {"Length", make<JobVariableLength>},
    {"Body", make<JobVariableBody>},
    {"BodyEx", make<JobVariableBodyEx>},
    {"Base", make<JobVariableBaseFolder>},
    {"Extension", make<JobVariableExtension>},
    {"Before", make<JobVariableBefore>},
    {"After", make<JobVariableAfter>},
    {"Code", make<JobVariableCode>},
    {"IsMissing", make<JobVariableIsMissing>},
    {"Path", make<JobVariablePath>},
    {"IsFile", make<JobVariableIsFile>},
    {"IsFolder", make<JobVariableIsFolder>},
    {"IsProcess", make<JobVariableIsProcess>},
    {"IsWindow", make<JobVariableIsWindow>},
    {"File", make<JobVariableFile>},
    {"FileCount", make<JobVariableFileCount>},
    {"Folder", make<JobVariableFolder>},
    {"FolderCount", make<JobVariableFolderCount>},
    {"Process", make<JobVariableProcess>},
    {"Window", make<JobVariableWindow>},
    {"IsDefined", make<JobVariableIsDefined>},
    {"Cond", make<JobVariableCond>},
    {"CondDef", make<JobVariableCondDef>},
    {"IsKey", make<JobVariableIsKey>},
    {"StripQuote", make<JobVariableStripQuote>},
    {"Replace", make<JobVariableReplace>},
    {"Clipboard", make<JobVariableClipboard>},
};

void appendBuiltInVariables(JobVariableList& table) {
  for (const BuiltIn& each : builtIns)
    table.append(
        each.make(RawString::fromStatic(each.name, static_cast<int32_t>(std::strlen(each.name)))));
}

} // namespace JobLayer
