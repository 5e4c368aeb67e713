// JobExpansion: a JobTestBed for texts with $(...).
//
//   JobExpansion bed;
//   EXPECT_EQ(bed("$(Not:False)"), "True");
//   EXPECT_EQ(bed.state, JobLayer::VariableSuccess);
#pragma once

#include "job/JobVariableExpander.h"

#include "JobTestBed.h"

class JobExpansion : public JobTestBed {
 public:
  int32_t state = -1; // of the last expansion

  std::string operator()(const std::string& text) {
    JobLayer::JobVariableExpander expander(JobLayer::JobExecutorPair::executor());
    const JobLayer::JobVariableResult result = expander.expand(raw(text));
    state = result.state;
    return bytesOf(result.text);
  }
  // The reports since the last call.
  std::vector<std::string> takeReports() { return std::exchange(dialogs.reports, {}); }
  // The state word in the log of the first call in a text, and of those inside it.
  std::vector<std::string> results(const std::string& text) {
    const std::size_t before = diary().size();
    (*this)(text);
    std::vector<std::string> found;
    const std::vector<std::string> lines = diary();
    for (std::size_t i = before; i < lines.size(); ++i) {
      const std::size_t detail = lines[i].find("|$ ");
      const bool closes = lines[i].rfind("@Variable", 0) == 0 && i + 1 < lines.size() &&
                          lines[i + 1].rfind("#End", 0) == 0;
      if (closes && detail != std::string::npos) found.push_back(lines[i].substr(detail + 3));
    }
    return found;
  }
};

using Texts = std::vector<std::string>;
