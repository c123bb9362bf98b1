#include "surface/forms/windows/FormEngine.h"

#include <QCloseEvent>
#include <QWidget>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

int Pixels(Single twips) {
  return ToPlace(static_cast<double>(twips) / kTwipsPerPixel);
}

void FollowPixels(Single& twips, int pixels) {
  if (Pixels(twips) != pixels) twips = static_cast<Single>(pixels * kTwipsPerPixel);
}

}  // namespace

Form::Engine::Engine(Form& form, QWidget& inside) : form_(form), inside_(&inside) {
  inside.installEventFilter(this);
}

void Form::Engine::PutInto(ChildHost& host) {
  host_ = &host;
  frame_ = host.AddChild(form_, *inside_);
  frame_->installEventFilter(this);
}

QWidget& Form::Engine::Outer() const {
  return frame_ ? *frame_ : *inside_;
}

/// A window that fills its room or is an icon takes no numbers.
bool Form::Engine::TakesNumbers() const {
  return State() == kNormal || !IsShown();
}

void Form::Engine::TakeSize() {
  if (TakesNumbers()) {
    // A size of 0 stands for the one that the window would get by itself.
    const QSize size(form_.width_ > 0 ? Pixels(form_.width_) : inside_->width(),
                     form_.height_ > 0 ? Pixels(form_.height_) : inside_->height());
    Outer().resize(frame_ ? frame_->WithFrame(size) : size);
    if (frame_) frame_->LayOut();
  }
  if (IsShown()) Follow();
}

void Form::Engine::Fit(Single width, Single height) {
  if (IsShown()) return host_->FitChild(*frame_, QSize(Pixels(width), Pixels(height)));
  form_.width_ = width;
  form_.height_ = height;
}

void Form::Engine::TakePlace() {
  is_placed_ = true;
  if (TakesNumbers()) Outer().move(Pixels(form_.left_), Pixels(form_.top_));
  if (IsShown()) Follow();
}

void Form::Engine::Follow() {
  FollowPixels(form_.width_, inside_->width());
  FollowPixels(form_.height_, inside_->height());
  if (State() == kMinimised) return;
  FollowPixels(form_.left_, Outer().pos().x());
  FollowPixels(form_.top_, Outer().pos().y());
}

int16_t Form::Engine::State() const {
  if (!IsShown()) return coming_state_;
  if (Outer().isMinimized()) return kMinimised;
  return Outer().isMaximized() ? kMaximised : kNormal;
}

void Form::Engine::SetState(int16_t state) {
  coming_state_ = state;
  if (!IsShown()) return;
  // Minimising keeps in mind whether the window was maximised; the two others are plain.
  const Qt::WindowStates rest = Outer().windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
  const Qt::WindowStates kept = Outer().windowState() & Qt::WindowMaximized;
  if (state == kMinimised) Outer().setWindowState(rest | kept | Qt::WindowMinimized);
  if (state == kMaximised) Outer().setWindowState(rest | Qt::WindowMaximized);
  if (state == kNormal) Outer().setWindowState(rest);
}

void Form::Engine::ShowWindow() {
  if (frame_) {
    host_->PlaceChild(*frame_, QSize(Pixels(form_.width_), Pixels(form_.height_)), is_placed_);
    is_placed_ = true;
    host_->HoldActivation(true);
  }
  is_coming_up_ = true;
  const int16_t state = coming_state_;
  if (state == kMinimised) {
    Outer().showMinimized();
  } else if (state == kMaximised) {
    Outer().showMaximized();
  } else {
    Outer().show();
  }
  is_coming_up_ = false;
  Resized();
  if (frame_) host_->HoldActivation(false);
}

void Form::Engine::HideWindow() {
  if (!IsShown()) return;
  coming_state_ = State();
  if (host_) host_->LeaveChild(form_);
  Outer().hide();
}

/// The toolkit would pass the keyboard on from one control to the next as it disables them.
void Form::Engine::KeepFocus() {
  focus_ = inside_ ? inside_->focusWidget() : nullptr;
  if (focus_) focus_->clearFocus();
}

void Form::Engine::GiveFocusBack() {
  if (focus_) focus_->setFocus(Qt::OtherFocusReason);
  focus_ = nullptr;
}

bool Form::Engine::TakesInput() const {
  return form_.Enabled() && (!host_ || host_->Main().Enabled());
}

void Form::Engine::Resized() {
  Follow();
  // While the window is coming up its parts don't have their sizes yet; it's told once they have.
  if (is_coming_up_ || !inside_->isVisible() || inside_->size() == told_size_) return;
  told_size_ = inside_->size();
  FireEvent(form_.OnResize);
}

bool Form::Engine::eventFilter(QObject* watched, QEvent* event) {
  const bool is_outer = watched == &Outer();
  switch (event->type()) {
    case QEvent::Close:
      if (!is_outer) return false;
      // A form that takes no input isn't closed either.
      event->setAccepted(TakesInput() && form_.Unload(kUnloadByUser));
      return true;
    case QEvent::Resize:
    case QEvent::Show:  // the toolkit resizes a child to the whole room while it's hidden
      if (watched == inside_) Resized();
      return false;
    case QEvent::Move:
      if (is_outer && IsShown()) Follow();
      return false;
    case QEvent::WindowActivate:
      if (is_outer && !frame_) FireEvent(form_.OnActivate);
      return false;
    case QEvent::WindowDeactivate:
      if (is_outer && !frame_) FireEvent(form_.OnDeactivate);
      return false;
    case QEvent::Paint:
      if (watched == inside_) FireEvent(form_.OnPaint);
      return false;
    default:
      return false;
  }
}

}  // namespace zelvane
