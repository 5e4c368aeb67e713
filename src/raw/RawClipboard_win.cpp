#include "raw/RawClipboard.h"

#include "raw/RawClipboardData.h"
#include "raw/RawOwner.h"

#include <windows.h>

#include <cstring>

namespace RawLayer {

namespace {

static_assert(RawClipboardNarrow == CF_TEXT && RawClipboardWide == CF_UNICODETEXT);

struct MemoryCloser {
  using Handle = HGLOBAL;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { GlobalFree(handle); }
};
using MemoryOwner = RawOwner<MemoryCloser>;

class ClipboardScope {
 public:
  ClipboardScope() : open_(OpenClipboard(nullptr) != 0) {}
  ~ClipboardScope() {
    if (open_) CloseClipboard();
  }
  ClipboardScope(const ClipboardScope&) = delete;
  ClipboardScope& operator=(const ClipboardScope&) = delete;
  [[nodiscard]] bool isOpen() const { return open_; }

 private:
  bool open_;
};

class LockScope {
 public:
  explicit LockScope(HGLOBAL memory) : memory_(memory), data_(GlobalLock(memory)) {}
  ~LockScope() {
    if (data_ != nullptr) GlobalUnlock(memory_);
  }
  LockScope(const LockScope&) = delete;
  LockScope& operator=(const LockScope&) = delete;
  [[nodiscard]] void* data() const { return data_; }

 private:
  HGLOBAL memory_;
  void* data_;
};

MemoryOwner copyOf(const void* data, std::size_t size) {
  MemoryOwner memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size));
  if (!memory) return memory;
  const LockScope lock(memory.get());
  if (lock.data() == nullptr) return MemoryOwner();
  std::memcpy(lock.data(), data, size);
  return memory;
}

} // namespace

bool putClipboardData(RawClipboardFormat format, const void* data, std::size_t size) {
  MemoryOwner memory = copyOf(data, size);
  if (!memory) return false;
  const ClipboardScope clipboard;
  if (!clipboard.isOpen() || !EmptyClipboard()) return false;
  if (SetClipboardData(format, memory.get()) == nullptr) return false;
  // The system owns the memory from here on.
  (void)memory.detach();
  return true;
}

RawString getClipboard(int32_t limit) {
  const ClipboardScope clipboard;
  const HANDLE memory = clipboard.isOpen() ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  if (memory == nullptr) return RawString(EncodingWide);
  const LockScope lock(memory);
  const auto* text = static_cast<const char16_t*>(lock.data());
  if (text == nullptr) return RawString(EncodingWide);
  // Another program has put it there: it may lack its zero unit.
  const SIZE_T room = GlobalSize(memory) / sizeof(char16_t);
  int32_t length = 0;
  while (length < limit && static_cast<SIZE_T>(length) < room && text[length] != 0) ++length;
  return RawString::fromWide(text, length);
}

} // namespace RawLayer
