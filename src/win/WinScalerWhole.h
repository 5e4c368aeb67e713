// Scaling in whole numbers, for the scaler's own sources.
//
// Between sizes such as 16, 32 and 48 all weights are whole multiples of a small power of two. Sums
// of doubles round nothing then, so whole numbers give the same pixels, and a vector of them does
// several channels at once.
#pragma once

#include "win/WinScaler.h"
#include "win/WinScalerTaps.h"

namespace WinLayer {

// Fills the target as sums in doubles, divided by `divisor`, would. False, with nothing written,
// when the weights are not of that kind or the platform has no such vectors.
bool scaleInWholeNumbers(const WinBitmapAlpha& source, const WinScalerTaps& columns,
                         const WinScalerTaps& rows, double divisor, const WinBitmapAlpha& target);

} // namespace WinLayer
