// The ways to save a file that must stay whole, whatever happens to the process that saves. A new
// saver is one more row of the table.
#pragma once

#include "raw/RawParameterList.h"
#include "raw/RawString.h"

#include <string>
#include <vector>

namespace SaveKill {

struct Mode {
  const char* name;
  const char* section; // the section that it writes
  bool (*save)(const RawLayer::RawString& path, const RawLayer::RawParameterList& list);
};
const std::vector<Mode>& modes();
const Mode* modeNamed(const std::string& name); // null when there is none

// The entries of a version, from 0: several blocks of the writer, all of them telling it.
RawLayer::RawParameterList listOf(int32_t version);
// The whole file with that version in it.
std::string fileOf(const Mode& mode, int32_t version);
// The version of a whole file; -1 for any other.
int32_t versionOf(const Mode& mode, const std::string& bytes);

} // namespace SaveKill
