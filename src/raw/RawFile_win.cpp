#include "raw/RawFile.h"

#include "raw/RawWinText.h"

#include <windows.h>

namespace RawLayer {

static_assert(RawAccessRead == GENERIC_READ && RawAccessWrite == GENERIC_WRITE);
static_assert(RawShareReadWrite == (FILE_SHARE_READ | FILE_SHARE_WRITE));
static_assert(RawCreateAlways == CREATE_ALWAYS && RawOpenExisting == OPEN_EXISTING);
static_assert(RawNoAttributes == INVALID_FILE_ATTRIBUTES);

RawFileCloser::Handle RawFileCloser::none() {
  return INVALID_HANDLE_VALUE;
}

void RawFileCloser::close(Handle handle) {
  CloseHandle(handle);
}

RawFileOwner openFile(const RawString& path, uint32_t access, uint32_t share, uint32_t disposition,
                      uint32_t flags) {
  const RawPlatformText file(path);
  return RawFileOwner(
      file.isWide()
          ? CreateFileW(wideOf(file), access, share, nullptr, disposition, flags, nullptr)
          : CreateFileA(file.narrow(), access, share, nullptr, disposition, flags, nullptr));
}

int32_t readFile(const RawFileOwner& file, void* target, int32_t size) {
  DWORD count = 0;
  if (size < 0 || !ReadFile(file.get(), target, static_cast<DWORD>(size), &count, nullptr))
    return -1;
  return static_cast<int32_t>(count);
}

bool writeFile(const RawFileOwner& file, const void* data, int32_t size) {
  DWORD count = 0;
  return size >= 0 && WriteFile(file.get(), data, static_cast<DWORD>(size), &count, nullptr) &&
         count == static_cast<DWORD>(size);
}

bool seekFile(const RawFileOwner& file, int64_t distance) {
  LARGE_INTEGER bytes;
  bytes.QuadPart = distance;
  return SetFilePointerEx(file.get(), bytes, nullptr, FILE_CURRENT) != 0;
}

bool flushFile(const RawFileOwner& file) {
  return FlushFileBuffers(file.get()) != 0;
}

uint32_t fileAttributes(const RawString& path) {
  const RawPlatformText file(path);
  return file.isWide() ? GetFileAttributesW(wideOf(file)) : GetFileAttributesA(file.narrow());
}

bool deleteFile(const RawString& path) {
  const RawPlatformText file(path);
  return (file.isWide() ? DeleteFileW(wideOf(file)) : DeleteFileA(file.narrow())) != 0;
}

bool moveFile(const RawString& from, const RawString& to) {
  const int32_t both =
      RawString::combinePlatformClasses(from.classifyForPlatform(), to.classifyForPlatform());
  const RawPlatformText source(from, both);
  const RawPlatformText target(to, both);
  return (source.isWide()
              ? MoveFileExW(wideOf(source), wideOf(target), MOVEFILE_WRITE_THROUGH)
              : MoveFileExA(source.narrow(), target.narrow(), MOVEFILE_WRITE_THROUGH)) != 0;
}

// The platform's ReplaceFile moves the old file away before it moves the new one in: a process that
// is killed between the two leaves no file of that name. A rename onto the file has no such moment,
// but brings no attributes, so they go first.
static bool renameOnto(const RawString& path, const RawPlatformText& target,
                       const RawPlatformText& source) {
  constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  const DWORD found = fileAttributes(path);
  if (found == RawNoAttributes || (found & (RawAttributeReadOnly | RawAttributeFolder)) != 0)
    return false;
  DWORD attributes = found & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                              FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED);
  if (attributes == 0) attributes = RawAttributeNormal;
  if (target.isWide())
    return SetFileAttributesW(wideOf(source), attributes) != 0 &&
           MoveFileExW(wideOf(source), wideOf(target), flags) != 0;
  return SetFileAttributesA(source.narrow(), attributes) != 0 &&
         MoveFileExA(source.narrow(), target.narrow(), flags) != 0;
}

bool replaceFile(const RawString& path, const RawString& replacement, const RawString& backup) {
  const int32_t all = RawString::combinePlatformClasses(
      path.classifyForPlatform(), replacement.classifyForPlatform(), backup.classifyForPlatform());
  const RawPlatformText target(path, all);
  const RawPlatformText source(replacement, all);
  if (backup.isEmpty()) return renameOnto(path, target, source);
  const RawPlatformText kept(backup, all);
  if (target.isWide())
    return ReplaceFileW(wideOf(target), wideOf(source), wideOf(kept), 0, nullptr, nullptr) != 0;
  return ReplaceFileA(target.narrow(), source.narrow(), kept.narrow(), 0, nullptr, nullptr) != 0;
}

bool createFolder(const RawString& path) {
  const RawPlatformText folder(path);
  return (folder.isWide() ? CreateDirectoryW(wideOf(folder), nullptr)
                          : CreateDirectoryA(folder.narrow(), nullptr)) != 0;
}

} // namespace RawLayer
