// LauncherFiles: which files this process works with. Found once at start-up, main thread.
#pragma once

#include "app/LauncherOptions.h"

namespace AppLayer {

class LauncherFiles {
 public:
  RawString profile;    // the file with section "Common"
  RawString guiProfile; // the windows' look; the profile itself unless it says otherwise
  RawString configFile; // selectors, buttons, actions, options; likewise

  // Finds and checks the profile, creating it when it is missing, and reads where the other files
  // are; tells the catalogue of messages its file and language. False when the profile is a file
  // of somebody else: the user has been told.
  bool find(const RawString& executable, const RawParameterList& arguments);

  // The profile that belongs to an executable: its path with ".ini" for the last four units.
  static RawString defaultProfile(const RawString& executable);

 private:
  bool checkProfile() const;
  void readCommon(const RawString& programFolder);
};

} // namespace AppLayer
