#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWidget>
#include <sstream>
#include <string>
#include <vector>

#include "surface/forms/controls/ComboBox.h"
#include "surface/forms/controls/Frame.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/OptionButton.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/picture/Overlay.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/picture/PictureView.h"
#include "surface/forms/picture/PixelPaint.h"
#include "surface/forms/windows/Form.h"

namespace zelvane {
namespace {

constexpr auto kFramed = PictureSurface::Frame::Yes, kPlain = PictureSurface::Frame::No;
constexpr auto kLayer = PictureSurface::Kind::Layer;

/// A bare window on the screen for controls to stand in.
class Window : public Control {
 public:
  Window() : Control(nullptr, "window", new QWidget) {
    widget_->resize(150, 120);
    widget_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget_));
  }
};

class Controls : public testing::Test {
 protected:
  /// What the window really shows, of which parts were painted at different times.
  QImage Shown() {
    QApplication::processEvents();
    QWidget& widget = *window_.Widget();
    return widget.screen()->grabWindow(widget.winId()).toImage().convertToFormat(QImage::Format_RGB32);
  }
  Window window_;
};

/// Each pixel tells its own place.
void PaintPlaces(Canvas& canvas) {
  for (int y = 0; y < canvas.ScaleHeight(); ++y) {
    Pixel* row = canvas.WritableRow(y);
    for (int x = 0; x < canvas.ScaleWidth(); ++x)
      row[x] = 0xFF000000u | static_cast<Pixel>(x * 7 << 12 | y * 5);
  }
}

TEST_F(Controls, PlacesStayAsWrittenAndTheScreenRoundsHalvesToEven) {
  Label label(window_, "label");
  label.Move(2.5f, 3.5f, 40.49f, 20.51f);
  EXPECT_EQ(label.Left(), 2.5f);
  EXPECT_EQ(label.Widget()->geometry(), QRect(2, 4, 40, 21));

  PictureSurface framed(window_, "framed", kFramed);
  framed.Move(10, 20, 102, 52), framed.SetScaleMode(Scale::Twips);
  label.SetParent(framed), label.Move(30, 45);
  EXPECT_EQ(label.Widget()->pos(), QPoint(2 + 1, 3 + 1));
  EXPECT_TRUE(label.Widget()->isVisible());

  const QPoint corner = window_.Widget()->mapToGlobal(QPoint(13, 24));
  const auto seen = label.WindowRect();
  EXPECT_EQ(QRect(QPoint(seen.left, seen.top), QPoint(seen.right, seen.bottom)),
            QRect(corner, label.Widget()->size()));
  framed.SetVisible(false);
  EXPECT_FALSE(label.WindowRect().Contains(corner.x(), corner.y()));
  label.SetLeft(3e38f), label.SetLeft(std::nanf(""));
  EXPECT_EQ(label.Widget()->x(), 1);
}

TEST_F(Controls, OutliveTheirWidgetAndMayBeDestroyedByTheirHandlers) {
  auto panel = std::make_unique<PictureSurface>(window_, "panel");
  PictureView view(*panel, "view");
  ShapeOverlay overlay(view, ShapeOverlay::Shape::Rectangle);
  overlay.SetVisible(true);
  panel.reset();
  view.Refresh({0, 0, 5, 5});
  overlay.SetLeft(3);
  view.SetFocus();
  EXPECT_FALSE(view.HasFocus());

  auto* surface = new PictureSurface(window_, "surface");
  surface->OnLostFocus = [] { ADD_FAILURE() << "told of its own end"; };
  surface->OnKeyDown = [&](auto...) { delete surface; };
  surface->SetFocus();
  QTest::keyClick(surface->Widget(), Qt::Key_A);
  EXPECT_TRUE(window_.Widget()->children().isEmpty());
}

TEST_F(Controls, TellThePointersWholePixelsPlusWithinTheFrame) {
  PictureSurface surface(window_, "surface", kFramed);
  surface.Move(10, 10, 60, 60);
  std::ostringstream heard;
  const auto note = [&](std::string what) {
    return [&, what](int button, int shift, Single x, Single y) {
      heard << what << ' ' << button << ' ' << shift << ' ' << x << ' ' << y << ' ';
    };
  };
  surface.OnMouseDown = note("down"), surface.OnMouseMove = note("move"), surface.OnMouseUp = note("up");
  surface.OnClick = [&] { heard << "click "; };
  window_.OnMouseMove = window_.OnMouseDown = note("strayed");
  const auto send = [&](QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
                        Qt::KeyboardModifiers modifiers = {}) {
    heard.str("");
    QMouseEvent event(type, at, surface.Widget()->mapToGlobal(at), button, held, modifiers);
    QApplication::sendEvent(surface.Widget(), &event);
    return heard.str();
  };
  const auto move = QEvent::MouseMove, press = QEvent::MouseButtonPress, release = QEvent::MouseButtonRelease;
  const auto left = Qt::LeftButton, right = Qt::RightButton, none = Qt::NoButton;
  EXPECT_EQ(send(move, {5.7, 0.2}, none, none), "move 0 0 4.49 -0.51 ");
  EXPECT_EQ(send(press, {5.7, 9}, left, left, Qt::ShiftModifier | Qt::AltModifier), "down 1 5 4.49 8.49 ");
  EXPECT_EQ(send(move, {-3.5, 90}, none, left | Qt::MiddleButton), "move 5 0 -4.51 89.49 ");
  EXPECT_EQ(send(release, {6, 9}, left, none, Qt::ControlModifier), "up 1 2 5.49 8.49 click ");
  send(press, {5, 5}, right, right);
  EXPECT_EQ(send(release, {5, 5}, right, none), "up 2 0 4.49 4.49 ") << "no click of the right button";
  send(press, {5, 5}, left, left);
  EXPECT_EQ(send(release, {500, 5}, left, none), "up 1 0 499.49 4.49 ") << "no click outside";
  for (const bool wanted : {false, true}) {
    if (wanted) surface.OnDblClick = [&] { heard << "double "; };
    EXPECT_EQ(send(QEvent::MouseButtonDblClick, {5, 5}, left, left),
              wanted ? "double " : "down 1 0 4.49 4.49 ");
    EXPECT_EQ(send(release, {5, 5}, left, none), wanted ? "up 1 0 4.49 4.49 " : "up 1 0 4.49 4.49 click ");
  }
  send(press, {5, 5}, right, right);
  EXPECT_EQ(send(move, {6, 6}, none, none), "up 2 0 4.49 4.49 move 0 0 5.49 5.49 ") << "let go elsewhere";
  surface.SetScaleMode(Scale::Twips);
  EXPECT_EQ(send(move, {3, 3}, none, none), "move 0 0 37.35 37.35 ");
  surface.SetEnabled(false);
  EXPECT_EQ(send(move, {3, 3}, none, none), "");
}

TEST_F(Controls, KeysBearTheirVirtualCodes) {
  PictureView view(window_, "view");
  int heard = 0;
  view.OnKeyDown = [&](int16_t code, int16_t shift) { heard = code + 1000 * shift; };
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(view.Widget(), &event);
    return heard;
  };
  const std::pair<Qt::Key, int> codes[] = {{Qt::Key_A, 65},     {Qt::Key_Z, 90},      {Qt::Key_0, 48},
                                           {Qt::Key_9, 57},     {Qt::Key_F2, 113},    {Qt::Key_Tab, 9},
                                           {Qt::Key_Enter, 13}, {Qt::Key_Escape, 27}, {Qt::Key_Space, 32}};
  for (const auto& [key, code] : codes) EXPECT_EQ(press(key), code);
  EXPECT_EQ(press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier), 67 + 1000 * (kCtrl | kShift));
}

TEST_F(Controls, KeysGoToTheFormWithPreviewThenToTheControlAndNoFarther) {
  Form form("form");
  PictureSurface panel(form, "panel");
  TextBox box(panel, "box");
  std::string heard;
  form.OnKeyDown = [&](auto...) { heard += "form "; };
  form.OnKeyUp = [&](auto...) { heard += "form up "; };
  panel.OnKeyDown = [&](auto...) { heard += "panel "; };
  box.OnKeyDown = [&](auto...) { heard += "box "; };
  form.Show();
  form.Widget()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form.Widget()));
  box.SetFocus();
  for (const bool preview : {false, true}) {
    form.SetKeyPreview(preview);
    heard.clear();
    QTest::keyClick(box.Widget(), Qt::Key_Return);
    EXPECT_EQ(heard, preview ? "form box form up " : "box ");
  }

  heard.clear();
  box.OnKeyDown = [&](auto...) { panel.SetFocus(); };
  QTest::keyPress(box.Widget(), Qt::Key_Escape);
  EXPECT_EQ(heard, "form ") << "the key has done its work in the box";
  EXPECT_TRUE(panel.HasFocus());
}

TEST_F(Controls, SurfacesKeepNumbersWholeAndInStepWithTheCanvas) {
  PictureSurface surface(window_, "surface", kFramed);
  Control& control = surface;  // the same, whichever way it's reached
  control.Move(2.5f, 3.51f, 12.5f, 10.6f);
  EXPECT_EQ(QPointF(surface.Left(), surface.Top()), QPointF(2, 4));
  EXPECT_EQ(QSizeF(surface.Width(), surface.Height()), QSizeF(12, 11));
  EXPECT_EQ(QSize(surface.ScaleWidth(), surface.ScaleHeight()), QSize(10, 9));
  surface.SetPicture(Bitmap(30, 20, ToPixel(kBlack)));
  EXPECT_EQ(surface.Widget()->geometry(), QRect(2, 4, 32, 22));
  EXPECT_THROW(surface.SetWidth(40000), SurfaceTooLarge);
  EXPECT_THROW(surface.SetHeight(1e30f), SurfaceTooLarge);
  EXPECT_EQ(surface.Width(), 32);
  EXPECT_EQ(surface.Point(29, 19), kBlack);
  surface.SetWidth(1), surface.SetWidth(12);
  EXPECT_EQ(surface.ScaleHeight(), 20) << "the height comes back with the width";

  std::vector<Single> heard;
  surface.OnResize = [&] { heard.push_back(surface.Width()); };
  surface.SetWidth(13);
  surface.SetBackColor(kBlack);
  surface.Widget()->resize(90, 30);
  EXPECT_EQ(heard, std::vector<Single>{90}) << "what the program writes it knows";
  EXPECT_EQ(surface.Point(87, 27), kBlack);
}

TEST_F(Controls, SurfacesShowTheirPixelsInTheirFrame) {
  PictureSurface surface(window_, "surface", kFramed);
  surface.Move(10, 10, 42, 42);
  PaintPlaces(surface);
  surface.AddDamage({0, 0, 40, 40});
  surface.Refresh();
  const QImage shown = Shown();
  const Pixel edge = ToPixel(SystemColor::ButtonShadow);
  for (const QPoint frame : {QPoint(10, 30), {51, 51}}) EXPECT_EQ(shown.pixel(frame), edge);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(shown.pixel(11 + i, 50 - i), surface.Image().Row(39 - i)[i]);
}

TEST_F(Controls, ViewsShowPixelFloorOfUnitByMultipleAtEveryOffset) {
  SetSystemPixel(0x0F, 0xFF112233u);
  PictureSurface picture(window_, "picture", kPlain, kLayer);
  picture.Move(0, 0, 60, 50);
  PaintPlaces(picture);
  PictureView view(window_, "view");
  for (int multiple = 1; multiple <= 8; ++multiple) {
    const int width = 60 * multiple, height = 50 * multiple;
    view.SetSource(&picture, multiple);
    // Three units wider than the picture: what lacks is plain.
    view.Move(0, 0, static_cast<Single>(width + 5), static_cast<Single>(height + 2));
    for (const QPoint at : {QPoint(0, 0), {-7, -3}, {-8, -13}, {5, 4}, {90 - width, -11}}) {
      view.Move(static_cast<Single>(at.x()), static_cast<Single>(at.y()));
      const QRect units = QRect(at.x() + 1, at.y() + 1, width + 3, height);
      const QRect seen = units.intersected(QRect(0, 0, 150, 120));
      const QImage shown = Shown();
      int wrong = 0;
      for (int y = seen.top(); y <= seen.bottom(); ++y) {
        const Pixel* row = picture.Image().Row((y - units.top()) / multiple);
        for (int x = seen.left(); x <= seen.right(); ++x) {
          const int unit = x - units.left();
          wrong += shown.pixel(x, y) != (unit < width ? row[unit / multiple] : 0xFF112233u);
        }
      }
      EXPECT_EQ(wrong, 0) << multiple << " at " << at.x() << ", " << at.y();
    }
  }
}

TEST_F(Controls, ViewsOfAnySizePaintOnlyWhatWasAskedFor) {
  PictureSurface picture(window_, "picture", kPlain, kLayer);
  picture.Move(0, 0, 32767, 8);
  PictureView view(window_, "view");
  view.SetSource(&picture, 8);
  view.Move(-262000, 0, 262138, 66);
  Shown();
  picture.FilledBox(32750, 0, 32766, 7, kBlack);
  view.Refresh({262100, 16, 262104, 20});
  const QImage shown = Shown();
  for (const QPoint at : {QPoint(101, 17), {104, 20}, {105, 20}, {104, 21}})
    EXPECT_EQ(shown.pixel(at) == 0xFF000000u, at.x() < 105 && at.y() < 21);
}

/// On a screen whose pixels are a fraction of the logical ones, parts painted apart must meet exactly.
TEST(PixelPaint, PartsMeetWithoutASeamAtAnyPixelRatio) {
  Canvas picture;
  picture.Resize(50, 40);
  PaintPlaces(picture);
  for (const double ratio : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0}) {
    for (const int multiple : {1, 2, 3}) {
      const int width = 40 * multiple, height = 30 * multiple;
      QImage whole(QSize(50, 40) * multiple * ratio, QImage::Format_RGB32);
      whole.setDevicePixelRatio(ratio);
      whole.fill(0);
      QImage parts = whole;
      const auto paint = [&](QImage& target, const Rect& part) {
        QPainter painter(&target);
        painter.translate(3, 5);
        PaintPixels(DeviceGrid(painter, 1), picture.Image(), multiple, part, 0xFF000000u);
      };
      paint(whole, {0, 0, width, height});
      for (int y = 0; y < height; y += 7)
        for (int x = 0; x < width; x += 9)
          paint(parts, {x, y, std::min(x + 9, width), std::min(y + 7, height)});
      EXPECT_EQ(whole, parts) << ratio << " at " << multiple;
      const QPoint corner(static_cast<int>(4 * ratio + 0.5), static_cast<int>(6 * ratio + 0.5));
      EXPECT_EQ(whole.pixel(corner), picture.Image().Row(0)[0]);
    }
  }
}

class Overlays : public Controls {
 protected:
  Overlays() {
    picture_.Move(0, 0, 148, 118);
    PaintPlaces(picture_);
    view_.SetSource(&picture_, 1);
    view_.Move(0, 0, 150, 120);
    before_ = Shown();
  }

  /// The units that differ from the picture; every one of them must be its exact inverse.
  std::vector<QPoint> Covered() {
    std::vector<QPoint> covered;
    const QImage shown = Shown();
    for (int y = 0; y < 120; ++y) {
      for (int x = 0; x < 150; ++x) {
        if (shown.pixel(x, y) == before_.pixel(x, y)) continue;
        EXPECT_EQ(shown.pixel(x, y), before_.pixel(x, y) ^ 0xFFFFFFu) << x << ", " << y;
        covered.emplace_back(x - 1, y - 1);
      }
    }
    return covered;
  }

  PictureSurface picture_{window_, "picture", kPlain, kLayer};
  PictureView view_{window_, "view"};
  QImage before_;
};

TEST_F(Overlays, ARectangleInvertsItsOutlineOnceAndGoesWithoutTrace) {
  ShapeOverlay box(view_, ShapeOverlay::Shape::Rectangle);
  box.Move(10.4f, 19.5f, 30, 15), box.SetVisible(true);
  const auto covered = Covered();
  EXPECT_EQ(covered.size(), 2u * 31 + 2 * 13);
  EXPECT_EQ(QRect(covered.front(), covered.back()), QRect(10, 20, 31, 15));
  box.SetHeight(0);
  EXPECT_EQ(Covered().size(), 31u) << "what it left is shown anew";
  box.Move(-5, -5, 300, 60);
  EXPECT_EQ(Covered().size(), 148u) << "only the lower edge is in view";
  box.SetVisible(false);
  EXPECT_TRUE(Covered().empty());
}

TEST_F(Overlays, PartsPaintedAnewMatchTheWhole) {
  ShapeOverlay box(view_, ShapeOverlay::Shape::Rectangle, ShapeOverlay::Style::Dotted);
  ShapeOverlay oval(view_, ShapeOverlay::Shape::Oval);
  LineOverlay line(view_);
  box.Move(5, 5, 90, 70), oval.Move(8, 12, 81, 64);
  line.Setx1(3), line.Sety1(100), line.SetX2(140), line.Sety2(2);
  for (Overlay* one : std::initializer_list<Overlay*>{&box, &oval, &line}) one->SetVisible(true);
  const auto covered = Covered();
  for (int i = 0; i < 40; ++i) {
    view_.Refresh({i * 3, i * 2, i * 3 + 17, i * 2 + 13});
    if (i % 4 == 0) QApplication::processEvents();
  }
  EXPECT_EQ(Covered(), covered);
  for (int i = 1; i <= 20; ++i) {
    box.SetWidth(static_cast<Single>(90 - i)), oval.SetTop(static_cast<Single>(12 + i));
    line.Sety2(static_cast<Single>(2 + 3 * i));
    QApplication::processEvents();
  }
  const auto dragged = Covered();
  view_.Refresh();
  EXPECT_EQ(Covered(), dragged) << "a step of the drag left something behind";
}

TEST_F(Overlays, StandOffOnEveryGreyAndInTwoTonesOnEverything) {
  for (int x = 0; x < 148; ++x) picture_.FilledBox(x, 0, x, 117, RGB(x + 50, x + 50, x + 50));
  view_.Refresh();
  before_ = Shown();
  LineOverlay line(view_);
  line.Sety1(20), line.Sety2(20), line.SetX2(147), line.SetVisible(true);
  QImage shown = Shown();
  for (int x = 1; x <= 148; ++x)
    EXPECT_GE(std::abs(qRed(shown.pixel(x, 21)) - qRed(before_.pixel(x, 21))), 64) << x;
  EXPECT_EQ(shown.pixel(1, 21), 0xFFFFFFFF - 0x323232) << "inverted where that is seen";
  line.SetVisible(false);
  RingOverlay ring(view_);
  ring.Move(20, 30, 90, 41), ring.SetVisible(true);
  shown = Shown();
  for (int x : {20, 21, 110, 111})
    EXPECT_EQ(shown.pixel(x, 51), x == 21 || x == 110 ? 0xFF000000u : 0xFFFFFFFFu);
}

TEST_F(Controls, AScrollBarStaysInItsRangeAndTellsEachChangeOnceBeforeTheWriteReturns) {
  ScrollBar bar(window_, "bar", ScrollBar::Direction::Horizontal);
  bar.Move(0, 0, 200, 17);
  auto* widget = qobject_cast<QScrollBar*>(bar.Widget());
  std::string heard;
  bar.OnChange = [&] { heard += 'c' + std::to_string(bar.Value()) + ' '; };
  bar.OnScroll = [&] { heard += 's' + std::to_string(bar.Value()) + ' '; };
  bar.SetMax(100), bar.SetValue(40), bar.SetValue(40), bar.SetValue(32000);
  bar.SetMax(60), bar.SetMax(-5);
  EXPECT_EQ(heard, "c40 c100 c60 c0 ");
  EXPECT_FALSE(widget->isEnabled()) << "nothing to scroll";

  heard.clear();
  bar.SetMax(50), bar.SetLargeChange(20), bar.SetSmallChange(3);
  EXPECT_TRUE(widget->isEnabled());
  widget->triggerAction(QAbstractSlider::SliderPageStepAdd);
  widget->triggerAction(QAbstractSlider::SliderSingleStepSub);
  widget->setSliderDown(true);
  widget->setSliderPosition(30), widget->setSliderPosition(35);
  widget->setSliderDown(false);
  EXPECT_EQ(heard, "c20 c17 s30 s35 c35 ");

  heard.clear();
  bar.SetMin(20), bar.SetMin(40), bar.SetMax(130), bar.SetValue(7), bar.SetMin(0);
  EXPECT_EQ(heard, "c40 ");

  bar.OnChange = [&] { bar.SetValue(10); };
  widget->triggerAction(QAbstractSlider::SliderToMaximum);
  EXPECT_EQ(widget->value(), 10) << "what the handler writes holds";
}

TEST_F(Controls, OfTheOptionButtonsOfAParentOneIsSet) {
  Frame size(window_, "Size", "Size"), other(window_, "Other", "Other");
  ControlArray<OptionButton> options(3, size, "Option1", "Option");
  OptionButton alone(other, "Alone", "Alone");
  std::string clicks;
  for (int i = 0; i < 3; ++i) {
    options[i].SetTop(static_cast<Single>(20 * i));
    options[i].OnClick = [&, i] { clicks += std::to_string(i); };
  }
  for (const int i : {1, 2, 2, 0}) options[i].SetValue(true);
  alone.SetValue(true);
  options[0].SetFocus();
  QTest::keyClick(options[0].Widget(), Qt::Key_Down);
  EXPECT_EQ(clicks, "1201");
  EXPECT_TRUE(options[1].Value() && alone.Value() && !options[0].Value() && !options[2].Value());
  options[1].SetValue(false);
  EXPECT_FALSE(options[1].Value()) << "none may be set";
}

TEST_F(Controls, ALabelFitsItsTextAndAlignsIt) {
  Label label(window_, "label", "a && b");
  label.SetAutoSize(true);
  const Single narrow = label.Width();
  label.SetCaption("a && b, and then a good deal more");
  EXPECT_GT(label.Width(), narrow);
  const std::pair<int16_t, Qt::Alignment> sides[] = {
      {kAlignLeft, Qt::AlignLeft}, {kAlignRight, Qt::AlignRight}, {kAlignCentre, Qt::AlignHCenter}};
  for (const auto& [alignment, side] : sides) {
    label.SetAlignment(alignment);
    EXPECT_EQ(static_cast<QLabel*>(label.Widget())->alignment(), side | Qt::AlignVCenter);
  }
}

TEST_F(Controls, ADrawnPointerFollowsItsIconAndIsGivenBack) {
  PictureView view(window_, "view");
  static const PointerIcon pen{"pen", 3, 28}, fill{"floodfill", 4, 28};
  view.SetMousePointer(kPointerCustom);
  for (const PointerIcon* icon : {&pen, &fill}) {
    view.SetMouseIcon(icon);
    EXPECT_EQ(view.Widget()->cursor().hotSpot(), QPoint(icon == &pen ? 3 : 4, 28));
    EXPECT_EQ(view.Widget()->cursor().pixmap().deviceIndependentSize(), QSizeF(32, 32));
  }
  view.SetMousePointer(kPointerDefault);
  EXPECT_EQ(view.Widget()->cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace zelvane
