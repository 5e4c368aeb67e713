// Trees of parameters in tests: made from lines, and shown as one text.
#pragma once

#include "job/JobParam.h"

#include "TestText.h"

#include <string>

// The lines of a section, as the reader of the configuration hands them on; they end in "\n".
class JobTestLines {
 public:
  RawLayer::RawRangedTextList list;

  explicit JobTestLines(const std::string& text) {
    int32_t number = 0;
    for (std::size_t start = 0; start < text.size(); ++number) {
      const std::size_t end = std::min(text.find('\n', start), text.size());
      auto* unit = new RawLayer::RawRangedTextUnit;
      unit->text = raw(text.substr(start, end - start));
      unit->range = unit->text.trimRange(unit->text.all(), RawLayer::RawString::whiteSpace());
      unit->lineNumber = number;
      list.append(unit);
      start = end + 1;
    }
  }
};

// "(a=1)(Shell{(Command=x)})(Break)".
inline std::string treeText(const JobLayer::JobParamList& list) {
  std::string text;
  for (const JobLayer::JobParamUnit& unit : list.elements()) {
    text += "(" + bytesOf(unit.key);
    if (unit.type() == JobLayer::JobParamUnit::TypeText) {
      text += "=" + bytesOf(static_cast<const JobLayer::JobParamText&>(unit).value);
    } else {
      const auto& inner = static_cast<const JobLayer::JobParamCommand&>(unit).params;
      if (inner.count() > 0) text += "{" + treeText(inner) + "}";
    }
    text += ")";
  }
  return text;
}
