// hostPath: a path of the system as the host wants it: UTF-8, with "/" as the only separator.
#pragma once

#include "raw/RawString.h"

#include <string>

inline std::string hostPath(const RawLayer::RawString& path) {
  const RawLayer::RawString text = path.shareAs(RawLayer::EncodingUtf8);
  std::string result(text.text(), static_cast<std::size_t>(text.length()));
  for (char& unit : result)
    if (unit == '\\') unit = '/';
  return result;
}
