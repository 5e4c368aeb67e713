// Icons: scaling and blending of one beside the platform's own, and the cache of a thousand beside
// a bare read and write of the same bytes.
#include "Bench.h"
#include "IconPeer.h"
#include "job/JobIconCache.h"
#include "raw/RawFile.h"
#include "raw/RawPath.h"
#include "win/WinPixels.h"
#include "win/WinScaler.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

using namespace RawLayer;
using namespace WinLayer;
using IconPeer::Pixels;

namespace {

constexpr int32_t Side = 32;

// A disc of many colours with a soft edge, as most icons are: pixels of all kinds of alpha.
Pixels discOf(int32_t side) {
  Pixels pixels;
  for (int32_t y = 0; y < side; ++y)
    for (int32_t x = 0; x < side; ++x) {
      const double middle = (side - 1) / 2.0;
      const double inside = side * 0.45 - std::hypot(x - middle, y - middle);
      const double alpha = inside < 0 ? 0 : inside > 2 ? 255 : inside * 127;
      pixels.push_back(static_cast<uint32_t>(alpha) << 24 |
                       static_cast<uint32_t>(x * 255 / side) << 16 |
                       static_cast<uint32_t>(y * 255 / side) << 8 | 0x40);
    }
  return pixels;
}

void benchScaling(const char* what, int32_t from, int32_t to) {
  Pixels source = discOf(from);
  Pixels target(static_cast<std::size_t>(to) * static_cast<std::size_t>(to));
  const std::unique_ptr<IconPeer::Work> peer = IconPeer::makeScaler(source, from, to);
  const Bench::Pair pair = Bench::measure(
      [&] {
        scaleBitmap(WinBitmapAlpha::over(source.data(), {from, from}),
                    WinBitmapAlpha::over(target.data(), {to, to}));
        Bench::keep(target[0]);
      },
      [&] { peer->run(); });
  Bench::report(what, "ns", pair.own, IconPeer::scalerName(), pair.peer, IconPeer::scalerGoal());
}

void benchBlending() {
  const Pixels cell = discOf(Side);
  Pixels background(cell.size(), 0x00C0D0E0);
  const std::unique_ptr<IconPeer::Work> peer = IconPeer::makeBlender(cell, Side);
  const Bench::Pair pair = Bench::measure(
      [&] {
        blendPixels(background.data(), cell.data(), cell.size());
        Bench::keep(background[0]);
      },
      [&] { peer->run(); });
  Bench::report("blend a cell of 32, pixels alone", "ns", pair.own, IconPeer::blenderName(),
                pair.peer, IconPeer::blenderGoal());
}

// With the copies from the context and back, which are the platform's: a figure without a goal.
void benchDrawing() {
  const Pixels pixels = discOf(Side);
  void* context = IconPeer::makeContext(Side);
  if (!context) return;
  WinBitmapPool pool;
  pool.setCellSize(Side, Side);
  if (pool.addIcon(IconPeer::makeIcon(pixels, Side)) != 0) return;
  const std::unique_ptr<IconPeer::Work> peer = IconPeer::makeBlender(pixels, Side);
  const Bench::Pair pair = Bench::measure(
      [&] {
        pool.drawCell(0, context, {0, 0, Side, Side});
      },
      [&] { peer->run(); });
  std::printf("draw a cell of 32, with both copies: %.1f ns, %s %.1f ns, ratio %.2f\n", pair.own,
              IconPeer::blenderName(), pair.peer, pair.own / pair.peer);
}

// --- The cache

RawString rawOf(const std::string& text) {
  return RawString::fromChars(text.data(), static_cast<int32_t>(text.size()));
}

class Cache : public JobLayer::JobIconCache {
 public:
  explicit Cache(const RawString& folder) {
    pool.setCellSize(Side, Side);
    persistent = true;
    profile = joinPath(folder, rawOf("IconCache.ini"));
  }
  // As many entries as can be saved, each with a cell.
  void fill() {
    pool.reserveCells(WinBitmapPoolEx::MostStoredCells);
    const int32_t failed = pool.acquireCell();
    setBuiltIn(failed, pool.acquireCell());
    for (int32_t i = 2; i < WinBitmapPoolEx::MostStoredCells; ++i) {
      auto* unit = new JobLayer::JobIconInfoUnit;
      unit->imageId = pool.acquireCell();
      unit->file = rawOf("C:\\Program Files\\Maker " + std::to_string(i % 90) + "\\Program " +
                         std::to_string(i) + ".exe");
      unit->iconIndex = i % 3;
      list.append(unit);
    }
  }
};

struct Bytes {
  std::unique_ptr<char[]> bytes;
  int32_t size = 0;
};

Bytes contentOf(const RawString& path, int32_t size) {
  const RawFileOwner file = openFile(path, RawAccessRead, RawShareRead, RawOpenExisting);
  Bytes content{std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(size)), 0};
  content.size = readFile(file, content.bytes.get(), size);
  return content;
}

void writeContent(const RawString& path, const Bytes& content) {
  const RawFileOwner file = openFile(path, RawAccessWrite, RawShareNone, RawCreateAlways);
  writeFile(file, content.bytes.get(), content.size);
}

// As many bytes as all files of the folder have.
int32_t sizeOf(const std::filesystem::path& folder) {
  std::uintmax_t size = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) size += entry.file_size();
  return static_cast<int32_t>(size);
}

void benchCache() {
  constexpr double Goal = 1.3;
  constexpr double PerMillisecond = 1e6;
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "TarvellonBenchIcons";
  std::filesystem::create_directories(path);
  const RawString folder = rawOf(path.string());
  Cache cache(folder);
  cache.fill();
  if (!cache.save()) {
    std::puts("no cache could be saved");
    return;
  }

  const RawString bare = rawOf((path / "bare.bin").string());
  Bytes bytes{std::make_unique<char[]>(static_cast<std::size_t>(sizeOf(path))), sizeOf(path)};
  const Bench::Pair saving =
      Bench::measure([&] { cache.save(); }, [&] { writeContent(bare, bytes); });
  Bench::report("save a cache of 1,000 icons", "ms", saving.own / PerMillisecond, "bare write",
                saving.peer / PerMillisecond, Goal);
  bool isLoaded = true;
  const Bench::Pair loading = Bench::measure(
      [&] {
        Cache loaded(folder);
        isLoaded = loaded.load() && isLoaded;
      },
      [&] { Bench::keep(contentOf(bare, bytes.size).size); });
  if (!isLoaded) std::puts("the cache could not be loaded");
  Bench::report("load a cache of 1,000 icons", "ms", loading.own / PerMillisecond, "bare read",
                loading.peer / PerMillisecond, Goal);
  std::filesystem::remove_all(path);
}

} // namespace

int main() {
  benchScaling("shrink an icon, 48 to 32", 48, 32);
  benchScaling("enlarge an icon, 16 to 32", 16, 32);
  benchBlending();
  benchDrawing();
  benchCache();
  return 0;
}
