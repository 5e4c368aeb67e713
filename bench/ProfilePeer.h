// What one key of a profile is read with elsewhere, to measure beside.
#pragma once

#include <string>

namespace ProfilePeer {

const char* name();
// The largest part of the peer's time that is good enough.
double goal();
// Length of the value; 0 when it is missing. The file is read for it: nothing is remembered.
int read(const std::string& path, const char* section, const char* key);

} // namespace ProfilePeer
