#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "effects/frame/SettingRow.h"
#include "effects/frame/Worker.h"
#include "effects/pixels/Effect.h"
#include "surface/raster/Bitmap.h"

class QDialogButtonBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace zelvane {

class HistogramView;
class PreviewView;

/// The window of every effect: the preview, the settings as the effect describes them, and the buttons. While
/// a setting changes the effect is seen on a reduced copy, and on the whole picture once it rests. Accepted
/// when the result is delivered.
class EffectWindow : public QDialog {
 public:
  /// Takes the result; a reason, for a person, where it can't.
  using Delivery = std::function<std::string(const Bitmap& result)>;

  EffectWindow(Effect effect, Bitmap picture, Delivery deliver);

  void accept() override;

 private:
  void LayOut();
  QWidget* MakeSettings();
  QLayout* MakeViewButtons();
  void MakeButtons();

  Values CurrentValues() const;
  void Reset();
  /// Shows the effect on the reduced copy and lets the whole follow.
  void SettingChanged();
  /// Settings that count for nothing beside the others.
  void GreyIdleSettings();
  void StartWhole();
  void TakeWhole(std::optional<Result> result);
  void ShowBefore(bool before);
  void ShowProgress();
  void Tell(const QString& text);
  void SetAccepting(bool accepting);
  void Deliver();

  Effect effect_;
  Bitmap picture_, reduced_;
  double scale_;
  Delivery deliver_;
  Result result_;  ///< the whole is empty until it's there
  std::vector<SettingRow> rows_;
  bool is_resetting_ = false, is_accepting_ = false;

  PreviewView* view_;
  HistogramView* histogram_ = nullptr;
  QWidget* settings_ = nullptr;
  QLabel* zoom_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton *before_ = nullptr, *reset_ = nullptr, *ok_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
  QTimer rest_, look_;
  int looks_ = 0;
  Worker worker_;
};

}  // namespace zelvane
