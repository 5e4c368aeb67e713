#include "raw/RawFolder.h"

#include "raw/RawFolderFind.h"

#include <windows.h>

namespace RawLayer {

namespace {

uint64_t joined(DWORD high, DWORD low) {
  return (static_cast<uint64_t>(high) << 32) | low;
}
uint64_t joined(const FILETIME& time) {
  return joined(time.dwHighDateTime, time.dwLowDateTime);
}

RawString nameOfData(const WIN32_FIND_DATAA& data) {
  return RawString::fromBytes(EncodingAnsi, data.cFileName, lstrlenA(data.cFileName))
      .shareAs(EncodingUtf8);
}
RawString nameOfData(const WIN32_FIND_DATAW& data) {
  return RawString::fromWide(reinterpret_cast<const char16_t*>(data.cFileName))
      .shareAs(EncodingUtf8);
}

template <class Data>
void fill(RawFindFileData& entry, const Data& data) {
  entry.attributes = data.dwFileAttributes;
  entry.writeTime = joined(data.ftLastWriteTime);
  entry.createTime = joined(data.ftCreationTime);
  entry.accessTime = joined(data.ftLastAccessTime);
  entry.size = joined(data.nFileSizeHigh, data.nFileSizeLow);
  entry.name = nameOfData(data);
}

bool isNarrow(const RawString& pattern) {
  return pattern.encoding() == EncodingShiftJis;
}

} // namespace

RawFindCloser::Handle RawFindCloser::none() {
  return INVALID_HANDLE_VALUE;
}

void RawFindCloser::close(Handle handle) {
  FindClose(handle);
}

RawFindOwner findFirstEntry(const RawString& pattern, RawFindFileData& entry) {
  const auto start = [&entry](auto call, auto* path, auto data) {
    RawFindOwner search(
        call(path, FindExInfoBasic, &data, FindExSearchNameMatch, nullptr, DWORD{0}));
    if (search) fill(entry, data);
    return search;
  };
  if (isNarrow(pattern)) return start(FindFirstFileExA, pattern.text(), WIN32_FIND_DATAA());
  const RawString wide = pattern.shareAs(EncodingWide);
  return start(FindFirstFileExW, reinterpret_cast<const wchar_t*>(wide.wide()), WIN32_FIND_DATAW());
}

bool findNextEntry(const RawFindOwner& search, const RawString& pattern, RawFindFileData& entry) {
  const auto step = [&](auto call, auto data) {
    if (!call(search.get(), &data)) return false;
    fill(entry, data);
    return true;
  };
  return isNarrow(pattern) ? step(FindNextFileA, WIN32_FIND_DATAA())
                           : step(FindNextFileW, WIN32_FIND_DATAW());
}

} // namespace RawLayer
