// Profiles in tests: sections as plain texts.
#pragma once

#include "TestText.h"
#include "raw/RawProfile.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace TestProfile {

using Texts = std::vector<std::string>;

// Each entry as "key=value".
inline Texts textsOf(const RawLayer::RawParameterList& list) {
  Texts texts;
  for (const RawLayer::RawParameterUnit& unit : list.elements())
    texts.push_back(bytesOf(unit.key) + "=" + bytesOf(unit.value));
  return texts;
}
inline Texts sectionOf(RawLayer::RawProfile& profile, const std::string& section) {
  RawLayer::RawParameterList list;
  const bool filled = profile.loadSection(list, raw(section));
  Texts texts = textsOf(list);
  if (filled != !texts.empty()) texts.push_back("loadSection says the contrary");
  return texts;
}
inline Texts sectionOf(const RawLayer::RawString& path, const std::string& section) {
  RawLayer::RawProfile profile(path);
  return sectionOf(profile, section);
}

inline RawLayer::RawParameterList
listOf(std::initializer_list<std::pair<std::string, std::string>> entries) {
  RawLayer::RawParameterList list;
  for (const auto& [key, value] : entries) list.add(raw(key))->value = raw(value);
  return list;
}

} // namespace TestProfile
