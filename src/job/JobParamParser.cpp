#include "job/JobParamParser.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawRangedTextList;
using RawLayer::RawRangedTextUnit;

namespace {

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

bool JobParamList::Parse(const RawRangedTextList& lines) {
  RangedTextLines source(lines);
  return Parse(source);
}

bool JobParamList::Parse(JobParamLines& lines) {
  renewRing(lines.region());
  return ParseLines(lines, 0) == EndOfLines;
}

// A line that holds "=" is a value line whatever else stands in it, so that is asked first.
JobParamList::ParseResult JobParamList::ParseLines(JobParamLines& lines, int32_t nesting) {
  RawLayer::RawRegion& region = lines.region();
  while (lines.next()) {
    const RawString& text = lines.text();
    const RawRange line = lines.range();
    if (text.at(line.start) == '}') return ClosedByBrace;
    const int32_t equals = text.findChar(line, '=');
    if (equals < line.end) {
      append(new (region)
                 JobParamText(lines.key({line.start, equals}), lines.value({equals + 1, line.end})),
             region);
      continue;
    }
    const int32_t brace = text.findChar(line, '{');
    std::unique_ptr<JobParamCommand> block(
        new (region) JobParamCommand(lines.key({line.start, brace}), region));
    if (brace < line.end &&
        (nesting == MaxNesting || block->params.ParseLines(lines, nesting + 1) != ClosedByBrace))
      return Fault;
    append(block.release(), region);
  }
  return EndOfLines;
}

} // namespace JobLayer
