#include "job/JobIconPlatform.h"

#include "raw/RawWinText.h"
#include "win/WinDialog.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

namespace JobLayer {

using RawLayer::RawPlatformText;

namespace {

class Platform : public JobIconPlatform {
 public:
  JobIconOwner builtInIcon(BuiltIn resource, WinLayer::WinSize size) override {
    return JobIconOwner(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                   IMAGE_ICON, size.width, size.height, LR_DEFAULTCOLOR));
  }

  // The size is asked of the file itself, so that its image of that size is taken and no other is
  // scaled.
  JobIconOwner fileIcon(const RawString& file, int32_t iconIndex, WinLayer::WinSize size) override {
    HICON icon = nullptr;
    const RawPlatformText path(file, RawString::PlatformWide);
    const UINT count = PrivateExtractIconsW(RawLayer::wideOf(path), iconIndex, size.width,
                                            size.height, &icon, nullptr, 1, 0);
    constexpr UINT NoFile = 0xFFFFFFFF;
    return JobIconOwner(count == NoFile ? nullptr : icon);
  }

  JobIconOwner documentIcon(const RawString& file) override {
    SHFILEINFOW info{};
    const RawPlatformText path(file, RawString::PlatformWide);
    const DWORD_PTR found = SHGetFileInfoW(RawLayer::wideOf(path), 0, &info, sizeof info,
                                           SHGFI_ICON | SHGFI_USEFILEATTRIBUTES);
    return JobIconOwner(found == 0 ? nullptr : info.hIcon);
  }

  // The shell wants it. Main thread and icon thread know nothing of each other's objects.
  void enterThread() override {
    isEntered_ =
        SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
  }
  void leaveThread() override {
    if (isEntered_) CoUninitialize();
  }

  void postCommand(WinLayer::WinDialog& dialog, uint16_t command) override {
    PostMessageW(dialog.window, WM_COMMAND, MAKEWPARAM(dialog.identifier, command), 0);
  }

 private:
  bool isEntered_ = false; // the icon thread's
};

} // namespace

void JobIconCloser::close(Handle handle) {
  DestroyIcon(static_cast<HICON>(handle));
}

JobIconPlatform& JobIconPlatform::instance() {
  static Platform platform;
  return platform;
}

} // namespace JobLayer
