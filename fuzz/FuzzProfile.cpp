// Bytes as a profile: read and compared with a plain reader, a section saved and the file compared
// with what a plain writer makes of it, saved with a call of the platform failing, and used as a
// language file.
//
// Input: size of a block, which section and what fails, bytes per read, then the file.

#include "LineReference.h"
#include "PlainText.h"
#include "TestProfile.h"
#include "host/HostFaults.h"
#include "raw/RawEncodings.h"
#include "raw/RawLanguage.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace RawLayer;
using LineReference::Line;
using std::string;
using TestProfile::Texts;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

// The file under test, in memory where the machine has such a folder.
class ProfileFolder {
 public:
  ProfileFolder() {
    const std::filesystem::path base =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    folder_ = base / ("TarvellonFuzzProfile" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~ProfileFolder() { std::filesystem::remove_all(folder_); }
  ProfileFolder(const ProfileFolder&) = delete;
  ProfileFolder& operator=(const ProfileFolder&) = delete;

  [[nodiscard]] RawString path() const { return raw(file()); }
  void write(const string& bytes) const {
    std::ofstream(file(), std::ios::binary).write(bytes.data(), std::ssize(bytes));
  }
  [[nodiscard]] string read() const {
    std::ifstream stream(file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  [[nodiscard]] string file() const { return (folder_ / "p.ini").string(); }
  std::filesystem::path folder_;
};

// --- The plain reader

bool isConverted(int32_t encoding) {
  return encoding == EncodingShiftJis || encoding == EncodingUtf16Be || encoding == EncodingUtf16Le;
}
string converted(int32_t from, int32_t to, const string& bytes) {
  if (bytes.empty()) return bytes;
  return bytesOf(
      RawString::fromBytes(from, bytes.data(), static_cast<int32_t>(bytes.size())).shareAs(to));
}

struct File {
  int32_t encoding;
  string mark;
  string text; // behind the mark
};
File fileOf(const string& data) {
  const int32_t found = detectMark(data.data(), static_cast<int32_t>(data.size()));
  const RawMark mark = found != 0 ? markOf(found) : RawMark{"", 0};
  const auto size = static_cast<std::size_t>(mark.size);
  return {found != 0 ? found : LineReference::detect(data), data.substr(0, size),
          data.substr(size)};
}

// The section's name in UTF-8.
string nameOf(const string& line) {
  const std::size_t stop = line.rfind(']');
  return line.substr(1, stop == string::npos ? stop : stop - 1);
}
bool isSameName(const string& a, const string& b) {
  return raw(a).equalsNoCase(raw(b));
}

void addEntries(Texts& entries, const string& line) {
  if (line.starts_with("//")) return;
  const RawString text = raw(line);
  for (int32_t start = 0; start < text.length();) {
    const int32_t stop = PlainText::findChar(text, {start, text.length()}, 0);
    const int32_t equals = PlainText::findChar(text, {start, stop}, '=');
    const auto part = [&](int32_t from, int32_t to) {
      return from < to
                 ? line.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from))
                 : string();
    };
    if (stop > start) entries.push_back(part(start, equals) + "=" + part(equals + 1, stop));
    start = stop + 1;
  }
}

struct Section {
  string name;
  Texts entries;
};
std::vector<Section> sectionsOf(const string& utf8) {
  std::vector<Section> sections;
  for (const Line& line : LineReference::cut(utf8, EncodingUtf8))
    if (line.text.starts_with("["))
      sections.push_back({nameOf(line.text), {}});
    else if (!sections.empty())
      addEntries(sections.back().entries, line.text);
  return sections;
}

// --- The plain writer

RawParameterList newEntries() {
  return TestProfile::listOf({{"k", "1"}, {"", "2"}, {"m", ""}});
}
const char* const newLines = "k=1\r\n=2\r\nm=\r\n\r\n";

// `names` are given the sections that stand in the bytes.
string fileWith(const File& file, const string& section, Texts& names) {
  const bool converts = isConverted(file.encoding);
  const auto inFile = [&](const string& utf8) {
    return converts ? converted(EncodingUtf8, file.encoding, utf8) : utf8;
  };
  string result = file.mark;
  bool found = false;
  bool skips = false;
  for (const Line& line : LineReference::cut(file.text, file.encoding)) {
    const string text = converts ? converted(file.encoding, EncodingUtf8, line.text) : line.text;
    if (text.starts_with("[")) {
      const string name = nameOf(text);
      names.push_back(name);
      skips = isSameName(name, section);
      found = found || skips;
      result += inFile("[" + name + "]\r\n" + (skips ? newLines : ""));
    } else if (!skips) {
      result += line.text + inFile("\r\n");
    }
  }
  return found ? result : result + inFile("[" + section + "]\r\n" + newLines);
}

// --- The checks

struct Choice {
  int32_t bufferSize;
  bool existing; // the section that is saved
  int32_t fault; // the number of the call
  int32_t readLimit;
};

void checkReading(const ProfileFolder& folder, const std::vector<Section>& sections,
                  int32_t bufferSize) {
  RawProfile profile(folder.path());
  profile.bufferSize = bufferSize;
  RawProfileEnumeration walk(profile);
  require(walk.open());
  for (const Section& section : sections) {
    require(walk.hasSection() && bytesOf(walk.currentSection) == section.name);
    RawParameterList parameters;
    require(bytesOf(walk.nextSection(parameters)) == section.name);
    require(TestProfile::textsOf(parameters) == section.entries);
  }
  require(!walk.hasSection() && walk.close() == RawLineFile::Closed);
  if (sections.empty()) return;
  const Section& last = sections.back();
  Texts all;
  for (const Section& section : sections)
    if (isSameName(section.name, last.name))
      all.insert(all.end(), section.entries.begin(), section.entries.end());
  RawParameterList list;
  require(profile.loadSection(list, raw(last.name)) == !all.empty());
  require(TestProfile::textsOf(list) == all);
  for (const RawParameterUnit& unit : list.elements())
    require(profile.readValue(raw(last.name), unit.key, "none"_text)
                .equals(list.find(unit.key)->value));
}

// A byte that is no character may swallow a line end, and a section with it: then bytes and text
// show different sections, and the file is refused.
void checkSaving(const ProfileFolder& folder, const string& data, const string& section,
                 const std::vector<Section>& sections, bool isReadable, bool isExact,
                 const Choice& choice) {
  Texts names;
  const string expected = fileWith(fileOf(data), section, names);
  Texts namesRead;
  for (const Section& each : sections) namesRead.push_back(each.name);
  const bool isTaken = isReadable && names == namesRead;
  RawProfile profile(folder.path());
  profile.bufferSize = choice.bufferSize;
  {
    HostFaults::Scope faults;
    faults.failNth(choice.fault);
    faults.limitReads(choice.readLimit);
    const bool replaced = profile.saveSection(newEntries(), raw(section));
    require(folder.read() == (replaced ? expected : data));
  }
  folder.write(data);
  const bool replaced = profile.saveSection(newEntries(), raw(section));
  require(replaced == isTaken || !isExact);
  require(folder.read() == (replaced ? expected : data));
}

// Only the chosen section may change, and nothing in a file that cannot be read.
void checkLanguage(const ProfileFolder& folder, const string& data, const string& section,
                   const std::vector<Section>& sections) {
  RawProfile profile(folder.path());
  RawParameterList before;
  RawParameterList after;
  string other;
  bool makesSection = false; // an item behind a zero unit that becomes a line of its own
  for (const Section& each : sections)
    if (!isSameName(each.name, section))
      other = each.name;
    else
      for (const string& entry : each.entries)
        makesSection = makesSection || entry.starts_with("[");
  profile.loadSection(before, raw(other));
  const int32_t encoding = profile.encoding;
  const bool isReadable = profile.readState == RawLineFile::Closed; // with blocks of the usual size

  RawLanguage language;
  language.setPath(folder.path());
  language.setSelection(raw(section));
  language.loadMap();
  language.loadSection();
  require(!language.text("No"_text, "Such"_text).isEmpty() || isReadable);
  const RawParameterList map = language.languageMap();
  for (const RawParameterUnit& unit : map.elements())
    require(!unit.key.equalsNoCase("LangMap"_text));
  language.save();

  if (!isReadable) require(folder.read() == data);
  profile.loadSection(after, raw(other));
  // What told the encoding may have stood in the section, and a line end that was swallowed comes
  // back as the pair.
  const File file = fileOf(data);
  const bool swallows =
      isConverted(encoding) &&
      LineReference::cut(file.text, encoding).size() !=
          LineReference::cut(converted(encoding, EncodingUtf8, file.text), EncodingUtf8).size();
  if (profile.encoding == encoding && !swallows && !makesSection && !isSameName(other, section))
    require(TestProfile::textsOf(after) == TestProfile::textsOf(before));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
  static const ProfileFolder folder;
  if (size < 3) return 0;
  const Choice choice{bytes[0] == 0 ? RawLineFile::DefaultBufferSize : 16 + bytes[0],
                      (bytes[1] & 1) != 0, bytes[1] >> 1, bytes[2]};
  const string data(reinterpret_cast<const char*>(bytes) + 3, size - 3);
  folder.write(data);

  const File file = fileOf(data);
  RawProfile profile(folder.path());
  profile.bufferSize = choice.bufferSize;
  RawParameterList list;
  profile.loadSection(list, "s"_text);
  const bool isReadable = profile.readState == RawLineFile::Closed;
  // What a small first block shows of the encoding is not what the whole file shows, and faulty
  // characters may come out otherwise where a block cuts them.
  const bool inOneBlock = static_cast<int32_t>(data.size()) <= choice.bufferSize;
  if (isReadable && !inOneBlock && profile.encoding != file.encoding) return 0;
  const bool converts = isConverted(file.encoding);
  const std::vector<Section> sections =
      sectionsOf(converts ? converted(file.encoding, EncodingUtf8, file.text) : file.text);
  const bool isExact = inOneBlock || !converts;
  if (isReadable && isExact) {
    HostFaults::Scope faults;
    faults.limitReads(choice.readLimit);
    checkReading(folder, sections, choice.bufferSize);
  }
  const string section = choice.existing && !sections.empty() ? sections.back().name : "s";
  checkSaving(folder, data, section, sections, isReadable, isExact, choice);
  folder.write(data);
  checkLanguage(folder, data, section, sections);
  return 0;
}
