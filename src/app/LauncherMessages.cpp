#include "app/LauncherMessages.h"

#include "app/LauncherOptions.h"
#include "raw/RawLanguage.h"
#include "raw/RawSystem.h"

namespace AppLayer {

using RawLayer::RawLanguage;
using RawLayer::RawLanguageGroup;
using RawLayer::RawLocaleRecord;

namespace {

const RawLanguageGroup& systemMessages() {
  static const RawLocaleRecord table[] = {
      {"BadFormatProfile"_text, "Bad format profile !!"_text},
      {"CannotAccessTemp"_text, "Cannot access temp directory (%s) !!"_text},
      {""_text, ""_text},
  };
  static const RawLanguageGroup group("SystemMessage"_text, table);
  return group;
}

} // namespace

void LauncherMessages::registerTexts() {
  systemMessages();
}

void LauncherMessages::show(const RawString& id, const RawString& argument) {
  RawLayer::messageBox(productName(), RawLanguage::substitute(systemMessages().text(id), argument));
}

void LauncherMessages::showUsage() {
  RawLayer::messageBox(productName(),
                       "Arguments = [-p Profile] [-c ConfigFile] [-a Action] [-l|-r Button] "
                       "[-d Button FullPath]"_text);
}

} // namespace AppLayer
