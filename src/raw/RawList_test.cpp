#include "raw/RawList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <utility>
#include <vector>

using namespace RawLayer;

namespace {

struct Item {
  int key = 0;
  int mark = 0;
};

std::vector<int> destroyed;

class ItemListAllocator : public RawListAllocator<Item> {
 public:
  void destroy(Item* element) override {
    destroyed.push_back(element->key);
    delete element;
  }
};
class ItemList : public RawListR<ItemListAllocator, Item> {
 public:
  bool flag = false;
};

class BorrowedAllocator : public RawListAllocator<Item> {
 public:
  void destroy(Item*) override {}
};
class BorrowedList : public RawListP<BorrowedAllocator, Item> {};

class ItemListSort : public RawListSortR<Item> {
 public:
  using RawListSortR<Item>::RawListSortR;
  int32_t compare(const Item* a, const Item* b) override {
    compared.emplace_back(a->key, b->key);
    return a->key < b->key ? -1 : a->key > b->key ? 1 : 0;
  }
  std::vector<std::pair<int, int>> compared;
};

RawListNode* add(ItemList& list, int key) {
  return list.append(new Item{key});
}

ItemList listOf(const std::vector<int>& keys) {
  ItemList list;
  for (int key : keys) add(list, key);
  return list;
}

std::vector<int> keysOf(const ItemList& list) {
  std::vector<int> keys;
  for (const Item& item : list.elements()) keys.push_back(item.key);
  return keys;
}

std::vector<int> keysBackwards(const ItemList& list) {
  std::vector<int> keys;
  for (const RawListNode* node = list.last(); !ItemList::isEnd(node);
       node = ItemList::previous(node))
    keys.push_back(ItemList::element(node)->key);
  return keys;
}

std::vector<int> sorted(const std::vector<int>& keys, bool descending) {
  ItemList list = listOf(keys);
  ItemListSort(list).sortAll(descending);
  std::vector<int> backwards = keysBackwards(list);
  std::reverse(backwards.begin(), backwards.end());
  EXPECT_EQ(keysOf(list), backwards);
  EXPECT_EQ(list.count(), static_cast<int32_t>(keys.size()));
  return keysOf(list);
}

class RawList : public testing::Test {
 protected:
  void SetUp() override { destroyed.clear(); }
};
class RawListSorting : public RawList {};

using Keys = std::vector<int>;

} // namespace

TEST_F(RawList, NewRingIsItsSentinel) {
  const ItemList list;
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(list.first(), list.end());
  EXPECT_EQ(list.last(), list.end());
  EXPECT_TRUE(ItemList::isEnd(list.first()));
  EXPECT_EQ(list.end()->element, list.end());
  EXPECT_EQ(list.references(), 0);
}

TEST_F(RawList, SentinelHasNoElement) {
  const ItemList list;
  EXPECT_EQ(ItemList::element(list.end()), nullptr);
}

TEST_F(RawList, ANodeIsThreePointers) {
  EXPECT_EQ(sizeof(RawListNode), 3 * sizeof(void*));
}

TEST_F(RawList, AListHoldsAllocatorTableDataAndAllocator) {
  EXPECT_EQ(sizeof(RawListR<ItemListAllocator, Item>), 3 * sizeof(void*));
}

TEST_F(RawList, AppendPrependAndInsertKeepTheOrder) {
  ItemList list;
  RawListNode* middle = add(list, 2);
  add(list, 3);
  RawListNode* front = list.prepend(new Item{0});
  RawListNode* inserted = list.insertBefore(middle, new Item{1});
  EXPECT_EQ(keysOf(list), (Keys{0, 1, 2, 3}));
  EXPECT_EQ(keysBackwards(list), (Keys{3, 2, 1, 0}));
  EXPECT_EQ(list.count(), 4);
  EXPECT_EQ(list.first(), front);
  EXPECT_EQ(ItemList::next(front), inserted);
  EXPECT_EQ(ItemList::previous(middle), inserted);
  EXPECT_EQ(ItemList::next(list.last()), list.end());
}

TEST_F(RawList, InsertBeforeTheSentinelAppends) {
  ItemList list = listOf({1});
  list.insertBefore(list.end(), new Item{2});
  EXPECT_EQ(keysOf(list), (Keys{1, 2}));
}

TEST_F(RawList, UnlinkHandsTheElementBack) {
  ItemList list = listOf({1, 2, 3});
  Item* item = list.unlink(list.nodeAt(1));
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->key, 2);
  EXPECT_EQ(keysOf(list), (Keys{1, 3}));
  EXPECT_EQ(list.count(), 2);
  EXPECT_TRUE(destroyed.empty());
  delete item;
}

TEST_F(RawList, UnlinkAndEraseOfTheSentinelDoNothing) {
  ItemList list = listOf({1});
  EXPECT_EQ(list.unlink(list.end()), nullptr);
  list.erase(list.end());
  EXPECT_EQ(list.count(), 1);
  EXPECT_TRUE(destroyed.empty());
}

TEST_F(RawList, EraseDestroysTheElement) {
  ItemList list = listOf({1, 2});
  list.erase(list.first());
  EXPECT_EQ(destroyed, (Keys{1}));
  EXPECT_EQ(keysOf(list), (Keys{2}));
}

TEST_F(RawList, ClearDestroysFromTheFront) {
  ItemList list = listOf({1, 2, 3});
  list.clear();
  EXPECT_EQ(destroyed, (Keys{1, 2, 3}));
  EXPECT_EQ(list.first(), list.end());
  EXPECT_EQ(list.count(), 0);
  add(list, 4);
  EXPECT_EQ(keysOf(list), (Keys{4}));
}

TEST_F(RawList, ContainsLooksForTheVeryPointer) {
  ItemList list = listOf({1, 2});
  const Item twin{1};
  EXPECT_TRUE(list.contains(ItemList::element(list.last())));
  EXPECT_FALSE(list.contains(&twin));
  EXPECT_FALSE(list.contains(nullptr));
}

TEST_F(RawList, NodesHavePositions) {
  ItemList list = listOf({5, 6, 7});
  EXPECT_EQ(list.nodeAt(0), list.first());
  EXPECT_EQ(list.nodeAt(2), list.last());
  EXPECT_EQ(list.nodeAt(3), list.end());
  EXPECT_EQ(list.nodeAt(-1), list.end());
  EXPECT_EQ(list.indexOf(list.nodeAt(1)), 1);
  EXPECT_EQ(list.indexOf(list.end()), -1);
}

TEST_F(RawList, CopiesShareOneRing) {
  ItemList list = listOf({1});
  list.flag = true;
  ItemList copy = list;
  EXPECT_TRUE(copy.flag);
  EXPECT_TRUE(copy.isSameList(list));
  EXPECT_EQ(list.references(), 1);
  add(copy, 2);
  EXPECT_EQ(keysOf(list), (Keys{1, 2}));
}

TEST_F(RawList, TheLastSharerEmptiesTheRing) {
  {
    ItemList outer;
    {
      const ItemList list = listOf({1, 2});
      outer = list;
    }
    EXPECT_TRUE(destroyed.empty());
    EXPECT_EQ(outer.references(), 0);
    EXPECT_EQ(keysOf(outer), (Keys{1, 2}));
  }
  EXPECT_EQ(destroyed, (Keys{1, 2}));
}

TEST_F(RawList, AssignmentGivesTheOldRingUp) {
  ItemList target = listOf({9});
  const ItemList source = listOf({1});
  target = source;
  EXPECT_EQ(destroyed, (Keys{9}));
  EXPECT_TRUE(target.isSameList(source));
  ItemList& same = target;
  target = same;
  EXPECT_EQ(keysOf(target), (Keys{1}));
  EXPECT_EQ(target.references(), 1);
}

TEST_F(RawList, ABorrowedRecordOutlivesItsNode) {
  Item item{7};
  BorrowedList list;
  list.append(&item);
  list.erase(list.first());
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(item.key, 7);
  list.append(&item);
  list.clear();
  EXPECT_EQ(item.key, 7);
}

TEST_F(RawList, SharersMayComeAndGoOnSeveralThreads) {
  const ItemList list = listOf({1, 2, 3});
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([copy = list] {
      for (int round = 0; round < 1000; ++round) {
        const ItemList mine = copy;
        ASSERT_EQ(mine.count(), 3);
      }
    });
  for (std::thread& thread : threads) thread.join();
  threads.clear();
  EXPECT_EQ(list.references(), 0);
  EXPECT_TRUE(destroyed.empty());
}

TEST_F(RawListSorting, NothingOrOneElementStays) {
  EXPECT_EQ(sorted({}, false), Keys{});
  EXPECT_EQ(sorted({}, true), Keys{});
  EXPECT_EQ(sorted({4}, false), (Keys{4}));
  EXPECT_EQ(sorted({4}, true), (Keys{4}));
}

TEST_F(RawListSorting, AscendsAndDescends) {
  EXPECT_EQ(sorted({3, 1, 2}, false), (Keys{1, 2, 3}));
  EXPECT_EQ(sorted({3, 1, 2}, true), (Keys{3, 2, 1}));
}

TEST_F(RawListSorting, ElementsThatMoveStandInReverseOrderOfTheirEncounter) {
  // Pivot 1 moves 3, then 2 in front of it: 2, 3, 1. Then pivot 2 moves 3.
  ItemList list = listOf({1, 3, 2});
  ItemListSort sort(list);
  sort.sortAll(true);
  EXPECT_EQ(keysOf(list), (Keys{3, 2, 1}));
  using Pairs = std::vector<std::pair<int, int>>;
  EXPECT_EQ(sort.compared, (Pairs{{1, 3}, {1, 2}, {2, 3}}));
}

TEST_F(RawListSorting, EqualElementsStayBehindTheirPivot) {
  ItemList list;
  list.append(new Item{1, 1});
  list.append(new Item{1, 2});
  list.append(new Item{0, 3});
  ItemListSort(list).sortAll();
  std::vector<int> marks;
  for (const Item& item : list.elements()) marks.push_back(item.mark);
  EXPECT_EQ(marks, (Keys{3, 1, 2}));
}

TEST_F(RawListSorting, SortsOnlyTheRunThatItIsGiven) {
  ItemList list = listOf({9, 3, 2, 1, 0});
  ItemListSort(list).sort(list.nodeAt(1), list.nodeAt(4), false);
  EXPECT_EQ(keysOf(list), (Keys{9, 1, 2, 3, 0}));
}

TEST_F(RawListSorting, MovesNoElement) {
  ItemList list = listOf({2, 1});
  const Item* two = ItemList::element(list.first());
  ItemListSort(list).sortAll();
  EXPECT_EQ(ItemList::element(list.last()), two);
  EXPECT_TRUE(destroyed.empty());
}

TEST_F(RawListSorting, AgreesWithThePlainSortOnManyLists) {
  std::mt19937 random(17);
  for (int round = 0; round < 300; ++round) {
    Keys keys(random() % 40);
    for (int& key : keys) key = static_cast<int>(random() % 25);
    Keys expected = keys;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(sorted(keys, false), expected);
    std::reverse(expected.begin(), expected.end());
    EXPECT_EQ(sorted(keys, true), expected);
  }
}
