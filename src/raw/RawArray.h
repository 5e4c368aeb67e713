// RawArrayC: a growable array of plain values, shared between copies until `duplicate`.
#pragma once

#include "raw/RawList.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

namespace RawLayer {

template <class T>
struct RawArrayData : public RawDataShared {
  std::atomic<int32_t> references{0};
  std::unique_ptr<T[]> items;
  int32_t growStep = 10;
  int32_t capacity = 0;
  int32_t count = 0;
};

template <class T>
struct RawArrayDataC : public RawArrayData<T> {
  static_assert(std::is_trivially_copyable_v<T>, "only plain values");
  using Item = T;
};

template <class D>
class RawArrayBody : public RawDataShared::Duplicator {
 public:
  RawArrayBody() : data_(new D) {}
  RawArrayBody(const RawArrayBody& other) : RawDataShared::Duplicator(), data_(other.data_) {
    data_->references.fetch_add(1);
  }
  RawArrayBody& operator=(const RawArrayBody& other) {
    if (data_ == other.data_) return *this;
    other.data_->references.fetch_add(1);
    drop();
    data_ = other.data_;
    return *this;
  }
  ~RawArrayBody() override { drop(); }

  void duplicate() override {
    if (data_->references.load() == 0) return;
    auto* copy = new D;
    copy->items = std::make_unique<typename D::Item[]>(static_cast<std::size_t>(data_->capacity));
    if (data_->capacity > 0)
      std::memcpy(copy->items.get(), data_->items.get(),
                  static_cast<std::size_t>(data_->capacity) * sizeof(typename D::Item));
    copy->growStep = data_->growStep;
    copy->capacity = data_->capacity;
    copy->count = data_->count;
    drop();
    data_ = copy;
  }

 protected:
  D* data_;

 private:
  void drop() {
    if (data_->references.fetch_sub(1) == 0) delete data_;
  }
};

template <class T>
class RawArrayC : public RawArrayBody<RawArrayDataC<T>> {
 public:
  [[nodiscard]] int32_t count() const { return this->data_->count; }
  [[nodiscard]] int32_t capacity() const { return this->data_->capacity; }
  // The value at the index, or a value of zeros outside.
  [[nodiscard]] T at(int32_t index) const {
    return index >= 0 && index < count() ? this->data_->items[static_cast<std::size_t>(index)]
                                         : T{};
  }
  void set(int32_t index, const T& value) { // nothing outside
    if (index < 0 || index >= count()) return;
    this->duplicate();
    this->data_->items[static_cast<std::size_t>(index)] = value;
  }
  void append(const T& value) {
    this->duplicate();
    auto& data = *this->data_;
    if (data.count == data.capacity) {
      const int32_t capacity = data.capacity + data.growStep;
      auto items = std::make_unique<T[]>(static_cast<std::size_t>(capacity));
      if (data.count > 0)
        std::memcpy(items.get(), data.items.get(),
                    static_cast<std::size_t>(data.count) * sizeof(T));
      data.items = std::move(items);
      data.capacity = capacity;
    }
    data.items[static_cast<std::size_t>(data.count++)] = value;
  }
  void clear() {
    this->duplicate();
    this->data_->count = 0;
  }
};

} // namespace RawLayer
