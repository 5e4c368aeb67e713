// LauncherOptions: what the command line and section "Option" of the configuration file say. A
// profile over the configuration file with the values as plain fields.
//
// Loaded once by the main thread at start-up, read-only after that; never saved. A missing key
// leaves its default in force, a missing file leaves them all.
#pragma once

#include "raw/RawParameterList.h"
#include "raw/RawProfile.h"

namespace AppLayer {

using namespace RawLayer::RawLiterals;
using RawLayer::RawParameterList;
using RawLayer::RawString;

inline const RawString& productName() {
  return "Tarvellon"_text;
}

// Decimal digits with an optional sign; what ends early ends the number, no digits give 0. Wraps
// in 32 bits.
int32_t optionInteger(const RawString& text);
// True unless the text is "False", in any ASCII case: an empty value is true.
bool optionBoolean(const RawString& text);

class LauncherOptions : public RawLayer::RawProfile {
 public:
  RawString logFolder;       // resolved
  RawString iconCacheFolder; // resolved: parent of the cache folders
  RawString cacheFolder;     // of this configuration; empty when there is none
  RawString cacheFile;       // "IconCache.ini" in it
  RawString switchName;      // "a", "l", "r", "d"; empty: main dialog
  RawString switchValue;
  RawString firstPath; // the first bare argument
  RawString pathList;  // all bare arguments, each in double quotes, separated by one blank
  RawString iconExtension = "ico,exe,dll"_text;
  RawString logCategories = "UCPV"_text;
  int32_t maxLogFiles = 200;
  int32_t iconUnusedCount = 60;
  bool viewSelector = false;
  bool horizontal = false;
  bool viewTip = false;
  bool topMost = false;
  bool sysTray = false;
  bool iconCache = true;
  bool iconDelay = true;
  int32_t buttonAlign = 1;    // 0 left, 1 centre, 2 right
  int32_t terminateId = 0;    // process to end before anything is loaded
  RawParameterList arguments; // shared with the caller of load

  static LauncherOptions& instance();
  // Classifies the arguments, reads the options of the configuration file, resolves the folders and
  // finds the cache folder. A cache folder that cannot be had shows one message and switches
  // `iconCache` off.
  void load(const RawString& configPath, const RawParameterList& parsedArguments);
  // The argument text for a restart of this process.
  [[nodiscard]] RawString commandLine() const;

  // The name of a configuration's cache folder, by a hash of its upper-cased path.
  static RawString cacheFolderName(const RawString& upperPath);
  static RawString upperCased(const RawString& path);

 private:
  void classifyArguments();
  void readOptions();
  void resolveFolders();
  bool findCacheFolder(RawString& candidate);
};

} // namespace AppLayer
