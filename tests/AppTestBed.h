// AppTestBed: a launcher's folder for one test of the start-up: its temporary folder is inside, and
// message boxes are kept on the host (on Windows no test here may show one).
#pragma once

#include "TestFolder.h"
#include "TestText.h"
#include "raw/RawLanguage.h"
#include "raw/RawParameterList.h"
#include "raw/RawPath.h"

#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include "host/HostSystem.h"
#endif

class AppTestBed {
 public:
  AppTestBed() {
    folder_.makeFolder("Temp");
#ifdef _WIN32
    GetEnvironmentVariableW(L"TMP", oldTemp_, MAX_PATH);
    const RawLayer::RawString temp = folder_.file("Temp").shareAs(RawLayer::EncodingWide);
    SetEnvironmentVariableW(L"TMP", reinterpret_cast<const wchar_t*>(temp.wide()));
#else
    system_.facts().tempFolder = folder_.file("Temp");
#endif
  }
  ~AppTestBed() {
#ifdef _WIN32
    SetEnvironmentVariableW(L"TMP", oldTemp_);
#endif
    RawLayer::RawLanguage::instance().setPath(RawLayer::RawString::emptyStatic());
    RawLayer::RawLanguage::instance().setSelection(RawLayer::RawString::emptyStatic());
  }
  AppTestBed(const AppTestBed&) = delete;
  AppTestBed& operator=(const AppTestBed&) = delete;

  [[nodiscard]] const TestFolder& folder() const {
    return folder_;
  }
  [[nodiscard]] RawLayer::RawString temp(const std::string& name) const {
    return RawLayer::joinPath(folder_.file("Temp"), raw(name));
  }
  static RawLayer::RawParameterList arguments(const std::string& line) {
    RawLayer::RawStringList flags;
    flags.caseSensitive = true;
    flags.add(raw("h"));
    RawLayer::RawParameterList list;
    list.fromCommandLine(raw(line), flags);
    return list;
  }
#ifndef _WIN32
  std::vector<std::string> messages() {
    std::vector<std::string> texts;
    for (const auto& message : system_.takeMessages()) texts.push_back(bytesOf(message.text));
    return texts;
  }
#endif

 private:
  TestFolder folder_;
#ifdef _WIN32
  wchar_t oldTemp_[MAX_PATH + 1] = {};
#else
  HostSystem::Scope system_;
#endif
};
