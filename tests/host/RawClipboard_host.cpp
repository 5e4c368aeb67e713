#include "raw/RawClipboard.h"

#include "HostClipboard.h"
#include "HostFaults.h"
#include "raw/RawClipboardData.h"

#include <cstring>
#include <vector>

namespace HostClipboard {

// Never destroyed: other statics' destructors may still ask.
State& state() {
  static State& only = *new State;
  return only;
}

} // namespace HostClipboard

namespace RawLayer {

namespace {

bool opens() {
  return !HostFaults::fails(HostFaults::Clipboard) && !HostClipboard::state().isHeld;
}

// What the platform gives for a format that it can make from the one that is there.
std::vector<char16_t> wideUnits() {
  const auto& state = HostClipboard::state();
  std::vector<char16_t> units;
  if (state.format == RawClipboardNarrow)
    for (const char byte : state.bytes) units.push_back(static_cast<unsigned char>(byte));
  if (state.format == RawClipboardWide) {
    units.resize(state.bytes.size() / sizeof(char16_t));
    std::memcpy(units.data(), state.bytes.data(), units.size() * sizeof(char16_t));
  }
  return units;
}

} // namespace

bool putClipboardData(RawClipboardFormat format, const void* data, std::size_t size) {
  if (!opens()) return false;
  auto& state = HostClipboard::state();
  state.format = format;
  state.bytes.assign(static_cast<const char*>(data), size);
  ++state.changes;
  return true;
}

RawString getClipboard(int32_t limit) {
  if (!opens()) return RawString(EncodingWide);
  const std::vector<char16_t> units = wideUnits();
  int32_t length = 0;
  while (length < limit && static_cast<std::size_t>(length) < units.size() &&
         units[static_cast<std::size_t>(length)] != 0)
    ++length;
  return RawString::fromWide(units.data(), length);
}

} // namespace RawLayer
