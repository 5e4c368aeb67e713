// JobToolMessage: one report of an error, to the log first and then to the user. It lives on the
// stack of the reporter for the length of the report, which ends when the user pressed "OK".
#pragma once

#include "job/JobFacts.h"

namespace JobLayer {

class JobToolMessage {
 public:
  static void registerTexts(); // makes the reports' texts known to the catalogue

  static constexpr int32_t MaxLines = 10;
  struct Line {
    RawString tag;
    RawString value;
  };

  RawString key;
  Line lines[MaxLines];
  int32_t count = 0;

  // Adds a line; an empty value and an eleventh line are left out.
  void add(const RawString& tag, const RawString& value);
  void report() const;
  // The dialog's text: the catalogue's text of the key, then one line for each detail.
  [[nodiscard]] RawString dialogText() const;
  // The detail of the log line: key and details.
  [[nodiscard]] RawString logDetail() const;

  static void ReportCommandError(const RawString& key, const RawString& command,
                                 const RawString& parameter, const RawString& value);
  static void ReportVariableError(const RawString& key, const RawString& variable,
                                  const RawString& value, const RawString& script);
};

} // namespace JobLayer
