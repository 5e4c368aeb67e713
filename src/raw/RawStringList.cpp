#include "raw/RawStringList.h"

#include "raw/RawStringTokenizer.h"

namespace RawLayer {

void RawStringListAllocator::destroy(RawString* element) {
  delete element;
}

RawListNode* RawStringList::find(const RawString& text) const {
  RawListNode* node = first();
  for (; !isEnd(node); node = next(node)) {
    const RawString& each = *element(node);
    if (caseSensitive ? each.equals(text) : each.equalsNoCase(text)) break;
  }
  return node;
}

RawListNode* RawStringList::addUnique(const RawString& text) {
  RawListNode* node = find(text);
  return isEnd(node) ? add(text) : node;
}

RawListNode* RawStringList::add(const RawString& text) {
  return append(new RawString(text));
}

int32_t RawStringList::split(const RawString& source, RawRange range, bool trim) {
  const int32_t before = count();
  RawStringTokenizer tokenizer(source, range);
  while (!(tokenizer.flags & RawStringTokenizer::Finished)) {
    RawRange token = tokenizer.next();
    if (trim) token = source.trimRange(token, RawString::whiteSpace());
    add(RawString::fromRange(source.encoding(), source, token));
  }
  return count() - before;
}

int32_t RawStringListSort::compare(const RawString* a, const RawString* b) {
  return a->compare(*b);
}

} // namespace RawLayer
