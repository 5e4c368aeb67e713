#include "job/JobVariableText.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"
#include "raw/RawPath.h"

#include <algorithm>

namespace JobLayer {

static JobVariableResult part(const RawString& text, RawRange range) {
  return variableText(RawString::fromRange(text.encoding(), text, range));
}

JobVariableResult JobVariableLength::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return variableNumber(text.length());
}

JobVariableResult JobVariableBody::evaluate(JobVariableArgument& argument) {
  const RawString path = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return part(path, RawLayer::stemRange(path, RawLayer::nameRange(path)));
}

JobVariableResult JobVariableBodyEx::evaluate(JobVariableArgument& argument) {
  const RawString path = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return part(path, RawLayer::nameRange(path));
}

JobVariableResult JobVariableBaseFolder::evaluate(JobVariableArgument& argument) {
  const RawString path = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return part(path, RawLayer::folderRange(path));
}

JobVariableResult JobVariableExtension::evaluate(JobVariableArgument& argument) {
  const RawString path = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return part(path, RawLayer::extensionRange(path));
}

// A number that is not negative as a position in the text.
static int32_t positionIn(const RawString& text, int64_t number) {
  return static_cast<int32_t>(std::min<int64_t>(number, text.length()));
}

JobVariableResult JobVariableBefore::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  const int64_t count = argument.getNumber(2, JobVariableArgument::NotNegative);
  if (argument.failure != 0) return argument.fault();
  return part(text, {0, positionIn(text, count)});
}

JobVariableResult JobVariableAfter::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  const int64_t start = argument.getNumber(2, JobVariableArgument::NotNegative);
  if (argument.failure != 0) return argument.fault();
  return part(text, {positionIn(text, start), text.length()});
}

static RawString character(int64_t code, int32_t encoding) {
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code == 0 || isSurrogate || code > 0x10FFFF) return RawString();
  char16_t units[2] = {static_cast<char16_t>(code), 0};
  if (code > 0xFFFF) {
    units[0] = static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    units[1] = static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
  }
  return RawString::viewOf(RawLayer::EncodingWide, units, code > 0xFFFF ? 2 : 1).shareAs(encoding);
}

JobVariableResult JobVariableCode::evaluate(JobVariableArgument& argument) {
  const int64_t code = argument.getNumber(1, JobVariableArgument::NotNegative);
  if (argument.failure != 0) return argument.fault();
  return variableText(character(code, argument.source.encoding()));
}

JobVariableResult JobVariableStripQuote::evaluate(JobVariableArgument& argument) {
  const RawString text = argument.get(1);
  if (argument.failure != 0) return argument.fault();
  return part(text, text.trimRange(text.all(), "\""_text));
}

JobVariableResult JobVariableReplace::evaluate(JobVariableArgument& argument) {
  RawString text = argument.get(1);
  const RawString from = argument.get(2);
  const RawString to = argument.get(3);
  if (argument.failure != 0) return argument.fault();
  if (from.isEmpty()) return variableText(std::move(text));
  for (int32_t i = text.find(from); i < text.length(); i = text.find(from))
    text.replaceRange({i, i + from.length()}, to, to.all());
  return variableText(std::move(text));
}

} // namespace JobLayer
