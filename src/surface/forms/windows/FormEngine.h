#pragma once

#include <QMdiSubWindow>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSize>

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

/// What joins a form to its window: takes the form's numbers to the window and the window's events to the
/// form.
class Form::Engine : public QObject {
 public:
  Engine(Form& form, QWidget& inside);

  /// Makes the form a child window.
  void PutInto(MdiForm& main);
  MdiForm* Main() const { return main_; }
  QMdiSubWindow* ChildFrame() const { return frame_; }
  /// The window with its frame, as far as that is the toolkit's.
  QWidget& Outer() const;

  void TakeSize();
  void TakePlace();
  /// Brings the form's numbers up to the window, where they differ by a pixel.
  void Follow();
  QSize Inside() const;

  int16_t State() const;
  void SetState(int16_t state);
  void ShowWindow();
  void HideWindow();
  bool IsShown() const { return !Outer().isHidden(); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Resized();
  bool TakesNumbers() const;

  Form& form_;
  QPointer<QWidget> inside_;
  QPointer<QMdiSubWindow> frame_;
  MdiForm* main_ = nullptr;
  QSize told_size_;
  bool is_coming_up_ = false;
  /// The state to show the window in, while it is hidden.
  int16_t coming_state_ = kNormal;
  bool is_placed_ = false;
};

}  // namespace zelvane
