#include "job/JobIconSource.h"

namespace JobLayer {

namespace {

constexpr int32_t NoIcon = -1;

JobIconSource*& installedSource() {
  static JobIconSource* source = nullptr;
  return source;
}

} // namespace

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
