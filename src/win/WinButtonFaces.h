// WinButtonFaces: button faces on a device context. Each is painted once for its look and size and
// kept in memory; no drawing object of the platform is held. An object belongs to one thread.
//
//   faces.draw(dc, rect, WinButtonDraw::CornersAll | WinButtonDraw::Pressed);
#pragma once

#include "win/WinButtonDraw.h"
#include "win/WinPlatform.h"

#include <unordered_map>
#include <vector>

namespace WinLayer {

class WinButtonFaces {
 public:
  // The face for draw flags, with the dialog colour outside its corners: nothing needs to be filled
  // before. Nothing for an empty rectangle.
  void draw(HDC dc, const WinRect& rect, uint32_t drawFlags);
  // The same face as pixels, for those who blend in memory: rows from the top, 0x00RRGGBB each,
  // without gaps. Valid until the next call; null for an empty size.
  const uint32_t* pixels(WinSize size, uint32_t drawFlags);

 private:
  struct Key {
    uint32_t drawFlags;
    WinSize size;
    friend bool operator==(const Key&, const Key&) = default;
  };
  struct KeyHash {
    size_t operator()(const Key& key) const;
  };
  std::unordered_map<Key, std::vector<uint32_t>, KeyHash> faces_;
  size_t pixelCount_ = 0; // in all faces
};

} // namespace WinLayer
