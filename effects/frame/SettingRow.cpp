#include "effects/frame/SettingRow.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <cmath>
#include <memory>

namespace zelvane {
namespace {

/// A slider and a box for the number itself, which tells the change for both.
SettingRow AddSlider(const Setting& setting, QGridLayout& grid, int row, QLabel* label,
                     const std::function<void()>& OnChange) {
  const QString name = QString::fromStdString(setting.label);
  auto* const slider = new QSlider(Qt::Horizontal);
  auto* const box = new QDoubleSpinBox;
  const double least = setting.least, step = setting.step;
  slider->setRange(0, static_cast<int>(std::lround((setting.most - least) / step)));
  slider->setPageStep(std::max(1, slider->maximum() / 10));
  slider->setMinimumWidth(140);
  slider->setAccessibleName(name);
  box->setDecimals(step >= 1 ? 0 : step >= 0.1 ? 1 : 2);
  box->setRange(least, setting.most);
  box->setSingleStep(step);
  box->setSuffix(QString::fromStdString(setting.unit));
  box->setAccelerated(true);
  box->setAccessibleName(name);
  label->setBuddy(box);
  const auto steps_of = [=](double value) { return static_cast<int>(std::lround((value - least) / step)); };
  slider->setValue(steps_of(box->value()));
  QObject::connect(slider, &QSlider::valueChanged, box, [=](int steps) {
    // What was typed between two steps stays.
    if (steps != steps_of(box->value())) box->setValue(least + steps * step);
  });
  QObject::connect(box, &QDoubleSpinBox::valueChanged, slider, [=](double value) {
    slider->setValue(steps_of(value));
    OnChange();
  });
  grid.addWidget(slider, row, 1);
  grid.addWidget(box, row, 2);
  return {[box] { return box->value(); }, [box](double value) { box->setValue(value); }};
}

SettingRow AddChoice(const Setting& setting, QGridLayout& grid, int row, QLabel* label,
                     const std::function<void()>& OnChange) {
  auto* const box = new QComboBox;
  for (const std::string& choice : setting.choices) box->addItem(QString::fromStdString(choice));
  box->setAccessibleName(QString::fromStdString(setting.label));
  label->setBuddy(box);
  QObject::connect(box, &QComboBox::currentIndexChanged, box, [OnChange](int) { OnChange(); });
  grid.addWidget(box, row, 1, 1, 2);
  return {[box] { return box->currentIndex(); },
          [box](double value) { box->setCurrentIndex(static_cast<int>(value)); }};
}

SettingRow AddColour(const Setting& setting, QGridLayout& grid, int row, QLabel* label,
                     const std::function<void()>& OnChange) {
  auto* const button = new QPushButton;
  const QString name = QString::fromStdString(setting.label);
  const auto colour = std::make_shared<QColor>();
  button->setAutoDefault(false);
  button->setAccessibleName(name);
  label->setBuddy(button);
  const auto set = [=](const QColor& chosen) {
    if (!chosen.isValid() || chosen == *colour) return;
    *colour = chosen;
    QPixmap swatch(button->iconSize());
    swatch.fill(button->palette().color(QPalette::ButtonText));
    QPainter(&swatch).fillRect(swatch.rect().adjusted(1, 1, -1, -1), chosen);
    button->setIcon(swatch);
    button->setText(chosen.name());
    OnChange();
  };
  QObject::connect(button, &QPushButton::clicked, button,
                   [=] { set(QColorDialog::getColor(*colour, button->window(), name)); });
  grid.addWidget(button, row, 1, 1, 2);
  return {[colour] { return static_cast<double>(colour->rgb() & 0xFFFFFF); },
          [set](double value) { set(QColor(static_cast<QRgb>(value))); }};
}

SettingRow AddControls(const Setting& setting, QGridLayout& grid, int row, QLabel* label,
                       const std::function<void()>& OnChange) {
  switch (setting.kind) {
    case Setting::Kind::Choice:
      return AddChoice(setting, grid, row, label, OnChange);
    case Setting::Kind::Colour:
      return AddColour(setting, grid, row, label, OnChange);
    case Setting::Kind::Slider:
    case Setting::Kind::Length:
      break;
  }
  return AddSlider(setting, grid, row, label, OnChange);
}

}  // namespace

SettingRow AddSettingRow(const Setting& setting, QGridLayout& grid, const std::function<void()>& OnChange) {
  const int row = grid.rowCount();
  auto* const label = new QLabel(QString::fromStdString(setting.label) + ":");
  grid.addWidget(label, row, 0);
  SettingRow controls = AddControls(setting, grid, row, label, OnChange);
  controls.SetEnabled = [&grid, row](bool enabled) {
    for (int column = 0; column < grid.columnCount(); ++column)
      if (QLayoutItem* item = grid.itemAtPosition(row, column)) item->widget()->setEnabled(enabled);
  };
  return controls;
}

}  // namespace zelvane
