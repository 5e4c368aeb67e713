#include "job/JobIconSource.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

class CountingSource : public JobIconSource {
 public:
  RawString file;
  int32_t index = 0;

  int32_t request(const RawString& requestedFile, int32_t iconIndex) override {
    file = requestedFile;
    index = iconIndex;
    return 42;
  }
};

} // namespace

TEST(JobIconSource, WithoutASourceThereIsNoIcon) {
  JobIconSource::install(nullptr);
  EXPECT_EQ(JobIconSource::iconNumber("notepad.exe"_text, 0), -1);
}

TEST(JobIconSource, TheInstalledSourceIsAsked) {
  CountingSource source;
  JobIconSource::install(&source);
  EXPECT_EQ(JobIconSource::iconNumber("notepad.exe"_text, 3), 42);
  EXPECT_EQ(source.file, "notepad.exe"_text);
  EXPECT_EQ(source.index, 3);
  JobIconSource::install(nullptr);
  EXPECT_EQ(JobIconSource::iconNumber("notepad.exe"_text, 3), -1);
}
