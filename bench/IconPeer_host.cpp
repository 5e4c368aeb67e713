#include "IconPeer.h"

#include <cairo.h>

namespace IconPeer {

namespace {

uint32_t multiplied(uint32_t pixel) {
  const uint32_t alpha = pixel >> 24;
  uint32_t result = alpha << 24;
  for (const int shift : {0, 8, 16}) result |= (pixel >> shift & 255) * alpha / 255 << shift;
  return result;
}

class Surface {
 public:
  explicit Surface(int32_t side)
      : surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side)) {}
  Surface(const Pixels& pixels, int32_t side) : Surface(side) {
    cairo_surface_flush(surface_);
    auto* target = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(surface_));
    for (const uint32_t pixel : pixels) *target++ = multiplied(pixel);
    cairo_surface_mark_dirty(surface_);
  }
  ~Surface() { cairo_surface_destroy(surface_); }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  [[nodiscard]] cairo_surface_t* get() const { return surface_; }

 private:
  cairo_surface_t* surface_;
};

// A source painted onto a target, again and again.
class Paint : public Work {
 public:
  Paint(const Pixels& pixels, int32_t from, int32_t to, cairo_operator_t how)
      : source_(pixels, from), target_(to), context_(cairo_create(target_.get())) {
    const double scale = static_cast<double>(to) / from;
    cairo_scale(context_, scale, scale);
    cairo_set_source_surface(context_, source_.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_GOOD);
    cairo_set_operator(context_, how);
  }
  ~Paint() override { cairo_destroy(context_); }
  Paint(const Paint&) = delete;
  Paint& operator=(const Paint&) = delete;
  void run() override { cairo_paint(context_); }

 private:
  Surface source_;
  Surface target_;
  cairo_t* context_;
};

} // namespace

const char* scalerName() {
  return "cairo";
}
const char* blenderName() {
  return "cairo";
}
double scalerGoal() {
  return 0.5;
}
double blenderGoal() {
  return 1.0;
}

std::unique_ptr<Work> makeScaler(const Pixels& pixels, int32_t from, int32_t to) {
  return std::make_unique<Paint>(pixels, from, to, CAIRO_OPERATOR_SOURCE);
}
std::unique_ptr<Work> makeBlender(const Pixels& pixels, int32_t side) {
  return std::make_unique<Paint>(pixels, side, side, CAIRO_OPERATOR_OVER);
}

void* makeContext(int32_t) {
  return nullptr;
}
void* makeIcon(const Pixels&, int32_t) {
  return nullptr;
}

} // namespace IconPeer
