// GuiIconPainter: draws the icons of an icon control onto a buffer in memory. An icon of the wanted
// size is blended there. Another one has to be scaled by the platform, which takes long: what came
// out is kept for the next frame, with the pixels that it was made of, as an icon may come late or
// change. Main thread.
#pragma once

#include "app/GuiPixelBuffer.h"
#include "job/JobIconControl.h"

#include <unordered_map>
#include <vector>

namespace AppLayer {

class GuiIconPainter {
 public:
  // What an icon is drawn on: the same values always mean the same pixels.
  struct Ground {
    uint32_t look = 0;
    WinSize face;
    WinPoint at; // the place of the icon's left top on it
    friend bool operator==(const Ground&, const Ground&) = default;
  };

  explicit GuiIconPainter(JobLayer::JobIconControl& icons) : icons_(icons) {}

  // Nothing for an icon without an image.
  void draw(GuiPixelBuffer& buffer, int32_t icon, const WinRect& place, const Ground& ground);

 private:
  struct Key {
    int32_t cell = -1;
    WinSize size;
    Ground ground;
    friend bool operator==(const Key&, const Key&) = default;
  };
  struct KeyHash {
    size_t operator()(const Key& key) const;
  };
  struct Scaled {
    std::vector<uint32_t> cell;   // the icon's own pixels
    std::vector<uint32_t> result; // with the ground beneath, in the wanted size
  };

  Scaled& scaledOf(const Key& key, const uint32_t* pixels, WinSize size);

  JobLayer::JobIconControl& icons_;
  std::unordered_map<Key, Scaled, KeyHash> scaled_;
};

} // namespace AppLayer
