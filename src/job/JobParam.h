// JobParamUnit and its list: a section of the configuration as a tree of values and blocks. There
// is no other compiled form of a script.
//
// Lists are shared by reference; a run holds a reference on what it walks. A change starts with
// `duplicate`, so a body with more than one sharer is never written and readers need no lock.
// Parameters do not fail: a missing key gives an empty text.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawLineFile.h"
#include "raw/RawList.h"
#include "raw/RawRegion.h"

namespace JobLayer {

class JobParamLines;

class JobParamUnit {
 public:
  enum Type : int32_t { TypeNone = 0, TypeText = 1, TypeCommand = 2 };

  RawString key;

  explicit JobParamUnit(const RawString& name) : key(name) {}
  explicit JobParamUnit(RawString&& name) : key(std::move(name)) {}
  static void* operator new(std::size_t size) { return RawLayer::RawRegion::takeAlone(size); }
  static void* operator new(std::size_t size, RawLayer::RawRegion& region) {
    return region.take(size);
  }
  static void operator delete(void* memory) { RawLayer::RawRegion::give(memory); }
  static void operator delete(void* memory, RawLayer::RawRegion&) {
    RawLayer::RawRegion::give(memory);
  }
  // Slot order: destructor, type, clone, write, substitute, summarize.
  virtual ~JobParamUnit() = default;
  [[nodiscard]] virtual int32_t type() const { return TypeNone; }
  [[nodiscard]] virtual JobParamUnit* clone() const = 0; // the caller owns it
  virtual void write(RawLayer::RawLineFile& file, int32_t indent) const = 0;
  // Replaces the first occurrence of the pattern in each value.
  virtual void substitute(const RawString& pattern, const RawString& replacement) = 0;
  virtual void summarize(RawString& target) const = 0; // appends the log form
};

class JobParamListAllocator : public RawLayer::RawListAllocator<JobParamUnit> {
 public:
  void destroy(JobParamUnit* element) override;
};

class JobParamList : public RawLayer::RawListR<JobParamListAllocator, JobParamUnit>,
                     public RawLayer::RawDataShared::Duplicator {
 public:
  // Blocks may stand in each other to this depth; a deeper one counts as unbalanced. Whatever walks
  // a tree may therefore call itself for each level.
  static constexpr int32_t MaxNesting = 500;

  JobParamList() = default;
  explicit JobParamList(RawLayer::RawRegion& region) : RawListR(region) {}

  // Replaces the contents by the lines' entries. False on unbalanced blocks: what was added before
  // the fault stays.
  bool Parse(const RawLayer::RawRangedTextList& lines);
  // The same for lines that are read while they are parsed. On a fault some may be left unread.
  bool Parse(JobParamLines& lines);
  void addText(const RawString& key, const RawString& value);
  void addBlock(const RawString& key, const JobParamList& params); // shares that list
  // The first entry with the key, exact case; null when missing.
  [[nodiscard]] JobParamUnit* find(const RawString& key) const;
  // The raw value of the first entry with the key; empty when missing or a block.
  [[nodiscard]] RawString text(const RawString& key) const;
  void writeAll(RawLayer::RawLineFile& file, int32_t indent) const;
  void summarizeAll(RawString& target) const;
  // A private copy with the pattern replaced in every value, at every level.
  [[nodiscard]] JobParamList substituted(const RawString& pattern,
                                         const RawString& replacement) const;
  void substituteAll(const RawString& pattern, const RawString& replacement);
  void duplicate() override;

 private:
  enum ParseResult { Fault = 0, ClosedByBrace = 1, EndOfLines = 2 };
  ParseResult ParseLines(JobParamLines& lines, int32_t nesting);
};

class JobParamText : public JobParamUnit {
 public:
  RawString value; // as it stood behind the "=", unexpanded

  JobParamText(const RawString& name, const RawString& text) : JobParamUnit(name), value(text) {}
  JobParamText(RawString&& name, RawString&& text)
      : JobParamUnit(std::move(name)), value(std::move(text)) {}
  [[nodiscard]] int32_t type() const override { return TypeText; }
  [[nodiscard]] JobParamUnit* clone() const override;
  void write(RawLayer::RawLineFile& file, int32_t indent) const override;
  void substitute(const RawString& pattern, const RawString& replacement) override;
  void summarize(RawString& target) const override;
};

class JobParamCommand : public JobParamUnit {
 public:
  JobParamList params; // the lines inside its braces

  explicit JobParamCommand(const RawString& name) : JobParamUnit(name) {}
  JobParamCommand(const RawString& name, const JobParamList& list)
      : JobParamUnit(name), params(list) {}
  JobParamCommand(RawString&& name, RawLayer::RawRegion& region)
      : JobParamUnit(std::move(name)), params(region) {}
  [[nodiscard]] int32_t type() const override { return TypeCommand; }
  [[nodiscard]] JobParamUnit* clone() const override; // shares the inner list
  void write(RawLayer::RawLineFile& file, int32_t indent) const override;
  void substitute(const RawString& pattern, const RawString& replacement) override;
  void summarize(RawString& target) const override;
};

} // namespace JobLayer
