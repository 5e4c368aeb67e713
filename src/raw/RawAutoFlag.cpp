#include "raw/RawLock.h"

namespace RawLayer {

void RawAutoFlag::BooleanUnit::set(bool value) {
  const RawLockScope scope(lock_);
  value_ = value;
}

bool RawAutoFlag::BooleanUnit::isSet() const {
  const RawLockScope scope(lock_);
  return value_;
}

} // namespace RawLayer
