// What can be learned of a running process from outside. The handle needs the rights to query and
// to read memory. All give nothing (0, an empty text) for a process that has gone.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

std::string commandLineOf(HANDLE process); // UTF-8, the program's name in front
uint32_t handleCountOf(HANDLE process);
// Of its table of drawing objects: for comparing, as some of them are the platform's own.
uint32_t drawingObjectsOf(HANDLE process);
