// TestKeys: keys that are down for the length of a test, by their virtual codes.
#pragma once

#ifdef _WIN32
#include <windows.h>

#include <vector>
#else
#include "host/HostSystem.h"
#endif

class TestKeys {
 public:
  TestKeys() = default;
  TestKeys(const TestKeys&) = delete;
  TestKeys& operator=(const TestKeys&) = delete;
#ifdef _WIN32
  ~TestKeys() {
    for (const int key : pressed_) send(key, KEYEVENTF_KEYUP);
  }
  void press(int virtualKey) {
    send(virtualKey, 0);
    pressed_.push_back(virtualKey);
  }

 private:
  static void send(int virtualKey, DWORD flags) {
    const auto key = static_cast<BYTE>(virtualKey);
    if (key == VK_RSHIFT || key == VK_RCONTROL) flags |= KEYEVENTF_EXTENDEDKEY;
    keybd_event(key, static_cast<BYTE>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)), flags, 0);
    // The state of this thread's keys follows its messages.
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
    }
  }
  std::vector<int> pressed_;
#else
  void press(int virtualKey) {
    system_.setKey(virtualKey, true);
  }

 private:
  HostSystem::Scope system_;
#endif
};
