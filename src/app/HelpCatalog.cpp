#include "app/HelpCatalog.h"

#include "raw/RawFile.h"
#include "raw/RawFolder.h"
#include "raw/RawLanguage.h"
#include "raw/RawPath.h"
#include "raw/RawPattern.h"
#include "raw/RawShell.h"

namespace AppLayer {

using RawLayer::RawRange;
using RawLayer::RawShell;

namespace {

const RawString& viewerName() {
  return "Zenvik"_text;
}

bool matchesOne(const RawStringList& patterns, const RawString& name) {
  for (const RawString& pattern : patterns.elements())
    if (RawLayer::RawPattern(pattern).match(name, true)) return true;
  return false;
}

} // namespace

void HelpCatalog::load(RawLayer::RawProfile& options) {
  loadFrom(options, RawLayer::programFolder(), RawLayer::RawLanguage::instance().section());
}

void HelpCatalog::loadFrom(RawLayer::RawProfile& options, const RawString& programFolder,
                           const RawString& language) {
  folder = programFolder;
  findReadme(language);
  RawLayer::RawParameterList manual;
  options.loadSection(manual, "Manual"_text);
  const RawString extensions = manual.valueOf(viewerName(), "txt,md"_text);
  viewerExtensions.clear();
  viewerExtensions.split(extensions, extensions.all(), true);
  findDocuments(manual.valueOf("Manual"_text, "ReadMe_*.txt,ReadMe_*.md,*.pdf"_text));
}

void HelpCatalog::findReadme(const RawString& language) {
  const RawString plain = RawLayer::joinPath(folder, "ReadMe_Tarvellon.txt"_text);
  readme = plain;
  if (!language.isEmpty()) {
    readme = RawLayer::joinPath(folder, "ReadMe_Tarvellon_"_text);
    readme.append(language);
    readme.append(".txt"_text);
    if (RawLayer::isFile(readme)) return;
    readme = plain;
  }
  if (!RawLayer::isFile(readme)) readme.release();
}

void HelpCatalog::findDocuments(const RawString& places) {
  documents.clear();
  for (int32_t start = 0; start < places.length();) {
    const int32_t end = places.findChar({start, places.length()}, ';');
    const RawRange place = places.trimRange({start, end}, " \t"_text);
    if (!place.isEmpty()) addMatches(RawString::fromRange(places.encoding(), places, place));
    start = end + 1;
  }
  RawLayer::RawStringListSort(documents).sortAll();
}

// The last part of a place is a list of patterns, all before it the folder.
void HelpCatalog::addMatches(const RawString& place) {
  const RawString path = RawLayer::absolutePath(folder, place);
  RawStringList patterns;
  patterns.split(path, RawLayer::nameRange(path), true);
  RawLayer::RawFolderWalker walker(RawLayer::folderOf(path));
  while (walker.next())
    if (!walker.isFolder() && matchesOne(patterns, walker.name))
      documents.addUnique(walker.fullPath);
}

RawString HelpCatalog::viewer() const {
  const RawString name = RawString::concat(viewerName(), ".exe"_text);
  for (const RawString& place : {folder, RawLayer::joinPath(folder, viewerName()),
                                 RawLayer::joinPath(RawLayer::folderOf(folder), viewerName())}) {
    RawString path = RawLayer::joinPath(place, name);
    if (RawLayer::isFile(path)) return path;
  }
  return {};
}

void HelpCatalog::open(const RawString& path) const {
  if (path.isEmpty()) return;
  const RawRange extension = RawLayer::extensionRange(path);
  const bool isForViewer = !RawStringList::isEnd(
      viewerExtensions.find(RawString::fromRange(path.encoding(), path, extension)));
  const RawString program = isForViewer ? viewer() : RawString();
  if (program.isEmpty())
    RawShell(path).execute(RawString::emptyStatic(), RawString::emptyStatic());
  else
    RawShell(program).execute(RawString::concat("\""_text, path, "\""_text),
                              RawString::emptyStatic());
}

} // namespace AppLayer
