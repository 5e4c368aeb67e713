// InputText: shows a form of named fields; each field that the user filled in sets its variable.
// Every field position has a history of its own, for the life of the process.
#pragma once

#include "job/JobCommand.h"
#include "raw/RawParameterList.h"

namespace JobLayer {

class JobCommandInputText final : public JobCommandUnitEx {
 public:
  JobCommandInputText() : JobCommandUnitEx("InputText"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;

 private:
  static constexpr int32_t HistoryCount = 20;
  struct Form;

  // False when an expansion failed.
  static bool readForm(Form& form, const JobParamList& params, const JobExecutorPair& caller);
  static bool readKey(RawString& value, const JobParamList& params, int32_t index,
                      const RawString& suffix, const JobExecutorPair& caller);
  static bool readField(Form& form, int32_t index, bool& found, const JobParamList& params,
                        const JobExecutorPair& caller);
  void shareHistories(const Form& form) const;
  void takeAnswers(const Form& form);

  RawLayer::RawParameterList histories_[HistoryCount];
};

JobCommandUnit& jobCommandInputText();

} // namespace JobLayer
