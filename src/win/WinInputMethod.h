// WinInputMethod: the platform's input method as an edit box needs it, a seam at which tests stand
// in for it. A null context is allowed everywhere and does nothing.
//
// Main thread.
#pragma once

#include "win/WinPlatform.h"

#include <imm.h>

namespace WinLayer {

class WinInputMethod {
 public:
  virtual ~WinInputMethod() = default;
  [[nodiscard]] virtual bool isPresent() = 0;     // asked of the platform once for the process
  [[nodiscard]] virtual HIMC createContext() = 0; // null on failure
  virtual void destroyContext(HIMC context) = 0;
  virtual void associate(HWND window, HIMC context) = 0; // null takes the window's away
  [[nodiscard]] virtual bool isOpen(HIMC context) = 0;
  virtual void open(HIMC context) = 0;
  // The running text (GCS_COMPSTR) or the result (GCS_RESULTSTR), 1024 bytes at most,
  // EncodingWide; empty when there is none.
  [[nodiscard]] virtual RawString text(HIMC context, DWORD kind) = 0;
  virtual void setText(HIMC context, const RawString& text) = 0; // as what is being composed
  virtual void setFont(HIMC context, const LOGFONTW& font) = 0;
  virtual void complete(HIMC context) = 0; // what is being composed becomes the result
  virtual void registerWord(HWND window, const RawString& word) = 0;

  // The one of the process: the platform's, unless another is installed, which must outlive the
  // boxes that get the focus meanwhile.
  static WinInputMethod& current();
  static void install(WinInputMethod* method); // null: the platform's again
};

} // namespace WinLayer
