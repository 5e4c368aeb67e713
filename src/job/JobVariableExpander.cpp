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

namespace JobLayer {

static constexpr int32_t OpeningLength = 2; // of "$("

static int32_t findOpening(const RawString& text, int32_t from) {
  const RawString& opening = "$("_text;
  return text.find({from, text.length()}, opening, opening.all());
}

static void addToken(JobVariableArgument& argument, RawRange range) {
  const RawString& source = argument.source;
  argument.tokens.append(new RawString(RawString::fromRange(source.encoding(), source, range)));
}

// Fills the tokens and the range of the call that opens at `position`; false when it has no end.
template <class Unit>
static bool splitUnits(JobVariableArgument& argument, const Unit* units, int32_t position) {
  const int32_t length = argument.source.length();
  int32_t depth = 0;
  int32_t tokenStart = position + OpeningLength;
  for (int32_t i = tokenStart; i < length; ++i) {
    const Unit unit = units[i];
    if (unit == '$' && i + 1 < length && units[i + 1] == '(') {
      ++depth;
    } else if (unit == ')' && depth > 0) {
      --depth;
    } else if ((unit == ':' || unit == ')') && depth == 0) {
      addToken(argument, {tokenStart, i});
      tokenStart = i + 1;
      argument.range = {position, tokenStart};
      if (unit == ')') return true;
    }
  }
  return false;
}

static bool splitCall(JobVariableArgument& argument, int32_t position) {
  const RawString& source = argument.source;
  return source.encoding() == RawLayer::EncodingWide
             ? splitUnits(argument, source.wide(), position)
             : splitUnits(argument, source.text(), position);
}

static int32_t reportUnbalanced(const JobVariableArgument& argument, int32_t position) {
  const RawString& text = argument.source;
  const RawString* const token = RawLayer::RawStringList::element(argument.tokens.first());
  const RawRange behind{position + OpeningLength, text.length()};
  JobToolMessage::ReportVariableError(
      "UnbalancedVariableBlock"_text,
      token != nullptr ? *token : RawString::fromRange(text.encoding(), text, behind),
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

JobVariableResult JobVariableExpander::expand(const RawString& source) {
  if (outer_ == nullptr) exhausted_ = false;
  if (exhausted_) return {VariableOverflow, RawString()};
  RawString text(source);
  int32_t position = findOpening(text, 0);
  for (int32_t replacements = 1; position < text.length(); ++replacements) {
    const int32_t state = expandCall(text, position);
    if (state == VariableOverflow) return {VariableOverflow, RawString()};
    if (state != VariableExpanded) return {state, text};
    if (replacements > ReplacementLimit) {
      JobToolMessage::ReportVariableError("TooManyVariableExpansions"_text,
                                          RawString::emptyStatic(), text, RawString::emptyStatic());
      return {VariableOverflow, RawString()};
    }
    position = findOpening(text, text.at(position - 1) == u'$' ? 0 : position);
  }
  return {VariableSuccess, text};
}

// Replaces the call at `position`, or gives the state that ends the expansion.
int32_t JobVariableExpander::expandCall(RawString& text, int32_t position) {
  RawRange range;
  RawString value;
  {
    JobVariableArgument argument(*this, text);
    if (!splitCall(argument, position)) return reportUnbalanced(argument, position);
    const RawString name = argument.get(0);
    if (exhausted_) return VariableOverflow;
    if (argument.failure != 0) return argument.failure;
    if (name.isEmpty()) {
      argument.reportError("VariableNameIsMissing"_text, argument.callText());
      return VariableInvalid;
    }
    value = evaluate(name, argument).text;
    if (exhausted_) return VariableOverflow;
    if (argument.failure != 0) return argument.failure;
    range = argument.range;
  } // gives its share of the text back, which is then changed in place
  text.replaceRange(range, value, value.all());
  return VariableExpanded;
}

JobVariableResult JobVariableExpander::evaluate(const RawString& name,
                                                JobVariableArgument& argument) {
  if (depth_ == NestingLimit) return refuseNesting(argument);
  const JobExecutorPair self = JobExecutorPair::variable(nextVariableNumber());
  const bool isLogged = JobExecutionRecord::logsRuns();
  JobExecutionRecord record(caller_, self, isLogged ? argument.callText() : RawString());
  JobVariableExpander inner(self, *this);
  JobVariableArgument own(argument);
  own.expander = &inner;
  own.name = name;
  JobVariableResult result = answer(name, own);
  if (isLogged)
    record.setResult(
        RawString::concat(variableStateWord(result.state), " ("_text, result.text, ")"_text));
  return result;
}

// A user's value is copied under the lock; a function runs without it.
JobVariableResult JobVariableExpander::answer(const RawString& name,
                                              JobVariableArgument& argument) {
  JobVariableUnit* unit = nullptr;
  {
    const RawLayer::RawLockScope scope(table_->lock);
    unit = table_->find(name);
    if (unit == nullptr) return {VariableUnknown, RawString()};
    if ((unit->flags & JobVariableUnit::UserVariable) != 0) return unit->evaluate(argument);
  }
  return unit->evaluate(argument);
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
