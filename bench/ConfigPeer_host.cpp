// uchardet finds the encoding, iconv converts, inih cuts sections and keys.
#include "ConfigPeer.h"

#include <cstdio>
#include <iconv.h>
#include <ini.h>
#include <string>
#include <uchardet/uchardet.h>
#include <utility>
#include <vector>

namespace ConfigPeer {

namespace {

std::string bytesOf(const char* path) {
  std::string bytes;
  std::FILE* file = std::fopen(path, "rb");
  if (file == nullptr) return bytes;
  char block[8192];
  for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;)
    bytes.append(block, count);
  std::fclose(file);
  return bytes;
}

std::string encodingOf(const std::string& bytes) {
  uchardet_t detector = uchardet_new();
  uchardet_handle_data(detector, bytes.data(), bytes.size());
  uchardet_data_end(detector);
  std::string name = uchardet_get_charset(detector);
  uchardet_delete(detector);
  // It does not know UTF-16 without a mark; the bytes are the same work for it.
  if (bytes.find('\0') != std::string::npos) name = "UTF-16LE";
  return name;
}

std::string converted(std::string bytes, const std::string& encoding) {
  iconv_t converter = iconv_open("UTF-8", encoding.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return bytes;
  std::string result(bytes.size() * 2, '\0');
  char* from = bytes.data();
  char* to = result.data();
  std::size_t size = bytes.size();
  std::size_t room = result.size();
  iconv(converter, &from, &size, &to, &room);
  iconv_close(converter);
  result.resize(result.size() - room);
  return result;
}

} // namespace

const char* name() {
  return "uchardet + inih";
}
double goal() {
  return 1.0 / 3;
}

static void parse(const char* path, ini_handler handler, void* context) {
  std::string bytes = bytesOf(path);
  const std::string encoding = encodingOf(bytes);
  if (encoding != "UTF-8" && encoding != "ASCII") bytes = converted(std::move(bytes), encoding);
  ini_parse_string(bytes.c_str(), handler, context);
}

int read(const char* path) {
  int entries = 0;
  parse(
      path,
      [](void* count, const char*, const char*, const char*) {
        ++*static_cast<int*>(count);
        return 1;
      },
      &entries);
  return entries;
}

struct Section {
  std::string name;
  std::vector<std::pair<std::string, std::string>> values;
};
static std::vector<Section> sections;

int readTree(const char* path) {
  parse(
      path,
      [](void*, const char* section, const char* name, const char* value) {
        if (sections.empty() || sections.back().name != section) sections.push_back({section, {}});
        sections.back().values.emplace_back(name, value);
        return 1;
      },
      nullptr);
  int entries = 0;
  for (const Section& section : sections) entries += static_cast<int>(section.values.size());
  return entries;
}

void dropTree() {
  sections.clear();
}

} // namespace ConfigPeer
