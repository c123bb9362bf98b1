#include "surface/forms/controls/SystemColors.h"

#include <QApplication>
#include <QPalette>

namespace zelvane {
namespace {

constexpr int kDark = 128, kNearlyBlack = 48;  // lightness, 0 to 255
/// How far the edges of buttons stand off from their face, at least.
constexpr int kEdgeContrast = 36;

void Tell(Color color, const QColor& shade) {
  SetSystemPixel(color.value & 0x1F, shade.rgb());
}

/// `edge`, or where it's hardly told from the face, the face with a quarter of `far` in it.
QColor StandingOff(const QColor& edge, const QColor& face, const QColor& far) {
  if (std::abs(edge.lightness() - face.lightness()) >= kEdgeContrast) return edge;
  const auto mixed = [](int a, int b) { return (3 * a + b) / 4; };
  return {mixed(face.red(), far.red()), mixed(face.green(), far.green()), mixed(face.blue(), far.blue())};
}

}  // namespace

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < kDark;
}

QColor GroundOf(const QPalette& palette, int percent) {
  const QColor window = palette.color(QPalette::Window);
  return window.lightness() < kNearlyBlack ? window.lighter(percent) : window.darker(percent);
}

void TakeSystemColors() {
  const QPalette palette = QApplication::palette();
  const QColor button = palette.color(QPalette::Button), face = palette.color(QPalette::Window);
  // The face of what is pressed: a shade off the buttons', to the side that has room for it.
  Tell(SystemColor::ScrollBar, button.lightness() < kDark ? button.lighter(150) : button.darker(108));
  Tell(SystemColor::ActiveCaption, palette.color(QPalette::Highlight));
  Tell(SystemColor::InactiveCaption, palette.color(QPalette::Disabled, QPalette::Highlight));
  Tell(SystemColor::WindowBackground, palette.color(QPalette::Base));
  Tell(SystemColor::WindowText, palette.color(QPalette::Text));
  Tell(SystemColor::CaptionText, palette.color(QPalette::HighlightedText));
  Tell(SystemColor::HighlightText, palette.color(QPalette::HighlightedText));
  Tell(SystemColor::ButtonFace, face);
  Tell(SystemColor::ButtonText, palette.color(QPalette::ButtonText));
  // Light falls from above: in a dark palette the lighter edge is what shows a button, in a light one the
  // other.
  const bool is_dark = IsDark(palette);
  const QColor light = palette.color(QPalette::Light), shadow = palette.color(QPalette::Dark);
  Tell(SystemColor::ButtonHighlight, is_dark ? StandingOff(light, face, Qt::white) : light);
  Tell(SystemColor::ButtonShadow, is_dark ? shadow : StandingOff(shadow, face, Qt::black));
}

SystemShades ShadesOfParts() {
  return {ToPixel(SystemColor::ButtonFace), ToPixel(SystemColor::ScrollBar), ToPixel(SystemColor::ButtonText),
          ToPixel(SystemColor::ButtonHighlight), ToPixel(SystemColor::ButtonShadow)};
}

}  // namespace zelvane
