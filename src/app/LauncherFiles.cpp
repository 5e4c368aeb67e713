#include "app/LauncherFiles.h"

#include "app/LauncherMessages.h"
#include "raw/RawFile.h"
#include "raw/RawLanguage.h"
#include "raw/RawPath.h"

namespace AppLayer {

using RawLayer::RawLanguage;
using RawLayer::RawProfile;

RawString LauncherFiles::defaultProfile(const RawString& executable) {
  const int32_t suffix = 4;
  RawString path = executable;
  if (path.length() > suffix) path.removeRange(path.length() - suffix, suffix);
  path.append(".ini"_text);
  return path;
}

bool LauncherFiles::find(const RawString& executable, const RawParameterList& arguments) {
  const RawString folder = RawLayer::folderOf(executable);
  profile = defaultProfile(executable);
  const RawString chosen = arguments.valueOf("p"_text);
  if (!chosen.isEmpty()) profile = RawLayer::absolutePath(folder, chosen);

  if (!checkProfile()) {
    LauncherMessages::show("BadFormatProfile"_text);
    return false;
  }
  guiProfile = profile;
  configFile = profile;
  readCommon(folder);
  return true;
}

bool LauncherFiles::checkProfile() const {
  const RawString& section = "Common"_text;
  const RawString& key = "Program"_text;
  RawProfile file(profile);
  if (!RawLayer::exists(profile)) {
    file.writeValue(section, key, productName());
    return true;
  }
  return !RawLayer::isFile(profile) || !file.readValue(section, key).isEmpty();
}

void LauncherFiles::readCommon(const RawString& programFolder) {
  RawProfile file(profile);
  RawParameterList common;
  file.loadSection(common, "Common"_text);
  const auto resolved = [&](const RawString& key, const RawString& fallback) {
    const RawString value = common.valueOf(key);
    return value.isEmpty() ? fallback
                           : RawLayer::resolveUserPath(productName(), value, programFolder);
  };
  guiProfile = resolved("GuiProfile"_text, profile);
  configFile = resolved("ConfigFile"_text, profile);

  RawLanguage& language = RawLanguage::instance();
  language.setSelection(common.valueOf("Language"_text));
  RawString messages = resolved("LanguageFile"_text, RawString::emptyStatic());
  for (const RawString& folder : {RawLayer::folderOf(configFile), programFolder}) {
    if (!messages.isEmpty()) break;
    const RawString place = RawLayer::joinPath(folder, "LanguageFile.ini"_text);
    if (RawLayer::isFile(place)) messages = place;
  }
  language.setPath(messages);
}

} // namespace AppLayer
