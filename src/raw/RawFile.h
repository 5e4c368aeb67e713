// Files behind the platform's calls: opening, reading, writing, moving, testing.
//
// Every function takes paths as texts of any encoding and chooses the narrow or the wide call by
// RawString::classifyForPlatform. Any thread; no state. Failure is false, an invalid owner or
// RawNoAttributes; the reason is not kept.
#pragma once

#include "raw/RawOwner.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawFileCloser {
  using Handle = void*;
  static Handle none(); // the platform's invalid file handle
  static void close(Handle handle);
};
using RawFileOwner = RawOwner<RawFileCloser>;

enum RawFileAccess : uint32_t { RawAccessRead = 0x80000000, RawAccessWrite = 0x40000000 };
enum RawFileShare : uint32_t { RawShareNone = 0, RawShareRead = 1, RawShareReadWrite = 3 };
enum RawFileDisposition : uint32_t { RawCreateNew = 1, RawCreateAlways = 2, RawOpenExisting = 3 };
inline constexpr uint32_t RawAttributeNormal = 0x80;
inline constexpr uint32_t RawAttributeReadOnly = 0x01;
inline constexpr uint32_t RawAttributeFolder = 0x10;
inline constexpr uint32_t RawNoAttributes = 0xFFFFFFFF;

// Invalid when the file could not be opened; a folder cannot.
RawFileOwner openFile(const RawString& path, uint32_t access, uint32_t share, uint32_t disposition,
                      uint32_t flags = RawAttributeNormal);
// Bytes read, 0 at the end of the file, -1 on failure. May be less than `size` in the middle of a
// file.
int32_t readFile(const RawFileOwner& file, void* target, int32_t size);
// True when all bytes were written.
bool writeFile(const RawFileOwner& file, const void* data, int32_t size);
// Moves the file pointer by so many bytes from where it stands.
bool seekFile(const RawFileOwner& file, int64_t distance);
bool flushFile(const RawFileOwner& file);

uint32_t fileAttributes(const RawString& path); // RawNoAttributes when there is nothing
inline bool exists(const RawString& path) {
  return fileAttributes(path) != RawNoAttributes;
}
inline bool isFile(const RawString& path) { // exists and is no folder
  return (fileAttributes(path) & RawAttributeFolder) == 0;
}
inline bool isFolder(const RawString& path) { // exists and is a folder
  const uint32_t attributes = fileAttributes(path);
  return attributes != RawNoAttributes && (attributes & RawAttributeFolder) != 0;
}
bool deleteFile(const RawString& path);
// Written through to the disk; never onto an existing file.
bool moveFile(const RawString& from, const RawString& to);
// `replacement` takes the place and the attributes of `path`. Both exist. Without a backup name it
// is one step, for any reader and for a process that is killed in it; with one, the old file gets
// that name.
bool replaceFile(const RawString& path, const RawString& replacement,
                 const RawString& backup = RawString::emptyStatic());
bool createFolder(const RawString& path); // one level

} // namespace RawLayer
