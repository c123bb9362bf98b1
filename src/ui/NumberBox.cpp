#include "ui/NumberBox.h"

#include <algorithm>
#include <cmath>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/Label.h"
#include "surface/system/desktop/Clipboard.h"
#include "ui/NumberMask.h"

namespace zelvane {
namespace {

constexpr double kSmallestHeight = 19;  // logical pixels
constexpr double kFallbackMaximum = 999999.99;
constexpr char kDesignCaption[] = "txtNumber";
constexpr int16_t kBackspace = 8;

}  // namespace

NumberBox::NumberBox(Control& parent, const std::string& name)
    : Panel(parent, name), txtNumber(*this, "txtNumber") {
  txtNumber.SetSelectsOnEntry(true);
  txtNumber.SetAlignment(kAlignRight);
  WireEntry();
  SetHeight(0);
  ParseFormat();
  FormatNumeric();
}

void NumberBox::WireEntry() {
  txtNumber.OnChange = [this] { TextChanged(); };
  txtNumber.OnGotFocus = [this] { Entering(), FireEvent(OnGotFocus); };
  txtNumber.OnLostFocus = [this] { Leaving(), FireEvent(OnLostFocus); };
  txtNumber.OnKeyDown = [this](int16_t key, int16_t shift) {
    KeyDown(key, shift), FireEvent(OnKeyDown, key, shift);
  };
  txtNumber.OnKeyPress = [this](int16_t& key) { KeyPress(key); };
  txtNumber.OnKeyUp = [this](int16_t key, int16_t shift) { FireEvent(OnKeyUp, key, shift); };
  txtNumber.OnMouseWheel = [this](int16_t, Single, Single, Single, Single down) { MouseWheel(down); };
  txtNumber.OnMouseDown = [this](auto... of) { FireEvent(OnMouseDown, of...); };
  txtNumber.OnMouseMove = [this](auto... of) { FireEvent(OnMouseMove, of...); };
}

double NumberBox::Value() const {
  return NumberOf(ReduceToNumber(txtNumber.Text(), PositiveOnly_).text);
}

void NumberBox::SetValue(double value) {
  SetValue(NumberText(value));
}

void NumberBox::SetValue(const std::string& value) {
  WorkText = value;
  UnformatNumeric();
  ApplyFormat();
  LastText = WorkText;
  txtNumber.SetText(WorkText);
  FireEvent(OnChange);
}

double NumberBox::Cleaned(double value) const {
  return NumberOf(ReduceToNumber(NumberText(value), PositiveOnly_).text);
}

void NumberBox::SetMaxValue(double value) {
  MaxValue_ = Cleaned(value);
  if (MinValue_ > MaxValue_) MaxValue_ = kFallbackMaximum;
  if (UseMaxMinValues_) CheckRange();
}

void NumberBox::SetMinValue(double value) {
  MinValue_ = Cleaned(value);
  if (MaxValue_ < MinValue_) MinValue_ = MaxValue_;
  if (UseMaxMinValues_) CheckRange();
}

void NumberBox::SetUseMaxMinValues(bool use) {
  UseMaxMinValues_ = use;
  if (use) CheckRange();
}

void NumberBox::SetFormat(const std::string& format) {
  Format_ = format;
  ParseFormat();
}

void NumberBox::SetBackColor(const std::string& color) {
  BackColor_ = color;
  txtNumber.SetBackColor(Color{ColorNumberOf(color)});
}

void NumberBox::SetForeColor(const std::string& color) {
  ForeColor_ = color;
  txtNumber.SetForeColor(Color{ColorNumberOf(color)});
}

void NumberBox::SetEnabled(bool enabled) {
  Panel::SetEnabled(enabled);
  txtNumber.SetEnabled(enabled);
}

void NumberBox::SetHeight(Single height) {
  Panel::SetHeight(std::max(height, static_cast<Single>(kSmallestHeight * UnitsPerPixel())));
}

void NumberBox::Place() {
  Panel::Place();
  const auto pixels = [this](Single units) { return static_cast<Single>(units / UnitsPerPixel()); };
  txtNumber.Move(0, 0, pixels(Width()), pixels(Height()));
}

void NumberBox::FormatNumeric() {
  UnformatNumeric();
  ApplyFormat();
  txtNumber.SetText(WorkText);
}

void NumberBox::Highlight() {
  WorkText = txtNumber.Text();
  UnformatNumeric();
  txtNumber.SetText(WorkText);
  txtNumber.SelectAll();
  FireEvent(OnChange);
}

void NumberBox::UnformatNumeric() {
  const PlainNumber plain = ReduceToNumber(WorkText, PositiveOnly_);
  WorkText = plain.text;
  IsPositive = plain.is_positive;
}

void NumberBox::ApplyFormat() {
  Mask = MaskOf(Format_, IsPositive, PositiveOnly_);
  WorkText = ShowThroughMask(Mask, WorkText);
}

void NumberBox::ParseFormat() {
  MaxLength = LongestInput(Format_);
}

void NumberBox::CheckRange() {
  if (txtNumber.Text().empty()) SetValue(0.0);
  if (MinValue_ > Value()) SetValue(MinValue_);
  if (MaxValue_ < Value()) SetValue(MaxValue_);
}

bool NumberBox::IsFull() const {
  const int length = static_cast<int>(txtNumber.Text().size());
  return MaxLength != 0 && txtNumber.SelLength() < length && length >= MaxLength;
}

bool NumberBox::Accepts(int16_t key) const {
  if (Locked()) return false;
  if (key >= '0' && key <= '9') return !IsFull();
  const std::string text = txtNumber.Text();
  const bool is_all_selected = txtNumber.SelLength() == static_cast<int>(text.size());
  switch (key) {
    case kBackspace:
      return true;
    case '.':
      return !IsFull() && Format_.find('.') != std::string::npos &&
             (text.find('.') == std::string::npos || is_all_selected);
    case '-':
      return !IsFull() && !PositiveOnly_ && txtNumber.SelStart() == 0;
    default:
      return false;
  }
}

void NumberBox::KeyPress(int16_t& KeyAscii) {
  if (Accepts(KeyAscii)) {
    FireEvent(OnKeyPress, KeyAscii);
  } else {
    KeyAscii = 0;
  }
}

void NumberBox::KeyDown(int16_t KeyCode, int16_t Shift) {
  if (Shift == 0 && (KeyCode == kKeyUp || KeyCode == kKeyDown)) StepBy(KeyCode == kKeyUp ? 1 : -1);
  if (Shift != kCtrl) return;
  if (KeyCode == kKeyC || KeyCode == kKeyX) PutOnClipboard();
  if (Locked()) return;
  if (KeyCode == kKeyX) txtNumber.SetText("");
  if (KeyCode == kKeyV) TakeFromClipboard();
}

/// Fine wheels tell of parts of a notch, which add up.
void NumberBox::MouseWheel(Single notches) {
  wheel_ += notches;
  const Single whole = std::trunc(wheel_);
  wheel_ -= whole;
  if (whole == 0 || Locked() || !Enabled()) return;
  SetFocus();
  StepBy(whole);
}

void NumberBox::StepBy(double steps) {
  if (Locked() || MinValue_ > MaxValue_) return;
  txtNumber.SetText(NumberText(std::clamp(Value() + steps, MinValue_, MaxValue_)));
  txtNumber.SelectAll();
}

void NumberBox::PutOnClipboard() const {
  Clipboard::Clear();
  Clipboard::SetText(txtNumber.Text());
}

void NumberBox::TakeFromClipboard() {
  WorkText = Clipboard::GetText();
  txtNumber.SetText(WorkText);
  // The same text as before comes with no change step, which would have done this.
  UnformatNumeric();
  ApplyFormat();
  txtNumber.SetText(WorkText);
  txtNumber.SelectAll();
}

void NumberBox::TextChanged() {
  const std::string text = txtNumber.Text();
  if (text == kDesignCaption) return;
  WorkText = text;
  UnformatNumeric();
  if (LastText == WorkText) return;
  const bool is_another = NumberOf(LastText) != NumberOf(WorkText);
  // Stands before the event, whose handler may write a value.
  LastText = WorkText;
  if (is_another) FireEvent(OnChange);
}

void NumberBox::Entering() {
  GotFocus_ = true;
  if (Locked() || !Enabled()) return txtNumber.SetAlignment(kAlignRight);
  txtNumber.SetAlignment(kAlignLeft);
  WorkText = txtNumber.Text();
  UnformatNumeric();
  LastText = WorkText;
  txtNumber.SetText(WorkText);
  txtNumber.SelectAll();
}

void NumberBox::Leaving() {
  GotFocus_ = false;
  if (!Locked()) {
    WorkText = txtNumber.Text();
    if (UseMaxMinValues_) LimitWorkText();
    FormatNumeric();
  }
  txtNumber.SetAlignment(kAlignRight);
}

void NumberBox::LimitWorkText() {
  UnformatNumeric();
  if (WorkText.empty()) WorkText = "0";
  if (NumberOf(WorkText) < MinValue_) WorkText = NumberText(MinValue_);
  if (NumberOf(WorkText) > MaxValue_) WorkText = NumberText(MaxValue_);
}

}  // namespace zelvane
