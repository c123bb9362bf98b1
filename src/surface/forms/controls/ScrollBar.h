#pragma once

#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

/// A scroll bar from `Min`, at first 0, to `Max`, at first as thick as the desktop's. The keyboard passes it
/// by unless it's made a `TabStop`.
class ScrollBar : public Control {
 public:
  enum class Direction { Horizontal, Vertical };
  ScrollBar(Control& parent, const std::string& name, Direction direction);

  void SetEnabled(bool enabled) override;
  int16_t Min() const { return min_; }
  int16_t Max() const { return max_; }
  /// A `Max` below `Min` becomes that, a `Min` above `Max` takes that along. Either brings `Value` between
  /// them, which fires `OnChange`.
  void SetMin(int16_t min);
  void SetMax(int16_t max);
  int16_t Value() const { return value_; }
  /// Taken into `Min` to `Max`. Fires `OnChange` before it returns, where the value is another one.
  void SetValue(int16_t value);
  /// How far a click beside the handle goes; also the handle's share of the bar.
  void SetLargeChange(int16_t change);
  /// How far a click on an arrow and a notch of the wheel go.
  void SetSmallChange(int16_t change);

  /// `OnScroll` while the handle is dragged; `OnChange` at every other change, and once at the end of a drag
  /// that has moved the handle.
  std::function<void()> OnChange, OnScroll;

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  /// While one stands, what the toolkit tells is what the program writes.
  class Writing {
   public:
    explicit Writing(ScrollBar& bar) : bar_(bar), before_(bar.writing_) { bar_.writing_ = true; }
    ~Writing() { bar_.writing_ = before_; }

   private:
    ScrollBar& bar_;
    bool before_;
  };
  void SetRange(int16_t min, int16_t max);
  void ShowEnabled();
  void Moved(int value, bool dragged);
  void Released();
  int16_t min_ = 0, max_ = 0, value_ = 0;
  bool writing_ = false, dragged_ = false;
};

}  // namespace zelvane
