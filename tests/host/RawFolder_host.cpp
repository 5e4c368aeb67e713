// Folders on the host: the whole folder is read at the start, with "." and ".." in front and the
// names in the order of the product's file system.
#include "raw/RawFolder.h"

#include "HostFaults.h"
#include "HostPath.h"
#include "raw/RawFile.h"
#include "raw/RawFolderFind.h"

#include <algorithm>
#include <dirent.h>
#include <strings.h>
#include <sys/stat.h>
#include <vector>

namespace RawLayer {

namespace {

struct Search {
  std::string folder;
  std::vector<std::string> names;
  std::size_t position = 0;
};

uint64_t fileTime(const timespec& time) {
  constexpr uint64_t SecondsFrom1601 = 11644473600;
  constexpr uint64_t StepsPerSecond = 10000000;
  return (static_cast<uint64_t>(time.tv_sec) + SecondsFrom1601) * StepsPerSecond +
         static_cast<uint64_t>(time.tv_nsec) / 100;
}

// False for an entry that has gone since the folder was read.
bool fill(RawFindFileData& entry, const std::string& folder, const std::string& name) {
  struct stat status;
  if (stat((folder + name).c_str(), &status) != 0) return false;
  const bool isFolder = S_ISDIR(status.st_mode);
  entry.attributes = isFolder                          ? RawAttributeFolder
                     : (status.st_mode & S_IWUSR) == 0 ? RawAttributeReadOnly
                                                       : RawAttributeNormal;
  entry.writeTime = fileTime(status.st_mtim);
  entry.createTime = fileTime(status.st_ctim);
  entry.accessTime = fileTime(status.st_atim);
  entry.size = isFolder ? 0 : static_cast<uint64_t>(status.st_size);
  entry.name = RawString::fromChars(name.c_str());
  return true;
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  DIR* stream = opendir(folder.empty() ? "." : folder.c_str());
  if (stream == nullptr) return names;
  while (const dirent* entry = readdir(stream)) names.emplace_back(entry->d_name);
  closedir(stream);
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const auto isDots = [](const std::string& name) { return name == "." || name == ".."; };
    if (isDots(a) != isDots(b)) return isDots(a);
    const int order = strcasecmp(a.c_str(), b.c_str());
    return order != 0 ? order < 0 : a < b;
  });
  return names;
}

bool step(Search& search, RawFindFileData& entry) {
  while (search.position < search.names.size())
    if (fill(entry, search.folder, search.names[search.position++])) return true;
  return false;
}

} // namespace

RawFindCloser::Handle RawFindCloser::none() {
  return nullptr;
}

void RawFindCloser::close(Handle handle) {
  delete static_cast<Search*>(handle);
}

RawFindOwner findFirstEntry(const RawString& pattern, RawFindFileData& entry) {
  if (HostFaults::fails(HostFaults::Walk)) return RawFindOwner();
  const std::string path = hostPath(pattern);
  const std::size_t separator = path.rfind('/');
  const std::string folder = separator == std::string::npos ? "" : path.substr(0, separator + 1);
  auto* search = new Search{folder, namesIn(folder)};
  RawFindOwner owner(search);
  return step(*search, entry) ? std::move(owner) : RawFindOwner();
}

bool findNextEntry(const RawFindOwner& search, const RawString&, RawFindFileData& entry) {
  if (HostFaults::fails(HostFaults::Walk)) return false;
  return step(*static_cast<Search*>(search.get()), entry);
}

} // namespace RawLayer
