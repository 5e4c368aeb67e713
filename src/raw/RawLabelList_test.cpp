#include "raw/RawLabelList.h"

#include <gtest/gtest.h>

using namespace RawLayer;

TEST(RawLabelList, KeepsLabelsInTheirOrderWithWhatTheyStandFor) {
  RawLabelList list;
  list.add("Yes"_text, 7);
  list.addText("Name"_text, "value"_text);
  ASSERT_EQ(list.count(), 2);
  const RawLabelUnit* first = RawLabelList::element(list.first());
  EXPECT_TRUE(first->label.equals("Yes"_text));
  EXPECT_TRUE(first->text.isEmpty());
  EXPECT_EQ(first->value, 7);
  const RawLabelUnit* second = RawLabelList::element(list.last());
  EXPECT_TRUE(second->label.equals("Name"_text));
  EXPECT_TRUE(second->text.equals("value"_text));
  EXPECT_EQ(second->value, 0);
}

TEST(RawLabelList, CopiesShareTheirLabels) {
  RawLabelList list;
  const RawLabelList copy = list;
  list.add("Later"_text, 1);
  EXPECT_EQ(copy.count(), 1);
}
