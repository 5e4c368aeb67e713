#include "raw/RawParameterList.h"

#include "raw/RawNumber.h"

namespace RawLayer {

void RawParameterUnit::setInt(int64_t newValue) {
  value = RawString::fromInt64(newValue);
}

void RawParameterListAllocator::destroy(RawParameterUnit* element) {
  delete element;
}

bool RawParameterList::contains(const RawString& key) const {
  return find(key) != nullptr;
}

RawParameterUnit* RawParameterList::find(const RawString& key) const {
  for (RawParameterUnit& unit : elements())
    if (caseSensitive ? unit.key.equals(key) : unit.key.equalsNoCase(key)) return &unit;
  return nullptr;
}

RawString RawParameterList::valueOf(const RawString& key, const RawString& fallback) const {
  const RawParameterUnit* unit = find(key);
  return unit ? unit->value : fallback;
}

RawParameterUnit* RawParameterList::add(const RawString& key) {
  return insertBefore(end(), key);
}

RawParameterUnit* RawParameterList::insertBefore(RawListNode* node, const RawString& key) {
  auto* unit = new RawParameterUnit;
  unit->key = key;
  insertBefore(node, unit);
  return unit;
}

void RawParameterList::set(const RawString& key, const RawString& value) {
  RawParameterUnit* unit = find(key);
  if (!unit) unit = add(key);
  unit->value = value;
}

void RawParameterList::setUnsigned(const RawString& key, uint64_t value, int32_t base) {
  set(key, RawString::fromUInt64(value, base));
}

void RawParameterList::merge(const RawParameterList& other) {
  // The count is taken first: a list merged with itself, or with a sharer, grows while it is read.
  int32_t left = other.count();
  for (const RawListNode* node = other.first(); left > 0; --left, node = next(node)) {
    const RawParameterUnit& unit = *element(node);
    add(unit.key)->value = unit.value;
  }
}

void RawParameterList::parseItem(const RawString& line, RawRange item, const RawString& trimSet) {
  const auto cut = [&](int32_t start, int32_t end) {
    RawRange part{start, end};
    if (!trimSet.isEmpty()) part = line.trimRange(part, trimSet);
    return RawString::fromRange(line.encoding(), line, part);
  };
  const int32_t equals = line.findChar(item, '=');
  add(cut(item.start, equals))->value = cut(equals + 1, item.end);
}

void RawParameterList::parseLine(const RawString& line, RawRange range, const RawString& trimSet) {
  const RawRange whole = range.clamped(line.length());
  for (int32_t start = whole.start; start < whole.end;) {
    const int32_t stop = line.findChar({start, whole.end}, 0);
    if (stop > start) parseItem(line, {start, stop}, trimSet);
    start = stop + 1;
  }
}

void RawParameterList::parseNumbers() {
  for (RawParameterUnit& unit : elements()) unit.number = toInt(unit.value);
}

void RawParameterList::renew() {
  renewRing();
}

namespace {

constexpr uint16_t Dash = '-';
constexpr uint16_t Quote = '"';

// Reads the tokens of a command line one by one. There are no escapes.
class CommandLineReader {
 public:
  explicit CommandLineReader(const RawString& text) : text_(text) { skipSpace(); }

  [[nodiscard]] bool isAtEnd() const { return position_ >= text_.length(); }

  bool takeDash() {
    if (text_.at(position_) != Dash) return false;
    ++position_;
    return true;
  }

  // Empty, and nothing is taken, at a dash: so a switch never becomes another one's value.
  RawString takeToken() {
    RawRange token{position_, position_};
    if (text_.at(position_) == Quote) {
      ++token.start;
      token.end = text_.findCharFrom(token.start, Quote);
      position_ = token.end + 1;
    } else if (text_.at(position_) != Dash) {
      position_ = token.end = text_.findSet(position_, RawString::lineSpace());
    }
    skipSpace();
    return RawString::fromRange(text_.encoding(), text_, token);
  }

 private:
  void skipSpace() { position_ = text_.skipSet(position_, RawString::lineSpace()); }

  const RawString& text_;
  int32_t position_ = 0;
};

} // namespace

void RawParameterList::fromCommandLine(const RawString& text, const RawStringList& flags) {
  caseSensitive = true;
  CommandLineReader reader(text);
  for (int64_t unnamed = 1; !reader.isAtEnd();) {
    if (reader.takeDash()) {
      const RawString key = reader.takeToken();
      RawParameterUnit* unit = add(key);
      if (!key.isEmpty() && RawListBody::isEnd(flags.find(key))) unit->value = reader.takeToken();
    } else {
      const RawString key =
          RawString::concat("NoTag"_text, "_"_text, RawString::fromInt64(unnamed++));
      add(key)->value = reader.takeToken();
    }
  }
}

int32_t RawParameterListSort::compare(const RawParameterUnit* a, const RawParameterUnit* b) {
  return a->key.compare(b->key);
}

} // namespace RawLayer
