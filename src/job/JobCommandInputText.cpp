#include "job/JobCommandInputText.h"

#include "job/JobVariable.h"
#include "job/JobWindowContext.h"
#include "raw/RawStringList.h"
#include "win/WinInputParameter.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawListNode;
using RawLayer::RawParameterList;
using RawLayer::RawParameterUnit;
using RawLayer::RawStringList;
using WinLayer::WinInputParameterList;
using WinLayer::WinInputParameterUnit;

// The fields, and side by side with them the variables that they fill.
struct JobCommandInputText::Form {
  WinInputParameterList fields;
  RawStringList variables;
};

bool JobCommandInputText::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  Form form;
  form.fields.prompt = optionalValue(params, "Parameter"_text, caller);
  const RawString notAbort = optionalValue(params, "NotAbort"_text, caller);
  if (expansionFailed()) return false;
  if (!readForm(form, params, caller)) return false;
  shareHistories(form);

  const bool finished = JobWindowContext::instance().InputDialog(form.fields, caller);
  setVariable("Result"_text, RawString::fromBool(finished));
  if (!finished) return isTrueText(notAbort);
  takeAnswers(form);
  return true;
}

bool JobCommandInputText::readForm(Form& form, const JobParamList& params,
                                   const JobExecutorPair& caller) {
  bool found = true;
  for (int32_t index = 0; found; ++index)
    if (!readField(form, index, found, params, caller)) return false;
  return true;
}

// The value of one key of a field. A key that is missing, empty or a block is no failure.
bool JobCommandInputText::readKey(RawString& value, const JobParamList& params, int32_t index,
                                  const RawString& suffix, const JobExecutorPair& caller) {
  const RawString text = params.text(RawString::concat(RawString::fromInt64(index), suffix));
  value.release();
  if (text.isEmpty()) return true;
  value = expandText(text, caller);
  return !expansionFailed();
}

namespace {

// Items at every comma, without blanks around them and without a quote at either end; a repeated
// item stays one.
void readHints(RawParameterList& hints, const RawString& text) {
  RawStringList items;
  items.split(text, text.all(), true);
  for (const RawString& item : items.elements()) {
    RawRange range = item.all();
    if (item.at(range.start) == '"') ++range.start;
    if (range.end > range.start && item.at(range.end - 1) == '"') --range.end;
    hints.set(RawString::fromRange(item.encoding(), item, range), RawString::emptyStatic());
  }
}

} // namespace

bool JobCommandInputText::readField(Form& form, int32_t index, bool& found,
                                    const JobParamList& params, const JobExecutorPair& caller) {
  const auto read = [&](RawString& value, const RawString& suffix) {
    return readKey(value, params, index, suffix, caller);
  };
  RawString variable;
  if (!read(variable, ":Variable"_text)) return false;
  found = !variable.isEmpty();
  if (!found) return true;

  auto field = std::make_unique<WinInputParameterUnit>();
  RawString hints;
  RawString noHint;
  RawString readOnly;
  if (!read(field->label, ":Label"_text) || !read(field->initial, ":Initial"_text) ||
      !read(hints, ":Hints"_text) || !read(noHint, ":NoHint"_text) ||
      !read(readOnly, ":ReadOnly"_text))
    return false;
  if (isTrueText(readOnly)) field->flags |= WinInputParameterUnit::ReadOnly;
  if (isTrueText(noHint))
    field->flags |= WinInputParameterUnit::NoHint;
  else
    readHints(field->hints, hints);
  form.fields.append(field.release());
  form.variables.add(variable);
  return true;
}

void JobCommandInputText::shareHistories(const Form& form) const {
  int32_t index = 0;
  for (WinInputParameterUnit& field : form.fields.elements()) {
    if (index == HistoryCount) return;
    const RawParameterList& history = histories_[index++];
    if (!(field.flags & WinInputParameterUnit::NoHint) && field.hints.count() == 0)
      field.hints = history;
  }
}

void JobCommandInputText::takeAnswers(const Form& form) {
  int32_t index = 0;
  const RawListNode* variable = form.variables.first();
  for (const WinInputParameterUnit& field : form.fields.elements()) {
    setVariable(*RawStringList::element(variable), field.value);
    variable = RawStringList::next(variable);
    const int32_t position = index++;
    if (position >= HistoryCount || field.value.isEmpty()) continue;
    // A new list: the old one is still shared by the form.
    RawParameterList history;
    history.add(field.value);
    for (const RawParameterUnit& old : histories_[position].elements())
      if (!old.key.equalsNoCase(field.value)) history.add(old.key);
    histories_[position] = history;
  }
}

JobCommandUnit& jobCommandInputText() {
  static JobCommandInputText command;
  return command;
}

} // namespace JobLayer
