// RawPlatformText: a text in the form that a platform call takes, zero-terminated.
//
//   const RawPlatformText file(path);
//   return file.isWide() ? DeleteFileW(...file.wide()) : DeleteFileA(file.narrow());
//
// For a call with several texts every one is made with the class that the texts have together
// (RawString::combinePlatformClasses). The pointers live as long as the value.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

class RawPlatformText {
 public:
  explicit RawPlatformText(const RawString& text)
      : RawPlatformText(text, text.classifyForPlatform()) {}
  RawPlatformText(const RawString& text, int32_t platformClass)
      : wide_(platformClass == RawString::PlatformWide ||
              platformClass == RawString::PlatformConvert),
        text_(text.shareAs(wide_ ? static_cast<int32_t>(EncodingWide) : text.encoding())) {}

  [[nodiscard]] bool isWide() const { return wide_; }
  [[nodiscard]] const char* narrow() const { return text_.text(); }
  [[nodiscard]] const char16_t* wide() const { return text_.wide(); }

 private:
  bool wide_;
  RawString text_;
};

} // namespace RawLayer
