// One key of a profile, each time from opening the file, beside what else gives one.

#include "Bench.h"
#include "ConfigInput.h"
#include "ProfilePeer.h"
#include "raw/RawProfile.h"

using namespace RawLayer;

namespace {

constexpr std::size_t fileSize = 64 << 10;

std::string numbered(const char* name, int32_t number) {
  std::string text = name;
  return text.append(std::to_string(number));
}

// Sections of twenty entries, of which only the text in front shows the encoding.
class ProfileFile {
 public:
  explicit ProfileFile(const char* front) {
    std::error_code error;
    path_ = std::filesystem::temp_directory_path(error) / "TarvellonBenchProfile.ini";
    std::string text = front;
    for (; text.size() < fileSize; ++sections)
      for (int32_t key = -1; key < 20; ++key)
        text += key < 0 ? numbered("[Section", sections) + "]\r\n"
                        : numbered("Key", key) + "=a value of some length " + std::to_string(key) +
                              "\r\n";
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~ProfileFile() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  ProfileFile(const ProfileFile&) = delete;
  ProfileFile& operator=(const ProfileFile&) = delete;

  int32_t sections = 0;
  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

void benchKey(const ProfileFile& file, const char* place, int32_t section) {
  RawProfile profile(RawString::fromChars(file.path().c_str()));
  const std::string sectionName = numbered("Section", section);
  const RawString name = RawString::fromChars(sectionName.c_str());
  const RawString& key = "key10"_text;
  const auto own = [&] { return profile.readValue(name, key).length(); };
  const auto peer = [&] { return ProfilePeer::read(file.path(), sectionName.c_str(), "key10"); };
  if (own() != peer()) std::printf("not the same value: ");
  const Bench::Pair pair =
      Bench::measure([&] { Bench::keep(own()); }, [&] { Bench::keep(peer()); });
  const std::string title = std::string("key of a 64 KB profile, ") + place;
  Bench::report(title.c_str(), "us", pair.own / 1000, ProfilePeer::name(), pair.peer / 1000,
                ProfilePeer::goal());
}

} // namespace

int main() {
  {
    const ProfileFile ascii("");
    benchKey(ascii, "first section", 0);
    benchKey(ascii, "in the middle", ascii.sections / 2);
    benchKey(ascii, "last section", ascii.sections - 1);
  }
  const ProfileFile utf8("// \xF0\x9F\x98\x80\r\n");
  benchKey(utf8, "in the middle, UTF-8", utf8.sections / 2);
}
