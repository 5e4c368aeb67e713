#include "raw/RawMemoryDump.h"
#include "raw/RawPath.h"
#include "raw/RawSystem.h"
#include "raw/RawThread.h"

namespace RawLayer {

static RawString stampOf(const RawMoment& moment) {
  const auto digits = [](int32_t value, int32_t width) {
    return RawString::fromDigits(static_cast<uint64_t>(value), 10, width);
  };
  RawString stamp = digits(moment.year, 4);
  stamp.append5(digits(moment.month, 2), digits(moment.day, 2), "_"_text, digits(moment.hour, 2),
                digits(moment.minute, 2));
  stamp.append5(digits(moment.second, 2), "_"_text, digits(moment.milliseconds, 3));
  return stamp;
}

void RawThreadDump::onException(void* exceptionPointers) {
  const RawString path = dumpPath();
  if (path.isEmpty()) return;
  makeFolders(folderOf(path));
  const RawFileOwner file = openFile(path, RawAccessWrite, RawShareNone, RawCreateAlways);
  if (file) writeMemoryDump(file, exceptionPointers);
}

RawString RawThreadDump::dumpPath() const {
  RawString path = folder;
  // Not joinPath, which gives an empty folder no separator.
  if (!isSeparatorAt(folder, folder.length() - 1)) path.append("\\"_text);
  path.append5(name, "_"_text, "Dump"_text, "_"_text, stampOf(utcTime()));
  path.append5("."_text, "dmp"_text);
  return path;
}

} // namespace RawLayer
