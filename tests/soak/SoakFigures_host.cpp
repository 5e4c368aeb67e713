#include "soak/SoakFigures.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#include <sanitizer/allocator_interface.h>
#define SOAK_SANITIZED 1
#endif
#endif

namespace {

int64_t entriesIn(const char* folder) {
  int64_t count = 0;
  std::error_code error;
  for (std::filesystem::directory_iterator i(folder, error), end; i != end; ++i) ++count;
  return count;
}

} // namespace

SoakFigures soakFigures() {
  SoakFigures figures;
#ifdef SOAK_SANITIZED
  // Resident is what the sanitizer keeps back, too.
  figures.allocated = static_cast<int64_t>(__sanitizer_get_current_allocated_bytes());
#else
  malloc_trim(0);
  const struct mallinfo2 heap = mallinfo2();
  figures.allocated = static_cast<int64_t>(heap.uordblks + heap.hblkhd);
  int64_t size = 0;
  std::ifstream("/proc/self/statm") >> size >> figures.resident;
  figures.resident *= sysconf(_SC_PAGESIZE);
#endif
  figures.handles = entriesIn("/proc/self/fd") + entriesIn("/proc/self/task");
  return figures;
}
