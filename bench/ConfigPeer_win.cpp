// The platform's own profile reader, asked for one section.
#include "ConfigPeer.h"

#include <cwchar>
#include <vector>
#include <windows.h>

namespace ConfigPeer {

const char* name() {
  return "GetPrivateProfileSectionW";
}
double goal() {
  return 1.0 / 20;
}

static void open(const char* path, wchar_t (&wide)[MAX_PATH]) {
  MultiByteToWideChar(CP_UTF8, 0, path, -1, wide, MAX_PATH - 1);
  // It remembers the last files; nothing but null pointers makes it forget this one.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, wide);
}

int read(const char* path) {
  wchar_t wide[MAX_PATH] = {};
  open(path, wide);
  wchar_t values[1024];
  return static_cast<int>(GetPrivateProfileSectionW(L"Common", values, 1024, wide));
}

// The entries of a section stay in the block that the call fills: that is its tree.
static std::vector<std::vector<wchar_t>> sections;

int readTree(const char* path) {
  wchar_t wide[MAX_PATH] = {};
  open(path, wide);
  std::vector<wchar_t> names(1 << 20);
  GetPrivateProfileSectionNamesW(names.data(), static_cast<DWORD>(names.size()), wide);
  wchar_t values[4096];
  int entries = 0;
  for (const wchar_t* name = names.data(); *name != 0; name += std::wcslen(name) + 1) {
    const DWORD length = GetPrivateProfileSectionW(name, values, 4096, wide);
    sections.emplace_back(values, values + length);
    for (const wchar_t unit : sections.back()) entries += unit == 0 ? 1 : 0;
  }
  return entries;
}

void dropTree() {
  sections.clear();
}

} // namespace ConfigPeer
