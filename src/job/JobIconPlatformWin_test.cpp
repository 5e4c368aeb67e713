// Icons out of real files: programs and libraries of the system, and .ico files in every size and
// depth.
#include "job/JobIconPlatform.h"

#include "IconControlBed.h"
#include "IconFile.h"
#include "raw/RawWinText.h"
#include "win/WinDialog.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace JobLayer;
using namespace IconControlBed;
using IconFile::Image;
using std::string;
using WinLayer::WinSize;

namespace {

constexpr int32_t Sizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

// The pixels that a pool with cells of the size gets from the icon; empty without one.
TestPixels cellOf(const JobIconOwner& icon, WinSize size) {
  WinLayer::WinBitmapPool pool;
  pool.setCellSize(size.width, size.height);
  const int32_t cell = pool.addIcon(icon.get());
  const uint32_t* pixels = pool.cellPixels(cell);
  return pixels ? TestPixels(pixels, pixels + testCount(size)) : TestPixels();
}

TestPixels extracted(const RawString& file, WinSize size, int32_t iconIndex = 0) {
  return cellOf(JobIconPlatform::instance().fileIcon(file, iconIndex, size), size);
}

bool showsSomething(const TestPixels& pixels) {
  return std::any_of(pixels.begin(), pixels.end(), [](uint32_t pixel) { return pixel >> 24; });
}

// --- Pictures, and what they have to be in a cell

TestPixels pictureOf(WinSize size, uint32_t (*pixelAt)(uint32_t x, uint32_t y)) {
  TestPixels pixels;
  for (int32_t y = 0; y < size.height; ++y)
    for (int32_t x = 0; x < size.width; ++x)
      pixels.push_back(pixelAt(static_cast<uint32_t>(x), static_cast<uint32_t>(y)));
  return pixels;
}

TestPixels maskOf(WinSize size) {
  return pictureOf(size, [](uint32_t x, uint32_t y) -> uint32_t { return (x + 2 * y) % 7 == 0; });
}

// Masked pixels have colour 0, as files have them.
Image withPalette(WinSize size, int32_t depth) {
  Image image{size, depth, {}, {}, maskOf(size)};
  const uint32_t count = 1u << depth;
  for (uint32_t i = 0; i < count; ++i)
    image.palette.push_back(i == 0 ? 0 : i * 0x3D2715 & 0xFFFFFF);
  image.pixels = pictureOf(size, [](uint32_t x, uint32_t y) { return 1 + x + 3 * y; });
  for (std::size_t i = 0; i < image.pixels.size(); ++i)
    image.pixels[i] = image.mask[i] ? 0 : image.pixels[i] % count;
  return image;
}

Image withColours(WinSize size, int32_t depth) {
  Image image{size, depth, {}, {}, maskOf(size)};
  image.pixels =
      pictureOf(size, [](uint32_t x, uint32_t y) { return x << 16 | y << 8 | ((x ^ y) & 0xFF); });
  for (std::size_t i = 0; i < image.pixels.size(); ++i)
    if (image.mask[i]) image.pixels[i] = 0;
  return image;
}

Image withAlpha(WinSize size) {
  Image image{size, 32, {}, {}, TestPixels(testCount(size), 0)};
  image.pixels = pictureOf(size, [](uint32_t x, uint32_t y) {
    return (1 + (x * 5 + y * 3) % 255) << 24 | 0x804020 | (x & 0xFF) << 8 | (y & 0xFF);
  });
  return image;
}

TestPixels expectedOf(const Image& image) {
  TestPixels pixels;
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    const uint32_t pixel = image.pixels[i];
    const uint32_t colour = image.palette.empty() ? pixel : image.palette[pixel];
    pixels.push_back(image.mask[i] ? 0x00FFFFFF : colour | 0xFF000000);
  }
  return pixels;
}

void expectImage(const TestFolder& folder, const Image& image, const TestPixels& expected,
                 const char* what) {
  const RawString file = folder.write("picture.ico", IconFile::bytesOf({image}));
  EXPECT_EQ(extracted(file, image.size), expected)
      << what << ", " << image.size.width << " pixels, depth " << image.depth;
}

RawString systemFile(const char* name) {
  wchar_t folder[MAX_PATH];
  const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
  RawString path =
      RawString::fromWide(reinterpret_cast<const char16_t*>(folder), static_cast<int32_t>(length));
  path.append(raw(string("\\") + name));
  return path;
}

// A library's icons as its loader gives them.
class IconLibrary {
 public:
  explicit IconLibrary(const RawString& file)
      : module_(LoadLibraryExW(
            RawLayer::wideOf(RawLayer::RawPlatformText(file, RawString::PlatformWide)), nullptr,
            LOAD_LIBRARY_AS_DATAFILE)) {}
  ~IconLibrary() { FreeLibrary(module_); }
  IconLibrary(const IconLibrary&) = delete;
  IconLibrary& operator=(const IconLibrary&) = delete;

  // The numbers of its icons that have one.
  [[nodiscard]] std::vector<int32_t> numbers() const {
    std::vector<int32_t> found;
    const auto take = [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR list) -> BOOL {
      if (IS_INTRESOURCE(name))
        reinterpret_cast<std::vector<int32_t>*>(list)->push_back(
            static_cast<int32_t>(reinterpret_cast<ULONG_PTR>(name)));
      return TRUE;
    };
    EnumResourceNamesW(module_, RT_GROUP_ICON, take, reinterpret_cast<LONG_PTR>(&found));
    return found;
  }
  [[nodiscard]] TestPixels cell(int32_t number, WinSize size) const {
    return cellOf(JobIconOwner(LoadImageW(module_, MAKEINTRESOURCEW(number), IMAGE_ICON, size.width,
                                          size.height, LR_DEFAULTCOLOR)),
                  size);
  }

 private:
  HMODULE module_;
};

} // namespace

TEST(JobIconPlatformWin, ProgramsAndLibrariesOfTheSystemHaveIconsInEverySize) {
  for (const char* name : {"notepad.exe", "shell32.dll"})
    for (const int32_t side : Sizes)
      EXPECT_TRUE(showsSomething(extracted(systemFile(name), {side, side})))
          << name << ", " << side;
}

TEST(JobIconPlatformWin, AProgramIsFoundByItsNameAlone) {
  EXPECT_EQ(extracted(raw("notepad.exe"), {32, 32}),
            extracted(systemFile("notepad.exe"), {32, 32}));
}

TEST(JobIconPlatformWin, ALibraryHasManyIconsByNumber) {
  const RawString library = systemFile("shell32.dll");
  const TestPixels first = extracted(library, {32, 32}, 0);
  const TestPixels fourth = extracted(library, {32, 32}, 3);
  EXPECT_TRUE(showsSomething(fourth));
  EXPECT_NE(first, fourth);
  EXPECT_TRUE(extracted(library, {32, 32}, 30000).empty());
}

TEST(JobIconPlatformWin, ANegativeNumberIsAResource) {
  const RawString library = systemFile("shell32.dll");
  const IconLibrary icons(library);
  const std::vector<int32_t> numbers = icons.numbers();
  ASSERT_GT(numbers.size(), 10u);
  for (std::size_t i = 0; i < 10; ++i)
    EXPECT_EQ(extracted(library, {32, 32}, -numbers[i]), icons.cell(numbers[i], {32, 32}))
        << numbers[i];
}

TEST(JobIconPlatformWin, FilesWithoutIconGiveNone) {
  const TestFolder folder;
  const WinSize size{32, 32};
  EXPECT_TRUE(extracted(folder.file("none.ico"), size).empty());
  EXPECT_TRUE(extracted(folder.write("empty.ico", ""), size).empty());
  EXPECT_TRUE(extracted(folder.write("text.exe", "no program at all"), size).empty());
  EXPECT_TRUE(extracted(folder.path(), size).empty());
  EXPECT_TRUE(extracted({}, size).empty());
  const string whole = IconFile::bytesOf({withAlpha(size)});
  EXPECT_TRUE(extracted(folder.write("cut.ico", whole.substr(0, 10)), size).empty());
}

// --- .ico files

TEST(JobIconPlatformWin, EverySizeAndDepthComesPixelByPixel) {
  const TestFolder folder;
  for (const int32_t side : Sizes) {
    const WinSize size{side, side};
    for (const int32_t depth : {1, 4, 8}) {
      const Image image = withPalette(size, depth);
      expectImage(folder, image, expectedOf(image), "palette");
    }
    for (const int32_t depth : {24, 32}) {
      const Image image = withColours(size, depth);
      expectImage(folder, image, expectedOf(image), "colours");
    }
    const Image image = withAlpha(size);
    expectImage(folder, image, image.pixels, "alpha");
  }
}

TEST(JobIconPlatformWin, BlackAndWhiteComesPixelByPixel) {
  const TestFolder folder;
  Image image = withPalette({32, 32}, 1);
  image.palette = {0, 0xFFFFFF};
  expectImage(folder, image, expectedOf(image), "black and white");
}

TEST(JobIconPlatformWin, ThePackedImageOf256ComesPixelByPixel) {
  const TestFolder folder;
  Image image = withAlpha({256, 256});
  image.isPng = true;
  expectImage(folder, image, image.pixels, "packed");
}

TEST(JobIconPlatformWin, OfManyImagesTheOneOfTheSizeIsTaken) {
  const TestFolder folder;
  std::vector<Image> images;
  for (const int32_t side : Sizes) {
    Image image{{side, side}, 32, {}, {}, {}};
    image.pixels.assign(testCount(image.size), 0xFF000000u + static_cast<uint32_t>(side) * 0x101);
    image.mask.assign(testCount(image.size), 0);
    image.isPng = side == 256;
    images.push_back(image);
  }
  const RawString file = folder.write("many.ico", IconFile::bytesOf(images));
  for (const Image& image : images)
    EXPECT_EQ(extracted(file, image.size), image.pixels) << image.size.width;
}

TEST(JobIconPlatformWin, AnImageOfAnotherSizeComesScaled) {
  const TestFolder folder;
  Image image{{48, 48}, 32, {}, TestPixels(48 * 48, 0xFF2050A0), TestPixels(48 * 48, 0)};
  const RawString file = folder.write("one.ico", IconFile::bytesOf({image}));
  EXPECT_EQ(extracted(file, {32, 32}), TestPixels(32 * 32, 0xFF2050A0));
}

// --- Documents and the program's own

TEST(JobIconPlatformWin, DocumentsHaveTheIconOfTheirTypeThereOrNot) {
  const WinSize size{32, 32};
  for (const char* name : {"C:\\none\\such.txt", "such.lnk", "noextension"})
    EXPECT_TRUE(showsSomething(cellOf(JobIconPlatform::instance().documentIcon(raw(name)), size)))
        << name;
}

TEST(JobIconPlatformWin, AProgramWithoutTheResourceHasNoBuiltInImage) {
  EXPECT_FALSE(
      JobIconPlatform::instance().builtInIcon(JobIconPlatform::LoadingImage, {32, 32}).isValid());
}

TEST(JobIconPlatformWin, TheControlFetchesAllKindsOnItsThread) {
  const TestFolder folder;
  const Image image = withAlpha({32, 32});
  JobIconControl control(JobIconPlatform::instance(), {32, 32});
  control.setOptions(true, false, raw("ico,exe,dll"), {});
  const int32_t program = control.request(raw("notepad.exe"), 0);
  const int32_t document = control.request(raw("readme.txt"), 0);
  const int32_t picture = control.request(folder.write("a.ico", IconFile::bytesOf({image})), 0);
  const int32_t gone = control.request(raw("gone.exe"), 0);
  control.start();
  ASSERT_TRUE(comesTrue([&] { return !control.workPending(); }));
  control.stop();
  const auto cell = [&](int32_t handle) {
    const uint32_t* pixels = control.cache.pool.cellPixels(control.imageOf(handle));
    return pixels ? TestPixels(pixels, pixels + 32 * 32) : TestPixels();
  };
  EXPECT_EQ(cell(program), extracted(raw("notepad.exe"), {32, 32}));
  EXPECT_TRUE(showsSomething(cell(document)));
  EXPECT_EQ(cell(picture), image.pixels);
  EXPECT_EQ(control.imageOf(gone), control.cache.failedId());
}

TEST(JobIconPlatformWin, ACommandIsPostedWithTheDialogsIdentifier) {
  WinLayer::WinDialog dialog;
  dialog.window =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  ASSERT_NE(dialog.window, nullptr);
  dialog.identifier = 0x2A;
  JobIconPlatform::instance().postCommand(dialog, JobIconControl::CommandRepaint);
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, dialog.window, WM_COMMAND, WM_COMMAND, PM_REMOVE));
  EXPECT_EQ(message.wParam, 0x1103002Au);
  EXPECT_EQ(message.lParam, 0);
  DestroyWindow(dialog.window);
  dialog.window = nullptr;
}
