#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <string>
#include <vector>

#include "surface/forms/controls/ComboBox.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/controls/Timer.h"
#include "surface/forms/picture/Overlay.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/picture/PictureView.h"
#include "surface/forms/picture/PixelPaint.h"
#include "surface/forms/windows/Form.h"
#include "surface/forms/windows/MdiForm.h"

namespace zelvane {
namespace {

/// A bare window on the screen for controls to stand in.
class Window : public Control {
 public:
  explicit Window(int width = 400, int height = 300) : Control(nullptr, "window", new QWidget) {
    widget_->resize(width, height);
    widget_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget_));
  }
};

QRect PlaceOf(const Control& control) {
  return control.Widget()->geometry();
}

/// Each pixel tells its own place.
void PaintPlaces(Canvas& canvas) {
  for (int y = 0; y < canvas.ScaleHeight(); ++y) {
    Pixel* row = canvas.WritableRow(y);
    for (int x = 0; x < canvas.ScaleWidth(); ++x)
      row[x] = 0xFF000000u | static_cast<Pixel>(x * 7 << 12 | y * 5);
  }
}

QImage Grab(Control& control) {
  return control.Widget()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// What the window really shows, of which parts were painted at different times.
QImage Shown(Window& window) {
  QApplication::processEvents();
  return window.Widget()
      ->screen()
      ->grabWindow(window.Widget()->winId())
      .toImage()
      .convertToFormat(QImage::Format_RGB32);
}

struct Told {
  int button, shift;
  float x, y;
  friend bool operator==(const Told&, const Told&) = default;
};

void SendMouse(Control& control, QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers modifiers = {}) {
  QMouseEvent event(type, at, control.Widget()->mapToGlobal(at), button, held, modifiers);
  QApplication::sendEvent(control.Widget(), &event);
}

TEST(ControlPlaces, NumbersStayAndTheScreenRoundsHalvesToEven) {
  Window window;
  window.SetScaleMode(Scale::Pixels);
  Label label(window, "label");
  label.Move(2.5f, 3.5f, 40.49f, 20.51f);
  EXPECT_EQ(label.Left(), 2.5f);
  EXPECT_EQ(label.Height(), 20.51f);
  EXPECT_EQ(PlaceOf(label), QRect(2, 4, 40, 21));
  EXPECT_TRUE(label.Widget()->isVisible());

  PictureSurface framed(window, "framed", PictureSurface::Frame::Yes);
  framed.Move(10, 20, 102, 52);
  framed.SetScaleMode(Scale::Twips);
  label.SetVisible(false);
  label.SetParent(framed);
  label.Move(30, 45);
  EXPECT_EQ(PlaceOf(label).topLeft(), QPoint(2 + 1, 3 + 1));
  EXPECT_FALSE(label.Widget()->isVisible());
  label.SetVisible(true);
  EXPECT_TRUE(label.Widget()->isVisible());

  const auto seen = label.WindowRect();
  const QPoint corner = window.Widget()->mapToGlobal(QPoint(13, 24));
  EXPECT_EQ(QPoint(seen.left, seen.top), corner);
  EXPECT_EQ(seen.right - seen.left + 1, label.Widget()->width());
  framed.SetVisible(false);
  EXPECT_FALSE(label.WindowRect().Contains(corner.x(), corner.y()));
  label.SetLeft(3e38f);
  label.SetLeft(std::nanf(""));
  EXPECT_EQ(label.Widget()->x(), 1);
}

TEST(ControlPlaces, AControlOutlivesTheWidgetThatItsParentTookAlong) {
  auto window = std::make_unique<Window>();
  auto panel = std::make_unique<PictureSurface>(*window, "panel");
  PictureView view(*panel, "view");
  ShapeOverlay overlay(view, ShapeOverlay::Shape::Rectangle);
  overlay.SetVisible(true);
  panel.reset();
  EXPECT_EQ(view.Widget(), nullptr);
  view.Refresh({0, 0, 5, 5});
  overlay.SetLeft(3);
  view.SetFocus();
  EXPECT_FALSE(view.HasFocus());
}

TEST(ControlPointer, TellsWholePixelsPlusWithinTheFrame) {
  Window window;
  PictureSurface surface(window, "surface", PictureSurface::Frame::Yes);
  surface.Move(10, 10, 60, 60);
  std::vector<Told> downs, moves, ups;
  int clicks = 0;
  surface.OnMouseDown = [&](int16_t b, int16_t s, Single x, Single y) { downs.push_back({b, s, x, y}); };
  surface.OnMouseMove = [&](int16_t b, int16_t s, Single x, Single y) { moves.push_back({b, s, x, y}); };
  surface.OnMouseUp = [&](int16_t b, int16_t s, Single x, Single y) { ups.push_back({b, s, x, y}); };
  surface.OnClick = [&] { clicks += ups.size() == 1 ? 1 : 100; };
  int strayed = 0;
  window.OnMouseMove = window.OnMouseDown = [&](auto...) { ++strayed; };

  SendMouse(surface, QEvent::MouseMove, {5.7, 0.2}, Qt::NoButton, Qt::NoButton);
  SendMouse(surface, QEvent::MouseButtonPress, {5.7, 9}, Qt::LeftButton, Qt::LeftButton,
            Qt::ShiftModifier | Qt::AltModifier);
  SendMouse(surface, QEvent::MouseMove, {-3.5, 90}, Qt::NoButton, Qt::LeftButton | Qt::MiddleButton);
  SendMouse(surface, QEvent::MouseButtonRelease, {6, 9}, Qt::LeftButton, Qt::NoButton, Qt::ControlModifier);
  EXPECT_EQ(moves, (std::vector<Told>{{0, 0, 4.49f, -0.51f}, {5, 0, -4.51f, 89.49f}}));
  EXPECT_EQ(downs, (std::vector<Told>{{1, kShift | kAlt, 4.49f, 8.49f}}));
  EXPECT_EQ(ups, (std::vector<Told>{{1, kCtrl, 5.49f, 8.49f}}));
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(strayed, 0) << "what happens on a control comes to it alone";

  SendMouse(surface, QEvent::MouseButtonPress, {5, 5}, Qt::RightButton, Qt::RightButton);
  SendMouse(surface, QEvent::MouseButtonRelease, {5, 5}, Qt::RightButton, Qt::NoButton);
  SendMouse(surface, QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton, Qt::LeftButton);
  SendMouse(surface, QEvent::MouseButtonRelease, {500, 5}, Qt::LeftButton, Qt::NoButton);
  SendMouse(surface, QEvent::MouseButtonPress, {5, 5}, Qt::BackButton, Qt::BackButton);
  EXPECT_EQ(downs[1].button, kRightButton);
  EXPECT_EQ(downs[3].button, 8);
  EXPECT_EQ(clicks, 1) << "no click by the right button or outside";

  surface.SetScaleMode(Scale::Twips);
  SendMouse(surface, QEvent::MouseMove, {3, 3}, Qt::NoButton, Qt::NoButton);
  EXPECT_FLOAT_EQ(moves.back().x, 2.49f * 15);
  surface.SetEnabled(false);
  SendMouse(surface, QEvent::MouseMove, {3, 3}, Qt::NoButton, Qt::NoButton);
  EXPECT_EQ(moves.size(), 3u);
}

TEST(ControlPointer, TheSecondPressIsADoubleClickOnlyWhereSomebodyWantsIt) {
  Window window;
  Label label(window, "label");
  label.Move(0, 0, 50, 50);
  std::string heard;
  label.OnMouseDown = [&](auto...) { heard += "down "; };
  label.OnMouseUp = [&](auto...) { heard += "up "; };
  label.OnClick = [&] { heard += "click "; };
  const auto twice = [&] {
    heard.clear();
    for (const auto press : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
      SendMouse(label, press, {5, 5}, Qt::LeftButton, Qt::LeftButton);
      SendMouse(label, QEvent::MouseButtonRelease, {5, 5}, Qt::LeftButton, Qt::NoButton);
    }
    return heard;
  };
  EXPECT_EQ(twice(), "down up click down up click ");
  label.OnDblClick = [&] { heard += "dbl "; };
  EXPECT_EQ(twice(), "down up click dbl up ");
}

TEST(ControlPointer, HandlersMayDestroyWhatTheyWereCalledFor) {
  Window window;
  auto* surface = new PictureSurface(window, "surface");
  surface->Move(0, 0, 20, 20);
  int focus_lost = 0;
  surface->OnLostFocus = [&] { ++focus_lost; };
  surface->OnKeyDown = [&](auto...) { delete surface; };
  surface->SetFocus();
  QTest::keyClick(surface->Widget(), Qt::Key_A);
  EXPECT_TRUE(window.Widget()->children().isEmpty());
  EXPECT_EQ(focus_lost, 0);
}

TEST(ControlKeys, BearTheirVirtualCodes) {
  Window window;
  PictureView view(window, "view");
  std::vector<int> codes;
  view.OnKeyDown = [&](int16_t code, int16_t shift) { codes.push_back(code + 1000 * shift); };
  const std::vector<std::pair<Qt::Key, int>> keys = {
      {Qt::Key_A, 65},     {Qt::Key_Z, 90},       {Qt::Key_0, 48},      {Qt::Key_9, 57},
      {Qt::Key_F1, 112},   {Qt::Key_F2, 113},     {Qt::Key_F12, 123},   {Qt::Key_Left, 37},
      {Qt::Key_Up, 38},    {Qt::Key_Right, 39},   {Qt::Key_Down, 40},   {Qt::Key_Delete, 46},
      {Qt::Key_Enter, 13}, {Qt::Key_Return, 13},  {Qt::Key_Escape, 27}, {Qt::Key_Tab, 9},
      {Qt::Key_Space, 32}, {Qt::Key_Backspace, 8}};
  std::vector<int> expected;
  for (const auto& [key, code] : keys) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(view.Widget(), &press);
    expected.push_back(code);
  }
  EXPECT_EQ(codes, expected);
  QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  QApplication::sendEvent(view.Widget(), &copy);
  EXPECT_EQ(codes.back(), 67 + 1000 * (kCtrl | kShift));
}

TEST(ControlKeys, GoToTheFormWithPreviewThenToTheControlAndNoFarther) {
  auto* form = new Form("form");
  form->SetScaleMode(Scale::Pixels);
  PictureSurface panel(*form, "panel");
  panel.Move(0, 0, 100, 100);
  TextBox box(panel, "box");
  std::string heard;
  form->OnKeyDown = [&](int16_t code, int16_t) { heard += "form" + std::to_string(code) + " "; };
  form->OnKeyUp = [&](auto...) { heard += "formup "; };
  panel.OnKeyDown = [&](auto...) { heard += "panel "; };
  box.OnKeyDown = [&](int16_t code, int16_t) { heard += "box" + std::to_string(code) + " "; };
  form->Show();
  form->Widget()->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form->Widget()));
  box.SetFocus();
  QTest::keyClick(box.Widget(), Qt::Key_Return);
  EXPECT_EQ(heard, "box13 ") << "a box leaves Enter to what is round it";
  heard.clear();
  form->SetKeyPreview(true);
  QTest::keyClick(box.Widget(), Qt::Key_Return);
  EXPECT_EQ(heard, "form13 box13 formup ");

  heard.clear();
  box.OnKeyDown = [&](auto...) { panel.SetFocus(); };
  QTest::keyPress(box.Widget(), Qt::Key_Escape);
  EXPECT_EQ(heard, "form27 ") << "the key has done its work in the box";
  EXPECT_TRUE(panel.HasFocus());
  EXPECT_TRUE(form->Unload());
}

TEST(PictureSurface, KeepsNumbersWholeAndInStepWithTheCanvas) {
  Window window;
  window.SetScaleMode(Scale::Pixels);
  PictureSurface surface(window, "surface", PictureSurface::Frame::Yes);
  surface.Move(2.5f, 3.51f, 12.5f, 10.6f);
  EXPECT_EQ(surface.Left(), 2);
  EXPECT_EQ(surface.Top(), 4);
  EXPECT_EQ(surface.Width(), 12);
  EXPECT_EQ(surface.ScaleWidth(), 10);
  EXPECT_EQ(surface.ScaleHeight(), 9);
  surface.SetPicture(Bitmap(30, 20, ToPixel(kBlack)));
  EXPECT_EQ(surface.Width(), 32);
  EXPECT_EQ(PlaceOf(surface), QRect(2, 4, 32, 22));
  EXPECT_THROW(surface.SetWidth(40000), SurfaceTooLarge);
  EXPECT_THROW(surface.SetHeight(1e30f), SurfaceTooLarge);
  EXPECT_EQ(surface.Width(), 32);
  EXPECT_EQ(surface.Point(29, 19), kBlack);
  surface.SetWidth(1);
  EXPECT_EQ(surface.ScaleWidth(), 0);
  surface.SetWidth(12);
  EXPECT_EQ(surface.ScaleHeight(), 20) << "the height comes back with the width";

  PictureSurface layer(window, "layer", PictureSurface::Frame::No, PictureSurface::Kind::Layer);
  layer.Move(1, 1, 64, 48);
  layer.SetVisible(false);
  layer.SetFocus();
  layer.FilledBox(0, 0, 5, 5, kBlack);
  layer.Refresh();
  EXPECT_EQ(layer.Widget(), nullptr);
  EXPECT_EQ(layer.ScaleWidth(), 64);
  EXPECT_FALSE(layer.WindowRect().Contains(0, 0));
}

TEST(PictureSurface, ShowsItsPixelsInItsFrameAndRefreshesOnlyWhatWasDrawn) {
  SetSystemPixel(0x10, 0xFF808080u);
  Window window;
  window.SetScaleMode(Scale::Pixels);
  PictureSurface surface(window, "surface", PictureSurface::Frame::Yes);
  surface.Move(10, 10, 42, 42);
  PaintPlaces(surface);
  surface.AddDamage({0, 0, 40, 40});
  surface.Refresh();
  const QImage shown = Shown(window);
  EXPECT_EQ(shown.pixel(10, 30), 0xFF808080u);
  EXPECT_EQ(shown.pixel(51, 51), 0xFF808080u);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(shown.pixel(11 + i, 50 - i), surface.Image().Row(39 - i)[i]);

  surface.FilledBox(0, 0, 39, 39, kWhite);
  surface.TakeDamage();
  surface.SetPixelV(20, 20, kBlack);
  surface.Refresh();
  const QImage after = Shown(window);
  EXPECT_EQ(after.pixel(31, 31), 0xFF000000u);
  EXPECT_EQ(after.pixel(33, 31), shown.pixel(33, 31)) << "painted more than the damage";
}

TEST(PictureSurface, FollowsASizeGivenFromOutside) {
  Window window;
  window.SetScaleMode(Scale::Pixels);
  PictureSurface panel(window, "panel");
  panel.Move(0, 0, 100, 30);
  panel.SetBackColor(kBlack);
  int resized = 0;
  panel.OnResize = [&] { ++resized; };
  panel.SetWidth(120);
  EXPECT_EQ(resized, 0);
  panel.Widget()->resize(300, 30);
  EXPECT_EQ(resized, 1);
  EXPECT_EQ(panel.Width(), 300);
  EXPECT_EQ(panel.Point(299, 29), kBlack);
}

TEST(PictureSurface, ADockedPanelHasTheWindowsLengthAndItsOwnBreadth) {
  auto* window = new MdiForm("main");
  PictureSurface panel(*window, "panel");
  panel.Move(0, 0, 50, 30);
  panel.SetAlign(Align::Top);
  window->Move(0, 0, 500 * 15, 400 * 15);
  window->Show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(window->Widget()));
  EXPECT_EQ(panel.Widget()->size(), QSize(500, 30));
  EXPECT_EQ(panel.ScaleWidth(), 500);
  panel.SetHeight(44);
  EXPECT_EQ(panel.Widget()->size(), QSize(500, 44));
  window->SetWidth(600 * 15);
  QApplication::processEvents();
  EXPECT_EQ(panel.ScaleWidth(), 600);
  EXPECT_EQ(panel.ScaleHeight(), 44);
  EXPECT_TRUE(window->Unload());
}

class ViewAtMultiple : public testing::TestWithParam<int> {};

TEST_P(ViewAtMultiple, ShowsPixelFloorOfUnitByMultipleAtEveryOffset) {
  const int multiple = GetParam();
  SetSystemPixel(0x0F, 0xFF112233u);
  Window window(150, 120);
  window.SetScaleMode(Scale::Pixels);
  PictureSurface picture(window, "picture", PictureSurface::Frame::No, PictureSurface::Kind::Layer);
  picture.Move(0, 0, 60, 50);
  PaintPlaces(picture);
  PictureView view(window, "view");
  view.SetSource(&picture, multiple);
  // Three units wider than the picture: what lacks is plain.
  view.Move(0, 0, static_cast<Single>(60 * multiple + 5), static_cast<Single>(50 * multiple + 2));
  for (const auto& [left, top] : {std::pair{0, 0}, {-7, -3}, {-8, -13}, {5, 4}, {-60 * multiple + 90, -11}}) {
    view.Move(static_cast<Single>(left), static_cast<Single>(top));
    const QImage shown = Shown(window);
    int wrong = 0;
    for (int y = 0; y < 120; ++y) {
      for (int x = 0; x < 150; ++x) {
        const int u = x - left - 1, v = y - top - 1;
        if (u < 0 || v < 0 || u >= 60 * multiple + 3 || v >= 50 * multiple) continue;
        const Pixel expected =
            u < 60 * multiple ? picture.Image().Row(v / multiple)[u / multiple] : 0xFF112233u;
        wrong += shown.pixel(x, y) != expected;
      }
    }
    EXPECT_EQ(wrong, 0) << left << ", " << top;
  }
}

INSTANTIATE_TEST_SUITE_P(Multiples, ViewAtMultiple, testing::Range(1, 9));

TEST(PictureView, PaintsOnlyWhatWasAskedForAndAllocatesNothingForItsSize) {
  Window window(150, 120);
  window.SetScaleMode(Scale::Pixels);
  PictureSurface picture(window, "picture", PictureSurface::Frame::No, PictureSurface::Kind::Layer);
  picture.Move(0, 0, 32767, 8);
  PictureView view(window, "view");
  view.SetSource(&picture, 8);
  view.Move(-262000, 0, 262138, 66);
  EXPECT_EQ(view.ScaleWidth(), 262136);
  Shown(window);
  picture.FilledBox(32750, 0, 32766, 7, kBlack);
  view.Refresh({262100, 16, 262104, 20});
  const QImage shown = Shown(window);
  EXPECT_EQ(shown.pixel(101, 17), 0xFF000000u);
  EXPECT_EQ(shown.pixel(104, 20), 0xFF000000u);
  EXPECT_EQ(shown.pixel(105, 20), 0xFFFFFFFFu);
  EXPECT_EQ(shown.pixel(104, 21), 0xFFFFFFFFu);
}

/// On a screen whose pixels are a fraction of the logical ones, parts painted apart must meet exactly.
TEST(PictureView, PartsMeetWithoutASeamAtAnyPixelRatio) {
  Canvas picture;
  picture.Resize(50, 40);
  PaintPlaces(picture);
  for (const double ratio : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0}) {
    for (const int multiple : {1, 2, 3}) {
      const int width = 40 * multiple, height = 30 * multiple;
      QImage whole(static_cast<int>(50 * multiple * ratio), static_cast<int>(40 * multiple * ratio),
                   QImage::Format_RGB32);
      whole.setDevicePixelRatio(ratio);
      whole.fill(0);
      QImage parts = whole;
      const auto paint = [&](QImage& target, const Rect& part) {
        QPainter painter(&target);
        painter.translate(3, 5);
        const DeviceGrid grid(painter, 1);
        PaintPixels(grid, picture.Image(), multiple, part, 0xFF000000u);
      };
      paint(whole, {0, 0, width, height});
      for (int y = 0; y < height; y += 7) {
        for (int x = 0; x < width; x += 9) {
          paint(parts, {x, y, std::min(x + 9, width), std::min(y + 7, height)});
        }
      }
      EXPECT_EQ(whole, parts) << ratio << " at " << multiple;
      const int corner = static_cast<int>(4 * ratio + 0.5);
      EXPECT_EQ(whole.pixel(corner, static_cast<int>(6 * ratio + 0.5)), picture.Image().Row(0)[0]);
    }
  }
}

class Overlays : public testing::Test {
 protected:
  Overlays()
      : window_(150, 120),
        picture_(window_, "picture", PictureSurface::Frame::No, kLayer),
        view_(window_, "v") {
    window_.SetScaleMode(Scale::Pixels);
    picture_.Move(0, 0, 148, 118);
    PaintPlaces(picture_);
    view_.SetSource(&picture_, 1);
    view_.Move(0, 0, 150, 120);
    before_ = Shown(window_);
  }

  /// The units that differ from the picture; every one of them must be its exact inverse.
  std::vector<std::pair<int, int>> Covered() {
    std::vector<std::pair<int, int>> covered;
    const QImage shown = Shown(window_);
    for (int y = 0; y < 120; ++y) {
      for (int x = 0; x < 150; ++x) {
        if (shown.pixel(x, y) == before_.pixel(x, y)) continue;
        EXPECT_EQ(shown.pixel(x, y), before_.pixel(x, y) ^ 0xFFFFFFu) << x << ", " << y;
        covered.emplace_back(x - 1, y - 1);
      }
    }
    return covered;
  }

  static constexpr auto kLayer = PictureSurface::Kind::Layer;
  Window window_;
  PictureSurface picture_;
  PictureView view_;
  QImage before_;
};

TEST_F(Overlays, ARectangleInvertsItsOutlineOnceAndGoesWithoutTrace) {
  const Bitmap pixels = picture_.Image();
  ShapeOverlay box(view_, ShapeOverlay::Shape::Rectangle);
  EXPECT_FALSE(box.Visible());
  box.Move(10.4f, 19.5f, 30, 15);
  EXPECT_TRUE(Covered().empty());
  box.SetVisible(true);
  auto covered = Covered();
  EXPECT_EQ(covered.size(), 2u * 31 + 2 * 13);
  EXPECT_EQ(covered.front(), std::pair(10, 20));
  EXPECT_EQ(covered.back(), std::pair(40, 34));
  box.SetLeft(60);
  box.SetHeight(0);
  covered = Covered();
  EXPECT_EQ(covered.size(), 31u) << "what it left is shown anew";
  EXPECT_EQ(covered.front(), std::pair(60, 20));
  box.Move(-5, -5, 300, 60);
  EXPECT_EQ(Covered().size(), 148u) << "only the lower edge is in view";
  box.SetVisible(false);
  EXPECT_TRUE(Covered().empty());
  EXPECT_EQ(picture_.Image(), pixels);
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
  const QImage dragged = Shown(window_);
  view_.Refresh();
  EXPECT_EQ(Shown(window_), dragged) << "a step of the drag left something behind";
}

TEST_F(Overlays, StandOffOnEveryGreyAndInTwoTonesOnEverything) {
  for (int x = 0; x < 148; ++x)
    for (int y = 0; y < 118; ++y) picture_.SetPixelV(x, y, RGB(x + 50, x + 50, x + 50));
  view_.Refresh();
  before_ = Shown(window_);
  LineOverlay line(view_);
  line.Sety1(20), line.Sety2(20), line.SetX2(147), line.SetVisible(true);
  QImage shown = Shown(window_);
  for (int x = 1; x <= 148; ++x)
    EXPECT_GE(std::abs(qRed(shown.pixel(x, 21)) - qRed(before_.pixel(x, 21))), 64) << x;
  EXPECT_EQ(shown.pixel(1, 21), 0xFFFFFFFF - 0x323232) << "inverted where that is seen";
  line.SetVisible(false);
  RingOverlay ring(view_);
  ring.Move(20, 30, 90, 41), ring.SetVisible(true);
  shown = Shown(window_);
  EXPECT_EQ(shown.pixel(21, 51), 0xFF000000u);
  EXPECT_EQ(shown.pixel(20, 51), 0xFFFFFFFFu);
  EXPECT_EQ(shown.pixel(110, 51), 0xFF000000u);
  EXPECT_EQ(shown.pixel(111, 51), 0xFFFFFFFFu);
}

TEST(ScrollBars, ChangeIsToldBeforeTheWriteReturnsAndOnlyOnce) {
  Window window;
  ScrollBar bar(window, "bar", ScrollBar::Direction::Horizontal);
  bar.Move(0, 0, 200, 17);
  std::string heard;
  bar.OnChange = [&] { heard += "c" + std::to_string(bar.Value()) + " "; };
  bar.OnScroll = [&] { heard += "s" + std::to_string(bar.Value()) + " "; };
  bar.SetMax(100);
  bar.SetValue(40);
  EXPECT_EQ(heard, "c40 ");
  bar.SetValue(40);
  bar.SetValue(32000);
  bar.SetMax(60);
  bar.SetMax(-5);
  EXPECT_EQ(heard, "c40 c100 c60 c0 ");
  EXPECT_EQ(bar.Max(), 0);

  heard.clear();
  bar.SetMax(50);
  bar.SetLargeChange(20);
  bar.SetSmallChange(3);
  auto* widget = qobject_cast<QScrollBar*>(bar.Widget());
  widget->triggerAction(QAbstractSlider::SliderPageStepAdd);
  widget->triggerAction(QAbstractSlider::SliderSingleStepSub);
  EXPECT_EQ(heard, "c20 c17 ");
  heard.clear();
  widget->setSliderDown(true);
  widget->setSliderPosition(30);
  widget->setSliderPosition(35);
  widget->setSliderDown(false);
  EXPECT_EQ(heard, "s30 s35 c35 ");

  heard.clear();
  bar.OnChange = [&] {
    heard += "c" + std::to_string(bar.Value()) + " ";
    if (bar.Value() > 10) bar.SetValue(10);
  };
  widget->triggerAction(QAbstractSlider::SliderToMaximum);
  EXPECT_EQ(heard, "c50 c10 ");
  EXPECT_EQ(widget->value(), 10) << "what the handler writes holds";
}

TEST(Inputs, TellOfChangesByProgramAndUserAlike) {
  Window window;
  ComboBox list(window, "list");
  int clicks = 0;
  list.OnClick = [&] { ++clicks; };
  list.AddItem("one"), list.AddItem("two & three");
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicks, 0);
  list.SetListIndex(1), list.SetListIndex(1), list.SetListIndex(7);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(list.ListIndex(), 1);
  QTest::keyClick(list.Widget(), Qt::Key_Up);
  EXPECT_EQ(clicks, 2);
  QTest::mouseClick(list.Widget(), Qt::LeftButton);
  EXPECT_EQ(clicks, 2) << "opening the list chooses nothing";

  for (const auto lines : {TextBox::Lines::One, TextBox::Lines::Many}) {
    TextBox box(window, "box", lines);
    int changes = 0;
    box.OnChange = [&] { ++changes; };
    box.SetText("Grüße"), box.SetText("Grüße");
    EXPECT_EQ(changes, 1);
    box.SelectAll();
    QTest::keyClicks(box.Widget(), "x");
    EXPECT_EQ(box.Text(), "x");
    EXPECT_GE(changes, 2);
  }
}

TEST(Inputs, ALabelFitsItsTextAndShowsItsColours) {
  Window window;
  window.SetScaleMode(Scale::Pixels);
  Label label(window, "label");
  label.Move(0, 0, 30, 20);
  label.SetBackColor(RGB(10, 20, 30));
  EXPECT_EQ(Grab(label).pixel(29, 19), 0xFF0A141Eu);
  label.SetCaption("a && b");
  EXPECT_EQ(label.Width(), 30);
  label.SetAutoSize(true);
  const Single narrow = label.Width();
  label.SetCaption("a && b, and then a good deal more");
  EXPECT_GT(label.Width(), narrow);
  const Single plain = label.Width();
  label.SetFontBold(true);
  EXPECT_TRUE(label.FontBold());
  EXPECT_GE(label.Width(), plain);
  for (const auto& [alignment, flag] : {std::pair{kAlignLeft, Qt::AlignLeft},
                                        {kAlignRight, Qt::AlignRight},
                                        {kAlignCentre, Qt::AlignHCenter}}) {
    label.SetAlignment(alignment);
    EXPECT_EQ(static_cast<QLabel*>(label.Widget())->alignment(), flag | Qt::AlignVCenter);
  }
}

TEST(Inputs, ADrawnPointerIsSetOnceAndGivenBack) {
  Window window;
  PictureView view(window, "view");
  static const PointerIcon pen{"pen", 3, 28}, fill{"floodfill", 4, 28};
  view.SetMouseIcon(&pen);
  EXPECT_EQ(view.Widget()->cursor().shape(), Qt::ArrowCursor);
  view.SetMousePointer(kPointerCustom);
  EXPECT_EQ(view.Widget()->cursor().shape(), Qt::BitmapCursor);
  EXPECT_EQ(view.Widget()->cursor().hotSpot(), QPoint(3, 28));
  EXPECT_EQ(view.Widget()->cursor().pixmap().deviceIndependentSize(), QSizeF(32, 32));
  view.SetMouseIcon(&fill);
  EXPECT_EQ(view.Widget()->cursor().hotSpot(), QPoint(4, 28));
  view.SetMousePointer(kPointerDefault);
  EXPECT_EQ(view.Widget()->cursor().shape(), Qt::ArrowCursor);
}

TEST(Timers, CallWhileEnabled) {
  IntervalTimer timer(1);
  int calls = 0;
  timer.OnTimer = [&] {
    if (++calls == 3) timer.SetEnabled(false);
  };
  QTest::qWait(20);
  EXPECT_EQ(calls, 0);
  timer.SetEnabled(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 3; }));
  QTest::qWait(20);
  EXPECT_EQ(calls, 3);
}

}  // namespace
}  // namespace zelvane
