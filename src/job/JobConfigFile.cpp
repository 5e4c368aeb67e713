#include "job/JobConfigFile.h"

#include "job/JobParamParser.h"
#include "job/JobToolMessage.h"
#include "job/JobVariable.h"

namespace JobLayer {

using RawLayer::RawLineFile;
using RawLayer::RawLineRecord;

namespace {

// The lines of the file, cut into sections. They are parsed as they are read, straight from the
// reader's buffer: nothing of a line is kept but what the tree needs.
class ConfigLines : public JobParamLines {
 public:
  ConfigLines(const RawString& path, int32_t bufferSize) : file_(path, bufferSize) {}

  bool open() { return file_.openRead(); }
  // False when the file could not be read to its end.
  bool close() {
    file_.close();
    return file_.state == RawLineFile::Closed;
  }
  bool next() override;
  // Goes to the next header, past what is left of this section; it is the present line then.
  bool nextSection();

 private:
  RawLineFile file_;
  bool atHeader_ = false;
};

bool ConfigLines::next() {
  while (!atHeader_) {
    const RawLineRecord& line = file_.nextLine();
    if (!line.valid) break;
    text_ = &line.text;
    range_ = withoutBlanks(line.text, line.text.all());
    if (range_.isEmpty()) continue;
    const uint16_t first = line.text.at(range_.start);
    if (first == '/') continue;
    if (first != '[') return true;
    atHeader_ = true;
  }
  return false;
}

bool ConfigLines::nextSection() {
  while (next()) {
  }
  return std::exchange(atHeader_, false);
}

struct Targets {
  JobSelectorList& selectors;
  JobButtonList& buttons;
  JobActionList& actions;
};

// A template of the file replaces the one held so far, a name of its own makes an entry.
template <class List>
JobParamList& entryOf(List& list, const RawString& name) {
  if (!name.equals(templateName())) return list.add(name)->params;
  list.templateUnit = {};
  list.templateUnit.rename(name);
  return list.templateUnit.params;
}

// How the name of a section begins, and where its lines go. The first row that fits counts.
struct SectionKind {
  const RawString& prefix;
  JobParamList& (*makeEntry)(const Targets& targets, const RawString& rest);
};

// The kind of the section whose name starts at the position; null for all others.
const SectionKind* kindOf(const RawString& line, int32_t position) {
  static const SectionKind kinds[] = {
      {JobSelectorList::sectionPrefix(),
       [](const Targets& targets, const RawString& rest) -> JobParamList& {
         return entryOf(targets.selectors, rest);
       }},
      {JobButtonList::sectionPrefix(),
       [](const Targets& targets, const RawString& rest) -> JobParamList& {
         return entryOf(targets.buttons, rest);
       }},
      {"Action:"_text,
       [](const Targets& targets, const RawString& rest) -> JobParamList& {
         return targets.actions.add(rest)->params;
       }},
      {"Initialize"_text,
       [](const Targets& targets, const RawString&) -> JobParamList& {
         return targets.actions.add("#Initialize"_text)->params;
       }},
  };
  for (const SectionKind& kind : kinds)
    if (line.equalsAt(position, kind.prefix, 0, kind.prefix.length())) return &kind;
  return nullptr;
}

void readSection(ConfigLines& lines, const Targets& targets) {
  const RawString& line = lines.text();
  const RawRange name = {lines.range().start + 1, lines.range().end - 1};
  if (line.at(name.end) != ']') return;
  const SectionKind* kind = kindOf(line, name.start);
  if (kind == nullptr) return;
  const RawString rest = lines.value({name.start + kind->prefix.length(), name.end});
  if (kind->makeEntry(targets, rest).Parse(lines)) return;
  JobToolMessage::ReportCommandError("UnbalancedSectionBlocks"_text,
                                     RawString::concat("Section "_text, kind->prefix, rest),
                                     RawString::emptyStatic(), RawString::emptyStatic());
}

} // namespace

void JobConfigFile::load(JobSelectorList& selectors, JobButtonList& buttons,
                         JobActionList& actions) {
  load(JobFacts::instance().configFile, selectors, buttons, actions);
}

void JobConfigFile::load(const RawString& path, JobSelectorList& selectors, JobButtonList& buttons,
                         JobActionList& actions, int32_t bufferSize) {
  ConfigLines lines(path, bufferSize);
  const Targets targets{selectors, buttons, actions};
  bool isWhole = !RawLayer::exists(path);
  if (lines.open()) {
    while (lines.nextSection()) readSection(lines, targets);
    isWhole = lines.close();
  }
  JobFacts::instance().configIsWhole = isWhole;
  JobVariableStore::instance().defineInitialVariables();
}

} // namespace JobLayer
