#include "raw/RawSystem.h"

#include "raw/RawPath.h"
#include "raw/RawWinText.h"

#include <windows.h>

#include <shlobj.h>

namespace RawLayer {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t)); // what raw/RawWinText.h rests on
static_assert(RawFolderDesktop == CSIDL_DESKTOP && RawFolderAppData == CSIDL_APPDATA);

constexpr int32_t PathUnits = MAX_PATH;
constexpr int32_t ComputerNameUnits = MAX_COMPUTERNAME_LENGTH;
constexpr int32_t UserNameUnits = 260;

RawMoment momentOf(const SYSTEMTIME& time) {
  return {time.wYear,   time.wMonth,  time.wDay,         time.wHour,
          time.wMinute, time.wSecond, time.wMilliseconds};
}

// For the calls whose size argument goes in and out.
template <class Unit>
auto sized(BOOL(WINAPI* call)(Unit*, DWORD*)) {
  return [call](Unit* buffer, int32_t room) {
    DWORD size = static_cast<DWORD>(room);
    return call(buffer, &size) != 0;
  };
}

} // namespace

RawMoment localTime() {
  SYSTEMTIME time;
  GetLocalTime(&time);
  return momentOf(time);
}

RawMoment utcTime() {
  SYSTEMTIME time;
  GetSystemTime(&time);
  return momentOf(time);
}

int32_t localOffsetMinutes() {
  TIME_ZONE_INFORMATION zone;
  const DWORD season = GetTimeZoneInformation(&zone);
  if (season == TIME_ZONE_ID_INVALID) return 0;
  const LONG seasonal = season == TIME_ZONE_ID_DAYLIGHT   ? zone.DaylightBias
                        : season == TIME_ZONE_ID_STANDARD ? zone.StandardBias
                                                          : 0;
  return static_cast<int32_t>(-(zone.Bias + seasonal));
}

RawString moduleName(int32_t encoding) {
  return queryText(
      encoding, PathUnits,
      [](char* buffer, int32_t room) { return GetModuleFileNameA(nullptr, buffer, room) != 0; },
      [](wchar_t* buffer, int32_t room) { return GetModuleFileNameW(nullptr, buffer, room) != 0; });
}

RawString computerName(int32_t encoding) {
  return queryText(encoding, ComputerNameUnits, sized(GetComputerNameA), sized(GetComputerNameW),
                   "host"_text);
}

RawString userName(int32_t encoding) {
  return queryText(encoding, UserNameUnits, sized(GetUserNameA), sized(GetUserNameW), "host"_text);
}

RawString tempFolder(int32_t encoding) {
  const auto fits = [](DWORD size, int32_t room) {
    return size != 0 && size < static_cast<DWORD>(room);
  };
  const RawString folder = queryText(
      platformEncoding(encoding), PathUnits,
      [fits](char* buffer, int32_t room) { return fits(GetTempPathA(room, buffer), room); },
      [fits](wchar_t* buffer, int32_t room) { return fits(GetTempPathW(room, buffer), room); });
  return withoutTrailingSeparator(folder).shareAs(encoding);
}

RawString specialFolder(int32_t folderNumber, int32_t encoding) {
  return queryText(
      encoding, PathUnits,
      [folderNumber](char* buffer, int32_t) {
        return SHGetSpecialFolderPathA(nullptr, buffer, folderNumber, FALSE) != 0;
      },
      [folderNumber](wchar_t* buffer, int32_t) {
        return SHGetSpecialFolderPathW(nullptr, buffer, folderNumber, FALSE) != 0;
      });
}

RawString commandLine() {
  return RawString::fromWide(reinterpret_cast<const char16_t*>(GetCommandLineW()))
      .shareAs(EncodingUtf8);
}

uint16_t userLanguage() {
  return GetUserDefaultUILanguage();
}

bool isKeyDown(int32_t virtualKey) {
  return GetKeyState(virtualKey) < 0;
}

bool isKeyDownNow(int32_t virtualKey) {
  return GetAsyncKeyState(virtualKey) < 0;
}

void messageBox(const RawString& caption, const RawString& text) {
  const int32_t form =
      RawString::combinePlatformClasses(caption.classifyForPlatform(), text.classifyForPlatform());
  const RawPlatformText title(caption, form);
  const RawPlatformText body(text, form);
  if (body.isWide())
    MessageBoxW(nullptr, wideOf(body), wideOf(title), MB_OK | MB_ICONEXCLAMATION);
  else
    MessageBoxA(nullptr, body.narrow(), title.narrow(), MB_OK | MB_ICONEXCLAMATION);
}

} // namespace RawLayer
