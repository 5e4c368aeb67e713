#include "raw/RawSystem.h"

namespace RawLayer {

RawString userFolder(int32_t encoding) {
  return specialFolder(RawFolderAppData, encoding);
}

RawString stripProgramName(const RawString& commandLine) {
  int32_t position = commandLine.skipSet(0, RawString::lineSpace());
  bool quoted = false;
  while (position < commandLine.length()) {
    if (!quoted && commandLine.isOneOf(position, RawString::lineSpace())) break;
    if (commandLine.at(position) == '"') quoted = !quoted;
    ++position;
  }
  position = commandLine.skipSet(position, RawString::lineSpace());
  return RawString::fromRange(commandLine.encoding(), commandLine,
                              {position, commandLine.length()});
}

} // namespace RawLayer
