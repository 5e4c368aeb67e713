// Configuration files for benchmarks: as a user would write them, always the same ones.
#pragma once

#include "raw/RawString.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace ConfigInput {

// About `size` bytes of a configuration in UTF-8: buttons with titles in Japanese, blocks,
// comments.
inline std::string text(std::size_t size) {
  static const char* const words[] = {"メモ帳", "表計算", "バックアップ", "起動する", "フォルダ",
                                      "設定",   "辞書",   "電卓",         "印刷",     "検索"};
  std::minstd_rand random(20240907);
  const auto word = [&] { return std::string(words[random() % std::size(words)]); };
  std::string result = "[Common]\r\nProgram=Tarvellon\r\n\r\n[Option]\r\nViewSelector=True\r\n\r\n";
  for (int number = 1; result.size() < size; ++number) {
    const std::string id = std::to_string(number);
    result += "[Button:" + word() + id + "]\r\n";
    result += "// " + word() + word() + "\r\n";
    result += "Title=" + word() + " " + id + "\r\n";
    result += "IconFile=C:\\Programs\\Tool" + id +
              "\\tool.exe\r\nIconIndex=" + std::to_string(random() % 20) + "\r\n";
    result += "TipText=" + word() + "を" + word() + "\r\n";
    result += "If {\r\n  Condition=$(Equal:$(KeyState),RButton)\r\n  Menu {\r\n    MenuItem {\r\n"
              "      Title=" +
              word() + "\r\n      Shell {\r\n        Command=C:\\Programs\\Tool" + id +
              "\\tool.exe\r\n        Parameter=/open \"$(Path:Temp)\\" + id +
              ".txt\"\r\n      }\r\n    }\r\n  }\r\n}\r\n\r\n";
  }
  return result;
}

struct Kind {
  const char* name;
  int32_t encoding;
};
inline constexpr Kind kinds[] = {{"UTF-8", RawLayer::EncodingUtf8},
                                 {"Shift-JIS", RawLayer::EncodingShiftJis},
                                 {"UTF-16", RawLayer::EncodingUtf16Le}};

// A file of that text in the encoding, without a mark; gone with the value.
class File {
 public:
  File(std::size_t size, int32_t encoding) {
    std::error_code error;
    const auto moment = std::chrono::steady_clock::now().time_since_epoch().count();
    path_ = std::filesystem::temp_directory_path(error) /
            ("TarvellonBench" + std::to_string(moment) + ".ini");
    const std::string utf8 = text(size);
    const RawLayer::RawString converted =
        RawLayer::RawString::fromChars(utf8.data(), static_cast<int32_t>(utf8.size()))
            .shareAs(encoding);
    std::ofstream(path_, std::ios::binary).write(converted.text(), converted.length());
  }
  ~File() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  [[nodiscard]] std::string name() const { return path_.string(); }
  [[nodiscard]] RawLayer::RawString path() const {
    return RawLayer::RawString::fromChars(name().c_str());
  }

 private:
  std::filesystem::path path_;
};

} // namespace ConfigInput
