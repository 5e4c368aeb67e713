#include "raw/RawSystem.h"

#include "HostFaults.h"
#include "HostSystem.h"
#include "raw/RawPath.h"

#include <climits>
#include <cstdlib>
#include <ctime>
#include <sys/time.h>
#include <unistd.h>

namespace HostSystem {

namespace {

RawString fromHost(const char* text) {
  return RawString::fromChars(text);
}

RawString programPath() {
  char path[PATH_MAX];
  const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
  return RawString::fromChars(path, static_cast<int32_t>(size));
}

RawString environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return fromHost(value != nullptr && *value != 0 ? value : otherwise);
}

} // namespace

Facts::Facts()
    : moduleName(programPath()), computerName(fromHost("tester")), userName(fromHost("someone")),
      tempFolder(environment("TMPDIR", "/tmp")), commandLine(fromHost("program")) {
  userFolder = RawString::concat(tempFolder, fromHost("/TarvellonTests/User"));
  desktop = RawString::concat(tempFolder, fromHost("/TarvellonTests/Desktop"));
}

// Never destroyed: other statics' destructors may still ask.
State& state() {
  static State& only = *new State;
  return only;
}

} // namespace HostSystem

namespace RawLayer {

namespace {

using HostSystem::state;

RawMoment momentOf(const std::tm& parts, int32_t milliseconds) {
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
          parts.tm_min,         parts.tm_sec,     milliseconds};
}

std::time_t secondsOf(const RawMoment& moment) {
  std::tm parts{};
  parts.tm_year = moment.year - 1900;
  parts.tm_mon = moment.month - 1;
  parts.tm_mday = moment.day;
  parts.tm_hour = moment.hour;
  parts.tm_min = moment.minute;
  parts.tm_sec = moment.second;
  return timegm(&parts);
}

// The fixed clock's moment so many minutes ahead of UTC.
RawMoment fixedMoment(const RawMoment& utc, int32_t offsetMinutes) {
  const std::time_t seconds = secondsOf(utc) + std::time_t{offsetMinutes} * 60;
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  return momentOf(parts, utc.milliseconds);
}

RawMoment runningMoment(bool local) {
  timeval now{};
  gettimeofday(&now, nullptr);
  std::tm parts{};
  local ? localtime_r(&now.tv_sec, &parts) : gmtime_r(&now.tv_sec, &parts);
  return momentOf(parts, static_cast<int32_t>(now.tv_usec / 1000));
}

RawString fact(const RawString& value, int32_t encoding, const RawString& otherwise) {
  return (HostFaults::fails(HostFaults::Query) ? otherwise : value).shareAs(encoding);
}

} // namespace

RawMoment localTime() {
  const std::lock_guard lock(state().lock);
  return state().utc ? fixedMoment(*state().utc, state().offsetMinutes) : runningMoment(true);
}

RawMoment utcTime() {
  const std::lock_guard lock(state().lock);
  return state().utc ? *state().utc : runningMoment(false);
}

int32_t localOffsetMinutes() {
  const std::lock_guard lock(state().lock);
  if (state().utc) return state().offsetMinutes;
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return static_cast<int32_t>(parts.tm_gmtoff / 60);
}

RawString moduleName(int32_t encoding) {
  return fact(state().facts.moduleName, encoding, RawString::emptyStatic());
}

RawString computerName(int32_t encoding) {
  return fact(state().facts.computerName, encoding, "host"_text);
}

RawString userName(int32_t encoding) {
  return fact(state().facts.userName, encoding, "host"_text);
}

RawString tempFolder(int32_t encoding) {
  const RawString folder = fact(state().facts.tempFolder, EncodingUtf8, RawString::emptyStatic());
  return withoutTrailingSeparator(folder).shareAs(encoding);
}

RawString specialFolder(int32_t folderNumber, int32_t encoding) {
  const auto& facts = state().facts;
  return fact(folderNumber == RawFolderDesktop   ? facts.desktop
              : folderNumber == RawFolderAppData ? facts.userFolder
                                                 : RawString::emptyStatic(),
              encoding, RawString::emptyStatic());
}

RawString commandLine() {
  return state().facts.commandLine;
}

uint16_t userLanguage() {
  return state().facts.language;
}

bool isKeyDown(int32_t virtualKey) {
  return virtualKey >= 0 && virtualKey < 256 && state().keys[static_cast<std::size_t>(virtualKey)];
}

bool isKeyDownNow(int32_t virtualKey) {
  return isKeyDown(virtualKey);
}

void messageBox(const RawString& caption, const RawString& text) {
  const std::lock_guard lock(state().lock);
  state().messages.push_back({caption, text});
}

} // namespace RawLayer
