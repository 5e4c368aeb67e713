#include "app/LauncherOptions.h"

#include "app/LauncherMessages.h"
#include "raw/RawFile.h"
#include "raw/RawNumber.h"
#include "raw/RawPath.h"
#include "raw/RawProcess.h"
#include "raw/RawSystem.h"

namespace AppLayer {

using RawLayer::RawNumberParser;
using RawLayer::RawParameterUnit;
using RawLayer::RawProfile;
using RawLayer::RawRange;

int32_t optionInteger(const RawString& text) {
  const bool isNegative = text.at(0) == '-';
  const int32_t start = isNegative || text.at(0) == '+' ? 1 : 0;
  RawNumberParser parser;
  parser.parseInBase(text, RawRange{start, text.length()}, 10);
  const auto value = static_cast<uint32_t>(parser.value);
  return static_cast<int32_t>(isNegative ? 0 - value : value);
}

bool optionBoolean(const RawString& text) {
  return !text.equalsNoCase("False"_text);
}

LauncherOptions& LauncherOptions::instance() {
  static LauncherOptions options;
  return options;
}

void LauncherOptions::load(const RawString& configPath, const RawParameterList& parsedArguments) {
  path = configPath;
  readPath = configPath;
  arguments = parsedArguments;
  arguments.caseSensitive = parsedArguments.caseSensitive;
  classifyArguments();
  readOptions();
  resolveFolders();

  RawString candidate;
  if (!findCacheFolder(candidate)) {
    iconCache = false;
    cacheFolder.release();
    cacheFile.release();
    LauncherMessages::show("CannotAccessTemp"_text, candidate);
  }
}

void LauncherOptions::classifyArguments() {
  const RawString& bareTag = "NoTag"_text;
  for (const RawParameterUnit& unit : arguments.elements()) {
    const RawString& key = unit.key;
    if (key.equals("a"_text) || key.equals("l"_text) || key.equals("r"_text) ||
        key.equals("d"_text)) {
      switchName = key;
      switchValue = unit.value;
    } else if (key.rangeEquals({0, bareTag.length()}, bareTag, bareTag.all())) {
      if (key.equals("NoTag_1"_text)) firstPath = unit.value;
      if (!pathList.isEmpty()) pathList.appendChar(' ');
      pathList.append5("\""_text, unit.value, "\""_text);
    }
  }

  const RawString& extension = ".ini"_text;
  const int32_t stem = firstPath.length() - extension.length();
  if (switchName.isEmpty() && stem >= 0 &&
      firstPath.startsWithAt(stem, extension, extension.length())) {
    path = firstPath;
    readPath = firstPath;
  }
  if (const RawParameterUnit* predecessor = arguments.find("@"_text))
    terminateId = optionInteger(predecessor->value);
}

namespace {

// One key of section "Option" and the field that it fills.
struct OptionText {
  const RawString& key;
  RawString LauncherOptions::*field;
};
struct OptionNumber {
  const RawString& key;
  int32_t LauncherOptions::*field;
};
struct OptionFlag {
  const RawString& key;
  bool LauncherOptions::*field;
};

int32_t alignIndex(const RawString& name, int32_t fallback) {
  const RawString* const names[] = {&"Left"_text, &"Center"_text, &"Right"_text};
  for (int32_t i = 0; i < 3; ++i)
    if (name.equals(*names[i])) return i;
  return fallback;
}

} // namespace

void LauncherOptions::readOptions() {
  static const OptionText texts[] = {
      {"LogFolder"_text, &LauncherOptions::logFolder},
      {"IconCacheFolder"_text, &LauncherOptions::iconCacheFolder},
      {"IconExtension"_text, &LauncherOptions::iconExtension},
  };
  static const OptionNumber numbers[] = {
      {"MaxLogFiles"_text, &LauncherOptions::maxLogFiles},
      {"IconUnusedCount"_text, &LauncherOptions::iconUnusedCount},
  };
  static const OptionFlag flags[] = {
      {"ViewSelector"_text, &LauncherOptions::viewSelector},
      {"Horizontal"_text, &LauncherOptions::horizontal},
      {"ViewTip"_text, &LauncherOptions::viewTip},
      {"TopMost"_text, &LauncherOptions::topMost},
      {"SysTray"_text, &LauncherOptions::sysTray},
      {"IconCache"_text, &LauncherOptions::iconCache},
      {"IconDelay"_text, &LauncherOptions::iconDelay},
  };

  RawParameterList options;
  loadSection(options, "Option"_text);
  for (const OptionText& text : texts)
    if (const RawParameterUnit* unit = options.find(text.key)) this->*text.field = unit->value;
  for (const OptionNumber& number : numbers)
    if (const RawParameterUnit* unit = options.find(number.key))
      this->*number.field = optionInteger(unit->value);
  for (const OptionFlag& flag : flags)
    if (const RawParameterUnit* unit = options.find(flag.key))
      this->*flag.field = optionBoolean(unit->value);
  if (const RawParameterUnit* unit = options.find("ButtonAlign"_text))
    buttonAlign = alignIndex(unit->value, buttonAlign);
}

void LauncherOptions::resolveFolders() {
  const RawString base = RawLayer::folderOf(path);
  const auto resolve = [&base](RawString& folder, const RawString& name) {
    folder = folder.isEmpty() ? RawLayer::joinPath(RawLayer::tempFolder(), name)
                              : RawLayer::resolveUserPath(productName(), folder, base);
  };
  resolve(logFolder, "Tarvellon\\Log"_text);
  resolve(iconCacheFolder, "Tarvellon"_text);
}

RawString LauncherOptions::upperCased(const RawString& path) {
  RawString upper = path.shareAs(RawLayer::EncodingUtf8);
  upper.unshare();
  for (int32_t i = 0; i < upper.length(); ++i)
    upper.mutableText()[i] = static_cast<char>(RawLayer::rawFold(upper.at(i)));
  return upper;
}

RawString LauncherOptions::cacheFolderName(const RawString& upperPath) {
  uint32_t hash = 0;
  for (int32_t i = 0; i < upperPath.length(); ++i) {
    hash += upperPath.at(i);
    hash = (hash << 1) | (hash >> 31);
  }
  return RawString::concat("CACHE_"_text, RawString::fromDigits(hash, 16, 8));
}

// Each configuration owns a folder; a folder whose proof names another one is passed over.
bool LauncherOptions::findCacheFolder(RawString& candidate) {
  const RawString& section = "Identify"_text;
  const RawString& key = "Profile"_text;
  const RawString owner = upperCased(path);
  const RawString first = RawLayer::joinPath(iconCacheFolder, cacheFolderName(owner));
  candidate = first;
  for (uint32_t tries = 0;; ++tries) {
    if (!RawLayer::isFolder(candidate) && !RawLayer::makeFolders(candidate)) return false;
    RawProfile proof(RawLayer::joinPath(candidate, "IconCache.ini"_text));
    const RawString found = proof.readValue(section, key);
    if (found.isEmpty()) proof.writeValue(section, key, owner);
    if (found.isEmpty() || found.equals(owner)) {
      cacheFolder = candidate;
      cacheFile = proof.path;
      return true;
    }
    const RawString count = RawString::fromUInt64(tries, 16);
    candidate = first;
    candidate.append(count, {2, count.length()}); // without its "0x"
  }
}

RawString LauncherOptions::commandLine() const {
  RawString line = RawString::withCapacity(260);
  line.append("-@ "_text);
  line.appendInt64(RawLayer::currentProcessId());
  for (const RawParameterUnit& unit : arguments.elements()) {
    if (unit.key.equals("@"_text)) continue;
    line.append5(" -"_text, unit.key);
    if (!unit.value.isEmpty()) line.append5(" "_text, unit.value);
  }
  return line;
}

} // namespace AppLayer
