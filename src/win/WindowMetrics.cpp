#include "win/WindowMetrics.h"

namespace WinLayer {

WindowMetrics& WindowMetrics::instance() {
  static WindowMetrics metrics;
  return metrics;
}

} // namespace WinLayer
