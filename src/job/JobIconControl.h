// JobIconControl: the single owner of icons. A request gives a number, the handle, by which views
// and menus draw: at first the loading image, later the real one.
//
// With `delayed` a request returns at once and a thread of idle priority extracts the icon, one
// after the other; the window hears of it by a posted command. Without, the request extracts.
// Nothing is reported when there is no icon: the failed image shows.
//
// Start-up, on the main thread:
//   control.setOptions(options.iconDelay, options.iconCache, options.iconExtension,
//                      options.cacheFile);
//   JobIconSource::install(&control);
//   ... requests ...
//   control.open(&mainDialog);    // once its window exists
// and at the end, before the window is gone:
//   control.stop();
//   control.cache.evict(options.iconUnusedCount);
//   control.cache.save();
#pragma once

#include "job/JobIconCache.h"
#include "job/JobIconPlatform.h"
#include "job/JobIconSource.h"
#include "raw/RawStringList.h"
#include "raw/RawThread.h"

namespace JobLayer {

class JobIconControl : public RawLayer::RawThreadUnit, public JobIconSource {
 public:
  // What the main dialog is sent, as a WM_COMMAND with the dialog's own identifier.
  enum Command : uint16_t {
    CommandRepaint = 0x1103,     // buttons have their icons
    CommandRepaintMenu = 0x1104, // so has the menu that opens
  };
  static constexpr int32_t FirstCells = 100;
  static constexpr int32_t IdlePriority = -15; // the platform's number

  // Pool, list, locks, queue position and `persistent`. Whoever reads the pool takes its lock.
  JobIconCache cache;
  bool delayed = true;
  // Extensions of files that hold icons, in any case; others are documents, which have the icon of
  // their type.
  RawLayer::RawStringList extensions;

  // For the program: made at the first call, with cells of WindowMetrics' base icon size.
  static JobIconControl& instance();
  JobIconControl(JobIconPlatform& platform, WinLayer::WinSize iconSize);
  ~JobIconControl() override; // ends the thread

  // Main thread, before the first request. `extensionText` is separated by commas. With
  // `persistent` the cache is loaded from `cacheFile`, the path of its profile.
  void setOptions(bool delayedOption, bool persistentOption, const RawString& extensionText,
                  const RawString& cacheFile);

  // The handle for a file and index, the same for each request of the pair, in any case.
  // Without `delayed` each request extracts anew and has a new handle. Any thread.
  int32_t request(const RawString& file, int32_t iconIndex) override;
  // The cell of a handle's image, which counts as used; -1 for a bad handle. Any thread.
  int32_t imageOf(int32_t handle) { return cache.imageOf(handle); }
  // Draws the handle's image over the device context's rectangle, scaled to it; nothing for a bad
  // handle. Any thread that may draw there.
  void draw(int32_t handle, void* context, const WinLayer::WinRect& rectangle);

  // The window that is told from now on; it stays alive up to `stop`. Starts the thread when there
  // is work, and each later request does so when it is the first. Main thread.
  void open(WinLayer::WinDialog* mainDialog);
  // Starts the thread, at idle priority, behind a mark that lets the window repaint its buttons
  // when all that is queued now is done. False when it runs already or cannot be made.
  bool start();
  // Ends the thread after the icon that it is at, and waits for that. No request starts it again.
  void stop();
  // Let the window repaint its open menu, or its buttons, when all that was requested up to now is
  // there. Nothing while the thread does not run.
  void repaintMenu() override;
  void repaintButtons();
  [[nodiscard]] bool workPending(); // entries are queued

 protected:
  void run() override;

 private:
  struct Work {
    JobIconInfoUnit* unit = nullptr; // null: the queue is empty
    JobIconInfoUnit copy;
  };
  void addBuiltIn();
  [[nodiscard]] int32_t knownHandle(const RawString& file, int32_t iconIndex) const;
  int32_t requestLater(const RawString& file, int32_t iconIndex);
  int32_t requestNow(const RawString& file, int32_t iconIndex);
  int32_t append(const JobIconInfoUnit& unit); // under the list lock
  int32_t queue(const JobIconInfoUnit& unit);
  void queueMark(JobIconInfoUnit::State mark);
  void wake();
  [[nodiscard]] WinLayer::WinDialog* mainDialog();

  Work nextWork();
  void waitForWork();
  void serve(const Work& work);
  void finish(JobIconInfoUnit* unit, int32_t imageId);
  void post(Command command);

  [[nodiscard]] bool isDocument(const RawString& file, int32_t iconIndex) const;
  JobIconOwner loadIcon(const RawString& file, int32_t iconIndex);
  int32_t extract(const RawString& file, int32_t iconIndex);
  int32_t refresh(int32_t cell, const RawString& file, int32_t iconIndex);

  JobIconPlatform& platform_;
  WinLayer::WinSize iconSize_;                // of cells
  WinLayer::WinDialog* mainDialog_ = nullptr; // guarded by the state lock
  RawLayer::RawEvent wakeEvent_;
  bool servedUnmarked_ = false; // icons came behind the last mark; the thread's own
};

} // namespace JobLayer
