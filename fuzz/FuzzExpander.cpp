// The expander. With an odd first byte, beside a plain reference that knows a few functions, on
// ASCII; else with every function that asks nothing of the system, in the encoding that the first
// byte chooses, to see that it ends and that its answer fits its state. The text is the rest.
#include "job/JobLog.h"
#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"
#include "job/JobVariableLogic.h"
#include "job/JobVariableText.h"
#include "job/JobWindowContext.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

using namespace JobLayer;

namespace {

constexpr std::size_t LongestForReference = 600; // bytes: calls nest less than the limit
constexpr int32_t LongestReplace = 200;          // units of a text that is changed, and of `to`

class CountingDialogs : public JobDialogs {
 public:
  int32_t reports = 0;
  void showReport(const RawString&, const RawString&) override { ++reports; }
  void postToMainDialog(uint32_t, uintptr_t, intptr_t) override {}
};
CountingDialogs dialogs;

RawString textOf(const std::string& bytes) {
  return RawString::fromChars(bytes.data(), static_cast<int32_t>(bytes.size()));
}

std::string bytesOf(const RawString& text) {
  return {text.text(), static_cast<std::size_t>(text.length())};
}

void require(bool condition, const char* what, const std::string& text) {
  if (condition) return;
  std::fprintf(stderr, "%s: \"%s\"\n", what, text.c_str());
  std::abort();
}

// Replace goes on for ever by its rule when what it puts in makes new places to replace. Here it
// does nothing unless `to` is free of every unit of `from`.
class GuardedReplace : public JobVariableReplace {
 public:
  using JobVariableReplace::JobVariableReplace;
  JobVariableResult evaluate(JobVariableArgument& argument) override {
    const RawString text = argument.get(1);
    const RawString from = argument.get(2);
    const RawString to = argument.get(3);
    if (text.length() > LongestReplace || to.length() > LongestReplace) return {};
    for (int32_t i = 0; i < from.length(); ++i)
      for (int32_t k = 0; k < to.length(); ++k)
        if (from.at(i) == to.at(k)) return {};
    return argument.failure != 0 ? argument.fault() : JobVariableReplace::evaluate(argument);
  }
};

const std::map<std::string, std::string>& userVariables() {
  static const std::map<std::string, std::string> variables = {
      {"a", "text"},      {"b", "$(a)$(a)"}, {"c", ")"},      {"d", "$"},
      {"e", ""},          {"n", "Not"},      {"o", "("},      {"p", ":"},
      {"q", "$(Cond:"},   {"s", "$(s)"},     {"t", "x$(t)y"}, {"x", "\"$(Length:$(b))\""},
      {"Missing", "none"}};
  return variables;
}

void addVariables(JobVariableList& table) {
  for (const auto& [name, value] : userVariables()) table.set(textOf(name), textOf(value));
}

// Not to be had by the reference, which would never end.
void addEndlessVariables(JobVariableList& table) {
  table.set("r"_text, "$(Not:$(r))"_text);
  table.set("m"_text, "$(Length:$(m)$(m)$(m))$(m)"_text);
  table.set("KeyState"_text, "LButton,LShift"_text);
}

bool asksTheSystem(const std::string& name) {
  for (const char* each : {"Path", "IsFile", "IsFolder", "IsProcess", "IsWindow", "File",
                           "FileCount", "Folder", "FolderCount", "Process", "Window", "Clipboard"})
    if (name == each) return true;
  return false;
}

JobVariableList* makeFullTable() {
  auto* table = new JobVariableList;
  table->append(new GuardedReplace("Replace"_text));
  appendBuiltInVariables(*table);
  for (auto* node = table->first(); !table->isEnd(node);) {
    auto* following = table->next(node);
    if (asksTheSystem(bytesOf(JobVariableList::element(node)->name))) table->erase(node);
    node = following;
  }
  addVariables(*table);
  addEndlessVariables(*table);
  return table;
}

JobVariableList* makeSmallTable() {
  auto* table = new JobVariableList;
  table->append(new JobVariableNot("Not"_text));
  table->append(new JobVariableIsEqual("Equal"_text));
  table->append(new JobVariableLogicAnd("&&"_text));
  table->append(new JobVariableLength("Length"_text));
  table->append(new JobVariableBefore("Before"_text));
  table->append(new JobVariableCond("Cond"_text));
  addVariables(*table);
  return table;
}

JobVariableList& fullTable() {
  static JobVariableList* const table = makeFullTable();
  return *table;
}

JobVariableList& smallTable() {
  static JobVariableList* const table = makeSmallTable();
  return *table;
}

// --- The reference: everything is copied, and every scan starts at the front.

struct Outcome {
  int32_t state = VariableSuccess;
  std::string text;
};

class Reference {
 public:
  int32_t reports = 0;

  Outcome expand(std::string text) {
    for (int count = 1;; ++count) {
      const std::size_t start = text.find("$(");
      if (start == std::string::npos) return {VariableSuccess, text};
      std::size_t end = 0;
      const std::vector<std::string> tokens = split(text, start, end);
      if (end == 0) return fault(text);
      const std::string name = expand(tokens[0]).text;
      if (name.empty()) return fault(text);
      text = text.substr(0, start) + call(name, tokens) + text.substr(end);
      if (count > 99) {
        ++reports;
        return {VariableOverflow, ""};
      }
    }
  }

 private:
  Outcome fault(const std::string& text) {
    ++reports;
    return {VariableInvalid, text};
  }

  // `end` stays 0 when there is none.
  static std::vector<std::string> split(const std::string& text, std::size_t start,
                                        std::size_t& end) {
    std::vector<std::string> tokens(1);
    int depth = 0;
    for (std::size_t i = start + 2; i < text.size(); ++i) {
      const bool closes = text[i] == ')' && depth == 0;
      if (closes) {
        end = i + 1;
        break;
      }
      if (text[i] == ')') --depth;
      if (text.compare(i, 2, "$(") == 0) ++depth;
      if (text[i] == ':' && depth == 0)
        tokens.emplace_back();
      else
        tokens.back() += text[i];
    }
    return tokens;
  }

  static bool isTrue(const std::string& text) {
    std::string folded;
    for (const char byte : text) folded += byte >= 'a' && byte <= 'z' ? char(byte - 32) : byte;
    return !folded.empty() && folded != "FALSE";
  }

  static std::string word(bool flag) { return flag ? "True" : "False"; }

  // The text of an argument; `failed` is set when there is none.
  std::string read(const std::vector<std::string>& tokens, std::size_t index, bool& failed) {
    if (index < tokens.size()) return expand(tokens[index]).text;
    ++reports;
    failed = true;
    return "";
  }

  std::string call(const std::string& name, const std::vector<std::string>& tokens) {
    bool failed = false;
    std::string result;
    if (name == "Not") {
      result = word(!isTrue(read(tokens, 1, failed)));
    } else if (name == "Equal") {
      const std::string a = read(tokens, 1, failed);
      const std::string b = read(tokens, 2, failed);
      result = word(a == b);
    } else if (name == "&&") {
      bool all = true;
      for (std::size_t i = 1; i < tokens.size() && all; ++i) all = isTrue(read(tokens, i, failed));
      result = word(all);
    } else if (name == "Length") {
      result = std::to_string(read(tokens, 1, failed).size());
    } else if (name == "Before") {
      result = before(tokens, failed);
    } else if (name == "Cond") {
      const bool test = isTrue(read(tokens, 1, failed));
      if (!failed) result = read(tokens, test ? 2 : 3, failed);
    } else if (userVariables().count(name) != 0) {
      result = userVariables().at(name);
    }
    return failed ? "" : result;
  }

  std::string before(const std::vector<std::string>& tokens, bool& failed) {
    const std::string text = read(tokens, 1, failed);
    const std::string number = read(tokens, 2, failed);
    if (failed) return "";
    const std::size_t start = !number.empty() && (number[0] == '-' || number[0] == '+') ? 1 : 0;
    const std::string digits = number.substr(start);
    uint64_t value = 0;
    for (const char digit : digits) {
      failed = failed || digit < '0' || digit > '9';
      value = value * 10 + static_cast<uint64_t>(digit - '0');
    }
    if (number.size() > start && number[0] == '-') value = 0 - value;
    failed = failed || digits.empty() || static_cast<int64_t>(value) < 0;
    if (failed) ++reports;
    return text.substr(0, value);
  }
};

void compareWithReference(std::string text) {
  if (text.size() > LongestForReference) text.resize(LongestForReference);
  for (char& byte : text) byte = static_cast<char>(byte & 0x7F);
  Reference reference;
  const Outcome expected = reference.expand(text);
  dialogs.reports = 0;
  JobVariableExpander expander(JobExecutorPair::executor(), smallTable());
  const JobVariableResult result = expander.expand(textOf(text));
  require(result.state == expected.state, "another state", text);
  require(bytesOf(result.text) == expected.text, "another text", text);
  require(dialogs.reports == reference.reports, "another number of reports", text);
}

void expandAll(const std::string& bytes, int32_t encoding) {
  const RawString text = textOf(bytes).shareAs(encoding);
  dialogs.reports = 0;
  JobVariableExpander expander(JobExecutorPair::executor(), fullTable());
  const JobVariableResult result = expander.expand(text);
  const bool holdsCall = result.text.find("$("_text) < result.text.length();
  switch (result.state) {
  case VariableSuccess:
    require(!holdsCall, "a call is left", bytes);
    break;
  case VariableOverflow:
    require(result.text.isEmpty() && dialogs.reports > 0, "overflow in silence", bytes);
    break;
  case VariableInvalid:
    require(holdsCall && dialogs.reports > 0, "a fault in silence", bytes);
    break;
  default:
    require(false, "a state from inside", bytes);
  }
  require(result.text.isEmpty() || result.text.encoding() == encoding, "another encoding", bytes);
  const JobVariableResult again = expander.expand(text);
  require(again.state == result.state && again.text.equals(result.text), "another answer", bytes);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  JobWindowContext::instance().installDialogs(&dialogs);
  JobLogServer::instance().stop(); // lines are built and dropped
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  constexpr int32_t encodings[] = {RawLayer::EncodingUtf8, RawLayer::EncodingShiftJis,
                                   RawLayer::EncodingWide, RawLayer::EncodingUtf8};
  JobFacts::instance().logCategories = (data[0] & 8) != 0 ? "UCPV"_text : RawString();
  if (data[0] % 2 != 0)
    compareWithReference(text);
  else
    expandAll(text, encodings[data[0] / 2 % 4]);
  return 0;
}
