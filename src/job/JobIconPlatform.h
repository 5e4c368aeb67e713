// JobIconPlatform: the platform's calls under JobIconControl. Tests put their own in its place.
//
// Any thread may call; nothing here takes a lock. A call may take as long as the disk, the network
// and the shell's extensions want.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawOwner.h"
#include "win/WinRect.h"

namespace WinLayer {
class WinDialog;
}

namespace JobLayer {

struct JobIconCloser {
  using Handle = void*; // the platform's icon
  static Handle none() { return nullptr; }
  static void close(Handle handle);
};
using JobIconOwner = RawLayer::RawOwner<JobIconCloser>;

class JobIconPlatform {
 public:
  enum BuiltIn : uint16_t { LoadingImage = 142, FailedImage = 143 }; // resources of the program

  static JobIconPlatform& instance(); // the real one
  virtual ~JobIconPlatform() = default;

  // Each gives none when there is no such icon. Sizes are pixels.
  virtual JobIconOwner builtInIcon(BuiltIn resource, WinLayer::WinSize size) = 0;
  // The icon of that number inside the file, the one for the size where it has several; a negative
  // number is a resource id.
  virtual JobIconOwner fileIcon(const RawString& file, int32_t iconIndex,
                                WinLayer::WinSize size) = 0;
  // The icon of the file's type, by the name alone: the file need not exist.
  virtual JobIconOwner documentIcon(const RawString& file) = 0;

  // Called at both ends of a thread that asks for icons.
  virtual void enterThread() {}
  virtual void leaveThread() {}
  // Sends the dialog a command as its children do, without waiting for it.
  virtual void postCommand(WinLayer::WinDialog& dialog, uint16_t command) = 0;
};

} // namespace JobLayer
