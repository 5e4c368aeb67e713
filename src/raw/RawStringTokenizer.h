// RawStringTokenizer: splits a text at commas, with optional quotes, nesting marks and terminator.
//
//   RawStringTokenizer tokenizer(text);
//   tokenizer.flags |= RawStringTokenizer::ProtectQuoted;
//   while (!(tokenizer.flags & RawStringTokenizer::Finished)) use(tokenizer.next());
//
// It holds a share of the text. All positions count its code units, and ranges are clamped to it.
// An empty range is Finished from the start, so set flags with `|=`. One object belongs to one
// thread.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

class RawStringTokenizer {
 public:
  enum Flag : uint16_t {
    ProtectQuoted = 0x0001, // double quotes protect commas
    LastToken = 0x0002,     // stop after the next token
    HadQuotes = 0x0004,     // the last `unquote` removed a leading quote
    Finished = 0x0008,      // no token is left
  };

  RawString source;
  int32_t position = 0; // next unread unit
  int32_t end = 0;      // end of the scanned range
  // A token that ends at this unit leaves it unconsumed; 0 for none. The caller steps over it, for
  // the next token would start there and be empty.
  uint16_t terminator = 0;
  bool stopsAtTerminator = false; // the scan itself also stops at the terminator
  RawString open;                 // opening mark of a nesting pair; empty for none
  RawString close;
  RawString space; // units to trim from a token; empty for none
  uint16_t flags = 0;

  explicit RawStringTokenizer(const RawString& text);
  RawStringTokenizer(const RawString& text, RawRange range);

  // The range of the next token in the source, without the units of `space` at its ends; sets
  // Finished when it was the last. Empty when there is none left.
  RawRange next();
  // The position behind the partner of the `opening` that stands at the start of the range; the
  // end of the range when it has none.
  [[nodiscard]] int32_t skipNested(RawRange range, const RawString& opening,
                                   const RawString& closing) const;
  // Without one leading and one trailing double quote; HadQuotes tells of the leading one.
  RawRange unquote(RawRange range);

 private:
  [[nodiscard]] int32_t findTokenEnd(int32_t limit) const;
};

} // namespace RawLayer
