// TestFolder: a fresh folder for one test, with everything in it gone when the test ends.
#pragma once

#include "raw/RawString.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TestFolder {
 public:
  TestFolder() {
    static int counter = 0;
    std::error_code error;
    const auto base = std::filesystem::temp_directory_path(error) / "TarvellonTests";
    std::filesystem::create_directories(base, error);
    do {
      path_ = base / (std::to_string(reinterpret_cast<std::uintptr_t>(this)) + "_" +
                      std::to_string(counter++));
    } while (!std::filesystem::create_directory(path_, error) && counter < 100000);
  }
  ~TestFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  [[nodiscard]] RawLayer::RawString path() const { return text(path_); }
  [[nodiscard]] RawLayer::RawString file(const std::string& name) const {
    return text(path_ / name);
  }
  RawLayer::RawString write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return file(name);
  }
  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  [[nodiscard]] bool has(const std::string& name) const {
    std::error_code error;
    return std::filesystem::exists(path_ / name, error);
  }
  void makeFolder(const std::string& name) const {
    std::error_code error;
    std::filesystem::create_directories(path_ / name, error);
  }

 private:
  static RawLayer::RawString text(const std::filesystem::path& path) {
    const auto bytes = path.u8string();
    return RawLayer::RawString::fromChars(reinterpret_cast<const char*>(bytes.c_str()));
  }
  std::filesystem::path path_;
};
