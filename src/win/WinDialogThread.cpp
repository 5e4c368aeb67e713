#include "win/WinDialog.h"

namespace WinLayer {

using RawLayer::RawLockScope;

namespace {
constexpr uint32_t Forever = 0xFFFFFFFF;
}

void WinDialogThread::startAndWait() {
  readyEvent_.reset();
  if (start()) readyEvent_.wait(Forever);
}

void WinDialogThread::stopAndWait() {
  if (const HWND standing = window) SendMessageW(standing, WM_DESTROY, 0, 0);
  waitForEnd();
}

bool WinDialogThread::isReady() {
  const RawLockScope scope(readyLock_);
  return ready_;
}

void WinDialogThread::setReady(bool value) {
  const RawLockScope scope(readyLock_);
  ready_ = value;
  readyEvent_.signal();
}

void WinDialogThread::run() {
  Create();
  setReady(window != nullptr);
  RunLoop();
  setReady(false);
}

} // namespace WinLayer
