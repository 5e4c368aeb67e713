// WinInputParameterUnit: one field of an input form; WinInputParameterList: the form. Plain data,
// owned by whoever shows the form; main thread.
#pragma once

#include "raw/RawList.h"
#include "raw/RawParameterList.h"

namespace WinLayer {

class WinInputParameterUnit {
 public:
  enum Flag : uint16_t {
    ReadOnly = 0x0001,
    NoHint = 0x0002, // no hint button
  };
  uint16_t flags = 0;
  RawLayer::RawString value; // what the user entered; written by the dialog
  RawLayer::RawString label; // left of the field
  RawLayer::RawString initial;
  RawLayer::RawParameterList hints; // the entries of the hint menu, as keys
};

class WinInputParameterListAllocator : public RawLayer::RawListAllocator<WinInputParameterUnit> {
 public:
  void destroy(WinInputParameterUnit* element) override { delete element; }
};
class WinInputParameterList
    : public RawLayer::RawListR<WinInputParameterListAllocator, WinInputParameterUnit> {
 public:
  RawLayer::RawString prompt; // on top of the form
};

} // namespace WinLayer
