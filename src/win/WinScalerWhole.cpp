// Rows first: for each target row the source's rows are summed in 16 bits for each channel. Then
// columns: pairs of those sums are multiplied and added in 32 bits. The order of sums is another
// one than with doubles, which does not matter where nothing is rounded.
//
// The quotient is floor(sum / divisor). Both are whole, so its fraction is a multiple of 1 /
// divisor: half of that added, the product with 1 / divisor in single precision is truncated to
// the same number, as its error is less than that half.
#include "win/WinScalerWhole.h"

#include <algorithm>
#include <bit>
#include <cmath>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#else
#define WIN_SCALER_NO_VECTORS
#endif

namespace WinLayer {

#ifdef WIN_SCALER_NO_VECTORS

bool scaleInWholeNumbers(const WinBitmapAlpha&, const WinScalerTaps&, const WinScalerTaps&, double,
                         const WinBitmapAlpha&) {
  return false;
}

#else

namespace {

constexpr int32_t MostBits = 7;       // of a weight behind the point
constexpr int32_t MostRowSum = 32767; // what a signed lane of 16 bits holds
constexpr int32_t MostSum = 1 << 22;  // and a half more, exact in single precision
constexpr int32_t MostDivisor = 8192;
constexpr int32_t MostByte = 255;

struct WholeTap {
  int32_t index;
  int32_t weight; // times the axis's unit
};

// One axis: its weights as whole numbers of the largest unit that they are multiples of.
class WholeTaps {
 public:
  explicit WholeTaps(const WinScalerTaps& taps) {
    constexpr int32_t Finest = 1 << MostBits;
    taps_.reserve(static_cast<std::size_t>(taps.all().end() - taps.all().begin()));
    uint32_t together = Finest;
    for (const WinScalerTap& tap : taps.all()) {
      const double weight = tap.weight * Finest;
      const int32_t whole = weight > 0 && weight < MostRowSum ? static_cast<int32_t>(weight) : 0;
      isWhole_ = isWhole_ && whole == weight;
      together |= static_cast<uint32_t>(whole);
      taps_.push_back({tap.index, whole});
    }
    const int shift = std::countr_zero(together);
    unit_ = Finest >> shift;
    for (WholeTap& tap : taps_) tap.weight >>= shift;
    findGreatest(taps);
  }
  [[nodiscard]] bool isWhole() const { return isWhole_; }
  [[nodiscard]] int32_t unit() const { return unit_; }            // what a weight of 1 is
  [[nodiscard]] int32_t greatestSum() const { return greatest_; } // of the weights of one target
  // The taps of the target, which follow those of the one before.
  [[nodiscard]] const WholeTap* first() const { return taps_.data(); }
  [[nodiscard]] const WholeTap* end(std::size_t target) const {
    return taps_.data() + ends_[target];
  }
  [[nodiscard]] std::size_t targets() const { return ends_.size(); }

 private:
  void findGreatest(const WinScalerTaps& taps) {
    ends_.reserve(static_cast<std::size_t>(taps.targets()));
    std::size_t at = 0;
    for (int32_t target = 0; target < taps.targets(); ++target) {
      const WinScalerTapRange range = taps.at(target);
      const std::size_t end = at + static_cast<std::size_t>(range.end() - range.begin());
      int32_t sum = 0;
      for (; at < end; ++at) sum += taps_[at].weight;
      greatest_ = std::max(greatest_, sum);
      ends_.push_back(end);
    }
  }

  std::vector<WholeTap> taps_;
  std::vector<std::size_t> ends_;
  int32_t unit_ = 1;
  int32_t greatest_ = 0;
  bool isWhole_ = true;
};

// Two columns and their weights, side by side; the second may weigh nothing.
struct Pair {
  int32_t first;
  int32_t second;
  __m128i weights;
};

class Pairs {
 public:
  Pairs(const WholeTaps& columns, int32_t left) {
    pairs_.reserve(columns.targets() * 2);
    ends_.reserve(columns.targets());
    const WholeTap* tap = columns.first();
    for (std::size_t target = 0; target < columns.targets(); ++target) {
      for (const WholeTap* end = columns.end(target); tap < end; tap = std::min(tap + 2, end)) {
        const WholeTap second = tap + 1 < end ? tap[1] : WholeTap{tap->index, 0};
        pairs_.push_back({tap->index - left, second.index - left,
                          _mm_set1_epi32(tap->weight | second.weight << 16)});
      }
      ends_.push_back(pairs_.size());
      isOneEach_ = isOneEach_ && pairs_.size() == target + 1;
    }
  }
  [[nodiscard]] const Pair* first() const { return pairs_.data(); }
  // As when no target has more than two columns.
  [[nodiscard]] bool isOneEach() const { return isOneEach_; }
  [[nodiscard]] const Pair* end(std::size_t target) const { return pairs_.data() + ends_[target]; }

 private:
  bool isOneEach_ = true;
  std::vector<Pair> pairs_;
  std::vector<std::size_t> ends_;
};

constexpr std::size_t Channels = 4;

__m128i* lanesAt(uint16_t* sums, std::size_t pixel) {
  return reinterpret_cast<__m128i*>(sums + pixel * Channels);
}

// Adds the weighted row to the sums, four lanes of 16 bits for each of `width` pixels.
void addRow(const uint32_t* row, int32_t weight, std::size_t width, uint16_t* sums) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i factor = _mm_set1_epi16(static_cast<int16_t>(weight));
  const auto add = [&](std::size_t x, __m128i bytes) {
    const __m128i product = _mm_mullo_epi16(_mm_unpacklo_epi8(bytes, zero), factor);
    _mm_storeu_si128(lanesAt(sums, x), _mm_add_epi16(_mm_loadu_si128(lanesAt(sums, x)), product));
  };
  std::size_t x = 0;
  for (; x + 2 <= width; x += 2) add(x, _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row + x)));
  if (x < width) add(x, _mm_cvtsi32_si128(static_cast<int>(row[x])));
}

__m128i lanesOf(const uint16_t* sums, int32_t column) {
  return _mm_loadl_epi64(
      reinterpret_cast<const __m128i*>(sums + static_cast<std::size_t>(column) * Channels));
}

// The quotients of four sums by a whole number.
struct Division {
  explicit Division(double divisor) : factor(_mm_set1_ps(static_cast<float>(1 / divisor))) {}
  __m128i operator()(__m128i sums) const {
    const __m128 halfMore = _mm_add_ps(_mm_cvtepi32_ps(sums), _mm_set1_ps(0.5F));
    return _mm_cvttps_epi32(_mm_mul_ps(halfMore, factor));
  }
  __m128 factor;
};

// The same by a power of two.
struct Shift {
  explicit Shift(uint32_t divisor) : bits(_mm_cvtsi32_si128(std::countr_zero(divisor))) {}
  __m128i operator()(__m128i sums) const { return _mm_srl_epi32(sums, bits); }
  __m128i bits;
};

template <bool OnePair, class Quotient>
void sumColumns(const uint16_t* sums, const Pairs& columns, const Quotient& quotient, uint32_t* out,
                std::size_t width) {
  const Pair* pair = columns.first();
  const auto product = [&](const Pair& two) {
    const __m128i both = _mm_unpacklo_epi16(lanesOf(sums, two.first), lanesOf(sums, two.second));
    return _mm_madd_epi16(both, two.weights);
  };
  const auto next = [&](std::size_t x) {
    if constexpr (OnePair) return quotient(product(pair[x]));
    __m128i sum = _mm_setzero_si128();
    for (const Pair* end = columns.end(x); pair < end; ++pair)
      sum = _mm_add_epi32(sum, product(*pair));
    return quotient(sum);
  };
  std::size_t x = 0;
  for (; x + 4 <= width; x += 4) {
    const __m128i first = next(x);
    const __m128i low = _mm_packs_epi32(first, next(x + 1));
    const __m128i third = next(x + 2);
    const __m128i high = _mm_packs_epi32(third, next(x + 3));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + x), _mm_packus_epi16(low, high));
  }
  for (; x < width; ++x) {
    const __m128i words = next(x);
    const __m128i shorts = _mm_packs_epi32(words, words);
    out[x] = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_packus_epi16(shorts, shorts)));
  }
}

template <class Quotient>
void fill(const WinBitmapAlpha& source, const WholeTaps& across, const WholeTaps& down,
          const Quotient& quotient, const WinBitmapAlpha& target) {
  const auto width = static_cast<std::size_t>(source.size().width);
  std::vector<uint16_t> sums((width + 1) * Channels);
  const Pairs pairs(across, source.left);
  const WholeTap* tap = down.first();
  for (std::size_t y = 0; y < down.targets(); ++y) {
    std::fill(sums.begin(), sums.end(), uint16_t{0});
    for (; tap < down.end(y); ++tap)
      addRow(source.row(tap->index) + source.left, tap->weight, width, sums.data());
    uint32_t* out = target.row(target.top + static_cast<int32_t>(y)) + target.left;
    if (pairs.isOneEach())
      sumColumns<true>(sums.data(), pairs, quotient, out, across.targets());
    else
      sumColumns<false>(sums.data(), pairs, quotient, out, across.targets());
  }
}

} // namespace

bool scaleInWholeNumbers(const WinBitmapAlpha& source, const WinScalerTaps& columns,
                         const WinScalerTaps& rows, double divisor, const WinBitmapAlpha& target) {
  const WholeTaps across(columns);
  const WholeTaps down(rows);
  if (!across.isWhole() || !down.isWhole()) return false;
  const double whole = divisor * across.unit() * down.unit();
  if (whole > MostDivisor || whole != std::floor(whole)) return false;
  const int64_t rowSum = int64_t{MostByte} * down.greatestSum();
  if (rowSum > MostRowSum || rowSum * across.greatestSum() > MostSum) return false;

  const auto number = static_cast<uint32_t>(whole);
  if (std::has_single_bit(number))
    fill(source, across, down, Shift(number), target);
  else
    fill(source, across, down, Division(whole), target);
  return true;
}

#endif

} // namespace WinLayer
