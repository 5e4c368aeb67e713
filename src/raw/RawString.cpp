#include "raw/RawString.h"

#include "raw/RawRegion.h"
#include "raw/RawStringParts.h"
#include "raw/RawUnitScan.h"

#include <algorithm>
#include <cstdlib>

// Making, sharing and owning texts.

namespace RawLayer {

namespace {

// The zero unit that all empty texts point at.
constexpr char16_t zeroUnit = 0;

constexpr RawStringBody emptyBodyOf(uint8_t encoding) {
  return {&zeroUnit, 0, 0, 0, RawString::KindEmpty, encoding};
}
constinit RawStringBody emptyBodies[] = {
    emptyBodyOf(0), emptyBodyOf(1), emptyBodyOf(2), emptyBodyOf(3), emptyBodyOf(4),
    emptyBodyOf(5), emptyBodyOf(6), emptyBodyOf(7), emptyBodyOf(8),
};

// The bytes of a body with so many units and a terminator behind it.
std::size_t sizeOfOwned(int32_t encoding, int32_t capacity) {
  const uint64_t units = static_cast<uint64_t>(capacity) + 1;
  const uint64_t size = sizeof(RawStringBody) + units * static_cast<uint64_t>(unitSize(encoding));
  if (size > PTRDIFF_MAX) std::abort();
  return static_cast<std::size_t>(size);
}

RawStringBody* bodyMemory(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) std::abort();
  return static_cast<RawStringBody*>(memory);
}

template <typename Unit>
int32_t lengthOfZeroTerminated(const Unit* units) {
  int32_t length = 0;
  if (units != nullptr)
    while (units[length] != 0) ++length;
  return length;
}

RawStringBody* copyOfUnits(int32_t encoding, const void* units, int32_t length) {
  if (units == nullptr || length <= 0) return emptyBody(encoding);
  const RawStringBody view = passingView(encoding, units, length);
  return copyPart(encoding, &view, 0, length);
}

bool isKnown(int32_t encoding) {
  return encoding >= EncodingAnsi && encoding <= EncodingBinary;
}

// Whether a writer must not touch the memory of this body.
bool isForeign(RawStringBody* body) {
  if (body->kind == RawString::KindEmpty) return false;
  return body->kind != RawString::KindOwned ||
         referencesOf(body).load(std::memory_order_acquire) > 0;
}

} // namespace

RawStringBody* emptyBody(int32_t encoding) noexcept {
  return &emptyBodies[isKnown(encoding) ? encoding : EncodingBinary];
}

RawStringBody* makeForeignBody(RawString::Kind kind, int32_t encoding, const void* units,
                               int32_t length) {
  RawStringBody* body = bodyMemory(sizeof(RawStringBody));
  const int32_t count = units == nullptr || length < 0 ? 0 : length;
  *body = {units == nullptr ? &zeroUnit : units,
           count,
           count,
           0,
           kind,
           static_cast<uint8_t>(isKnown(encoding) ? encoding : EncodingBinary)};
  return body;
}

RawStringBody* makeOwnedBody(int32_t encoding, int32_t capacity) {
  RawStringBody* body = bodyMemory(sizeOfOwned(encoding, capacity));
  *body = {body + 1, 0, capacity, 0, RawString::KindOwned, static_cast<uint8_t>(encoding)};
  endAt(body, 0);
  return body;
}

void releaseBody(RawStringBody* body) noexcept {
  if (body->kind == RawString::KindEmpty) return;
  // A sole owner needs no counting: nobody else can take a share of what only it can see.
  if (referencesOf(body).load(std::memory_order_acquire) == 0 ||
      referencesOf(body).fetch_sub(1, std::memory_order_acq_rel) == 0) {
    if (body->inRegion)
      RawRegion::give(body);
    else
      std::free(body);
  }
}

RawStringBody* shareBodyAs(int32_t encoding, RawStringBody* body) {
  if (body->encoding == encoding && body->kind != RawString::KindView) return shareBody(body);
  return copyPart(encoding, body, 0, body->length);
}

RawStringBody* copyPart(int32_t encoding, const RawStringBody* body, int32_t start, int32_t count) {
  if (count <= 0) return emptyBody(encoding);
  if (encoding != body->encoding) return convertPart(encoding, body, start, count);
  RawStringBody* copy = makeOwnedBody(encoding, grownCapacity(count));
  copyUnits(copy, 0, body, start, count);
  endAt(copy, count);
  return copy;
}

static int32_t checkedCapacity(int64_t needed) {
  if (needed > INT32_MAX) std::abort();
  return static_cast<int32_t>(needed);
}

int32_t grownCapacity(int64_t needed) {
  const int64_t grown = needed * 2 + (needed >= 200 ? 100 : 20);
  return grown <= INT32_MAX ? static_cast<int32_t>(grown) : checkedCapacity(needed);
}

void resizeBody(RawStringBody*& body, int32_t capacity) {
  // Not realloc: where this program runs it takes up to three times as long as new memory and a
  // copy.
  RawStringBody* resized =
      makeOwnedBody(body->encoding, capacity < body->length ? body->length : capacity);
  copyUnits(resized, 0, body, 0, body->length);
  endAt(resized, body->length);
  releaseBody(body);
  body = resized;
}

void takeRoom(RawStringBody*& body, int64_t needed, RoomRule rule) {
  const bool copies = isForeign(body);
  int32_t capacity = body->capacity;
  if (copies) capacity = body->length > 0 ? grownCapacity(body->length) : 0;
  if (capacity < needed)
    capacity = rule == RoomRule::Grow ? grownCapacity(needed) : checkedCapacity(needed);
  else if (!copies)
    return;
  if (capacity > 0) {
    resizeBody(body, capacity);
    return;
  }
  RawStringBody* empty = emptyBody(body->encoding);
  releaseBody(body);
  body = empty;
}

void copyUnitsAcross(RawStringBody* target, int32_t position, const RawStringBody* source,
                     int32_t start, int32_t count) {
  if (target->encoding == EncodingWide)
    std::copy_n(bytesOf(source) + start, count, mutableWideOf(target) + position);
  else
    std::transform(wideOf(source) + start, wideOf(source) + start + count,
                   mutableBytesOf(target) + position,
                   [](char16_t unit) { return static_cast<uint8_t>(unit); });
}

void moveUnits(RawStringBody* body, int32_t to, int32_t from, int32_t count) {
  const auto size = static_cast<std::size_t>(unitSize(body->encoding));
  uint8_t* bytes = mutableBytesOf(body);
  std::memmove(bytes + static_cast<std::size_t>(to) * size,
               bytes + static_cast<std::size_t>(from) * size,
               static_cast<std::size_t>(count) * size);
}

RawString::RawString() noexcept : body_(emptyBody(EncodingUtf8)) {}

RawString::RawString(int32_t encoding, int32_t capacity) : body_(emptyBody(encoding)) {
  if (capacity > 0) resizeBody(body_, capacity);
}

RawString::RawString(const RawString& other)
    : body_(shareBodyAs(other.body_->encoding, other.body_)) {}

RawString::RawString(RawString&& other) noexcept : body_(other.body_) {
  other.body_ = emptyBody(EncodingUtf8);
}

RawString::~RawString() {
  releaseBody(body_);
}

RawString& RawString::operator=(const RawString& other) {
  assign(other);
  return *this;
}

RawString& RawString::operator=(RawString&& other) noexcept {
  if (this == &other) return *this;
  releaseBody(body_);
  body_ = other.body_;
  other.body_ = emptyBody(EncodingUtf8);
  return *this;
}

RawString RawString::withCapacity(int32_t capacity) {
  return RawString(EncodingUtf8, capacity);
}

const RawString& RawString::emptyStatic() {
  static const RawString& text = *new RawString;
  return text;
}

RawString RawString::fromChars(const char* text) {
  return fromChars(text, lengthOfZeroTerminated(text));
}

RawString RawString::fromChars(const char* text, int32_t count) {
  return RawString(copyOfUnits(EncodingUtf8, text, count));
}

RawString RawString::fromWide(const char16_t* text) {
  return fromWide(text, lengthOfZeroTerminated(text));
}

RawString RawString::fromWide(const char16_t* text, int32_t count) {
  return RawString(copyOfUnits(EncodingWide, text, count));
}

RawString RawString::fromBytes(int32_t encoding, const void* bytes, int32_t size) {
  return RawString(copyOfUnits(isKnown(encoding) ? encoding : EncodingBinary, bytes, size));
}

RawString RawString::viewOf(int32_t encoding, const void* units, int32_t length) {
  return RawString(makeForeignBody(KindView, encoding, units, length));
}

RawString RawString::fromStatic(const char* bytes, int32_t length) {
  return RawString(makeForeignBody(KindStatic, EncodingUtf8, bytes, length));
}

RawString RawString::fromRegion(RawRegion& region, const RawString& source, RawRange range) {
  const RawRange part = range.clamped(source.length());
  if (part.isEmpty()) return RawString(emptyBody(source.encoding()));
  void* memory = region.take(sizeOfOwned(source.encoding(), part.size()));
  auto* body = static_cast<RawStringBody*>(memory);
  *body = {body + 1, 0, part.size(), 0, KindStatic, source.body_->encoding, true};
  copyUnits(body, 0, source.body_, part.start, part.size());
  endAt(body, part.size());
  return RawString(body);
}

RawString RawString::fromRange(int32_t encoding, const RawString& source, RawRange range) {
  const RawRange part = range.clamped(source.length());
  return RawString(copyPart(encoding, source.body_, part.start, part.size()));
}

RawString RawString::concat(const RawString& a, const RawString& b, const RawString& c,
                            const RawString& d, const RawString& e) {
  RawString text(a.encoding());
  text.append5(a, b, c, d, e);
  return text;
}

RawString RawString::fromBool(bool flag) {
  return flag ? "True"_text : "False"_text;
}

RawString RawString::fromInt64(int64_t value) {
  RawString text;
  text.appendInt64(value);
  return text;
}

RawString RawString::fromUInt64(uint64_t value, int32_t base) {
  RawString text;
  text.appendUInt64(value, base);
  return text;
}

RawString RawString::fromDigits(uint64_t value, int32_t base, int32_t width) {
  RawString text;
  text.appendDigits(value, base, width);
  return text;
}

int32_t RawString::references() const {
  return referencesOf(body_).load(std::memory_order_relaxed);
}

RawString RawString::shareAs(int32_t encoding) const {
  return RawString(shareBodyAs(encoding, body_));
}

void RawString::release() {
  releaseBody(body_);
  body_ = emptyBody(EncodingUtf8);
}

void RawString::assign(const RawString& other) {
  if (this != &other) assignConverted(other.encoding(), other);
}

void RawString::assignConverted(int32_t encoding, const RawString& other) {
  // Shared before the own body goes, for the other may be this one or live in its memory.
  RawStringBody* shared = shareBodyAs(encoding, other.body_);
  releaseBody(body_);
  body_ = shared;
}

void RawString::assignView(int32_t encoding, const void* units, int32_t length) {
  // Nobody shares a view, so its body can serve for the next one: a reader that hands out line
  // after line in one text takes no memory for it.
  if (body_->kind == KindView && units != nullptr && length >= 0 && isKnown(encoding)) {
    *body_ = passingView(encoding, units, length);
    return;
  }
  RawStringBody* view = makeForeignBody(KindView, encoding, units, length);
  releaseBody(body_);
  body_ = view;
}

void RawString::unshare() {
  makeRoom(body_, 0);
}

void RawString::reserve(int32_t capacity) {
  resizeBody(body_, capacity);
}

char* RawString::mutableText() {
  return reinterpret_cast<char*>(mutableBytesOf(body_));
}

char16_t* RawString::mutableWide() {
  return mutableWideOf(body_);
}

void RawString::syncLength() {
  const int32_t length = withUnits(body_, [this]<typename Unit>(const Unit* units) {
    return UnitScan::firstUnit(units, body_->capacity, Unit{0});
  });
  setLength(length);
}

void RawString::setLength(int32_t length) {
  unshare();
  if (body_->kind == KindEmpty) return; // its zero unit is everybody's
  if (length < 0) length = 0;
  endAt(body_, length < body_->capacity ? length : body_->capacity);
}

} // namespace RawLayer
