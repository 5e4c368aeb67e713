// RawStringList: an ordered list of texts, each a heap cell that the list owns.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"

namespace RawLayer {

class RawStringListAllocator : public RawListAllocator<RawString> {
 public:
  void destroy(RawString* element) override;
};

class RawStringList : public RawListR<RawStringListAllocator, RawString> {
 public:
  bool caseSensitive = false; // how `find` compares

  // The first node with an equal text, or the sentinel.
  [[nodiscard]] RawListNode* find(const RawString& text) const;
  // Appends a share of `text` unless it is there; gives its node.
  RawListNode* addUnique(const RawString& text);
  // Appends a share of `text`.
  RawListNode* add(const RawString& text);
  // Appends the comma-separated items of the range, trimmed of blanks and tabs when `trim` is set.
  // Quotes mean nothing. "a,b," gives three items, an empty range none. Gives how many were added.
  int32_t split(const RawString& source, RawRange range, bool trim);
};

// By code units, exact case.
class RawStringListSort : public RawListSortR<RawString> {
 public:
  using RawListSortR<RawString>::RawListSortR;
  int32_t compare(const RawString* a, const RawString* b) override;
};

} // namespace RawLayer
