// The icons inside the executable.
#include <windows.h>

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr int Numbers[] = {130, 131, 142, 143};

class Executable {
 public:
  Executable() {
    wchar_t path[MAX_PATH + 1] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    module_ = LoadLibraryExW((folder / L"Tarvellon.exe").wstring().c_str(), nullptr,
                             LOAD_LIBRARY_AS_DATAFILE);
  }
  ~Executable() { FreeLibrary(module_); }
  Executable(const Executable&) = delete;
  Executable& operator=(const Executable&) = delete;

  [[nodiscard]] HMODULE get() const { return module_; }
  // The bytes of a resource; none when there is no such.
  [[nodiscard]] std::vector<uint8_t> bytesOf(int number, const wchar_t* type) const {
    const HRSRC place = FindResourceW(module_, MAKEINTRESOURCEW(number), type);
    if (!place) return {};
    const auto* first = static_cast<const uint8_t*>(LockResource(LoadResource(module_, place)));
    return {first, first + SizeofResource(module_, place)};
  }

 private:
  HMODULE module_ = nullptr;
};

// What a group of icons says of each image.
struct Image {
  int side;
  int depth;
  int number;
};

std::vector<Image> imagesOf(const std::vector<uint8_t>& group) {
  constexpr std::size_t HeaderSize = 6;
  constexpr std::size_t EntrySize = 14;
  std::vector<Image> images;
  for (std::size_t at = HeaderSize; at + EntrySize <= group.size(); at += EntrySize)
    images.push_back(
        {group[at] == 0 ? 256 : group[at], group[at + 6], group[at + 12] | group[at + 13] << 8});
  return images;
}

} // namespace

TEST(ProgramIcons, HaveEverySizeThatTheSystemAsksFor) {
  const Executable program;
  for (const int number : Numbers) {
    std::vector<int> sides;
    for (const Image& image : imagesOf(program.bytesOf(number, RT_GROUP_ICON))) {
      sides.push_back(image.side);
      EXPECT_EQ(image.depth, 32) << number;
    }
    EXPECT_EQ(sides, (std::vector<int>{16, 20, 24, 32, 40, 48, 64, 128, 256})) << number;
  }
}

TEST(ProgramIcons, AreCompressedAtTheLargestSizeAlone) {
  const Executable program;
  for (const int number : Numbers)
    for (const Image& image : imagesOf(program.bytesOf(number, RT_GROUP_ICON))) {
      const std::vector<uint8_t> bytes = program.bytesOf(image.number, RT_ICON);
      ASSERT_GT(bytes.size(), 4u);
      EXPECT_EQ(std::memcmp(bytes.data(), "\x89PNG", 4) == 0, image.side == 256)
          << number << ", " << image.side;
    }
}

TEST(ProgramIcons, AreLoadedInTheirOwnPixels) {
  const Executable program;
  for (const int number : Numbers)
    for (const int side : {16, 32, 48, 256}) {
      const auto icon = static_cast<HICON>(LoadImageW(program.get(), MAKEINTRESOURCEW(number),
                                                      IMAGE_ICON, side, side, LR_DEFAULTCOLOR));
      ICONINFO info{};
      ASSERT_TRUE(GetIconInfo(icon, &info)) << number << ", " << side;
      BITMAP bitmap{};
      GetObjectW(info.hbmColor, sizeof bitmap, &bitmap);
      EXPECT_EQ(bitmap.bmWidth, side);
      EXPECT_EQ(bitmap.bmHeight, side);
      DeleteObject(info.hbmColor);
      DeleteObject(info.hbmMask);
      DestroyIcon(icon);
    }
}
