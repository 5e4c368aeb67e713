#include "app/GuiProfileFile.h"

#include "app/LauncherOptions.h"
#include "raw/RawLanguage.h"

namespace AppLayer {

using RawLayer::RawLanguage;
using RawLayer::RawParameterUnit;
using WinLayer::WindowMetrics;

GuiProfileFile& GuiProfileFile::instance() {
  static GuiProfileFile profile;
  return profile;
}

void GuiProfileFile::load(const RawString& file) {
  path = file;
  readPath = file;
  loadLanguage();
  WindowMetrics& metrics = WindowMetrics::instance();
  loadMetrics(metrics);
  loadFonts(metrics);
}

void GuiProfileFile::loadLanguage() {
  RawLanguage& language = RawLanguage::instance();
  language.setSelection(readValue("UserSelection"_text, "Language"_text, language.selection()));
  language.loadMap();
  language.loadSection();
}

void GuiProfileFile::loadMetrics(WindowMetrics& metrics) {
  struct Measure {
    const RawString& key;
    int32_t WindowMetrics::*field;
  };
  static const Measure measures[] = {
      {"Margin"_text, &WindowMetrics::margin},
      {"FrameMargin"_text, &WindowMetrics::frameMargin},
      {"CaptionHeight"_text, &WindowMetrics::captionHeight},
      {"ButtonSeparator"_text, &WindowMetrics::buttonSeparator},
      {"SelectorSeparator"_text, &WindowMetrics::selectorSeparator},
      {"BaseIconSize"_text, &WindowMetrics::baseIconSize},
      {"ButtonIconSize"_text, &WindowMetrics::buttonIconSize},
      {"MenuIconSize"_text, &WindowMetrics::menuIconSize},
  };
  RawParameterList values;
  loadSection(values, "WindowParameter"_text);
  for (const Measure& measure : measures)
    if (const RawParameterUnit* unit = values.find(measure.key))
      metrics.*measure.field = optionInteger(unit->value);
}

void GuiProfileFile::loadFonts(WindowMetrics& metrics) {
  loadSection(metrics.windowFont, "WindowFont"_text);
  if (!loadSection(metrics.menuFont, "MenuFont"_text)) metrics.menuFont = metrics.windowFont;
  if (!loadSection(metrics.tipFont, "TipFont"_text)) metrics.tipFont = metrics.windowFont;
}

} // namespace AppLayer
