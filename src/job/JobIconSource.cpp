#include "job/JobIconSource.h"

#include "raw/RawNumber.h"

namespace JobLayer {

namespace {

constexpr int32_t NoIcon = -1;

JobIconSource*& installedSource() {
  static JobIconSource* source = nullptr;
  return source;
}

} // namespace

int32_t decimalIndexOf(const RawString& text) {
  const bool isSigned = text.at(0) == '-' || text.at(0) == '+';
  RawLayer::RawNumberParser parser;
  if (!parser.parseInBase(text, {isSigned ? 1 : 0, text.length()}, 10)) return 0;
  const auto value = static_cast<uint32_t>(parser.value);
  return static_cast<int32_t>(text.at(0) == '-' ? 0 - value : value);
}

void JobIconSource::install(JobIconSource* source) {
  installedSource() = source;
}

int32_t JobIconSource::iconNumber(const RawString& file, int32_t iconIndex) {
  JobIconSource* source = installedSource();
  return source == nullptr ? NoIcon : source->request(file, iconIndex);
}

void JobIconSource::requestMenuRepaint() {
  if (JobIconSource* source = installedSource()) source->repaintMenu();
}

} // namespace JobLayer
