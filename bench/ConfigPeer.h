// What a configuration file is read with elsewhere, to measure beside.
#pragma once

namespace ConfigPeer {

const char* name();
// The largest part of the peer's time that is good enough.
double goal();
// From opening to the last entry; gives what was counted.
int read(const char* path);
// The same with every entry of the file taken into a tree of its own: sections, keys, values. It
// stays until dropTree.
int readTree(const char* path);
void dropTree();

} // namespace ConfigPeer
