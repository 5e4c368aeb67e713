// The same work on icons by what the platform has for it, to measure beside.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace IconPeer {

// Pixels of 32 bits with alpha on top, rows from the top, squares without gaps.
using Pixels = std::vector<uint32_t>;

class Work {
 public:
  virtual ~Work() = default;
  virtual void run() = 0;
};

const char* scalerName();
const char* blenderName();
// The largest part of the peer's time that is good enough.
double scalerGoal();
double blenderGoal();

// Scales the square to another side.
std::unique_ptr<Work> makeScaler(const Pixels& pixels, int32_t from, int32_t to);
// Blends the square over a background of its size.
std::unique_ptr<Work> makeBlender(const Pixels& pixels, int32_t side);

// A device context with room for the square, and an icon of it, as WinBitmapPool takes them; null
// where the platform has none. They last to the end of the program.
void* makeContext(int32_t side);
void* makeIcon(const Pixels& pixels, int32_t side);

} // namespace IconPeer
