// The shortest loop that does it: no encodings, lines of limited length.
#include "ProfilePeer.h"

#include <cstdio>
#include <cstring>
#include <strings.h>

namespace ProfilePeer {

const char* name() {
  return "fopen and fgets";
}
double goal() {
  return 1;
}

int read(const std::string& path, const char* section, const char* key) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return 0;
  const std::size_t keyLength = std::strlen(key);
  char line[4096];
  bool inSection = false;
  int length = 0;
  while (length == 0 && std::fgets(line, sizeof line, file)) {
    line[std::strcspn(line, "\r\n")] = 0;
    if (line[0] == '[') {
      char* end = std::strrchr(line, ']');
      if (end) *end = 0;
      inSection = strcasecmp(line + 1, section) == 0;
    } else if (inSection && strncasecmp(line, key, keyLength) == 0 && line[keyLength] == '=') {
      length = static_cast<int>(std::strlen(line + keyLength + 1));
    }
  }
  std::fclose(file);
  return length;
}

} // namespace ProfilePeer
