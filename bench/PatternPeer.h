// The platform's own matcher of file names, to measure beside.
#pragma once

#include <string>

namespace PatternPeer {

const char* name();
// The largest part of the peer's time that is good enough.
double goal();
// A name or pattern in the form that the peer takes.
#ifdef _WIN32
using Text = std::wstring;
#else
using Text = std::string;
#endif
// Whether the whole name matches the wildcards, in any case.
bool matches(const Text& pattern, const Text& name);

} // namespace PatternPeer
