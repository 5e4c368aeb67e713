// What one process holds at a moment, as the platform tells it.
#pragma once

#include <cstdint>

struct SoakFigures {
  int64_t allocated = 0; // bytes of the heaps in use
  int64_t resident = 0;  // bytes of memory that the process holds; 0 where it means nothing
  int64_t handles = 0;   // files, events, threads and what else counts
  int64_t gui = 0;       // objects for drawing, windows and menus; 0 on the host
};

// Asked while no other thread of the process does anything.
SoakFigures soakFigures();
