// The pool over icons of the platform in every depth, and over its device contexts.
#include "win/WinBitmapPool.h"

#include "TestIcon.h"

#include <gtest/gtest.h>

using namespace WinLayer;

namespace {

TestPixels cellOf(WinSize size, void* icon) {
  WinBitmapPool pool;
  pool.setCellSize(size.width, size.height);
  const int32_t cell = pool.addIcon(icon);
  if (cell < 0) return {};
  const uint32_t* first = pool.cellPixels(cell);
  return {first, first + testCount(size)};
}

// Two rows of which the second is masked in its last two columns.
constexpr WinSize Size{4, 2};
const TestPixels& mask() {
  static const TestPixels pixels{0, 0, 0, 0, 0, 0, 1, 1};
  return pixels;
}

} // namespace

TEST(WinBitmapPoolWin, ThirtyTwoBitsWithAlphaStayAsTheyAre) {
  const TestPixels colours{0x00112233, 0x01FFFFFF, 0x80FF0080, 0xFF000000,
                           0xFFFFFFFF, 0x7F010203, 0x00000000, 0xC0FFEE00};
  const TestIcon icon(Size, colours, mask());
  EXPECT_EQ(cellOf(Size, icon.get()), colours);
}

TEST(WinBitmapPoolWin, ThirtyTwoBitsWithoutAlphaTakeItFromTheMask) {
  const TestIcon icon(Size, {0x112233, 0xFFFFFF, 0xFF0080, 0, 0x1, 0x10203, 0, 0xFFEE00}, mask());
  EXPECT_EQ(cellOf(Size, icon.get()), (TestPixels{0xFF112233, 0xFFFFFFFF, 0xFFFF0080, 0xFF000000,
                                                  0xFF000001, 0xFF010203, 0x00FFFFFF, 0x00FFFFFF}));
}

TEST(WinBitmapPoolWin, TwentyFourBitsTakeTheirAlphaFromTheMask) {
  const TestIcon icon(Size, {0x112233, 0xFFFFFF, 0xFF0080, 0, 0x1, 0x10203, 0, 0xFFEE00}, mask(),
                      24);
  EXPECT_EQ(cellOf(Size, icon.get()), (TestPixels{0xFF112233, 0xFFFFFFFF, 0xFFFF0080, 0xFF000000,
                                                  0xFF000001, 0xFF010203, 0x00FFFFFF, 0x00FFFFFF}));
}

TEST(WinBitmapPoolWin, OneBitIsBlackOrWhite) {
  const TestIcon icon(Size, {1, 0, 1, 0, 0, 1, 1, 0}, mask(), 1);
  EXPECT_EQ(cellOf(Size, icon.get()), (TestPixels{0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000,
                                                  0xFF000000, 0xFFFFFFFF, 0x00FFFFFF, 0x00FFFFFF}));
}

TEST(WinBitmapPoolWin, AnIconOfTwoColoursHasThemInTheLowerHalfOfItsMask) {
  const TestBitmap both({4, 4}, 1);
  both.set({0, 0, 0, 0, 0, 0, 1, 1, 1, 0, 1, 0, 0, 1, 1, 0});
  ICONINFO info{TRUE, 0, 0, both.get(), nullptr};
  const HICON icon = CreateIconIndirect(&info);
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(cellOf(Size, icon), (TestPixels{0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000,
                                            0xFF000000, 0xFFFFFFFF, 0x00FFFFFF, 0x00FFFFFF}));
  DestroyIcon(icon);
}

TEST(WinBitmapPoolWin, ADestroyedIconIsNone) {
  const TestIcon icon(Size, TestPixels(8, 0xFF000000), mask());
  WinBitmapPool pool;
  pool.setCellSize(4, 2);
  EXPECT_EQ(pool.addIcon(reinterpret_cast<void*>(0x123456)), -1);
  EXPECT_EQ(pool.addIcon(icon.get()), 0);
}

TEST(WinBitmapPoolWin, TheBackgroundIsFetchedFromTheContextAndScaledBack) {
  const TestIcon icon({8, 8}, TestPixels(64, 0x80FF0000), TestPixels(64, 0));
  WinBitmapPool pool;
  pool.setCellSize(8, 8);
  ASSERT_EQ(pool.addIcon(icon.get()), 0);
  const TestCanvas canvas({24, 24}, 0x0000FF);
  pool.drawCell(0, canvas.get(), {4, 4, 20, 20}); // twice the cell
  const TestPixels pixels = canvas.pixels();
  EXPECT_EQ(pixels[0], 0x0000FFu);
  EXPECT_EQ(pixels[12 * 24 + 12], 0x80007Fu);
  EXPECT_EQ(pixels[23 * 24 + 23], 0x0000FFu);
}

TEST(WinBitmapPoolWin, NothingOfThePlatformsIsLeftBehind) {
  const auto count = [] { return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); };
  const TestIcon icon(Size, TestPixels(8, 0xFF000000), mask());
  const TestCanvas canvas({8, 8}, 0);
  const auto round = [&] {
    WinBitmapPool pool;
    pool.setCellSize(4, 2);
    pool.addIcon(icon.get());
    pool.drawCell(0, canvas.get(), {0, 0, 4, 2});
    pool.setCellSize(8, 8);
    pool.addIcon(icon.get());
    pool.drawCell(0, canvas.get(), {0, 0, 8, 8});
  };
  round();
  const DWORD before = count();
  for (int i = 0; i < 200; ++i) round();
  EXPECT_EQ(count(), before);
}
