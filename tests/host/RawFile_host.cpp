// Files on the host. Sharing is kept as the product's platform has it, within this process: a file
// held open refuses what its share does not name, and can be neither deleted nor replaced.
#include "raw/RawFile.h"

#include "HostFaults.h"
#include "HostPath.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace RawLayer {

namespace {

struct OpenFile {
  int descriptor;
  dev_t device;
  ino_t node;
  uint32_t access;
  uint32_t share;
};

struct OpenFiles {
  std::mutex lock;
  std::vector<OpenFile> list;
};

// Never destroyed: a file may be closed by another static's destructor.
OpenFiles& openFiles() {
  static OpenFiles& files = *new OpenFiles;
  return files;
}

// The bits of a share that an access needs from the others who hold the file.
uint32_t neededShare(uint32_t access) {
  return ((access & RawAccessRead) != 0 ? 1u : 0u) | ((access & RawAccessWrite) != 0 ? 2u : 0u);
}

// Called with the lock held.
bool mayOpen(const struct stat& status, uint32_t access, uint32_t share) {
  for (const OpenFile& open : openFiles().list) {
    if (open.device != status.st_dev || open.node != status.st_ino) continue;
    if ((neededShare(access) & ~open.share) != 0 || (neededShare(open.access) & ~share) != 0)
      return false;
  }
  return true;
}

// Whether a handle is open on the file; called with the lock held.
bool isHeld(const struct stat& status) {
  for (const OpenFile& open : openFiles().list)
    if (open.device == status.st_dev && open.node == status.st_ino) return true;
  return false;
}

// The owner's bit counts, so that a read-only file is one for root, too.
bool isReadOnly(const struct stat& status) {
  return (status.st_mode & S_IWUSR) == 0;
}

bool mayVanish(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && !isReadOnly(status) && !isHeld(status);
}

int descriptorOf(const RawFileOwner& file) {
  return static_cast<int>(reinterpret_cast<intptr_t>(file.get()));
}

} // namespace

RawFileCloser::Handle RawFileCloser::none() {
  return reinterpret_cast<Handle>(intptr_t{-1});
}

void RawFileCloser::close(Handle handle) {
  const int descriptor = static_cast<int>(reinterpret_cast<intptr_t>(handle));
  const std::lock_guard scope(openFiles().lock);
  std::erase_if(openFiles().list,
                [descriptor](const OpenFile& open) { return open.descriptor == descriptor; });
  ::close(descriptor);
}

RawFileOwner openFile(const RawString& path, uint32_t access, uint32_t share, uint32_t disposition,
                      uint32_t) {
  if (HostFaults::fails(HostFaults::Open)) return RawFileOwner();
  const std::string name = hostPath(path);
  const std::lock_guard scope(openFiles().lock);
  struct stat status;
  const bool there = stat(name.c_str(), &status) == 0;
  if (there ? disposition == RawCreateNew : disposition == RawOpenExisting) return RawFileOwner();
  const bool writes = (access & RawAccessWrite) != 0;
  if (there && (S_ISDIR(status.st_mode) || (writes && isReadOnly(status)) ||
                !mayOpen(status, access, share)))
    return RawFileOwner();
  const bool reads = (access & RawAccessRead) != 0;
  int flags = (writes ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY) | O_CLOEXEC;
  if (disposition != RawOpenExisting) flags |= O_CREAT | O_TRUNC;
  const int descriptor = ::open(name.c_str(), flags, 0644);
  if (descriptor < 0) return RawFileOwner();
  fstat(descriptor, &status);
  openFiles().list.push_back({descriptor, status.st_dev, status.st_ino, access, share});
  return RawFileOwner(reinterpret_cast<void*>(static_cast<intptr_t>(descriptor)));
}

int32_t readFile(const RawFileOwner& file, void* target, int32_t size) {
  if (size < 0 || HostFaults::fails(HostFaults::Read)) return -1;
  const auto wanted = static_cast<std::size_t>(HostFaults::readSize(size));
  const ssize_t count = ::read(descriptorOf(file), target, wanted);
  return count < 0 ? -1 : static_cast<int32_t>(count);
}

bool writeFile(const RawFileOwner& file, const void* data, int32_t size) {
  if (size < 0 || HostFaults::fails(HostFaults::Write)) return false;
  return ::write(descriptorOf(file), data, static_cast<std::size_t>(size)) == size;
}

bool seekFile(const RawFileOwner& file, int64_t distance) {
  if (HostFaults::fails(HostFaults::Seek)) return false;
  return ::lseek(descriptorOf(file), distance, SEEK_CUR) >= 0;
}

bool flushFile(const RawFileOwner& file) {
  if (HostFaults::fails(HostFaults::Flush)) return false;
  // To the disk itself is not needed here and costs the tests seconds.
  return fcntl(descriptorOf(file), F_GETFD) >= 0;
}

uint32_t fileAttributes(const RawString& path) {
  struct stat status;
  if (HostFaults::fails(HostFaults::Attributes)) return RawNoAttributes;
  if (stat(hostPath(path).c_str(), &status) != 0) return RawNoAttributes;
  if (S_ISDIR(status.st_mode)) return RawAttributeFolder;
  return isReadOnly(status) ? RawAttributeReadOnly : RawAttributeNormal;
}

bool deleteFile(const RawString& path) {
  if (HostFaults::fails(HostFaults::Delete)) return false;
  const std::string name = hostPath(path);
  const std::lock_guard scope(openFiles().lock);
  return mayVanish(name) && ::unlink(name.c_str()) == 0;
}

bool moveFile(const RawString& from, const RawString& to) {
  if (HostFaults::fails(HostFaults::Move)) return false;
  const std::string source = hostPath(from);
  const std::lock_guard scope(openFiles().lock);
  struct stat status;
  if (stat(source.c_str(), &status) != 0 || isHeld(status)) return false;
  return ::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, hostPath(to).c_str(), RENAME_NOREPLACE) ==
         0;
}

bool replaceFile(const RawString& path, const RawString& replacement, const RawString& backup) {
  if (HostFaults::fails(HostFaults::Replace)) return false;
  const std::string target = hostPath(path);
  const std::string source = hostPath(replacement);
  const std::lock_guard scope(openFiles().lock);
  struct stat status;
  if (!mayVanish(source) || !mayVanish(target) || stat(target.c_str(), &status) != 0) return false;
  if (::chmod(source.c_str(), status.st_mode & 07777) != 0) return false;
  if (!backup.isEmpty()) {
    const std::string kept = hostPath(backup);
    ::unlink(kept.c_str());
    if (::link(target.c_str(), kept.c_str()) != 0) return false;
  }
  return ::rename(source.c_str(), target.c_str()) == 0;
}

bool createFolder(const RawString& path) {
  if (HostFaults::fails(HostFaults::CreateFolder)) return false;
  return ::mkdir(hostPath(path).c_str(), 0755) == 0;
}

} // namespace RawLayer
