#include "win/WinListBoxItem.h"

namespace WinLayer {

void WinListBoxItemUnit::Reset() {
  flags &= IsHeader | IsFooter;
  rect = {};
}

} // namespace WinLayer
