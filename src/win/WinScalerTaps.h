// What each row and column of a source weighs in those of a target: for the scaler's own sources.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace WinLayer {

// What one row or column of the source weighs in one of the target.
struct WinScalerTap {
  int32_t index; // inside the source
  double weight;
};

// The taps of one target row or column; those of weight 0 are left out, for adding nothing changes
// no sum.
struct WinScalerTapRange {
  const WinScalerTap* first;
  const WinScalerTap* behind;
  [[nodiscard]] const WinScalerTap* begin() const { return first; }
  [[nodiscard]] const WinScalerTap* end() const { return behind; }
};

class WinScalerTaps {
 public:
  WinScalerTaps(int32_t targets, int32_t expected) {
    starts_.reserve(static_cast<std::size_t>(targets) + 1);
    taps_.reserve(static_cast<std::size_t>(expected));
  }

  void beginTarget() { starts_.push_back(taps_.size()); }
  void add(int32_t index, double weight) {
    if (weight != 0) taps_.push_back({index, weight});
  }
  [[nodiscard]] int32_t targets() const { return static_cast<int32_t>(starts_.size()); }
  [[nodiscard]] WinScalerTapRange at(int32_t target) const {
    const auto number = static_cast<std::size_t>(target);
    const std::size_t behind = number + 1 < starts_.size() ? starts_[number + 1] : taps_.size();
    return {taps_.data() + starts_[number], taps_.data() + behind};
  }
  [[nodiscard]] WinScalerTapRange all() const {
    return {taps_.data(), taps_.data() + taps_.size()};
  }

 private:
  std::vector<WinScalerTap> taps_;
  std::vector<std::size_t> starts_;
};

} // namespace WinLayer
