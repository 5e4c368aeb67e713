#include "win/WinBitmapPool.h"

#include "TestFolder.h"
#include "TestIcon.h"
#include "TestText.h"
#include "win/WinScaler.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace WinLayer;
using RawLayer::RawFileOwner;
using std::string;

namespace {

TestPixels cellOf(const WinBitmapPool& pool, int32_t cell) {
  const uint32_t* first = pool.cellPixels(cell);
  return first ? TestPixels(first, first + testCount(pool.cellSize())) : TestPixels();
}

TestPixels somePixels(WinSize size, uint32_t seed = 1) {
  TestPixels pixels;
  for (std::size_t i = 0; i < testCount(size); ++i)
    pixels.push_back(seed = seed * 1664525 + 1013904223);
  return pixels;
}

int32_t add(WinBitmapPool& pool, WinSize size, uint32_t colour) {
  PlainIcon icon(size, colour);
  return pool.addIcon(icon.get());
}

class PoolEx : public WinBitmapPoolEx {
 public:
  explicit PoolEx(int32_t size = 4) { setCellSize(size, size); }
  int32_t fill(int32_t count) {
    int32_t last = -1;
    for (int32_t i = 0; i < count; ++i)
      last = add(*this, cellSize(), 0xFF000000u | static_cast<uint32_t>(i));
    return last;
  }
};

TestPixels scaledTo(WinSize to, WinSize from, TestPixels pixels) {
  TestPixels target(testCount(to));
  scaleBitmap(WinBitmapAlpha::over(pixels.data(), from), WinBitmapAlpha::over(target.data(), to));
  return target;
}

void expectScaled(WinSize from, WinSize to) {
  WinBitmapPool pool;
  pool.setCellSize(to.width, to.height);
  const TestPixels pixels = somePixels(from);
  TestIcon icon(from, pixels, TestPixels(testCount(from), 0));
  ASSERT_EQ(pool.addIcon(icon.get()), 0);
  EXPECT_EQ(cellOf(pool, 0), scaledTo(to, from, pixels)) << from.width << " to " << to.width;
}

} // namespace

TEST(WinBitmapPool, StartsWithoutCells) {
  WinBitmapPool pool;
  pool.setCellSize(32, 16);
  EXPECT_EQ(pool.cellSize(), (WinSize{32, 16}));
  EXPECT_EQ(pool.capacity(), 0);
  EXPECT_EQ(pool.usedCells(), 0);
  EXPECT_EQ(pool.cellPixels(0), nullptr);
}

TEST(WinBitmapPool, RoomIsMadeOnceAndNeverTakenBack) {
  WinBitmapPool pool;
  pool.setCellSize(4, 6);
  EXPECT_TRUE(pool.reserveCells(3));
  EXPECT_EQ(pool.capacity(), 3);
  EXPECT_EQ(pool.storeSize(), (WinSize{4, 18}));
  EXPECT_TRUE(pool.reserveCells(2));
  EXPECT_EQ(pool.capacity(), 3);
  EXPECT_EQ(cellOf(pool, 2), TestPixels(24, 0));
  EXPECT_EQ(pool.cellPixels(3), nullptr);
  EXPECT_EQ(pool.cellPixels(-1), nullptr);
}

TEST(WinBitmapPool, RoomThatCannotBeIsRefused) {
  WinBitmapPool pool;
  EXPECT_FALSE(pool.reserveCells(1)); // no cell size yet
  pool.setCellSize(-5, 7);
  EXPECT_EQ(pool.cellSize(), (WinSize{0, 7}));
  EXPECT_FALSE(pool.reserveCells(1));
  pool.setCellSize(INT32_MAX, INT32_MAX);
  EXPECT_FALSE(pool.reserveCells(1));
  pool.setCellSize(256, 256);
  EXPECT_FALSE(pool.reserveCells(INT32_MAX));
  EXPECT_FALSE(pool.reserveScratch(INT64_MAX));
  EXPECT_TRUE(pool.reserveScratch(48 * 48));
  EXPECT_EQ(pool.capacity(), 0);
}

TEST(WinBitmapPool, CellsAreCountedOnAndKeepTheirPixelsWhileItGrows) {
  WinBitmapPool pool;
  pool.setCellSize(4, 4);
  pool.growStep = 3;
  for (uint32_t i = 0; i < 10; ++i)
    ASSERT_EQ(add(pool, {4, 4}, 0xFF000000u | i), static_cast<int32_t>(i));
  EXPECT_EQ(pool.usedCells(), 10);
  EXPECT_EQ(pool.capacity(), 12);
  for (uint32_t i = 0; i < 10; ++i)
    EXPECT_EQ(cellOf(pool, static_cast<int32_t>(i)), TestPixels(16, 0xFF000000u | i));
}

TEST(WinBitmapPool, AnIconOfTheCellSizeIsCopied) {
  expectScaled({32, 32}, {32, 32});
}

TEST(WinBitmapPool, OtherSizesAreScaled) {
  expectScaled({16, 16}, {32, 32});
  expectScaled({48, 48}, {32, 32});
  expectScaled({24, 64}, {32, 32});
}

TEST(WinBitmapPool, AnIconWithoutAlphaTakesItFromItsMask) {
  WinBitmapPool pool;
  pool.setCellSize(2, 2);
  TestIcon icon({2, 2}, {0x112233, 0, 0x445566, 0x778899}, {0, 0, 1, 0});
  ASSERT_EQ(pool.addIcon(icon.get()), 0);
  EXPECT_EQ(cellOf(pool, 0), (TestPixels{0xFF112233, 0xFF000000, 0x00FFFFFF, 0xFF778899}));
}

TEST(WinBitmapPool, WhatIsNoIconTakesNoCell) {
  WinBitmapPool pool;
  pool.setCellSize(4, 4);
  EXPECT_EQ(pool.addIcon(nullptr), -1);
  EXPECT_EQ(pool.usedCells(), 0);
  EXPECT_EQ(add(pool, {4, 4}, 0xFF000000), 0);
}

TEST(WinBitmapPool, ACellIsFilledAgain) {
  WinBitmapPool pool;
  pool.setCellSize(4, 4);
  add(pool, {4, 4}, 0xFF0000FF);
  PlainIcon other({4, 4}, 0xFF00FF00);
  EXPECT_TRUE(pool.storeIcon(0, other.get()));
  EXPECT_EQ(cellOf(pool, 0), TestPixels(16, 0xFF00FF00));
  EXPECT_FALSE(pool.storeIcon(0, nullptr));
  EXPECT_EQ(cellOf(pool, 0), TestPixels(16, 0xFF00FF00));
  EXPECT_FALSE(pool.storeIcon(-1, other.get()));
  EXPECT_FALSE(pool.storeIcon(pool.capacity(), other.get()));
  EXPECT_EQ(pool.usedCells(), 1);
}

TEST(WinBitmapPool, AnotherCellSizeFreesAllCells) {
  PoolEx pool;
  pool.fill(3);
  pool.setCellSize(4, 4);
  EXPECT_EQ(pool.usedCells(), 3);
  pool.setCellSize(8, 4);
  EXPECT_EQ(pool.usedCells(), 0);
  EXPECT_EQ(pool.capacity(), 0);
  EXPECT_FALSE(pool.isTaken(0));
}

TEST(WinBitmapPool, DrawingBlendsTheCellOverTheBackground) {
  WinBitmapPool pool;
  pool.setCellSize(2, 2);
  TestIcon icon({2, 2}, {0x00FF0000, 0xFF00FF00, 0x800000FF, 0x40FFFFFF}, {0, 0, 0, 0});
  ASSERT_EQ(pool.addIcon(icon.get()), 0);
  TestCanvas canvas({4, 3}, 0x102030);
  pool.drawCell(0, canvas.get(), {1, 1, 3, 3});
  const uint32_t b = 0x102030;
  EXPECT_EQ(canvas.pixels(), (TestPixels{b, b, b, b, b, b, 0x00FF00, b, b, 0x070F97, 0x4B5763, b}));
}

TEST(WinBitmapPool, ACellThatIsNotThereDrawsNothing) {
  PoolEx pool;
  TestCanvas canvas({4, 4}, 0x102030);
  pool.drawCell(0, canvas.get(), {0, 0, 4, 4});
  pool.fill(1);
  for (const int32_t cell : {-1, INT32_MIN, pool.capacity(), INT32_MAX})
    pool.drawCell(cell, canvas.get(), {0, 0, 4, 4});
  pool.drawCell(0, nullptr, {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, 0x102030));
  pool.drawCell(0, canvas.get(), {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, 0));
}

TEST(WinBitmapPool, TheSurfaceGrowsWithTheCells) {
  PoolEx pool;
  TestCanvas canvas({40, 40}, 0xFFFFFF);
  pool.fill(1);
  pool.drawCell(0, canvas.get(), {0, 0, 4, 4});
  pool.setCellSize(40, 40);
  pool.fill(1);
  pool.drawCell(0, canvas.get(), {0, 0, 40, 40});
  EXPECT_EQ(canvas.pixels(), TestPixels(1600, 0));
}

TEST(WinBitmapPool, AReleasedPoolCanBeFilledAgain) {
  PoolEx pool;
  TestCanvas canvas({4, 4}, 0xFFFFFF);
  pool.fill(2);
  pool.drawCell(0, canvas.get(), {0, 0, 4, 4});
  pool.release();
  EXPECT_EQ(pool.usedCells(), 0);
  EXPECT_FALSE(pool.isTaken(0));
  EXPECT_EQ(pool.cellSize(), (WinSize{4, 4}));
  EXPECT_EQ(add(pool, {4, 4}, 0xFF123456), 0);
  pool.drawCell(0, canvas.get(), {0, 0, 4, 4});
  EXPECT_EQ(canvas.pixels(), TestPixels(16, 0x123456));
}

TEST(WinBitmapPoolEx, FreeCellsAreTakenAgainTheLowestFirst) {
  PoolEx pool;
  EXPECT_EQ(pool.fill(5), 4);
  pool.freeCell(3);
  pool.freeCell(1);
  EXPECT_FALSE(pool.isTaken(1));
  EXPECT_EQ(pool.fill(1), 1);
  EXPECT_EQ(pool.fill(1), 3);
  EXPECT_EQ(pool.fill(1), 5);
  EXPECT_EQ(pool.usedCells(), 6);
  pool.freeCell(-1);
  pool.freeCell(1000000);
  EXPECT_EQ(pool.usedCells(), 6);
}

TEST(WinBitmapPoolEx, GrowsCellByCellBeyondTheFirstWords) {
  PoolEx pool(1);
  EXPECT_EQ(pool.fill(300), 299);
  EXPECT_EQ(pool.usedCells(), 300);
  for (int32_t i = 0; i < 300; ++i) {
    EXPECT_TRUE(pool.isTaken(i));
    EXPECT_EQ(cellOf(pool, i), TestPixels(1, 0xFF000000u | static_cast<uint32_t>(i)));
  }
  EXPECT_FALSE(pool.isTaken(300));
}

// --- The file

namespace {

struct Header {
  int32_t width = 4;
  int32_t height = 4;
  int32_t cellCount = 2;
  int32_t wordCount = 1;
};

string bytesOf(const Header& header, std::size_t behind) {
  string bytes(sizeof header, '\0');
  std::memcpy(bytes.data(), &header, sizeof header);
  return bytes + string(behind, '\x03');
}

bool loads(WinBitmapPoolEx& pool, const TestFolder& folder, const string& bytes) {
  const RawFileOwner file =
      RawLayer::openFile(folder.write("cells.dat", bytes), RawLayer::RawAccessRead,
                         RawLayer::RawShareRead, RawLayer::RawOpenExisting);
  return pool.load(file);
}

bool saves(const WinBitmapPoolEx& pool, const TestFolder& folder) {
  const RawFileOwner file = RawLayer::openFile(folder.file("cells.dat"), RawLayer::RawAccessWrite,
                                               RawLayer::RawShareNone, RawLayer::RawCreateAlways);
  return pool.save(file);
}

void expectRefused(const string& bytes) {
  const TestFolder folder;
  PoolEx pool;
  pool.fill(3);
  EXPECT_FALSE(loads(pool, folder, bytes));
  EXPECT_EQ(pool.usedCells(), 0);
  EXPECT_EQ(pool.capacity(), 0);
  EXPECT_FALSE(pool.isTaken(0));
}

} // namespace

TEST(WinBitmapPoolFile, HasTheHeaderTheWordsAndThePixelsAndNothingElse) {
  const TestFolder folder;
  PoolEx pool(1);
  pool.fill(3);
  pool.freeCell(1);
  TestIcon icon({1, 1}, {0x44112233}, {0});
  ASSERT_TRUE(pool.storeIcon(2, icon.get()));
  ASSERT_TRUE(saves(pool, folder));
  const string bytes = folder.read("cells.dat");
  const string header = string("\1\0\0\0\1\0\0\0\3\0\0\0", 12);
  const auto words = static_cast<std::size_t>(bytes[12]);
  ASSERT_EQ(bytes.size(), 16 + words * 4 + 3 * 4);
  EXPECT_EQ(bytes.substr(0, 12), header);
  EXPECT_EQ(bytes.substr(16, words * 4), "\5" + string(words * 4 - 1, '\0'));
  EXPECT_EQ(bytes.substr(16 + words * 4), string("\0\0\0\xFF\1\0\0\xFF\x33\x22\x11\x44", 12));
}

TEST(WinBitmapPoolFile, ComesBackAsItWas) {
  const TestFolder folder;
  PoolEx saved;
  saved.fill(120);
  saved.freeCell(7);
  ASSERT_TRUE(saves(saved, folder));
  PoolEx loaded;
  loaded.fill(2);
  ASSERT_TRUE(loads(loaded, folder, folder.read("cells.dat")));
  EXPECT_EQ(loaded.usedCells(), 120);
  EXPECT_EQ(loaded.capacity(), 121);
  for (int32_t i = 0; i < 120; ++i) {
    EXPECT_EQ(loaded.isTaken(i), i != 7) << i;
    EXPECT_EQ(cellOf(loaded, i), cellOf(saved, i)) << i;
  }
  EXPECT_EQ(cellOf(loaded, 120), TestPixels(16, 0));
  EXPECT_EQ(loaded.fill(1), 7);
  EXPECT_EQ(loaded.fill(1), 120);
  EXPECT_EQ(loaded.fill(1), 121);
}

TEST(WinBitmapPoolFile, AnEmptyPoolIsAFileToo) {
  const TestFolder folder;
  PoolEx pool;
  ASSERT_TRUE(saves(pool, folder));
  EXPECT_EQ(folder.read("cells.dat"), bytesOf(Header{4, 4, 0, 0}, 0));
  EXPECT_TRUE(loads(pool, folder, folder.read("cells.dat")));
  EXPECT_EQ(pool.usedCells(), 0);
}

TEST(WinBitmapPoolFile, BytesBehindThePixelsDoNotMatter) {
  const TestFolder folder;
  PoolEx pool;
  EXPECT_TRUE(loads(pool, folder, bytesOf(Header{}, 4 + 128 + 9)));
  EXPECT_EQ(pool.usedCells(), 2);
  EXPECT_EQ(cellOf(pool, 1), TestPixels(16, 0x03030303));
}

TEST(WinBitmapPoolFile, OtherCellSizesAreRefused) {
  expectRefused(bytesOf(Header{5, 4, 2, 1}, 1000));
  expectRefused(bytesOf(Header{4, 3, 2, 1}, 1000));
  expectRefused(bytesOf(Header{-4, -4, 2, 1}, 1000));
  expectRefused(bytesOf(Header{INT32_MAX, INT32_MAX, 1000, 1}, 1000));
}

TEST(WinBitmapPoolFile, AThousandCellsAreTheMost) {
  const TestFolder folder;
  PoolEx pool;
  EXPECT_TRUE(loads(pool, folder, bytesOf(Header{4, 4, 1000, 1}, 4 + 64000)));
  EXPECT_EQ(pool.usedCells(), 1000);
  expectRefused(bytesOf(Header{4, 4, 1001, 1}, 4 + 64064));
  expectRefused(bytesOf(Header{4, 4, -1, 1}, 1000));
  expectRefused(bytesOf(Header{4, 4, INT32_MIN, 1}, 1000));
}

TEST(WinBitmapPoolFile, MoreCellsThanMayBeStoredAreNotSaved) {
  const TestFolder folder;
  PoolEx pool(1);
  pool.fill(1000);
  EXPECT_TRUE(saves(pool, folder));
  EXPECT_TRUE(loads(pool, folder, folder.read("cells.dat")));
  pool.fill(1);
  EXPECT_FALSE(saves(pool, folder));
  EXPECT_EQ(folder.read("cells.dat"), "");
}

TEST(WinBitmapPoolFile, WordCountsThatCannotBeAreRefused) {
  expectRefused(bytesOf(Header{4, 4, 2, -1}, 1000));
  expectRefused(bytesOf(Header{4, 4, 2, INT32_MAX}, 1000));
  expectRefused(bytesOf(Header{4, 4, 2, 0x40000000}, 1000));
  expectRefused(bytesOf(Header{4, 4, 2, WinBitmapPoolEx::MostStoredWords + 1}, 1000));
  const TestFolder folder;
  PoolEx pool;
  EXPECT_TRUE(loads(pool, folder, bytesOf(Header{4, 4, 2, 64}, 256 + 128)));
}

TEST(WinBitmapPoolFile, AFileThatEndsEarlyIsRefusedWhereverItEnds) {
  const string whole = bytesOf(Header{}, 4 + 128);
  for (std::size_t size = 0; size < whole.size(); ++size) expectRefused(whole.substr(0, size));
}

TEST(WinBitmapPoolFile, AFileThatIsNotThereIsRefused) {
  PoolEx pool;
  EXPECT_FALSE(pool.load(RawFileOwner()));
  EXPECT_FALSE(pool.save(RawFileOwner()));
}

// Bits may stand for cells that the file does not hold: they stay taken, and the next icon gets
// its cell all the same.
TEST(WinBitmapPoolFile, BitsBeyondTheCellsOnlyCostRoom) {
  const TestFolder folder;
  PoolEx pool;
  string bytes = bytesOf(Header{4, 4, 2, 64}, 0);
  bytes += string(256, '\xFF') + string(128, '\0');
  ASSERT_TRUE(loads(pool, folder, bytes));
  EXPECT_EQ(pool.fill(1), 2048);
  EXPECT_GT(pool.capacity(), 2048);
  EXPECT_EQ(cellOf(pool, 2048), TestPixels(16, 0xFF000000));
}
