// A fixture that presses keys and the mouse on one window, by pixels of its client, and waits until
// all of it has been served.
#pragma once

#include "window/WindowTest.h"

namespace WindowTest {

class InputFixture : public Fixture {
 protected:
  HWND target = nullptr;

  void press(int32_t x, int32_t y) {
    POINT place{x, y};
    ClientToScreen(target, &place);
    pressMouse(place.x, place.y);
    settle();
  }
  void rightPress(int32_t x, int32_t y) {
    POINT place{x, y};
    ClientToScreen(target, &place);
    movePointer(place.x, place.y);
    mouseButton(MOUSEEVENTF_RIGHTDOWN);
    mouseButton(MOUSEEVENTF_RIGHTUP);
    settle();
  }
  void pressWith(uint16_t modifier, int32_t x, int32_t y) {
    keyDown(modifier);
    press(x, y);
    keyUp(modifier);
    settle();
  }
  void key(uint16_t code) {
    pressKey(code);
    settle();
  }
  void keyWith(uint16_t modifier, uint16_t code) {
    keyDown(modifier);
    pressKey(code);
    keyUp(modifier);
    settle();
  }
  void wheel(int32_t delta, uint16_t modifier = 0) {
    const WinLayer::WinPoint centre = centreOf(target);
    movePointer(centre.x, centre.y);
    if (modifier) keyDown(modifier);
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_WHEEL;
    input.mi.mouseData = static_cast<DWORD>(delta);
    SendInput(1, &input, sizeof input);
    settle();
    if (modifier) keyUp(modifier);
    settle();
  }
};

} // namespace WindowTest
