// ProgramRun: the real executable, run in a folder of its own, as a user would run it. Its profile,
// log, caches and dumps all stand in that folder; its dialogs are read and answered by real input.
#pragma once

#include "TestFolder.h"

#include <cstdint>
#include <string>
#include <vector>

// A dialog that the program showed: what a user could read on it.
struct ProgramDialog {
  std::string caption;
  std::string text; // of all its texts, UTF-8, line ends as they were
  std::string className;
  struct {
    int32_t left, top, right, bottom;
  } place; // on the screen
};

class ProgramRun {
 public:
  // Copies the executable into a fresh folder.
  ProgramRun();

  // The files of the launcher's folder.
  void writeProfile(const std::string& sections); // "[Common]" with Program, then the sections
  void writeFile(const std::string& name, const std::string& bytes) { folder_.write(name, bytes); }
  [[nodiscard]] std::string readFile(const std::string& name) const { return folder_.read(name); }
  [[nodiscard]] bool hasFile(const std::string& name) const { return folder_.has(name); }
  [[nodiscard]] std::string path(const std::string& name) const;
  [[nodiscard]] const TestFolder& folder() const { return folder_; }

  // Runs to the end, answering each dialog with Enter. Gives the exit code; 0xDEAD when it had to
  // be ended after 30 seconds.
  uint32_t run(const std::string& arguments);
  // Starts it and leaves it alone: the process's handle, which the caller closes; null on failure.
  void* start(const std::string& arguments);
  [[nodiscard]] const std::vector<ProgramDialog>& dialogs() const { return dialogs_; }
  // The text of the newest log, or nothing.
  [[nodiscard]] std::string log() const;
  // The log's lines without their time stamps and running numbers ("Command#1" stays): easy to read
  // and to compare.
  [[nodiscard]] std::vector<std::string> logLines() const;
  [[nodiscard]] bool logHas(const std::string& part) const;
  [[nodiscard]] std::vector<std::string> logFiles() const;

 private:
  TestFolder folder_;
  std::vector<ProgramDialog> dialogs_;
};

// Sends the key to whatever window has the focus.
void pressKey(uint16_t virtualKey);
std::string utf8Of(const std::wstring& text);
std::wstring wideOf(const std::string& text);
