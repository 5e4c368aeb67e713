// The icon control over a platform whose icons a test makes up: one colour for each file.
#pragma once

#include "TestFolder.h"
#include "TestIcon.h"
#include "TestText.h"
#include "job/JobIconControl.h"

#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace IconControlBed {

constexpr WinLayer::WinSize CellSize{4, 4};
constexpr uint32_t FailedColour = 0xFF000143;
constexpr uint32_t LoadingColour = 0xFF000142;
constexpr uint32_t PatienceMilliseconds = 20000;

// An icon of one colour that whoever takes it closes.
inline JobLayer::JobIconOwner newIcon(WinLayer::WinSize size, uint32_t colour) {
#if defined(_WIN32)
  const PlainIcon icon(size, colour);
  return JobLayer::JobIconOwner(CopyIcon(static_cast<HICON>(icon.get())));
#else
  return JobLayer::JobIconOwner(
      new HostIcon{size, TestPixels(testCount(size), colour), TestPixels(testCount(size), 0)});
#endif
}

template <class Condition>
bool comesTrue(Condition condition) {
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::milliseconds(PatienceMilliseconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    RawLayer::rawSleep(1);
  }
  return true;
}

class TestIcons : public JobLayer::JobIconPlatform {
 public:
  // A file has an icon when it is here.
  void set(const std::string& file, uint32_t colour) {
    const std::scoped_lock scope(lock_);
    colours_[file] = colour;
  }
  void remove(const std::string& file) {
    const std::scoped_lock scope(lock_);
    colours_.erase(file);
  }
  // "file NAME INDEX" or "document NAME" for each icon asked for, in order.
  [[nodiscard]] std::vector<std::string> calls() {
    const std::scoped_lock scope(lock_);
    return calls_;
  }
  // The commands posted so far.
  [[nodiscard]] std::vector<uint16_t> posted() {
    const std::scoped_lock scope(lock_);
    return posted_;
  }
  // While the gate is closed, no icon comes.
  void closeGate() { isGated_ = true; }
  void openGate() { gate_.signal(); }
  std::atomic<int32_t> waiting{0};     // callers at the gate
  std::atomic<bool> gateOpened{true};  // none had to give up at it
  std::atomic<int32_t> priority{-100}; // of the last thread that asked
  std::atomic<int32_t> threads{0};     // that were entered and not left

  JobLayer::JobIconOwner builtInIcon(BuiltIn resource, WinLayer::WinSize size) override {
    return newIcon(size, resource == FailedImage ? FailedColour : LoadingColour);
  }
  JobLayer::JobIconOwner fileIcon(const RawLayer::RawString& file, int32_t iconIndex,
                                  WinLayer::WinSize size) override {
    return answer(file, "file " + bytesOf(file) + " " + std::to_string(iconIndex), size);
  }
  JobLayer::JobIconOwner documentIcon(const RawLayer::RawString& file) override {
    return answer(file, "document " + bytesOf(file), CellSize);
  }
  void enterThread() override { ++threads; }
  void leaveThread() override { --threads; }
  void postCommand(WinLayer::WinDialog& dialog, uint16_t command) override {
    const std::scoped_lock scope(lock_);
    if (&dialog == this->dialog()) posted_.push_back(command);
  }

  // Stands for the main dialog; nobody looks into it.
  WinLayer::WinDialog* dialog() { return reinterpret_cast<WinLayer::WinDialog*>(this); }

 private:
  JobLayer::JobIconOwner answer(const RawLayer::RawString& file, const std::string& call,
                                WinLayer::WinSize size) {
#if defined(_WIN32)
    priority = GetThreadPriority(GetCurrentThread());
#endif
    if (isGated_) passGate();
    const std::scoped_lock scope(lock_);
    calls_.push_back(call);
    const auto found = colours_.find(bytesOf(file));
    return found == colours_.end() ? JobLayer::JobIconOwner() : newIcon(size, found->second);
  }
  void passGate() {
    ++waiting;
    if (gate_.wait(PatienceMilliseconds) != RawLayer::RawEvent::Signalled) gateOpened = false;
    --waiting;
  }

  std::mutex lock_;
  std::map<std::string, uint32_t> colours_;
  std::vector<std::string> calls_;
  std::vector<uint16_t> posted_;
  std::atomic<bool> isGated_{false};
  RawLayer::RawEvent gate_;
};

class Control : public JobLayer::JobIconControl {
 public:
  explicit Control(TestIcons& icons, WinLayer::WinSize size = CellSize)
      : JobIconControl(icons, size) {
    setOptions(true, false, raw("ico,exe,dll"), {});
  }
  int32_t ask(const std::string& file, int32_t iconIndex = 0) {
    return request(raw(file), iconIndex);
  }
  // The colour that the handle's image has now.
  [[nodiscard]] uint32_t colourOf(int32_t handle) {
    const int32_t cell = imageOf(handle);
    const RawLayer::RawLockScope cells(cache.locks.pool);
    const uint32_t* pixels = cache.pool.cellPixels(cell);
    return pixels ? *pixels : 0;
  }
  [[nodiscard]] bool isServed() {
    return comesTrue([this] { return !workPending(); });
  }
  [[nodiscard]] int32_t entryCount() {
    const RawLayer::RawLockScope ring(cache.locks.list);
    return cache.list.count();
  }
  [[nodiscard]] JobLayer::JobIconInfoUnit entry(int32_t handle) {
    const RawLayer::RawLockScope ring(cache.locks.list);
    const RawLayer::RawLockScope fields(cache.locks.state);
    return *JobLayer::JobIconInfoList::element(cache.list.nodeAt(handle));
  }
};

} // namespace IconControlBed
