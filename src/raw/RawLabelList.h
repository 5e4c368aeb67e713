// RawLabelList: labels that a user chooses from, each with what it stands for.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

class RawLabelUnit {
 public:
  RawString label;   // what the user sees
  RawString text;    // what is taken when it is chosen; empty: the label
  int32_t value = 0; // the answer for which it stands
};

class RawLabelListAllocator : public RawListAllocator<RawLabelUnit> {
 public:
  void destroy(RawLabelUnit* element) override { delete element; }
};

class RawLabelList : public RawListR<RawLabelListAllocator, RawLabelUnit> {
 public:
  void add(const RawString& label, int32_t value) {
    append(new RawLabelUnit{label, RawString(), value});
  }
  void addText(const RawString& label, const RawString& text) {
    append(new RawLabelUnit{label, text, 0});
  }
};

} // namespace RawLayer
