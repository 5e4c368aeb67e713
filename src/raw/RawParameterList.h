// RawParameterList: an ordered list of key and value texts, as a profile section or a command line
// gives them. A key may stand more than once; lookups find the first.
#pragma once

#include "raw/RawList.h"
#include "raw/RawString.h"
#include "raw/RawStringList.h"

namespace RawLayer {

class RawParameterUnit {
 public:
  RawString key;
  RawString value;
  int32_t number = 0; // scratch, filled by parseNumbers

  void setInt(int64_t newValue); // value becomes the decimal text
};

class RawParameterListAllocator : public RawListAllocator<RawParameterUnit> {
 public:
  void destroy(RawParameterUnit* element) override;
};

class RawParameterList : public RawListR<RawParameterListAllocator, RawParameterUnit> {
 public:
  bool caseSensitive = false; // how keys compare

  using RawListBodyTyped<RawParameterUnit>::contains;
  [[nodiscard]] bool contains(const RawString& key) const;
  [[nodiscard]] RawParameterUnit* find(const RawString& key) const; // null when missing
  // The value of the first unit with the key, or `fallback`.
  [[nodiscard]] RawString valueOf(const RawString& key,
                                  const RawString& fallback = RawString::emptyStatic()) const;
  RawParameterUnit* add(const RawString& key); // always a new unit, with an empty value
  using RawListBodyTyped<RawParameterUnit>::insertBefore;
  RawParameterUnit* insertBefore(RawListNode* node, const RawString& key);
  void set(const RawString& key, const RawString& value);
  void setUnsigned(const RawString& key, uint64_t value, int32_t base = 10);
  void merge(const RawParameterList& other); // adds every unit, with no search
  // Adds the entries of one profile line: items between zero units, each cut at its first "=". An
  // item without one is a key with an empty value, an empty item is none. Key and value are
  // trimmed of `trimSet`, when that is not empty.
  void parseLine(const RawString& line, RawRange range, const RawString& trimSet);
  void parseNumbers();
  // Empties the list, also when the ring is shared: it gets a ring of its own.
  void renew();

  // Adds the arguments of a command line whose program name is gone. Sets caseSensitive. `flags`
  // holds the switches without a value, and compares as its own caseSensitive says; what has no
  // switch gets the keys "NoTag_1", "NoTag_2" and so on.
  void fromCommandLine(const RawString& text, const RawStringList& flags);

 private:
  void parseItem(const RawString& line, RawRange item, const RawString& trimSet);
};

// By keys, exact case.
class RawParameterListSort : public RawListSortR<RawParameterUnit> {
 public:
  using RawListSortR<RawParameterUnit>::RawListSortR;
  int32_t compare(const RawParameterUnit* a, const RawParameterUnit* b) override;
};

} // namespace RawLayer
