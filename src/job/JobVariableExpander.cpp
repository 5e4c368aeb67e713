// The scan goes on where it can go on with the same outcome as from the front: nothing in front of
// a replaced call holds a "$(", unless a "$" stands right before it and the pasted text begins
// with "(".
//
// The replacements of one text are counted, those of nested arguments each by themselves. A
// variable that reads itself in an argument would therefore never be refused, but run the stack
// out; the nesting limit ends the whole expansion instead, at once, since each level could try
// again up to its own limit.
#include "job/JobVariableExpander.h"

#include "job/JobExecutionRecord.h"
#include "job/JobToolMessage.h"

#include <optional>

namespace JobLayer {

// The first "$(", or the length. A "$" alone is rare, and sought faster than two units.
static int32_t findOpening(const RawString& text, int32_t from) {
  int32_t position = text.findCharFrom(from, u'$');
  while (position < text.length() && text.at(position + 1) != u'(')
    position = text.findCharFrom(position + 1 + text.extraUnits(position), u'$');
  return position;
}

// Shows the first token as the variable, or all behind the "$(" when no token ends.
static int32_t reportUnbalanced(JobVariableArgument& argument, int32_t position) {
  const RawString& text = argument.source;
  const RawRange behind{position + 2, text.length()};
  JobToolMessage::ReportVariableError(
      "UnbalancedVariableBlock"_text,
      argument.tokenCount() > 0 ? argument.get(0, JobVariableArgument::Unexpanded)
                                : RawString::fromRange(text.encoding(), text, behind),
      RawString::fromRange(text.encoding(), text, {position, text.length()}),
      RawString::emptyStatic());
  return VariableInvalid;
}

static int32_t nextVariableNumber() {
  static RawLayer::RawLock& lock = *new RawLayer::RawLock;
  static uint32_t number = 0;
  const RawLayer::RawLockScope scope(lock);
  return static_cast<int32_t>(++number);
}

JobVariableExpander::JobVariableExpander(const JobExecutorPair& caller, JobVariableList& table)
    : table_(&table), caller_(caller), isLogged_(JobExecutionRecord::logsRuns()) {}

JobVariableExpander::JobVariableExpander(JobVariableExpander* outer)
    : table_(outer->table_), isLogged_(outer->isLogged_), outer_(outer), depth_(outer->depth_ + 1) {
}

JobVariableResult JobVariableExpander::expand(RawString text) {
  if (outer_ == nullptr) exhausted_ = false;
  if (exhausted_) return {VariableOverflow, RawString()};
  int32_t position = findOpening(text, 0);
  for (int32_t replacements = 1; position < text.length(); ++replacements) {
    const int32_t state = expandCall(text, position);
    if (state == VariableOverflow) return {VariableOverflow, RawString()};
    if (state != VariableExpanded) return {state, std::move(text)};
    if (replacements > ReplacementLimit) {
      JobToolMessage::ReportVariableError("TooManyVariableExpansions"_text,
                                          RawString::emptyStatic(), text, RawString::emptyStatic());
      return {VariableOverflow, RawString()};
    }
    position = findOpening(text, text.at(position - 1) == u'$' ? 0 : position);
  }
  return {VariableSuccess, std::move(text)};
}

// A text that is one call and no more, as most arguments are, becomes the value itself.
static void paste(RawString& text, RawRange range, RawString& value) {
  if (range.size() == text.length() && value.encoding() == text.encoding())
    text = std::move(value);
  else
    text.replaceRange(range, value, value.all());
}

// Replaces the call at `position`, or gives the state that ends the expansion. Meanwhile the call
// has the text for its own, so that it is changed in place afterwards.
int32_t JobVariableExpander::expandCall(RawString& text, int32_t position) {
  JobVariableArgument argument(*this, std::move(text));
  RawString value;
  const int32_t state = evaluateCall(argument, position, value);
  text = std::move(argument.source);
  if (state == VariableExpanded) paste(text, argument.range, value);
  return state;
}

int32_t JobVariableExpander::evaluateCall(JobVariableArgument& argument, int32_t position,
                                          RawString& value) {
  if (!argument.split(position)) return reportUnbalanced(argument, position);
  argument.name = argument.get(0);
  if (exhausted_) return VariableOverflow;
  if (argument.failure != 0) return argument.failure;
  if (argument.name.isEmpty()) {
    argument.reportError("VariableNameIsMissing"_text, argument.callText());
    return VariableInvalid;
  }
  value = evaluate(argument.name, argument).text;
  if (exhausted_) return VariableOverflow;
  return argument.failure != 0 ? argument.failure : int32_t{VariableExpanded};
}

JobVariableResult JobVariableExpander::evaluate(const RawString& name,
                                                JobVariableArgument& argument) {
  if (depth_ == NestingLimit) return refuseNesting(argument);
  const int32_t number = nextVariableNumber();
  JobVariableExpander inner(this);
  std::optional<JobExecutionRecord> record;
  if (isLogged_) {
    inner.caller_ = JobExecutorPair::variable(number);
    record.emplace(caller_, inner.caller_, argument.callText());
  }
  // As good as a copy of the argument for the function's own: a fault in it goes no further.
  Expander* const expander = std::exchange(argument.expander, &inner);
  const int32_t failure = argument.failure;
  JobVariableResult result = table_->evaluate(name, argument);
  argument.expander = expander;
  argument.failure = failure;
  if (record)
    record->setResult(
        RawString::concat(variableStateWord(result.state), " ("_text, result.text, ")"_text));
  return result;
}

JobVariableResult JobVariableExpander::refuseNesting(const JobVariableArgument& argument) {
  for (JobVariableExpander* each = this; each != nullptr; each = each->outer_)
    each->exhausted_ = true;
  JobToolMessage::ReportVariableError("TooManyVariableExpansions"_text, RawString::emptyStatic(),
                                      argument.callText(), RawString::emptyStatic());
  return {VariableOverflow, RawString()};
}

bool JobVariableExpander::isDefined(const RawString& name) {
  return table_->find(name) != nullptr;
}

RawString JobVariableExpander::expandAndStore(const RawString& text) {
  JobVariableResult result = expand(text);
  table_->lastState = result.state;
  return std::move(result.text);
}

} // namespace JobLayer
