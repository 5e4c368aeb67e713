#include "raw/RawShell.h"

namespace RawLayer {

bool RawShell::execute(const RawString& parameters, const RawString& verb) {
  process.reset();
  processId = 0;
  const bool bare = file.isEmpty();
  if (!shellExecute(verb, bare ? parameters : file, bare ? RawString::emptyStatic() : parameters,
                    directory, showMode, process))
    return false;
  processId = processIdOf(process);
  return true;
}

const RawShowMode* rawShowModes() {
  static constexpr RawShowMode modes[] = {
      {"Normal", 1}, {"Maximize", 3}, {"Minimize", 6}, {"Hide", 0}, {"", 1},
  };
  return modes;
}

} // namespace RawLayer
