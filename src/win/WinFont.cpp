#include "win/WinFont.h"

#include "raw/RawNumber.h"
#include "win/WindowMetrics.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::RawParameterList;
using RawLayer::RawParameterUnit;

namespace {

constexpr LONG DefaultHeight = 12;

struct LongKey {
  const RawString& key;
  LONG LOGFONTW::*field;
};
struct ByteKey {
  const RawString& key;
  BYTE LOGFONTW::*field;
};

// The keys of a font section, in the order of writing; the face name comes last.
const LongKey* longKeys() {
  static const LongKey keys[] = {
      {"Height"_text, &LOGFONTW::lfHeight},         {"Width"_text, &LOGFONTW::lfWidth},
      {"Escapement"_text, &LOGFONTW::lfEscapement}, {"Orientation"_text, &LOGFONTW::lfOrientation},
      {"Weight"_text, &LOGFONTW::lfWeight},
  };
  return keys;
}
constexpr int LongKeyCount = 5;

const ByteKey* byteKeys() {
  static const ByteKey keys[] = {
      {"Italic"_text, &LOGFONTW::lfItalic},
      {"Underline"_text, &LOGFONTW::lfUnderline},
      {"StrikeOut"_text, &LOGFONTW::lfStrikeOut},
      {"Charset"_text, &LOGFONTW::lfCharSet},
      {"OutPrecision"_text, &LOGFONTW::lfOutPrecision},
      {"ClipPrecision"_text, &LOGFONTW::lfClipPrecision},
      {"Quality"_text, &LOGFONTW::lfQuality},
      {"PitchFamily"_text, &LOGFONTW::lfPitchAndFamily},
  };
  return keys;
}
constexpr int ByteKeyCount = 8;

} // namespace

WinFont::WinFont() {
  description.lfHeight = DefaultHeight;
  description.lfCharSet = DEFAULT_CHARSET;
}

void WinFont::create() {
  font_.reset(CreateFontIndirectW(&description));
}

void WinFont::read(const RawParameterList& parameters) {
  for (int i = 0; i < LongKeyCount; ++i)
    if (const RawParameterUnit* unit = parameters.find(longKeys()[i].key))
      description.*longKeys()[i].field = RawLayer::toInt(unit->value);
  for (int i = 0; i < ByteKeyCount; ++i)
    if (const RawParameterUnit* unit = parameters.find(byteKeys()[i].key))
      description.*byteKeys()[i].field = static_cast<BYTE>(RawLayer::toInt(unit->value));
  if (const RawParameterUnit* unit = parameters.find("FaceName"_text)) {
    const RawString face = unit->value.shareAs(RawLayer::EncodingWide);
    const int32_t length = std::min<int32_t>(face.length(), LF_FACESIZE - 1);
    std::copy_n(wideUnits(face), length, description.lfFaceName);
    description.lfFaceName[length] = 0;
  }
}

void WinFont::write(RawParameterList& parameters) const {
  const auto set = [&parameters](const RawString& key, int64_t value) {
    parameters.set(key, RawString::fromInt64(value));
  };
  for (int i = 0; i < LongKeyCount; ++i) set(longKeys()[i].key, description.*longKeys()[i].field);
  for (int i = 0; i < ByteKeyCount; ++i) set(byteKeys()[i].key, description.*byteKeys()[i].field);
  parameters.set("FaceName"_text,
                 RawString::fromWide(reinterpret_cast<const char16_t*>(description.lfFaceName))
                     .shareAs(RawLayer::EncodingUtf8));
}

void WinFont::setSystemDefault() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
    description = metrics.lfMessageFont;
}

namespace {

// A font of the windows: the system's own, changed by the keys of its section.
struct SectionFont : WinFont {
  explicit SectionFont(const RawParameterList& section) {
    setSystemDefault();
    read(section);
    create();
  }
};

} // namespace

WinFont& WinFont::window() {
  static SectionFont font(WindowMetrics::instance().windowFont);
  return font;
}

WinFont& WinFont::menu() {
  static SectionFont font(WindowMetrics::instance().menuFont);
  return font;
}

WinFont& WinFont::tip() {
  static SectionFont font(WindowMetrics::instance().tipFont);
  return font;
}

} // namespace WinLayer
