// The log as tests compare it: lines without what differs from run to run.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// Without its first ":YYYYMMDD.HHMMSS.mmm".
inline std::string withoutStamp(std::string line) {
  constexpr std::string_view form = ":########.######.###";
  for (std::size_t i = 0; i + form.size() <= line.size(); ++i) {
    std::size_t k = 0;
    while (k < form.size() &&
           (form[k] == '#' ? line[i + k] >= '0' && line[i + k] <= '9' : line[i + k] == form[k]))
      ++k;
    if (k == form.size()) return line.erase(i, k);
  }
  return line;
}

// The numbers behind the word, counted from 1 as they appear.
class TestNumbers {
 public:
  explicit TestNumbers(const std::string& word) : word_(word) {}
  void renumber(std::string& line) {
    for (std::size_t i = line.find(word_); i != std::string::npos; i = line.find(word_, i + 1)) {
      const std::size_t start = i + word_.size();
      const std::size_t end = std::min(line.find_first_not_of("0123456789", start), line.size());
      const auto next = static_cast<int>(seen_.size()) + 1;
      const int number = seen_.try_emplace(line.substr(start, end - start), next).first->second;
      line.replace(start, end - start, std::to_string(number));
    }
  }

 private:
  std::string word_;
  std::map<std::string, int> seen_;
};

// The lines of a log without their time stamps, commands and variables counted from 1.
inline std::vector<std::string> diaryOf(const std::string& log) {
  std::vector<std::string> lines;
  TestNumbers commands("Command#");
  TestNumbers variables("Variable#");
  for (std::size_t start = 0, end; (end = log.find("\r\n", start)) != std::string::npos;
       start = end + 2) {
    std::string line = withoutStamp(log.substr(start, end - start));
    commands.renumber(line);
    variables.renumber(line);
    lines.push_back(line);
  }
  return lines;
}
