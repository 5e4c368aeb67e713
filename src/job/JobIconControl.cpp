// Requests come from the main thread, icons from the control's own. Both meet in the list: an entry
// is appended with its work in its state, and the thread walks behind. Entries are never taken out,
// so a position stays what it is and the thread may keep an entry while it has no lock.
#include "job/JobIconControl.h"

#include "raw/RawPath.h"
#include "win/WindowMetrics.h"

namespace JobLayer {

using RawLayer::RawLockScope;

JobIconControl& JobIconControl::instance() {
  const int32_t side = WinLayer::WindowMetrics::instance().baseIconSize;
  static JobIconControl control(JobIconPlatform::instance(), {side, side});
  return control;
}

JobIconControl::JobIconControl(JobIconPlatform& platform, WinLayer::WinSize iconSize)
    : platform_(platform), iconSize_(iconSize) {
  cache.pool.setCellSize(iconSize.width, iconSize.height);
  addBuiltIn();
}

JobIconControl::~JobIconControl() {
  stop();
}

void JobIconControl::addBuiltIn() {
  const auto add = [this](JobIconPlatform::BuiltIn image) {
    return cache.pool.addIcon(platform_.builtInIcon(image, iconSize_).get());
  };
  cache.pool.reserveCells(FirstCells);
  const int32_t failed = add(JobIconPlatform::FailedImage);
  cache.setBuiltIn(failed, add(JobIconPlatform::LoadingImage));
}

void JobIconControl::setOptions(bool delayedOption, bool persistentOption,
                                const RawString& extensionText, const RawString& cacheFile) {
  delayed = delayedOption;
  extensions.clear();
  extensions.split(extensionText, extensionText.all(), true);
  cache.persistent = persistentOption;
  cache.profile = cacheFile;
  if (!cache.load()) addBuiltIn();
}

// --- Requests

int32_t JobIconControl::request(const RawString& file, int32_t iconIndex) {
  int32_t handle = knownHandle(file, iconIndex);
  if (handle >= 0) return handle;
  return delayed ? requestLater(file, iconIndex) : requestNow(file, iconIndex);
}

// Marks and icons extracted at once have no file, so without one there is nothing to be found.
int32_t JobIconControl::knownHandle(const RawString& file, int32_t iconIndex) const {
  if (file.isEmpty()) return -1;
  const RawLockScope ring(cache.locks.list);
  return cache.list.find(file, iconIndex);
}

int32_t JobIconControl::requestLater(const RawString& file, int32_t iconIndex) {
  int32_t handle = -1;
  {
    // Held over both, so that two threads with one pair do not make two entries.
    const RawLockScope ring(cache.locks.list);
    handle = knownHandle(file, iconIndex);
    if (handle >= 0) return handle;
    handle = queue({JobIconInfoUnit::Requested, cache.loadingId(), file, iconIndex, 0});
  }
  wake();
  return handle;
}

// No later request finds the entry, and no save keeps it.
int32_t JobIconControl::requestNow(const RawString& file, int32_t iconIndex) {
  const int32_t imageId = extract(file, iconIndex);
  const RawLockScope ring(cache.locks.list);
  return append({JobIconInfoUnit::Ready, imageId, {}, 0, 0});
}

int32_t JobIconControl::append(const JobIconInfoUnit& unit) {
  cache.list.append(new JobIconInfoUnit(unit));
  return cache.list.count() - 1;
}

int32_t JobIconControl::queue(const JobIconInfoUnit& unit) {
  const RawLockScope ring(cache.locks.list);
  const RawLockScope fields(cache.locks.state);
  cache.workPending = true;
  return append(unit);
}

void JobIconControl::queueMark(JobIconInfoUnit::State mark) {
  queue({mark, -1, {}, 0, 0});
  wakeEvent_.signal();
}

void JobIconControl::repaintMenu() {
  if (isRunning()) queueMark(JobIconInfoUnit::SecondMark);
}

void JobIconControl::repaintButtons() {
  if (isRunning()) queueMark(JobIconInfoUnit::FirstMark);
}

void JobIconControl::draw(int32_t handle, void* context, const WinLayer::WinRect& rectangle) {
  const int32_t cell = imageOf(handle);
  const RawLockScope cells(cache.locks.pool);
  cache.pool.drawCell(cell, context, rectangle);
}

bool JobIconControl::workPending() {
  const RawLockScope fields(cache.locks.state);
  return cache.workPending;
}

// --- Icons

JobIconOwner JobIconControl::loadIcon(const RawString& file, int32_t iconIndex) {
  return isDocument(file, iconIndex) ? platform_.documentIcon(file)
                                     : platform_.fileIcon(file, iconIndex, iconSize_);
}

bool JobIconControl::isDocument(const RawString& file, int32_t iconIndex) const {
  if (iconIndex != 0) return false;
  const RawString extension =
      RawString::fromRange(file.encoding(), file, RawLayer::extensionRange(file));
  return extensions.isEnd(extensions.find(extension));
}

int32_t JobIconControl::extract(const RawString& file, int32_t iconIndex) {
  const JobIconOwner icon = loadIcon(file, iconIndex);
  if (!icon) return cache.failedId();
  const RawLockScope cells(cache.locks.pool);
  const int32_t cell = cache.pool.addIcon(icon.get());
  return cell >= 0 ? cell : cache.failedId();
}

// The image of a file that has gone does not stay. A cell out of a damaged profile may be a
// built-in image's, which is neither replaced nor freed.
int32_t JobIconControl::refresh(int32_t cell, const RawString& file, int32_t iconIndex) {
  if (cache.list.isBuiltIn(cell) || cell == cache.failedId()) return cache.failedId();
  const JobIconOwner icon = loadIcon(file, iconIndex);
  const RawLockScope cells(cache.locks.pool);
  if (icon && cache.pool.storeIcon(cell, icon.get())) return cell;
  cache.pool.freeCell(cell);
  return cache.failedId();
}

} // namespace JobLayer
