// The table of commands: one row for each, in the order of lookups. A command is one source file,
// which exports the function that gives its static object, and one row here.
#pragma once

#include "job/JobCommand.h"

#include <span>

namespace JobLayer {

using JobCommandRow = JobCommandUnit& (*)();

// The rows, valid for ever. Each function gives the same object at every call.
std::span<const JobCommandRow> jobCommandTable();

} // namespace JobLayer
