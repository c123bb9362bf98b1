#include "effects/frame/EffectWindow.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "effects/frame/HistogramView.h"
#include "effects/frame/PreviewView.h"
#include "effects/frame/Reduced.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

// Milliseconds: how long settings rest before the whole picture is worked on, how often progress is looked
// at, and how often that has to be before it's shown.
constexpr int kRest = 150, kLook = 100, kLooksUnseen = 3;

constexpr char kShortOfMemory[] = "There isn't enough memory for this.";

}  // namespace

EffectWindow::EffectWindow(Effect effect, Bitmap picture, Delivery deliver)
    : effect_(std::move(effect)),
      picture_(std::move(picture)),
      scale_(ReducedScale(picture_)),
      deliver_(std::move(deliver)),
      view_(new PreviewView(this)) {
  reduced_ = Reduced(picture_, scale_);
  setWindowTitle(QString::fromStdString(effect_.title));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  rest_.setSingleShot(true);
  connect(&rest_, &QTimer::timeout, this, [this] { StartWhole(); });
  connect(&look_, &QTimer::timeout, this, [this] { ShowProgress(); });
  worker_.OnDone = [this](std::optional<Result> result) { TakeWhole(std::move(result)); };
  LayOut();
  if (histogram_) histogram_->SetBefore(reduced_);
  Reset();
}

void EffectWindow::LayOut() {
  MakeButtons();
  auto* const beside = new QVBoxLayout;
  beside->addWidget(settings_ = MakeSettings());
  beside->addStretch();
  beside->addWidget(progress_);
  auto* const viewing = new QVBoxLayout;
  viewing->addWidget(view_, 1);
  viewing->addLayout(MakeViewButtons());
  auto* const upper = new QHBoxLayout;
  upper->addLayout(viewing, 1);
  upper->addLayout(beside);
  auto* const all = new QVBoxLayout(this);
  all->addLayout(upper, 1);
  all->addWidget(buttons_);
  view_->OnZoom = [this] { zoom_->setText(QString("%1 %").arg(view_->Zoom() * 100, 0, 'f', 0)); };
  const QList<QWidget*> inner = settings_->findChildren<QWidget*>();
  const auto first =
      std::ranges::find_if(inner, [](QWidget* widget) { return widget->focusPolicy() & Qt::TabFocus; });
  if (first != inner.end()) (*first)->setFocus();
}

QWidget* EffectWindow::MakeSettings() {
  auto* const settings = new QWidget;
  auto* const grid = new QGridLayout(settings);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setColumnStretch(1, 1);
  if (effect_.shows_histogram) grid->addWidget(histogram_ = new HistogramView(settings), 0, 0, 1, 3);
  for (const Setting& setting : effect_.settings)
    rows_.push_back(AddSettingRow(setting, *grid, [this] { SettingChanged(); }));
  return settings;
}

QLayout* EffectWindow::MakeViewButtons() {
  auto* const row = new QHBoxLayout;
  const auto add = [&](const char* text, const char* name, auto act) {
    auto* const button = new QToolButton;
    button->setText(text);
    button->setToolTip(name);
    button->setAccessibleName(name);
    connect(button, &QToolButton::clicked, this, act);
    row->addWidget(button);
  };
  add("−", "Zoom out", [this] { view_->ZoomOut(); });
  add("+", "Zoom in", [this] { view_->ZoomIn(); });
  add("Fit", "Fit the picture into the window", [this] { view_->Fit(); });
  add("100 %", "Show every pixel", [this] { view_->SetZoom(1); });
  row->addWidget(zoom_ = new QLabel);
  row->addStretch();
  row->addWidget(before_);
  return row;
}

void EffectWindow::MakeButtons() {
  before_ = new QPushButton("&Before");
  before_->setAutoDefault(false);
  before_->setToolTip("Hold to see the picture as it was");
  connect(before_, &QPushButton::pressed, this, [this] { ShowBefore(true); });
  connect(before_, &QPushButton::released, this, [this] { ShowBefore(false); });
  progress_ = new QProgressBar;
  progress_->setRange(0, 100);
  progress_->setFormat("%p %");  // as the zoom beside it
  progress_->setAccessibleName("Progress");
  QSizePolicy policy = progress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  progress_->setSizePolicy(policy);
  progress_->hide();
  buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Reset);
  ok_ = buttons_->button(QDialogButtonBox::Ok);
  reset_ = buttons_->button(QDialogButtonBox::Reset);
  reset_->setAutoDefault(false);
  buttons_->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
  ok_->setDefault(true);
  connect(reset_, &QPushButton::clicked, this, [this] { Reset(); });
  connect(buttons_, &QDialogButtonBox::accepted, this, [this] { accept(); });
  connect(buttons_, &QDialogButtonBox::rejected, this, [this] { reject(); });
}

Values EffectWindow::CurrentValues() const {
  Values values;
  for (const SettingRow& row : rows_) values.push_back(row.Value());
  return values;
}

/// One change, however many settings there are.
void EffectWindow::Reset() {
  is_resetting_ = true;
  for (size_t i = 0; i < rows_.size(); ++i) rows_[i].SetValue(effect_.settings[i].start);
  is_resetting_ = false;
  SettingChanged();
}

void EffectWindow::SettingChanged() {
  if (is_resetting_) return;
  worker_.Stop();
  Work work;
  result_ = {};
  GreyIdleSettings();
  const Values values = Reduced(effect_, CurrentValues(), scale_);
  if (!Attempt([&] { result_.reduced = effect_.apply(reduced_, values, work); })) return Tell(kShortOfMemory);
  if (scale_ == 1) result_.whole = result_.reduced;
  if (histogram_) histogram_->SetAfter(result_.reduced);
  ShowBefore(false);
  if (scale_ < 1) rest_.start(kRest);
}

void EffectWindow::GreyIdleSettings() {
  if (!effect_.counts) return;
  const Values values = CurrentValues();
  for (size_t i = 0; i < rows_.size(); ++i) rows_[i].SetEnabled(effect_.counts(i, values));
}

void EffectWindow::StartWhole() {
  rest_.stop();
  worker_.Start(effect_, picture_, CurrentValues(), scale_);
  looks_ = 0;
  look_.start(kLook);
}

void EffectWindow::TakeWhole(std::optional<Result> result) {
  look_.stop();
  progress_->hide();
  progress_->setValue(0);
  if (!result) {
    SetAccepting(false);
    return Tell(kShortOfMemory);
  }
  result_ = std::move(*result);
  ShowBefore(before_->isDown());
  if (is_accepting_) Deliver();
}

void EffectWindow::ShowBefore(bool before) {
  if (before)
    view_->Show(picture_, reduced_, scale_);
  else
    view_->Show(result_.whole, result_.reduced, scale_);
}

/// Short work shows none.
void EffectWindow::ShowProgress() {
  if (!worker_.IsRunning()) return look_.stop();
  progress_->setValue(static_cast<int>(worker_.Progress() * 100));
  if (++looks_ > kLooksUnseen) progress_->show();
}

void EffectWindow::Tell(const QString& text) {
  QMessageBox::warning(this, windowTitle(), text);
}

void EffectWindow::SetAccepting(bool accepting) {
  is_accepting_ = accepting;
  for (QWidget* widget : {settings_, static_cast<QWidget*>(reset_), static_cast<QWidget*>(ok_)})
    widget->setEnabled(!accepting);
}

/// What isn't ready yet is waited for, with all but Cancel at rest.
void EffectWindow::accept() {
  if (is_accepting_) return;
  if (!result_.whole.IsEmpty()) return Deliver();
  SetAccepting(true);
  if (!worker_.IsRunning()) StartWhole();
}

void EffectWindow::Deliver() {
  std::string reason = kShortOfMemory;
  Attempt([&] { reason = deliver_(result_.whole); });
  if (reason.empty()) return QDialog::accept();
  SetAccepting(false);
  Tell("The result can't be handed over: " + QString::fromStdString(reason));
}

}  // namespace zelvane
