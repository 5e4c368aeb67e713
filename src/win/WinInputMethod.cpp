#include "win/WinInputMethod.h"

#include <algorithm>

namespace WinLayer {

namespace {

constexpr LONG MostBytes = 1024;

class PlatformInputMethod final : public WinInputMethod {
 public:
  bool isPresent() override {
    static const bool present = ImmIsIME(GetKeyboardLayout(0)) != FALSE;
    return present;
  }
  HIMC createContext() override { return ImmCreateContext(); }
  void destroyContext(HIMC context) override {
    if (context) ImmDestroyContext(context);
  }
  void associate(HWND window, HIMC context) override { ImmAssociateContext(window, context); }
  bool isOpen(HIMC context) override { return context && ImmGetOpenStatus(context); }
  void open(HIMC context) override {
    if (context) ImmSetOpenStatus(context, TRUE);
  }
  RawString text(HIMC context, DWORD kind) override;
  void setText(HIMC context, const RawString& text) override;
  void setFont(HIMC context, const LOGFONTW& font) override {
    LOGFONTW copy = font;
    if (context) ImmSetCompositionFontW(context, &copy);
  }
  void complete(HIMC context) override {
    if (context) ImmNotifyIME(context, NI_COMPOSITIONSTR, CPS_COMPLETE, 0);
  }
  void registerWord(HWND window, const RawString& word) override;
};

RawString PlatformInputMethod::text(HIMC context, DWORD kind) {
  char16_t units[MostBytes / sizeof(char16_t)];
  const LONG bytes = context ? ImmGetCompositionStringW(context, kind, units, MostBytes) : 0;
  const auto count = std::clamp<LONG>(bytes, 0, MostBytes) / static_cast<LONG>(sizeof(char16_t));
  return RawString::fromWide(units, static_cast<int32_t>(count));
}

void PlatformInputMethod::setText(HIMC context, const RawString& text) {
  if (!context) return;
  const RawString units = text.shareAs(RawLayer::EncodingWide);
  // The call does not write into the text.
  ImmSetCompositionStringW(context, SCS_SETSTR, const_cast<wchar_t*>(wideUnits(units)),
                           static_cast<DWORD>(units.length()) * sizeof(char16_t), nullptr, 0);
}

void PlatformInputMethod::registerWord(HWND window, const RawString& word) {
  const RawString units = word.shareAs(RawLayer::EncodingWide);
  REGISTERWORDW record{};
  record.lpWord = const_cast<wchar_t*>(wideUnits(units)); // only read
  ImmConfigureIMEW(GetKeyboardLayout(0), window, IME_CONFIG_REGISTERWORD, &record);
}

WinInputMethod* installedMethod = nullptr;

} // namespace

WinInputMethod& WinInputMethod::current() {
  static PlatformInputMethod platform;
  return installedMethod ? *installedMethod : platform;
}

void WinInputMethod::install(WinInputMethod* method) {
  installedMethod = method;
}

} // namespace WinLayer
