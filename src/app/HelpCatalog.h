// HelpCatalog: the documents beside the executable, and how one is opened: texts in the viewer
// program if it is installed, all else by the platform's association. Main thread. Nothing is
// reported: what is missing is empty, a start that fails shows nothing.
#pragma once

#include "raw/RawProfile.h"
#include "raw/RawStringList.h"

namespace AppLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawString;
using RawLayer::RawStringList;

class HelpCatalog {
 public:
  RawString folder;               // of the executable
  RawString readme;               // full path; empty when there is none
  RawStringList viewerExtensions; // of documents for the viewer
  RawStringList documents;        // full paths, sorted

  // Finds all of it by section "Manual" of the configuration file. The readme is the one of the
  // language in use, if there is one.
  void load(RawLayer::RawProfile& options);
  // Opens one document; nothing for an empty path.
  void open(const RawString& path) const;

  // `load` with the folder and the language as told: the name of a language may be empty.
  void loadFrom(RawLayer::RawProfile& options, const RawString& programFolder,
                const RawString& language);

 private:
  void findReadme(const RawString& language);
  void findDocuments(const RawString& places);
  void addMatches(const RawString& place);
  [[nodiscard]] RawString viewer() const; // empty when it is not installed
};

} // namespace AppLayer
