#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSize>

#include "surface/forms/windows/ChildFrame.h"
#include "surface/forms/windows/Form.h"

namespace zelvane {

/// What a child window needs of the window that it's a child of.
class ChildHost {
 public:
  virtual ~ChildHost() = default;
  virtual Form& Main() = 0;
  virtual ChildFrame* AddChild(Form& child, QWidget& inside) = 0;
  virtual void PlaceChild(ChildFrame& child, QSize inside, bool keeps_place) = 0;
  /// A child asks for another size: `ChildArea::FitChild`.
  virtual void FitChild(ChildFrame& child, QSize inside) = 0;
  /// While a child comes up the toolkit's word on which one is active doesn't count: the form first hears of
  /// its size, then of its activation.
  virtual void HoldActivation(bool hold) = 0;
  virtual void ActivateChild(Form& child) = 0;
  /// The child is about to be hidden: the one that was active before takes its place.
  virtual void LeaveChild(Form& child) = 0;
  virtual void RemoveChild(Form& child) = 0;
  virtual void SetChildCaption(ChildFrame& child, const QString& caption) = 0;
};

/// What joins a form to its window: takes the form's numbers to the window and the window's events to the
/// form.
class Form::Engine : public QObject {
 public:
  Engine(Form& form, QWidget& inside);

  /// Makes the form a child window.
  void PutInto(ChildHost& host);
  /// Null for a top-level window, as is `Main`.
  ChildHost* Host() const { return host_; }
  Form* Main() const { return host_ ? &host_->Main() : nullptr; }
  /// What the form's `ScaleWidth` and `ScaleHeight` measure, where it isn't the whole inside.
  void SetRoom(QWidget& room) { room_ = &room; }
  zelvane::ChildFrame* ChildFrame() const { return frame_; }
  /// The window with its frame, as far as that is the toolkit's.
  QWidget& Outer() const;

  void TakeSize();
  void TakePlace();
  /// Takes the form's size as far as the main window has room, as `MdiChild::Fit` tells.
  void Fit(Single width, Single height);
  /// Brings the form's numbers up to the window, where they differ by a pixel.
  void Follow();
  QSize Inside() const { return room_ ? room_->size() : inside_->size(); }

  int16_t State() const;
  void SetState(int16_t state);
  void ShowWindow();
  void HideWindow();
  bool IsShown() const { return !Outer().isHidden(); }

  /// The control that has the keyboard has it again once the form, disabled meanwhile, takes input.
  void KeepFocus();
  void GiveFocusBack();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Resized();
  bool TakesNumbers() const;
  /// A child takes none while the main window doesn't.
  bool TakesInput() const;

  Form& form_;
  QPointer<QWidget> inside_;
  QPointer<zelvane::ChildFrame> frame_;
  QPointer<QWidget> room_;
  QPointer<QWidget> focus_;  ///< had the keyboard when the form was disabled
  ChildHost* host_ = nullptr;
  QSize told_size_;
  bool is_coming_up_ = false;
  /// The state to show the window in, while it is hidden.
  int16_t coming_state_ = kNormal;
  bool is_placed_ = false;
};

}  // namespace zelvane
