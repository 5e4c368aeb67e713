#include "raw/RawRegion.h"

#include "raw/RawString.h"
#include "raw/RawStringList.h"

#include "TestText.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

using namespace RawLayer;

namespace {

// Pieces of many sizes, each filled with a value of its own.
class Pieces {
 public:
  void take(RawRegion& region, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t size = 1 + i * 37 % 1500;
      void* memory = region.take(size);
      std::memset(memory, static_cast<int>(i & 0xFF), size);
      all_.push_back({static_cast<unsigned char*>(memory), size, static_cast<uint8_t>(i & 0xFF)});
    }
  }
  [[nodiscard]] bool areWhole() const {
    for (const Piece& piece : all_)
      for (std::size_t i = 0; i < piece.size; ++i)
        if (piece.memory[i] != piece.value) return false;
    return true;
  }
  [[nodiscard]] bool areAligned() const {
    for (const Piece& piece : all_)
      if (reinterpret_cast<std::uintptr_t>(piece.memory) % alignof(void*) != 0) return false;
    return true;
  }
  void giveEvery(std::size_t step) {
    for (std::size_t i = all_.size(); i-- > 0;)
      if (i % step == 0) {
        RawRegion::give(all_[i].memory);
        all_.erase(all_.begin() + static_cast<std::ptrdiff_t>(i));
      }
  }

 private:
  struct Piece {
    unsigned char* memory;
    std::size_t size;
    uint8_t value;
  };
  std::vector<Piece> all_;
};

} // namespace

TEST(RawRegion, PiecesLieBesideEachOther) {
  RawRegion region;
  Pieces pieces;
  pieces.take(region, 1000);
  EXPECT_TRUE(pieces.areWhole());
  EXPECT_TRUE(pieces.areAligned());
  pieces.giveEvery(1);
}

TEST(RawRegion, PiecesOutliveTheRegion) {
  Pieces pieces;
  {
    RawRegion region;
    pieces.take(region, 300);
    pieces.giveEvery(3);
  }
  EXPECT_TRUE(pieces.areWhole());
  pieces.giveEvery(1);
}

TEST(RawRegion, ARegionGoesOnAfterAllWasGivenBack) {
  RawRegion region;
  for (int i = 0; i < 50; ++i) {
    Pieces pieces;
    pieces.take(region, 20);
    EXPECT_TRUE(pieces.areWhole());
    pieces.giveEvery(1);
  }
}

TEST(RawRegion, AnUnusedRegionHoldsNothing) {
  const RawRegion region;
}

TEST(RawRegion, NothingIsGivenBackForNull) {
  RawRegion::give(nullptr);
}

TEST(RawRegion, APieceMayStandAlone) {
  auto* memory = static_cast<char*>(RawRegion::takeAlone(5));
  std::memcpy(memory, "abcd", 5);
  EXPECT_STREQ(memory, "abcd");
  RawRegion::give(memory);
}

TEST(RawRegion, AnyThreadMayGivePiecesBack) {
  for (int round = 0; round < 20; ++round) {
    RawRegion region;
    Pieces mine;
    Pieces theirs;
    mine.take(region, 200);
    theirs.take(region, 200);
    std::thread other([&] { theirs.giveEvery(1); });
    mine.giveEvery(2);
    mine.take(region, 200);
    EXPECT_TRUE(mine.areWhole());
    other.join();
    mine.giveEvery(1);
  }
}

TEST(RawRegion, ATextInARegionIsATextLikeAnyOther) {
  RawString kept;
  {
    RawRegion region;
    const RawString line = "key=value"_text;
    kept = RawString::fromRegion(region, line, {4, 99});
    EXPECT_EQ(kept.encoding(), EncodingUtf8);
    EXPECT_TRUE(RawString::fromRegion(region, line, {5, 5}).isEmpty());
  }
  EXPECT_EQ(kept, "value"_text);
  EXPECT_STREQ(kept.text(), "value");
  const RawString shared = kept;
  EXPECT_EQ(shared.text(), kept.text());
  kept.appendChar('s');
  EXPECT_EQ(kept, "values"_text);
  EXPECT_EQ(shared, "value"_text);
}

TEST(RawRegion, ASoleTextInARegionIsCopiedBeforeItIsWritten) {
  RawRegion region;
  RawString text = RawString::fromRegion(region, "abc"_text, {0, 3});
  const RawString neighbour = RawString::fromRegion(region, "def"_text, {0, 3});
  text.append("a text that is too long for the place of the first"_text);
  text.replaceRange({0, 1}, "xyz"_text, {0, 3});
  EXPECT_EQ(text, "xyzbca text that is too long for the place of the first"_text);
  EXPECT_EQ(neighbour, "def"_text);
}

TEST(RawRegion, WideTextsAndViewsAreCopiedAsTheyAre) {
  RawRegion region;
  char16_t units[] = u"a\u3042b";
  const RawString text =
      RawString::fromRegion(region, RawString::viewOf(EncodingWide, units, 3), {1, 3});
  units[1] = u'x';
  EXPECT_EQ(text.encoding(), EncodingWide);
  EXPECT_EQ(text.length(), 2);
  EXPECT_EQ(text.at(0), 0x3042);
  EXPECT_EQ(text.wide()[2], 0);
}

TEST(RawRegion, AListInARegionIsAListLikeAnyOther) {
  class List : public RawListR<RawStringListAllocator, RawString> {
   public:
    explicit List(RawRegion& region) : RawListR(region) {}
    using RawListR::renewRing;
  };
  auto region = std::make_unique<RawRegion>();
  List list(*region);
  list.append(new RawString("a"_text), *region);
  list.append(new RawString("b"_text), *region);
  region.reset();
  list.prepend(new RawString("c"_text));
  list.erase(list.nodeAt(1));
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(*List::element(list.first()), "c"_text);
  const List copy(list);
  RawRegion other;
  list.renewRing(other);
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(*List::element(copy.last()), "b"_text);
}

TEST(RawRegion, AListOfItsOwnTakesNoNodesFromARegion) {
  RawStringList list;
  {
    RawRegion region;
    list.append(new RawString("a"_text), region);
  }
  EXPECT_EQ(*RawStringList::element(list.first()), "a"_text);
}
