#include "SaveKillModes.h"

#include "job/JobDataSaver.h"
#include "raw/RawProfile.h"

#include <cstdlib>

using namespace RawLayer;
using std::string;

namespace SaveKill {

namespace {

constexpr int32_t EntryCount = 600;

const string front = "[Front]\r\na=1\r\nb=\xE3\x82\xBD\xE8\xA1\xA8\xE3\x81\x82\r\n\r\n";
const string behind = "[Behind]\r\nc=3\r\n\r\n";

// Writes the list as the one section of its kind, for both savers that ask for that.
class SectionWriter : public RawProfileEnumeration::Saver, public JobLayer::JobDataSaver::Caller {
 public:
  SectionWriter(const char* name, const RawParameterList& list) : name_(name), list_(list) {}
  bool saveSections(RawLineFile& writer, const RawString&) override {
    writeAll(writer);
    return true;
  }
  void writeAll(RawLineFile& file) override {
    RawProfile::writeSection(file, RawString::fromChars(name_), list_);
  }

 private:
  const char* name_;
  const RawParameterList& list_;
};

bool saveProfile(const RawString& path, const RawParameterList& list) {
  return RawProfile(path).saveSection(list, "Data"_text);
}

bool saveFamily(const RawString& path, const RawParameterList& list) {
  SectionWriter saver("Item", list);
  return RawProfileEnumeration(RawProfile(path)).save(saver, "Item"_text);
}

bool saveConfig(const RawString& path, const RawParameterList& list) {
  SectionWriter caller("Button:All", list);
  return JobLayer::JobDataSaver::save(path, caller, "Button:"_text);
}

string keyOf(int32_t index) {
  return "Key" + std::to_string(index);
}
string valueOf(int32_t version) {
  return std::to_string(version) + " is the version of this line";
}

} // namespace

const std::vector<Mode>& modes() {
  static const std::vector<Mode> table{{"profile", "Data", saveProfile},
                                       {"family", "Item", saveFamily},
                                       {"config", "Button:All", saveConfig}};
  return table;
}

const Mode* modeNamed(const string& name) {
  for (const Mode& mode : modes())
    if (name == mode.name) return &mode;
  return nullptr;
}

RawParameterList listOf(int32_t version) {
  RawParameterList list;
  for (int32_t i = 0; i < EntryCount; ++i)
    list.add(RawString::fromChars(keyOf(i).c_str()))->value =
        RawString::fromChars(valueOf(version).c_str());
  return list;
}

string fileOf(const Mode& mode, int32_t version) {
  string file = front + "[" + mode.section + "]\r\n";
  for (int32_t i = 0; i < EntryCount; ++i) file += keyOf(i) + "=" + valueOf(version) + "\r\n";
  return file + "\r\n" + behind;
}

int32_t versionOf(const Mode& mode, const string& bytes) {
  const string first = keyOf(0) + "=";
  const std::size_t place = bytes.find(first);
  if (place == string::npos) return -1;
  const int32_t version = std::atoi(bytes.c_str() + place + first.size());
  return bytes == fileOf(mode, version) ? version : -1;
}

} // namespace SaveKill
