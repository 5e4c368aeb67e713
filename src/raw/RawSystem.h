// What the system says of itself: names, folders, command line, language, time. Any thread; no
// state. A query that fails gives the text named here.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// A moment on the clock, local or UTC.
struct RawMoment {
  int32_t year = 0;
  int32_t month = 0; // from 1
  int32_t day = 0;   // from 1
  int32_t hour = 0;
  int32_t minute = 0;
  int32_t second = 0;
  int32_t milliseconds = 0;
};
RawMoment localTime();
RawMoment utcTime();
int32_t localOffsetMinutes(); // local time less UTC, now

inline constexpr int32_t RawFolderDesktop = 0x00;
inline constexpr int32_t RawFolderAppData = 0x1A;

// Full path of the executable, 260 units at most; empty on failure.
RawString moduleName(int32_t encoding = EncodingUtf8);
RawString computerName(int32_t encoding = EncodingUtf8); // "host" on failure
RawString userName(int32_t encoding = EncodingUtf8);     // "host" on failure
RawString tempFolder(int32_t encoding = EncodingUtf8);   // without trailing separator
// The folder that the platform knows by the number, 260 units at most; it need not exist.
RawString specialFolder(int32_t folderNumber, int32_t encoding = EncodingUtf8); // empty on failure
RawString userFolder(int32_t encoding = EncodingUtf8);                          // application data
// The whole command line of the process, the program's own name in front; EncodingUtf8.
RawString commandLine();
// What stands behind the program's own name (which may be quoted) and the white space around it.
RawString stripProgramName(const RawString& commandLine);
uint16_t userLanguage();               // id of the user's interface language
bool isKeyDown(int32_t virtualKey);    // by the state of this thread's input
bool isKeyDownNow(int32_t virtualKey); // by the state of the keyboard at this moment
// Modal message box without an owner, exclamation icon and OK.
void messageBox(const RawString& caption, const RawString& text);

} // namespace RawLayer
