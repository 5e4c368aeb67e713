#include "raw/RawUnitScan.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace RawLayer::UnitScan;

namespace {

// The same questions, one unit at a time.
template <typename Unit>
int32_t plainFirst(const Unit* units, int32_t count, Unit unit) {
  for (int32_t i = 0; i < count; ++i)
    if (units[i] == unit) return i;
  return count;
}

template <typename Unit>
Unit plainFold(Unit unit) {
  return unit >= 'a' && unit <= 'z' ? static_cast<Unit>(unit - 0x20) : unit;
}

// Random units out of few values, so that hits are frequent, with the borders of every rule.
template <typename Unit>
std::vector<Unit> randomUnits(std::minstd_rand& random, int32_t count) {
  static constexpr uint16_t values[] = {0,    'a',  'z',    '`',    '{',    'A',    'Z',
                                        0x7E, 0x7F, 0x80,   0x81,   0xE1,   0xFF,   0x161,
                                        '@',  '[',  0x8061, 0x8000, 0x7FFF, 0xFFFF, 0x0100};
  std::vector<Unit> units;
  for (int32_t i = 0; i < count; ++i)
    units.push_back(static_cast<Unit>(values[random() % std::size(values)]));
  return units;
}

template <typename Unit, template <typename> class Block>
void compareWithPlain(uint32_t seed) {
  std::minstd_rand random(seed);
  for (int round = 0; round < 4000; ++round) {
    const auto count = static_cast<int32_t>(random() % 90);
    // Exact memory, so that a sanitizer sees each read outside of it.
    const std::vector<Unit> a = randomUnits<Unit>(random, count);
    std::vector<Unit> b = a;
    if (count > 0 && random() % 4 != 0) b[random() % b.size()] = randomUnits<Unit>(random, 1)[0];
    if (count > 0 && random() % 2 != 0)
      for (Unit& each : b)
        if (random() % 2 != 0) each = plainFold(each);
    const Unit sought = randomUnits<Unit>(random, 1)[0];
    const Unit later = randomUnits<Unit>(random, 1)[0];

    const int32_t hit = plainFirst(a.data(), count, sought);
    ASSERT_EQ((firstUnit<Unit, Block>(a.data(), count, sought)), hit);

    int32_t difference = 0;
    while (difference < count && a[difference] == b[difference]) ++difference;
    ASSERT_EQ((firstDifference<Unit, Block>(a.data(), b.data(), count)), difference);

    int32_t folded = 0;
    while (folded < count && plainFold(a[folded]) == plainFold(b[folded])) ++folded;
    ASSERT_EQ((firstDifferenceNoCase<Unit, Block>(a.data(), b.data(), count)), folded);

    const auto distance = static_cast<int32_t>(random() % 20);
    const int32_t places = count > distance ? count - distance : 0;
    int32_t pair = 0;
    while (pair < places && !(a[pair] == sought && a[pair + distance] == later)) ++pair;
    ASSERT_EQ((firstPair<Unit, Block>(a.data(), places, sought, later, distance)), pair);

    const auto limit = static_cast<Unit>(random() % 0x80);
    int32_t above = 0;
    while (above < count && a[above] <= limit) ++above;
    ASSERT_EQ((firstAbove<Unit, Block>(a.data(), count, limit)), above);
  }
}

TEST(RawUnitScan, SingleUnitsGiveThePlainAnswers) {
  compareWithPlain<uint8_t, SingleBlock>(1);
  compareWithPlain<char16_t, SingleBlock>(2);
}

TEST(RawUnitScan, WordsGiveThePlainAnswers) {
  compareWithPlain<uint8_t, WordBlock>(3);
  compareWithPlain<char16_t, WordBlock>(4);
}

TEST(RawUnitScan, WidestBlocksGiveThePlainAnswers) {
  compareWithPlain<uint8_t, WidestBlock>(5);
  compareWithPlain<char16_t, WidestBlock>(6);
}

template <typename Unit, template <typename> class Block>
void foldAllUnits() {
  const uint32_t last = sizeof(Unit) == 1 ? 0xFF : 0xFFFF;
  for (uint32_t value = 0; value <= last; ++value) {
    const std::vector<Unit> units(16, static_cast<Unit>(value));
    const std::vector<Unit> expected(16, plainFold(static_cast<Unit>(value)));
    const auto folded = Block<Unit>::load(units.data()).folded();
    ASSERT_EQ(folded.differing(Block<Unit>::load(expected.data())), 0U) << value;
  }
}

TEST(RawUnitScan, FoldingChangesTheSmallAsciiLettersAndNothingElse) {
  foldAllUnits<uint8_t, SingleBlock>();
  foldAllUnits<char16_t, SingleBlock>();
  foldAllUnits<uint8_t, WordBlock>();
  foldAllUnits<char16_t, WordBlock>();
  foldAllUnits<uint8_t, WidestBlock>();
  foldAllUnits<char16_t, WidestBlock>();
}

} // namespace
