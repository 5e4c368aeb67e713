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
    range_ = unit->range.clamped(unit->text.length());
    node_ = RawRangedTextList::next(node_);
    return true;
  }

 private:
  const RawLayer::RawListNode* node_;
};

// The first "=" of a line and the first "{" ahead of it; the line's end where there is none.
struct LineMarks {
  int32_t equals;
  int32_t brace;
};

// One walk by characters for both, up to the "=": keys are short.
template <typename Unit>
LineMarks marksIn(const Unit* units, const RawString& text, RawRange line) {
  LineMarks marks{line.end, line.end};
  for (int32_t i = line.start; i < line.end; ++i) {
    if (units[i] == '=') {
      marks.equals = i;
      break;
    }
    if (units[i] == '{' && marks.brace == line.end) marks.brace = i;
    if (units[i] > 0x7F) i += text.extraUnits(i);
  }
  return marks;
}

LineMarks marksOf(const RawString& text, RawRange line) {
  if (text.encoding() == RawLayer::EncodingWide) return marksIn(text.wide(), text, line);
  return marksIn(reinterpret_cast<const uint8_t*>(text.text()), text, line);
}

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
    const LineMarks marks = marksOf(text, line);
    if (marks.equals < line.end) {
      append(new (region) JobParamText(lines.key({line.start, marks.equals}),
                                       lines.value({marks.equals + 1, line.end})),
             region);
      continue;
    }
    std::unique_ptr<JobParamCommand> block(
        new (region) JobParamCommand(lines.key({line.start, marks.brace}), region));
    if (marks.brace < line.end &&
        (nesting == MaxNesting || block->params.ParseLines(lines, nesting + 1) != ClosedByBrace))
      return Fault;
    append(block.release(), region);
  }
  return EndOfLines;
}

} // namespace JobLayer
