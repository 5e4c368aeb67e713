#include "ProfilePeer.h"

#include <windows.h>

namespace ProfilePeer {

const char* name() {
  return "GetPrivateProfileStringW";
}
double goal() {
  return 1.0 / 2;
}

static std::wstring wide(const char* text) {
  wchar_t buffer[MAX_PATH] = {};
  MultiByteToWideChar(CP_UTF8, 0, text, -1, buffer, MAX_PATH - 1);
  return buffer;
}

int read(const std::string& path, const char* section, const char* key) {
  const std::wstring file = wide(path.c_str());
  // It remembers the last files; nothing but null pointers makes it forget this one.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, file.c_str());
  wchar_t value[1024];
  return static_cast<int>(GetPrivateProfileStringW(wide(section).c_str(), wide(key).c_str(), L"",
                                                   value, 1024, file.c_str()));
}

} // namespace ProfilePeer
