// The platform's own profile reader, asked for one section.
#include "ConfigPeer.h"

#include <windows.h>

namespace ConfigPeer {

const char* name() {
  return "GetPrivateProfileSectionW";
}
double goal() {
  return 1.0 / 20;
}

int read(const char* path) {
  wchar_t wide[MAX_PATH] = {};
  MultiByteToWideChar(CP_UTF8, 0, path, -1, wide, MAX_PATH - 1);
  // It remembers the last files; nothing but null pointers makes it forget this one.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, wide);
  wchar_t values[1024];
  return static_cast<int>(GetPrivateProfileSectionW(L"Common", values, 1024, wide));
}

} // namespace ConfigPeer
