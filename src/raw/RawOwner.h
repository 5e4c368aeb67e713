// RawOwner: the one owner of a platform handle, so that no path leaks.
//
//   struct FileCloser { using Handle = void*; static Handle none(); static void close(Handle); };
//   using FileOwner = RawOwner<FileCloser>;
//
// A value owns its handle alone; moving hands it over. Not for use from two threads at once.
#pragma once

namespace RawLayer {

template <class Traits>
class RawOwner {
 public:
  using Handle = typename Traits::Handle;

  RawOwner() noexcept : handle_(Traits::none()) {}
  explicit RawOwner(Handle handle) noexcept : handle_(handle) {}
  RawOwner(RawOwner&& other) noexcept : handle_(other.detach()) {}
  RawOwner& operator=(RawOwner&& other) noexcept {
    if (this != &other) reset(other.detach());
    return *this;
  }
  RawOwner(const RawOwner&) = delete;
  RawOwner& operator=(const RawOwner&) = delete;
  ~RawOwner() { reset(); }

  [[nodiscard]] Handle get() const { return handle_; }
  [[nodiscard]] bool isValid() const { return handle_ != Traits::none(); }
  explicit operator bool() const { return isValid(); }

  // Closes what is held and takes `handle`.
  void reset(Handle handle = Traits::none()) {
    const Handle old = handle_;
    handle_ = handle;
    if (old != Traits::none()) Traits::close(old);
  }
  // Gives the handle to the caller, who closes it.
  [[nodiscard]] Handle detach() {
    const Handle handle = handle_;
    handle_ = Traits::none();
    return handle;
  }

 private:
  Handle handle_;
};

} // namespace RawLayer
