// The host has no icons but the built-in images, each of one colour.
#include "job/JobIconPlatform.h"

#include "HostIcons.h"

namespace JobLayer {

namespace {

class Platform : public JobIconPlatform {
 public:
  JobIconOwner builtInIcon(BuiltIn resource, WinLayer::WinSize size) override {
    const auto count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    return JobIconOwner(new HostIcon{size, std::vector<uint32_t>(count, 0xFF000000u | resource),
                                     std::vector<uint32_t>(count, 0)});
  }
  JobIconOwner fileIcon(const RawString&, int32_t, WinLayer::WinSize) override { return {}; }
  JobIconOwner documentIcon(const RawString&) override { return {}; }
  void postCommand(WinLayer::WinDialog&, uint16_t) override {}
};

} // namespace

void JobIconCloser::close(Handle handle) {
  delete static_cast<HostIcon*>(handle);
}

JobIconPlatform& JobIconPlatform::instance() {
  static Platform platform;
  return platform;
}

} // namespace JobLayer
