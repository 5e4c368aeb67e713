// The built-in functions of the $(...) syntax, in the order of lookups.
#pragma once

#include "job/JobVariable.h"

namespace JobLayer {

// Appends one entry for each built-in.
void appendBuiltInVariables(JobVariableList& table);

} // namespace JobLayer
