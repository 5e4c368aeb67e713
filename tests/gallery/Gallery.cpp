// Shows the toolkit to the eye: every widget in every look on one page, and each dialog by itself.
// For screenshots (tools/shots) and for looking; it is not shipped and asserts nothing.
//
//   gallery            the widgets
//   gallery info | report | input | tip
//
// Escape closes it.
#include "gallery/GalleryPage.h"
#include "win/WinInfoDialog.h"
#include "win/WinInputDialog.h"
#include "win/WinTipDialog.h"

#include <cstring>

using namespace WinLayer;
using RawLayer::RawLabelList;

namespace {

constexpr WinRect ScreenMiddle{400, 300, 800, 600};

int showInfo() {
  RawLabelList answers;
  answers.add("Yes"_text, 1);
  answers.add("Non, à côté"_text, 2);
  answers.add("キャンセル"_text, 3);
  WinInfoDialog dialog;
  dialog.Prepare("Frage · 質問 · שאלה"_text,
                 "Größe ändern?\nファイルを上書きしますか?\nהאם להחליף את הקובץ?"_text, answers,
                 WinInfoDialog::IconQuestion, 2, ScreenMiddle);
  return dialog.RunModal(nullptr);
}

int showReport() {
  RawLabelList answers;
  answers.add("OK"_text, 1);
  WinInfoDialog dialog;
  dialog.Prepare(
      "Tarvellon"_text,
      "A text without an icon, and a row of one answer.\n"
      "It is as wide as its longest line, and the row stands at the right below it."_text,
      answers, WinInfoDialog::IconNone, 1, ScreenMiddle);
  return dialog.RunModal(nullptr);
}

WinInputParameterUnit* field(const RawString& label, const RawString& initial, uint16_t flags) {
  auto* unit = new WinInputParameterUnit;
  unit->label = label;
  unit->initial = initial;
  unit->flags = flags;
  unit->hints.set("first hint"_text, RawString());
  return unit;
}

int showInput() {
  WinInputParameterList fields;
  fields.prompt = "Fill in, please · ご記入ください"_text;
  fields.append(field("Name"_text, "Žluťoučký kůň"_text, 0));
  fields.append(field("名前"_text, "日本語のテキスト"_text, 0));
  fields.append(field("שם"_text, "שלום עולם"_text, 0));
  fields.append(field("Read-only"_text, "cannot be changed"_text, WinInputParameterUnit::ReadOnly));
  fields.append(
      field("No hints"_text, "the field keeps its place"_text, WinInputParameterUnit::NoHint));
  WinInputDialog form;
  form.Prepare(ScreenMiddle, RawString(), fields);
  return form.RunModal(nullptr);
}

// The tip stands on a thread of its own; a small page holds the program until it is closed.
int showTip() {
  Gallery::TipPage page;
  page.Create();
  WinTipDialog tip;
  SetCursorPos(500, 400);
  tip.ShowTip("Opens the report of last week\n先週の報告を開く · דוח"_text);
  const int result = page.RunLoop();
  tip.HideTip();
  return result;
}

int showWidgets() {
  Gallery::Page page;
  page.Create();
  return page.RunLoop();
}

} // namespace

int main(int count, char** arguments) {
  const char* what = count > 1 ? arguments[1] : "widgets";
  const struct {
    const char* name;
    int (*show)();
  } shows[] = {{"widgets", showWidgets},
               {"info", showInfo},
               {"report", showReport},
               {"input", showInput},
               {"tip", showTip}};
  for (const auto& each : shows)
    if (std::strcmp(each.name, what) == 0) {
      each.show();
      return 0;
    }
  return 1;
}
