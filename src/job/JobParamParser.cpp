#include "job/JobParamParser.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawRangedTextList;
using RawLayer::RawRangedTextUnit;

namespace {

RawString partOf(const RawString& text, RawRange part) {
  return RawString::fromRange(text.encoding(), text, part);
}

// The lines of a list that was collected before.
class RangedTextLines : public JobParamLines {
 public:
  explicit RangedTextLines(const RawRangedTextList& list) : node_(list.first()) {}

  bool next() override {
    const RawRangedTextUnit* unit = RawRangedTextList::element(node_);
    if (unit == nullptr) return false;
    text_ = &unit->text;
    range_ = unit->range;
    node_ = RawRangedTextList::next(node_);
    return true;
  }

 private:
  const RawLayer::RawListNode* node_;
};

} // namespace

RawString JobParamLines::key(RawRange part) {
  const RawRange word = text().trimRange(part, RawString::whiteSpace());
  if (word.isEmpty()) return RawString::emptyStatic();
  // Length and last unit tell the usual keys apart; the first says less ("Title", "TipText").
  const int32_t sum = word.size() * 7 + text().at(word.end - 1) + text().at(word.start) * 3;
  RawString& kept = keys_[sum % KeySlots];
  if (kept.encoding() != text().encoding() || !kept.rangeEquals(kept.all(), text(), word))
    kept = partOf(text(), word);
  return kept;
}

bool JobParamList::Parse(const RawRangedTextList& lines) {
  RangedTextLines source(lines);
  return Parse(source);
}

bool JobParamList::Parse(JobParamLines& lines) {
  renewRing();
  return ParseLines(lines, 0) == EndOfLines;
}

// A line that holds "=" is a value line whatever else stands in it, so that is asked first.
JobParamList::ParseResult JobParamList::ParseLines(JobParamLines& lines, int32_t nesting) {
  while (lines.next()) {
    const RawString& text = lines.text();
    const RawRange line = lines.range();
    if (text.at(line.start) == '}') return ClosedByBrace;
    const int32_t equals = text.findChar(line, '=');
    if (equals < line.end) {
      append(
          new JobParamText(lines.key({line.start, equals}), partOf(text, {equals + 1, line.end})));
      continue;
    }
    const int32_t brace = text.findChar(line, '{');
    auto block = std::make_unique<JobParamCommand>(lines.key({line.start, brace}));
    if (brace < line.end &&
        (nesting == MaxNesting || block->params.ParseLines(lines, nesting + 1) != ClosedByBrace))
      return Fault;
    append(block.release());
  }
  return EndOfLines;
}

} // namespace JobLayer
