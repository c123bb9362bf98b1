#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "surface/forms/controls/Panel.h"
#include "surface/forms/controls/TextBox.h"

namespace zelvane {

/// A box for a number. With the keyboard it shows the bare number, left aligned, and takes only keys that can
/// make a number; without, it applies its limits and shows the number through a mask, right aligned.
///
/// Up, Down and a notch of the wheel step by one between the limits, whether or not these are applied; the
/// wheel brings the keyboard along. It is at least 19 logical pixels high. What is typed or pasted tells of
/// itself through `OnChange` with each change of the number; showing the same number another way doesn't.
class NumberBox : public Panel {
 public:
  NumberBox(Control& parent, const std::string& name);

  /// The number that the text spells, 0 for an empty one.
  double Value() const;
  /// Shows the number through the mask, also while the box has the keyboard, and fires `OnChange`. Where the
  /// mask parts groups of digits, `OnChange` comes twice.
  void SetValue(double value);
  void SetValue(const std::string& value);

  double MaxValue() const { return MaxValue_; }
  /// Below `MinValue` it falls back to 999,999.99.
  void SetMaxValue(double value);
  double MinValue() const { return MinValue_; }
  /// Above `MaxValue` it comes down to that.
  void SetMinValue(double value);
  /// Whether the limits are applied: when one is written, and when the keyboard leaves.
  bool UseMaxMinValues() const { return UseMaxMinValues_; }
  void SetUseMaxMinValues(bool use);

  /// The mask, or two parted by ";" of which the second is for negative numbers: "##0 %". What is shown
  /// follows with the next value or `FormatNumeric`.
  const std::string& Format() const { return Format_; }
  void SetFormat(const std::string& format);
  /// No negative numbers: the sign is refused, and cut from what is pasted or written.
  bool PositiveOnly() const { return PositiveOnly_; }
  void SetPositiveOnly(bool positive_only) { PositiveOnly_ = positive_only; }
  /// A locked box refuses all keys.
  bool Locked() const { return txtNumber.Locked(); }
  void SetLocked(bool locked) { txtNumber.SetLocked(locked); }

  /// Colours as text, "&Hbbggrr&". Until one is written the box has the desktop's.
  const std::string& BackColor() const { return BackColor_; }
  void SetBackColor(const std::string& color);
  const std::string& ForeColor() const { return ForeColor_; }
  void SetForeColor(const std::string& color);

  /// Has the keyboard.
  bool GotFocus() const { return GotFocus_; }
  /// Shows the number through the mask.
  void FormatNumeric();
  /// Shows the bare number, all selected, and fires `OnChange`.
  void Highlight();
  void Refresh() { txtNumber.Update(); }
  /// Makes the font as small as `text` needs to be seen whole. The box has its size.
  void FitFont(const std::string& text) { txtNumber.FitFont(text); }

  void SetHeight(Single height) override;
  void SetEnabled(bool enabled) override;
  void SetFocus() override { txtNumber.SetFocus(); }
  bool HasFocus() const override { return txtNumber.HasFocus(); }
  bool TabStop() const override { return txtNumber.TabStop(); }
  void SetTabStop(bool stop) override { txtNumber.SetTabStop(stop); }
  void SetToolTip(const std::string& text) override { txtNumber.SetToolTip(text); }
  /// The entry itself bears the name.
  void SetAccessibleName(const std::string& name) override { txtNumber.SetAccessibleName(name); }
  /// The entry, which has the keyboard when the box has.
  const TextBox& Entry() const { return txtNumber; }

  // The control's `OnKeyDown`, `OnKeyUp`, `OnMouseDown` and `OnMouseMove` are those of the entry, passed on
  // after the box has done its own work; so are `OnGotFocus` and `OnLostFocus`.
  std::function<void()> OnChange;
  /// Comes for a key that the box accepts.
  std::function<void(int16_t& KeyAscii)> OnKeyPress;

 protected:
  void Place() override;

 private:
  void WireEntry();
  double Cleaned(double value) const;
  void UnformatNumeric();
  void ApplyFormat();
  void ParseFormat();
  void CheckRange();
  void LimitWorkText();
  bool IsFull() const;
  bool Accepts(int16_t key) const;
  void Entering();
  void Leaving();
  void KeyDown(int16_t KeyCode, int16_t Shift);
  void KeyPress(int16_t& KeyAscii);
  void MouseWheel(Single notches);
  void StepBy(double steps);
  void PutOnClipboard() const;
  void TakeFromClipboard();
  void TextChanged();

  double MaxValue_ = 999999.99, MinValue_ = 0;
  bool UseMaxMinValues_ = false, PositiveOnly_ = false, GotFocus_ = false;
  std::string Format_ = "###,##0.00;(##,###.00)";
  std::string BackColor_ = "&H00FFFFFF&", ForeColor_ = "&H00000000&";

  std::string WorkText;    ///< what the conversions work on
  std::string LastText;    ///< the number as last told through `OnChange`
  std::string Mask;        ///< the half of `Format` in force
  bool IsPositive = true;  ///< the sign found by the last `UnformatNumeric`
  int16_t MaxLength = 10;  ///< longest input, 0 for any
  Single wheel_ = 0;       ///< notches that have yet to make a whole one
  TextBox txtNumber;
};

}  // namespace zelvane
