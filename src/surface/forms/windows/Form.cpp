#include "surface/forms/windows/Form.h"

#include <QWidget>
#include <algorithm>
#include <utility>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/forms/windows/FormEngine.h"
#include "surface/forms/windows/FormMade.h"
#include "surface/raster/Units.h"

namespace zelvane {
namespace {

std::vector<Form*>& List() {
  static std::vector<Form*> list;
  return list;
}

/// Unloaded forms that wait for their end.
std::vector<Form*>& Gone() {
  static std::vector<Form*> gone;
  return gone;
}

int& Runs() {
  static int ended = 0;
  return ended;
}

void DestroyGone() {
  for (const Form* form : std::exchange(Gone(), {})) delete form;
}

bool IsLoaded(const Form* form) {
  return std::find(List().begin(), List().end(), form) != List().end();
}

}  // namespace

const std::vector<Form*>& Forms() {
  return List();
}

Form::Form(const std::string& name, QWidget* widget)
    : Control(nullptr, name, widget), engine_(std::make_unique<Engine>(*this, *widget)) {
  visible_ = false;
  List().push_back(this);
  FireEvent(OnFormMade, *this);
}

Form::Form(const std::string& name, Form* owner)
    : Form(name, new QWidget(owner ? owner->Widget() : nullptr, owner ? Qt::Dialog : Qt::Window)) {}

Form::Form(const std::string& name, ChildHost& main) : Form(name, new QWidget) {
  widget_->setFocusPolicy(Qt::StrongFocus);
  // Opaque: the window's frame needn't be painted beneath a control that moves.
  widget_->setAutoFillBackground(true);
  engine_->PutInto(main);
}

Form::~Form() {
  std::erase(List(), this);
  std::erase(Gone(), this);
  ChildFrame* frame = engine_->ChildFrame();
  if (frame) engine_->Host()->RemoveChild(*this);
  engine_.reset();
  delete frame;
}

void Form::Place() {
  if (widget_) engine_->TakePlace();
}

void Form::SetWidth(Single width) {
  width_ = width;
  if (widget_) engine_->TakeSize();
}

void Form::SetHeight(Single height) {
  height_ = height;
  if (widget_) engine_->TakeSize();
}

void Form::SetMinimumSize(Single width, Single height) {
  const auto pixels = [](Single twips) { return ToSize(static_cast<double>(twips) / kTwipsPerPixel); };
  if (widget_) widget_->setMinimumSize(pixels(width), pixels(height));
}

void Form::SetEnabled(bool enabled) {
  if (enabled_ && !enabled) engine_->KeepFocus();
  Control::SetEnabled(enabled);
  if (enabled) engine_->GiveFocusBack();
  // The toolkit disables the windows above this one as well.
  for (Form* form : Dependants()) {
    if (form->widget_->isWindow()) form->widget_->setEnabled(form->enabled_);
  }
}

void Form::SetCaption(const std::string& caption) {
  caption_ = caption;
  if (!widget_) return;
  QString shown = OneLine(ToQt(caption));
  if (engine_->ChildFrame()) {
    engine_->Host()->SetChildCaption(*engine_->ChildFrame(), shown);
  } else {
    // The toolkit takes one "[*]" for the place of its mark of a changed document, two for the text itself.
    widget_->setWindowTitle(shown.replace("[*]", "[*][*]"));
  }
}

int16_t Form::WindowState() const {
  return widget_ ? engine_->State() : int16_t{kNormal};
}

void Form::SetWindowState(int16_t state) {
  if (widget_ && !unloading_) engine_->SetState(state);
}

Single Form::ScaleWidth() const {
  if (!widget_) return 0;
  return static_cast<Single>(engine_->Inside().width() * (ScaleMode() == Scale::Twips ? kTwipsPerPixel : 1));
}

Single Form::ScaleHeight() const {
  if (!widget_) return 0;
  return static_cast<Single>(engine_->Inside().height() * (ScaleMode() == Scale::Twips ? kTwipsPerPixel : 1));
}

void Form::Show() {
  if (!widget_ || unloading_) return;
  visible_ = true;
  if (engine_->IsShown()) return Activate();
  engine_->ShowWindow();
  if (engine_->Host()) engine_->Host()->ActivateChild(*this);
}

void Form::Hide() {
  visible_ = false;
  if (widget_) engine_->HideWindow();
}

void Form::Activate() {
  if (!widget_ || unloading_) return;
  if (!engine_->IsShown()) return Show();
  QWidget& outer = engine_->Outer();
  outer.setWindowState(outer.windowState() & ~Qt::WindowMinimized);
  outer.raise();
  if (engine_->Host()) {
    engine_->Host()->ActivateChild(*this);
  } else {
    outer.activateWindow();
  }
}

/// Forms that stand in this one or above it, and so go with it.
std::vector<Form*> Form::Dependants() const {
  std::vector<Form*> dependants;
  for (Form* form : List()) {
    if (!form->widget_ || form == this) continue;
    const bool is_owned = form->widget_->isWindow() && form->widget_->parentWidget() == widget_;
    if (form->engine_->Main() == this || is_owned) dependants.push_back(form);
  }
  return dependants;
}

/// A handler that fails hasn't agreed: what it would have saved is not to be lost.
bool Form::MayGo(UnloadModes mode) {
  bool is_refused = false;
  being_asked_ = true;
  const bool is_answered = FireEvent(OnQueryUnload, is_refused, mode);
  being_asked_ = false;
  return is_answered && !is_refused;
}

bool Form::Unload(UnloadModes mode) {
  if (unloading_) return true;
  if (being_asked_ || !MayGo(mode)) return false;
  for (Form* form : Dependants()) {
    // A handler may have unloaded the next ones meanwhile.
    if (!IsLoaded(form) || form->engine_->Main() != this) continue;
    if (form->being_asked_ || !form->MayGo(mode)) return false;
  }
  Go();
  return true;
}

void Form::Go() {
  if (unloading_) return;
  unloading_ = true;
  std::erase(List(), this);
  for (Form* form : Dependants()) {
    if (IsLoaded(form)) form->Go();
  }
  FireEvent(OnUnload);
  if (released_) released_();
  Hide();
  Gone().push_back(this);
  DeferToOutermost(DestroyGone);
}

int EndedRuns() {
  return Runs();
}

void DestroyForms() {
  while (!List().empty()) {
    const auto is_other = [](const Form* form) { return !form->IsMain(); };
    const auto last = std::find_if(List().rbegin(), List().rend(), is_other);
    (last == List().rend() ? List().back() : *last)->Go();
  }
  DestroyGone();
  ++Runs();
}

}  // namespace zelvane
