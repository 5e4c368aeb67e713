// Bytes as a configuration file: loaded and compared with a plain reader, saved and compared with
// a plain writer, saved again, loaded again, and saved with a call of the platform failing.
//
// Input: what is saved, the call that fails, bytes per read, then the file.

#include "JobTrees.h"
#include "LineReference.h"
#include "host/HostFaults.h"
#include "job/JobConfigFile.h"
#include "job/JobLog.h"
#include "job/JobWindowContext.h"
#include "raw/RawEncodings.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

using namespace JobLayer;
using namespace RawLayer;
using LineReference::Line;
using std::string;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

class Reports : public JobDialogs {
 public:
  std::vector<string> texts;
  void showReport(const RawString&, const RawString& text) override {
    texts.push_back(bytesOf(text));
  }
  void postToMainDialog(uint32_t, uintptr_t, intptr_t) override {}
};

// The file under test, in memory where the machine has such a folder.
class ConfigFolder {
 public:
  ConfigFolder() {
    const std::filesystem::path base =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    folder_ = base / ("TarvellonFuzz" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~ConfigFolder() { std::filesystem::remove_all(folder_); }
  ConfigFolder(const ConfigFolder&) = delete;
  ConfigFolder& operator=(const ConfigFolder&) = delete;

  [[nodiscard]] RawString path() const { return raw(file()); }
  void write(const string& bytes) const {
    std::ofstream(file(), std::ios::binary).write(bytes.data(), std::ssize(bytes));
  }
  [[nodiscard]] string read() const {
    std::ifstream stream(file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  [[nodiscard]] string file() const { return (folder_ / "c.ini").string(); }
  std::filesystem::path folder_;
};

// --- The file as the reader of lines sees it

struct Source {
  int32_t encoding = 0; // of the file; UTF-8 when it shows none
  int32_t mark = 0;
  bool whole = false; // it was read to its end
  std::vector<string> lines;
};

Source sourceOf(const RawString& path) {
  Source source;
  RawLineFile file(path);
  const bool opened = file.openRead();
  source.encoding = file.record().fileEncoding;
  source.mark = file.record().markEncoding;
  if (source.encoding == 0) source.encoding = EncodingUtf8;
  if (opened)
    while (file.nextLine().valid) source.lines.push_back(bytesOf(file.record().text));
  file.close();
  source.whole = file.state == RawLineFile::Closed;
  return source;
}

bool isUtf16(int32_t encoding) {
  return encoding == EncodingUtf16Be || encoding == EncodingUtf16Le;
}

string converted(int32_t from, int32_t to, const string& bytes) {
  if (from == to || from == EncodingBinary || to == EncodingBinary || bytes.empty()) return bytes;
  return bytesOf(
      RawString::fromBytes(from, bytes.data(), static_cast<int32_t>(bytes.size())).shareAs(to));
}

string trimmed(const string& text) {
  const std::size_t start = text.find_first_not_of(" \t");
  if (start == string::npos) return {};
  return text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

// --- The plain reader

std::size_t findByCharacters(const string& line, char sought) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == sought) return i;
    const auto byte = static_cast<unsigned char>(line[i]);
    for (const int lead : {0xC2, 0xE0, 0xF0, 0xF8, 0xFC})
      if (byte >= lead && byte <= 0xFD) ++i;
  }
  return string::npos;
}

struct PlainReader {
  const std::vector<string>& lines; // judged and trimmed, of one section
  std::size_t next = 0;

  enum Result { Fault, Closed, Ended };
  Result parse(string& tree, int nesting) {
    while (next < lines.size()) {
      const string& line = lines[next++];
      if (line[0] == '}') return Closed;
      const std::size_t equals = findByCharacters(line, '=');
      const std::size_t brace = findByCharacters(line, '{');
      if (equals != string::npos) {
        tree += "(" + trimmed(line.substr(0, equals)) + "=" + line.substr(equals + 1) + ")";
      } else if (brace == string::npos) {
        tree += "(" + line + ")";
      } else {
        string inner;
        if (nesting == JobParamList::MaxNesting || parse(inner, nesting + 1) != Closed)
          return Fault;
        if (!inner.empty()) inner = "{" + inner + "}";
        tree += "(" + trimmed(line.substr(0, brace)) + inner + ")";
      }
    }
    return Ended;
  }
};

// All lists as one text, and the reports on sections.
struct Shown {
  string selectorTemplate, selectors, buttonTemplate, buttons, actions;
  std::vector<string> reports;
  bool operator==(const Shown&) const = default;
};

void readPlainly(Shown& shown, const string& header, const std::vector<string>& lines) {
  if (header.empty() || header.back() != ']') return;
  const string name = header.substr(1, header.size() - 2);
  string tree;
  const bool balanced = PlainReader{lines}.parse(tree, 0) == PlainReader::Ended;
  const auto rest = [&](const string& prefix) { return name.substr(prefix.size()) + ":" + tree; };
  if (name.starts_with("Selector:*") && name.size() == 10)
    shown.selectorTemplate = rest("Selector:");
  else if (name.starts_with("Selector:"))
    shown.selectors += rest("Selector:") + ";";
  else if (name.starts_with("Button:*") && name.size() == 8)
    shown.buttonTemplate = rest("Button:");
  else if (name.starts_with("Button:"))
    shown.buttons += rest("Button:") + ";";
  else if (name.starts_with("Action:"))
    shown.actions += rest("Action:") + ";";
  else if (name.starts_with("Initialize"))
    shown.actions += "#Initialize:" + tree + ";";
  else
    return;
  if (!balanced)
    shown.reports.push_back("Unbalanced section blocks !\r\n  [command] Section " + name);
}

Shown readPlainly(const std::vector<string>& lines) {
  Shown shown;
  string header;
  std::vector<string> section;
  for (const string& line : lines) {
    const string text = trimmed(line);
    if (text.empty() || text[0] == '/') continue;
    if (text[0] != '[') {
      section.push_back(text);
      continue;
    }
    readPlainly(shown, header, section);
    section.clear();
    header = text;
  }
  readPlainly(shown, header, section);
  return shown;
}

// --- The reader

template <class Unit>
string shownUnit(const Unit& unit) {
  return bytesOf(unit.name) + ":" + treeText(unit.params);
}

template <class List>
string shownList(const List& list) {
  string text;
  for (const auto& unit : list.elements()) text += shownUnit(unit) + ";";
  return text;
}

Shown load(const RawString& path, LauncherData& data, Reports& reports) {
  reports.texts.clear();
  JobConfigFile::load(path, data.selectors, data.buttons, data.actions);
  Shown shown;
  const auto& selector = data.selectors.templateUnit;
  const auto& button = data.buttons.templateUnit;
  if (!selector.name.isEmpty()) shown.selectorTemplate = shownUnit(selector);
  if (!button.name.isEmpty()) shown.buttonTemplate = shownUnit(button);
  shown.selectors = shownList(data.selectors);
  shown.buttons = shownList(data.buttons);
  shown.actions = shownList(data.actions);
  shown.reports = reports.texts;
  return shown;
}

// --- The plain writer

void writePlainly(std::vector<string>& lines, const JobParamList& list, const string& indent) {
  for (const JobParamUnit& unit : list.elements()) {
    const string key = indent + bytesOf(unit.key);
    if (unit.type() == JobParamUnit::TypeText) {
      lines.push_back(key + "=" + bytesOf(static_cast<const JobParamText&>(unit).value));
      continue;
    }
    const JobParamList& inner = static_cast<const JobParamCommand&>(unit).params;
    lines.push_back(inner.count() == 0 ? key : key + " {");
    if (inner.count() == 0) continue;
    writePlainly(lines, inner, indent + "  ");
    lines.push_back(indent + "}");
  }
}

template <class List>
std::vector<string> ownLines(const List& list, const string& prefix) {
  std::vector<string> lines;
  const auto write = [&](const auto& unit) {
    lines.push_back("[" + prefix + bytesOf(unit.name) + "]");
    writePlainly(lines, unit.params, "");
    lines.push_back("");
  };
  if (!list.templateUnit.name.isEmpty()) write(list.templateUnit);
  for (const auto& unit : list.elements()) write(unit);
  return lines;
}

string lineEndIn(int32_t encoding) {
  return isUtf16(encoding) ? converted(EncodingUtf8, encoding, "\r\n") : "\r\n";
}

string savedPlainly(const string& data, const Source& source, const std::vector<string>& own,
                    const string& prefix) {
  const RawMark mark = markOf(source.mark);
  const auto markSize = static_cast<std::size_t>(mark.size);
  const string end = lineEndIn(source.encoding);
  string block;
  for (const string& line : own) block += converted(EncodingUtf8, source.encoding, line) + end;
  string result = data.substr(0, markSize);
  bool written = false;
  bool skipping = false;
  bool open = false;
  for (const Line& line : LineReference::cut(data.substr(markSize), source.encoding)) {
    const string text = trimmed(
        isUtf16(source.encoding) ? converted(source.encoding, EncodingUtf8, line.text) : line.text);
    if (!text.empty() && text[0] == '[') {
      skipping = text.substr(1).starts_with(prefix);
      if (skipping && !written) result += block;
      written = written || skipping;
    }
    open = line.end.empty();
    if (!skipping) result += line.text + line.end;
  }
  if (written || block.empty()) return result;
  return result + (open ? end : "") + block;
}

// --- What is asked

// A block without name and entries is written as an empty line, which nothing reads back.
bool hasNamelessBlock(const string& shown) {
  return shown.find("()") != string::npos;
}

// Whether every line comes back from the encoding of the file as it went there, and fits.
bool comesBack(const std::vector<string>& lines, int32_t encoding) {
  for (const string& line : lines) {
    const string there = converted(EncodingUtf8, encoding, line);
    if (converted(encoding, EncodingUtf8, there) != line || there.size() > 4000) return false;
  }
  return true;
}

// Whether lines are cut in the same places before and after conversion.
bool isCutAlike(const string& data, const Source& source) {
  const auto markSize = static_cast<std::size_t>(markOf(source.mark).size);
  return LineReference::cut(data.substr(markSize), source.encoding).size() == source.lines.size();
}

template <class List>
void checkSaving(const ConfigFolder& folder, List& list, const Shown& shown, Reports& reports,
                 int32_t failingCall) {
  const string prefix = bytesOf(List::sectionPrefix());
  const string old = folder.read();
  const Source source = sourceOf(folder.path());
  const std::vector<string> own = ownLines(list, prefix);
  const string expected = source.whole ? savedPlainly(old, source, own, prefix) : old;

  if (failingCall > 0) {
    HostFaults::Scope faults;
    faults.failNth(failingCall);
    const bool saved = JobDataSaver::save(folder.path(), list, raw(prefix));
    require(folder.read() == (saved ? expected : old));
    folder.write(old);
  }
  const bool saved = JobDataSaver::save(folder.path(), list, raw(prefix));
  require(folder.read() == (saved ? expected : old));
  require(source.whole || !saved);
  const bool converts = source.encoding != EncodingUtf8 && source.encoding != EncodingBinary;
  require(saved || !source.whole || converts);
  if (!saved) return;

  const Source again = sourceOf(folder.path());
  if (again.encoding != source.encoding || again.mark != source.mark || !again.whole) return;
  if (!isCutAlike(old, source) || !isCutAlike(expected, again)) return;
  require(JobDataSaver::save(folder.path(), list, raw(prefix)));
  require(folder.read() == expected);
  if (!comesBack(own, source.encoding)) return;
  LauncherData data;
  Shown reread = load(folder.path(), data, reports);
  // A report on a section that was rewritten is not repeated: it is balanced now.
  reread.reports = shown.reports;
  const string all =
      shown.selectorTemplate + shown.selectors + shown.buttonTemplate + shown.buttons;
  require(hasNamelessBlock(all) || reread == shown);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
  static const ConfigFolder folder;
  static Reports& reports = *new Reports;
  static const bool ready = [] {
    JobWindowContext::instance().installDialogs(&reports);
    JobLogServer::instance().stop(); // or lines without a log would pile up
    return true;
  }();
  if (size < 3 || !ready) return 0;
  const string data(reinterpret_cast<const char*>(bytes) + 3, size - 3);
  folder.write(data);
  LauncherData loaded;
  HostFaults::Scope faults;
  faults.limitReads(bytes[2]);
  const Shown shown = load(folder.path(), loaded, reports);
  const Source source = sourceOf(folder.path());
  require(readPlainly(source.lines) == shown);
  if ((bytes[0] & 1) == 0)
    checkSaving(folder, loaded.buttons, shown, reports, bytes[1]);
  else
    checkSaving(folder, loaded.selectors, shown, reports, bytes[1]);
  return 0;
}
