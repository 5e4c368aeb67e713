// JobVariableExpander: turns a text with $(...) into plain text. JobVariableArgument: one parsed
// call, as a function sees it.
//
// An expander is a small value made on the stack at each use. The outermost call is parsed first
// and its arguments stay unexpanded until the function reads them; what a call gives is pasted in
// and scanned again. Every fault is reported where it arises; whoever calls `expand` stores the
// state in the table's last-state slot.
//
// Only "$(" opens a call, ":" parts its arguments and ")" ends it: no quotes, no escapes. One
// object belongs to one thread. The calls inside each other's arguments go NestingLimit deep.
#pragma once

#include "job/JobExecutorPair.h"
#include "job/JobVariable.h"

#include <vector>

namespace JobLayer {

class JobVariableArgument {
 public:
  class Expander {
   public:
    // Slot order: destructor, expand, evaluate, isDefined.
    virtual ~Expander() = default;
    virtual JobVariableResult expand(RawString text) = 0;
    virtual JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument) = 0;
    virtual bool isDefined(const RawString& name) = 0;
  };
  enum Flag : int32_t { Unexpanded = 1, Optional = 2, NotNegative = 4 };

  Expander* expander;
  int32_t failure = 0; // or the state of a fault met while arguments were read
  RawString source;    // the text that holds the call; stays as it is while the call lives
  RawRange range;      // the call in it, with "$(" and ")"
  RawString name;      // expanded; set by whoever evaluates the call

  JobVariableArgument(Expander& owner, RawString text)
      : expander(&owner), source(std::move(text)) {}
  JobVariableArgument(const JobVariableArgument&) = delete;
  JobVariableArgument& operator=(const JobVariableArgument&) = delete;

  // Reads the call whose "$(" stands at `position` of the source: once, before all else. False
  // when it has no end; the tokens in front of it are there then.
  bool split(int32_t position);
  // The name and the arguments.
  [[nodiscard]] int32_t tokenCount() const { return tokenCount_; }
  [[nodiscard]] int32_t argumentCount() const { return tokenCount_ - 1; }
  // The text of argument `index` (0 is the name). A missing one is a fault unless Optional.
  RawString get(int32_t index, int32_t flags = 0);
  // The same as a signed 64-bit number: decimal digits with an optional sign and nothing else,
  // wrapping beyond 64 bits; 0 with `failure` set when it is none.
  int64_t getNumber(int32_t index, int32_t flags = 0);
  [[nodiscard]] RawString callText() const; // "$(...)" as written
  // What a function answers after a fault: its state with an empty text.
  [[nodiscard]] JobVariableResult fault() const { return {failure, RawString()}; }
  // The value of another variable, as the call "$(variable)" gives it; empty when there is none.
  // The name holds no ":" and no bracket.
  RawString ask(const RawString& variable);
  // Names the called variable; empty details are left out.
  void reportError(const RawString& key, const RawString& value,
                   const RawString& script = RawString::emptyStatic());

 private:
  // Of the source, as written.
  struct Token {
    RawRange range;
    bool holdsCall = false;
  };
  // Most calls have few: those need no memory.
  static constexpr int32_t FewTokens = 5;

  template <class Unit>
  bool splitUnits(const Unit* units, int32_t position);
  void addToken(const Token& token);
  [[nodiscard]] Token tokenAt(int32_t index) const;

  Token few_[FewTokens];
  std::vector<Token> more_;
  int32_t tokenCount_ = 0;
};

class JobVariableExpander : public JobVariableArgument::Expander {
 public:
  // Replacements in one text; the next one is refused.
  static constexpr int32_t ReplacementLimit = 99;
  // Calls inside each other's arguments; the next one ends the whole expansion in Overflow.
  static constexpr int32_t NestingLimit = 400;

  explicit JobVariableExpander(const JobExecutorPair& caller,
                               JobVariableList& table = JobVariableStore::instance());
  JobVariableResult expand(RawString text) override;
  JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument) override;
  bool isDefined(const RawString& name) override;
  // `expand`, with the state stored in the table's last-state slot.
  RawString expandAndStore(const RawString& text);

 private:
  explicit JobVariableExpander(JobVariableExpander* outer);
  int32_t expandCall(RawString& text, int32_t position);
  int32_t evaluateCall(JobVariableArgument& argument, int32_t position, RawString& value);
  JobVariableResult refuseNesting(const JobVariableArgument& argument);

  JobVariableList* table_;
  JobExecutorPair caller_; // only the log asks who: a call has one of its own when it is logged
  bool isLogged_;
  JobVariableExpander* outer_ = nullptr; // of the call whose arguments this one expands
  int32_t depth_ = 0;
  bool exhausted_ = false; // the nesting limit was met further in
};

} // namespace JobLayer
