#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "surface/raster/Color.h"
#include "surface/raster/Numbers.h"

class QWidget;

namespace zelvane {

class EventRelay;

/// The unit in which the places and sizes of a control's children are told.
enum class Scale { Pixels, Twips };
/// Where a panel docks in the main window.
enum class Align { None, Top, Bottom, Left, Right };

/// `Shift` of an event: a sum of these.
enum ShiftMask : int16_t { kShift = 1, kCtrl = 2, kAlt = 4 };
/// `Button` of a press or release; a move bears the sum of those held.
enum PointerButtons : int16_t { kNoButton = 0, kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };
/// `KeyCode`s that the program asks for.
enum KeyCodes : int16_t {
  kKeyEnter = 13,
  kKeyEscape = 27,
  kKeySpace = 32,
  kKeyPageUp = 33,
  kKeyPageDown = 34,
  kKeyEnd = 35,
  kKeyHome = 36,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyC = 67,
  kKeyV = 86,
  kKeyX = 88,
  kKeyF2 = 113,
  kKeyF5 = 116
};

/// A drawn pointer: an SVG of 32 by 32 among the program's cursors and the pixel that points.
struct PointerIcon {
  std::string name;
  int hot_x = 0, hot_y = 0;
};

enum MousePointers : int16_t { kPointerDefault = 0, kPointerCustom = 99 };

/// What stands in a window: has a place, a size, a name and events. Every control may hold others.
///
/// Places and sizes are singles in the unit of the parent's `ScaleMode`, kept as written; on the screen they
/// are rounded to logical pixels. A top-level window measures in twips of the screen. Events hold a callable
/// each and come on the program's one thread.
class Control {
 public:
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// The name in the code; also the object name that tests and assistive tools see.
  const std::string& Name() const { return name_; }
  Control* Parent() const { return parent_; }
  /// Moves the control into another one, keeping its numbers.
  void SetParent(Control& parent);

  Single Left() const { return left_; }
  Single Top() const { return top_; }
  Single Width() const { return width_; }
  Single Height() const { return height_; }
  virtual void SetLeft(Single left);
  virtual void SetTop(Single top);
  virtual void SetWidth(Single width);
  virtual void SetHeight(Single height);
  /// In one step on the screen.
  virtual void Move(Single left, Single top);
  void Move(Single left, Single top, Single width, Single height) {
    Move(left, top), SetWidth(width), SetHeight(height);
  }

  /// The size that the content needs in the desktop's look and font; 0 for a control that is never seen.
  Single NaturalWidth() const;
  Single NaturalHeight() const;

  Scale ScaleMode() const { return scale_mode_; }
  void SetScaleMode(Scale scale) { scale_mode_ = scale; }

  /// As set; a visible control in a hidden window isn't seen.
  bool Visible() const { return visible_; }
  virtual void SetVisible(bool visible);
  bool Enabled() const { return enabled_; }
  virtual void SetEnabled(bool enabled);

  /// Above the other controls of the same parent.
  void BringToFront();

  virtual void SetFocus();
  virtual bool HasFocus() const;
  /// It or what it holds has the keyboard, or will have it once the window is the active one again.
  bool HoldsFocus() const;
  /// A press gives the control the keyboard, and with it its key events; Tab passes it by.
  void SetTakesKeys(bool takes);
  /// Whether Tab comes to the control.
  virtual bool TabStop() const;
  virtual void SetTabStop(bool stop);
  /// Tab comes to the control; a press leaves the keyboard where it is.
  void SetTakesTab();
  /// Tab comes here from that one.
  void SetTabAfter(const Control& before);
  /// Paints what has been noted for painting now, not at the next turn of the event loop.
  void Update();

  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  virtual void SetToolTip(const std::string& text);
  /// What assistive tools call the control.
  virtual void SetAccessibleName(const std::string& name);

  /// Gives a child that asks for it a side of the window, `Align::None` takes it back. Only a main window has
  /// sides to give.
  virtual void Dock(Control& panel, Align align);

  int16_t MousePointer() const { return mouse_pointer_; }
  /// 99 shows `MouseIcon`, 0 the default arrow.
  void SetMousePointer(int16_t pointer);
  /// Null, or an icon that outlives the control; two controls bear the same icon when these are equal.
  const PointerIcon* MouseIcon() const { return mouse_icon_; }
  void SetMouseIcon(const PointerIcon* icon);

  /// Logical pixels of the screen, all edges included; empty where the control isn't seen.
  struct ScreenRect {
    int left = 0, top = 0, right = -1, bottom = -1;
    bool Contains(int x, int y) const { return x >= left && x <= right && y >= top && y <= bottom; }
  };
  ScreenRect WindowRect() const;

  using PointerEvent = std::function<void(int16_t Button, int16_t Shift, Single X, Single Y)>;
  using KeyEvent = std::function<void(int16_t KeyCode, int16_t Shift)>;
  /// Positions are in the control's own unit, from the corner of its inside: the whole logical pixel plus
  /// 0.49. After a press the moves and the release come here too, wherever the pointer is; a release that
  /// another window got comes before the next move. A second press of a double click is a press where there
  /// is no `OnDblClick`.
  PointerEvent OnMouseDown, OnMouseMove, OnMouseUp;
  std::function<void()> OnClick, OnDblClick;
  /// The pointer has left the control.
  std::function<void()> OnMouseLeave;
  /// Notches of the wheel, away from the user and to the left above 0; fractions on fine wheels.
  std::function<void(int16_t Shift, Single X, Single Y, Single Across, Single Down)> OnMouseWheel;
  KeyEvent OnKeyDown, OnKeyUp;
  std::function<void()> OnGotFocus, OnLostFocus;

  /// The toolkit's widget; null for a control that is never seen.
  QWidget* Widget() const { return widget_; }

 protected:
  /// Takes `widget`, which the subclass has made with the parent's widget as its parent. Null: never seen.
  Control(Control* parent, std::string name, QWidget* widget);
  /// Sets the place on the screen from the numbers.
  virtual void Place();
  /// Units of this control's parent in a logical pixel: 15 in twips, 1 in pixels.
  double UnitsPerPixel() const;
  /// Pixels of frame on each side, which pointer positions leave out.
  virtual int FrameWidth() const { return 0; }
  /// Pixels that the control shows to the left of its `Left`, which its place and pointer positions leave
  /// out.
  virtual int LeftReach() const { return 0; }
  /// Whether a left click of the pointer fires `OnClick`; false where `OnClick` means something else.
  virtual bool ClicksByPointer() const { return true; }
  /// Whether `OnKeyDown` and `OnKeyUp` hear of a key before the control inside that has the keyboard.
  virtual bool PreviewsKeys() const { return false; }

  QWidget* widget_ = nullptr;
  Single left_ = 0, top_ = 0, width_ = 0, height_ = 0;
  bool visible_ = true, enabled_ = true;

 private:
  friend class EventRelay;
  void ShowPointer();
  std::unique_ptr<EventRelay> relay_;
  Control* parent_;
  std::string name_, tag_;
  Scale scale_mode_ = Scale::Pixels;
  int16_t mouse_pointer_ = kPointerDefault;
  const PointerIcon* mouse_icon_ = nullptr;
  bool pointer_drawn_ = false;
};

/// Controls of one kind, reached by index.
template <class Kind>
class ControlArray {
 public:
  ControlArray() = default;
  template <class... Arguments>
  ControlArray(int count, Control& parent, const std::string& name, const Arguments&... arguments) {
    for (int i = 0; i < count; ++i) Add(parent, name, arguments...);
  }
  /// Makes the next one; its name is the array's with its index behind.
  template <class... Arguments>
  Kind& Add(Control& parent, const std::string& name, const Arguments&... arguments) {
    items_.push_back(
        std::make_unique<Kind>(parent, name + "(" + std::to_string(items_.size()) + ")", arguments...));
    return *items_.back();
  }
  Kind& operator[](int index) { return *items_.at(static_cast<size_t>(index)); }
  const Kind& operator[](int index) const { return *items_.at(static_cast<size_t>(index)); }
  int Count() const { return static_cast<int>(items_.size()); }

 private:
  std::vector<std::unique_ptr<Kind>> items_;
};

}  // namespace zelvane
