#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
#include <QWindow>
#include <algorithm>

#include "surface/forms/controls/CommandButton.h"
#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/Application.h"
#include "surface/forms/windows/DialogForm.h"
#include "surface/forms/windows/Menu.h"

namespace zelvane {
namespace {

constexpr Single kTwips = 15;

struct Child : MdiChild {
  Child(MdiForm& main, const std::string& caption) : MdiChild("Child", main) { SetCaption(caption); }
  ~Child() override { ++destroyed; }
  QMdiSubWindow& Frame() { return *qobject_cast<QMdiSubWindow*>(Widget()->parentWidget()); }
  static inline int destroyed = 0;
};

/// A main window of 800 by 600 with a panel at each side.
struct Main : MdiForm {
  Main() : MdiForm("MainForm") {
    SetCaption(" Zelvane");
    SetWidth(800 * kTwips), SetHeight(600 * kTwips);
    left.SetWidth(50), top.SetHeight(30), bottom.SetHeight(40);
    left.SetAlign(Align::Left), top.SetAlign(Align::Top), bottom.SetAlign(Align::Bottom);
  }
  /// A child, with room for so many pixels of its own.
  Child& Add(const std::string& caption, QSize room = {}) {
    auto* child = new Child(*this, caption);
    if (room.isValid()) child->Fit(room.width() * kTwips, room.height() * kTwips);
    child->Show();
    return *child;
  }
  QMdiArea& Area() { return *Widget()->findChild<QMdiArea*>(); }
  QRect Room() { return Area().viewport()->rect(); }
  PictureSurface left{*this, "Left"}, top{*this, "Top"}, bottom{*this, "Bottom"};
};

class Windows : public testing::Test {
 protected:
  Windows() {
    Child::destroyed = 0;
    main.Show();
    DoEvents();
  }
  ~Windows() override { DestroyForms(); }
  static bool IsListed(const Form* form) { return std::ranges::count(Forms(), form) == 1; }
  Main& main = *new Main;
};

TEST_F(Windows, RefusedUnloadKeepsTheForm) {
  Child& child = main.Add("picture");
  bool refuse = true;
  std::string told;
  child.OnQueryUnload = [&](bool& cancel, UnloadModes mode) {
    cancel = refuse;
    told += mode == kUnloadByUser ? "user " : "code ";
  };
  child.OnUnload = [&] { told += "gone "; };
  child.Frame().close();
  EXPECT_TRUE(IsListed(&child) && child.Frame().isVisible());
  EXPECT_FALSE(child.Unload());
  EXPECT_EQ(told, "user code ");
  EXPECT_FALSE(main.Unload()) << "the main window takes a child along that doesn't want to";

  refuse = false;
  told.clear();
  EXPECT_TRUE(child.Unload());
  EXPECT_FALSE(IsListed(&child));
  EXPECT_TRUE(child.Unload()) << "a second time does no harm";
  EXPECT_EQ(told, "code gone ");
}

TEST_F(Windows, FormOutlivesTheHandlerThatUnloadsIt) {
  Child& child = main.Add("picture");
  int asked = 0;
  child.OnQueryUnload = [&](bool&, UnloadModes) {
    ++asked;
    EXPECT_FALSE(child.Unload()) << "asked while it is being asked";
  };
  child.OnKeyDown = [&](auto...) {
    child.Unload();
    QTest::qWait(1);
    EXPECT_EQ(Child::destroyed, 0);
  };
  QTest::keyClick(child.Widget(), Qt::Key_F2);
  EXPECT_EQ(asked, 1);
  DoEvents();
  EXPECT_EQ(Child::destroyed, 1);
}

TEST_F(Windows, NoLateEventBringsAnUnloadedWindowBack) {
  struct Tool : Form {
    Tool() : Form("Tool") {}
  };
  static SingleWindow<Tool> tool;  // like every named window, it outlives its form
  tool->SetTag("first");
  tool->OnUnload = [&] { EXPECT_EQ(tool->Tag(), "first"); };
  tool->Unload();
  bool went_on = false;
  main.top.OnMouseDown = [&](auto...) { tool->SetTag("late"), went_on = true; };
  QTest::mousePress(main.top.Widget(), Qt::LeftButton);
  EXPECT_FALSE(went_on || tool.IsLoaded());
  EXPECT_EQ(tool.Load().Tag(), "") << "made anew on purpose";
  DestroyForms();
  EXPECT_NO_THROW(tool->Tag()) << "another run";
}

/// The form stays, the program goes on.
TEST_F(Windows, AHandlerThatFailsIsSkippedAndWantOfMemoryIsToldOnceAPress) {
  int told = 0;
  OnMemoryShort = [&] { ++told, throw std::bad_alloc(); };
  Child& child = main.Add("picture");
  child.OnQueryUnload = [](auto&&...) { throw std::bad_alloc(); };
  child.OnKeyDown = [](auto...) { throw std::runtime_error("any other"); };
  QTest::keyClick(child.Widget(), Qt::Key_A);
  DoEvents();
  EXPECT_EQ(told, 0);
  child.Frame().close(), child.Frame().close();
  DoEvents();
  EXPECT_EQ(told, 1) << "of many failures";
  EXPECT_TRUE(IsListed(&child)) << "nobody has agreed to its end";
  QTest::keyClick(child.Widget(), Qt::Key_A);
  Defer([] { throw SurfaceTooLarge("deferred"); });
  DoEvents(), DoEvents();
  EXPECT_EQ(told, 2) << "another act of the person";
  OnMemoryShort = nullptr;
  child.OnQueryUnload = nullptr;
}

TEST_F(Windows, PanelsAndNumbersFollowTheWindow) {
  const int height = main.top.Widget()->parentWidget()->height();
  EXPECT_EQ(main.top.Widget()->geometry(), QRect(0, 0, 800, 30));
  EXPECT_EQ(main.left.Widget()->geometry(), QRect(0, 30, 50, height - 70));
  main.bottom.SetHeight(60);
  EXPECT_EQ(main.bottom.Widget()->geometry(), QRect(0, height - 60, 800, 60));
  EXPECT_EQ(main.Area().geometry(), QRect(50, 30, 750, height - 90));

  main.SetMinimumSize(400 * kTwips, 300 * kTwips);
  QSizeF seen;
  main.OnResize = [&] { seen = {main.Width(), main.top.Width()}; };
  main.Widget()->resize(700, 500);
  EXPECT_EQ(seen, QSizeF(700 * kTwips, 700)) << "the panels come first";
  EXPECT_EQ(main.ScaleWidth(), 650);
  main.left.SetVisible(false);
  EXPECT_EQ(main.ScaleWidth(), 700);
  main.SetWidth(10);
  EXPECT_EQ(main.Width(), 400 * kTwips);

  Form dialog("Dialog");
  dialog.SetWidth(301);
  EXPECT_EQ(dialog.Width(), 301) << "a written number stays while it rounds to the same pixel";
}

TEST_F(Windows, ChildrenFollowTheRoomUntilThePersonSizesThem) {
  Child& child = main.Add("picture", {500, 5000});
  const auto fills = [&] { return child.Frame().geometry().bottom() == main.Room().bottom(); };
  EXPECT_TRUE(child.Width() == 500 * kTwips && fills());
  main.SetHeight(700 * kTwips);
  EXPECT_TRUE(fills()) << "the window manager has spoken late";
  child.Fit(600 * kTwips, 100 * kTwips);
  EXPECT_TRUE(child.Width() == 600 * kTwips && fills()) << "only grows";
  child.SetWindowState(kMaximised);
  child.SetWindowState(kNormal);
  main.SetHeight(650 * kTwips);
  EXPECT_TRUE(fills()) << "what the program did isn't the person's";

  Child& moved = main.Add("moved", {500, 5000});
  EXPECT_NE(moved.Frame().pos(), child.Frame().pos());
  EXPECT_TRUE(main.Room().contains(moved.Frame().geometry()));
  child.Frame().resize(300, 200);
  moved.Frame().move(400, 300);
  const QRect sized_place = child.Frame().geometry(), moved_place = moved.Frame().geometry();
  main.SetHeight(700 * kTwips);
  child.Fit(700 * kTwips, 100 * kTwips);
  EXPECT_EQ(child.Frame().geometry(), sized_place);
  EXPECT_EQ(moved.Frame().geometry(), moved_place);
}

TEST_F(Windows, CaptionsHaveRoomOrLoseTheirBeginning) {
  const std::string caption = "a picture of a rather long name.png - 100%";
  QMdiSubWindow& frame = main.Add(caption, {32, 32}).Frame();
  EXPECT_EQ(frame.windowTitle().toStdString(), caption);
  frame.resize(frame.width() - 80, 200);
  const QString title = frame.windowTitle();
  EXPECT_TRUE(title.startsWith(QChar(0x2026)) && title.endsWith(".png - 100%")) << title.toStdString();
  frame.showMaximized();
  EXPECT_EQ(main.Widget()->windowTitle(), " Zelvane");
  const auto* named = QAccessible::queryAccessibleInterface(&frame);
  EXPECT_EQ(named->text(QAccessible::Name).toStdString(), caption);
}

TEST_F(Windows, KeysAreTheWindowsUntilSomethingTakesThem) {
  TextBox box(main.top, "box");
  Label label(main.top, "label");
  label.Move(100, 0, 50, 20);
  int keys = 0;
  main.OnKeyDown = [&](auto...) { ++keys; };
  main.Activate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(main.Widget()));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
  EXPECT_EQ(keys, 1);
  for (const bool takes : {false, true}) {
    label.SetTakesKeys(takes);
    QTest::mouseClick(label.Widget(), Qt::LeftButton);
    EXPECT_EQ(label.HasFocus(), takes);
  }
  QTest::keyClick(label.Widget(), Qt::Key_F2);
  EXPECT_EQ(keys, 1) << "the label's own";
  QTest::keyClick(label.Widget(), Qt::Key_Tab);
  EXPECT_TRUE(box.HasFocus());
  QTest::keyClick(box.Widget(), Qt::Key_Tab);
  EXPECT_FALSE(label.HasFocus()) << "Tab passes it by";
  main.Add("picture").Unload();
  EXPECT_EQ(QApplication::focusWidget(), main.Widget()) << "the last child has gone";
}

TEST_F(Windows, ActiveFormStaysUntilAnotherChildTakesOver) {
  int changes = 0, activations = 0;
  main.OnActiveFormChanged = [&] { ++changes; };
  Child &first = main.Add("first"), &second = main.Add("second"), &third = main.Add("third");
  first.OnActivate = [&] { ++activations; };
  first.Activate(), first.Activate();
  EXPECT_EQ(activations, 1);
  main.top.Widget()->setFocusPolicy(Qt::StrongFocus);
  main.top.SetFocus();
  EXPECT_EQ(main.ActiveForm(), &first);
  first.Unload();
  EXPECT_EQ(main.ActiveForm(), &third) << "the one that was active before";
  third.Unload(), second.Unload();
  EXPECT_EQ(main.ActiveForm(), nullptr);
  EXPECT_EQ(changes, 7);
}

TEST_F(Windows, ArrangedChildrenFillTheArea) {
  std::vector<Child*> children;
  for (int count = 1; count <= 5; ++count) {
    children.push_back(&main.Add("picture"));
    for (const int16_t arrangement : {kTileHorizontal, kTileVertical}) {
      main.Arrange(arrangement);
      QRegion covered;
      for (Child* one : children) {
        const QRect place = one->Frame().geometry();
        EXPECT_FALSE(covered.intersects(place));
        covered += place;
        EXPECT_TRUE(count > 3 || arrangement == kTileVertical || place.width() == main.Room().width());
      }
      EXPECT_EQ(covered, QRegion(main.Room()));
    }
  }
  children[1]->SetWindowState(kMinimised);
  const QRect icon = children[1]->Frame().geometry();
  main.Arrange(kTileVertical);
  EXPECT_EQ(children[1]->Frame().geometry(), icon);
  EXPECT_FALSE(children[0]->Frame().geometry().intersects(icon));
  main.Arrange(kCascade);
  EXPECT_NE(children[0]->Frame().pos(), children[2]->Frame().pos());
}

TEST_F(Windows, StatesOfChildren) {
  Child &child = main.Add("picture"), &other = main.Add("other");
  const QRect place = other.Frame().geometry();
  other.SetWindowState(kMaximised);
  EXPECT_EQ(other.Width(), main.Room().width() * kTwips);
  other.SetWindowState(kNormal);
  EXPECT_EQ(other.Frame().geometry(), place);
  EXPECT_EQ(other.Frame().windowTitle(), "other");
  other.SetWindowState(kMinimised);
  EXPECT_EQ(main.ActiveForm(), &child) << "the next one";
  other.Activate();
  EXPECT_EQ(other.WindowState(), kNormal);
  EXPECT_EQ(main.ActiveForm(), &other);
}

TEST_F(Windows, DisabledFormTakesNoInput) {
  Child& child = main.Add("picture");
  Form owned("Owned", &main);
  child.OnKeyDown = [](auto...) { ADD_FAILURE() << "took a key"; };
  main.SetEnabled(false);
  QTest::keyClick(child.Widget(), Qt::Key_F2);
  main.Widget()->close();
  EXPECT_TRUE(IsListed(&main));
  EXPECT_TRUE(owned.Widget()->isEnabled());
}

TEST_F(Windows, ATitledDialogStandsAboveTheDisabledMainWindow) {
  auto& dialog = *new DialogForm("Dialog", DialogLook::Titled);
  TextBox box(dialog, "Box");
  CommandButton button(dialog, "Button", "&OK");
  button.SetDefault(true);
  button.SetTabStop(false);
  int presses = 0;
  button.OnClick = [&] { ++presses; };
  dialog.SetResizable(false);
  dialog.SetWidth(300 * kTwips), dialog.SetHeight(200 * kTwips);
  EXPECT_EQ(dialog.Widget()->maximumSize(), QSize(300, 200));
  main.SetEnabled(false);
  dialog.Show();
  EXPECT_EQ(dialog.Widget()->windowHandle()->transientParent(), main.Widget()->windowHandle());
  QApplication::setActiveWindow(main.Widget());
  EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.Widget())) << "the main window hands the keyboard on";
  box.SetFocus();
  const auto press = [&](Qt::Key key, bool repeats, const QString& text = "") {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text, repeats);
    QApplication::sendEvent(box.Widget(), &event);
  };
  press(Qt::Key_A, false, "a"), press(Qt::Key_A, true, "a"), press(Qt::Key_Return, true);
  EXPECT_EQ(box.Text() + std::to_string(presses), "aa0");
  press(Qt::Key_Return, false), press(Qt::Key_Escape, false);
  EXPECT_TRUE(presses == 1 && dialog.Visible()) << "Esc is the form's business";
  dialog.OnQueryUnload = [&](bool& cancel, UnloadModes) { cancel = true, dialog.Hide(); };
  dialog.Widget()->close();
  EXPECT_FALSE(dialog.Visible());
}

TEST_F(Windows, ProgramEndsFromTheMainWindowsClosing) {
  Child& child = main.Add("picture");
  int asked = 0, refusals = 1;
  child.OnQueryUnload = [&](bool& cancel, UnloadModes) { cancel = refusals-- > 0; };
  main.OnQueryUnload = [&](bool&, UnloadModes) { ++asked; };
  main.OnUnload = EndProgram;
  for (int times = 0; times < 2; ++times) Defer([&] { main.Widget()->close(); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_EQ(asked, 2);
}

TEST_F(Windows, MenusShowWhatIsEnabledAndShortcutsActAnyway) {
  Menu edit(main, "mnuEdit", "&Edit"), cut(edit, "mnuCut", "Cut && go", "Ctrl+T"),
      grid(edit, "mnuGrid", "Grid");
  int opened = 0, cuts = 0;
  edit.OnClick = [&] { ++opened; };
  cut.OnClick = [&] { ++cuts; };
  const auto press = [&] {
    QTest::keyClick(main.Widget(), Qt::Key_T, Qt::ControlModifier);
    return cuts;
  };
  main.Activate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(main.Widget()));
  cut.SetEnabled(false);
  EXPECT_FALSE(main.Widget()->findChild<QAction*>("mnuCut")->isEnabled());
  auto* menu = main.Widget()->findChild<QMenu*>("mnuEdit");
  menu->popup(QPoint(0, 0));
  EXPECT_EQ(opened, 1);
  menu->close();
  edit.SetEnabled(false);
  EXPECT_EQ(press(), 1) << "disabled, with the menu round it";
  cut.SetVisible(false);
  edit.SetVisible(false);
  EXPECT_EQ(press(), 2) << "hidden";
  main.SetEnabled(false);
  EXPECT_EQ(press(), 2);

  auto* check = main.Widget()->findChild<QAction*>("mnuGrid");
  EXPECT_FALSE(check->isCheckable());
  grid.SetChecked(true);
  check->trigger();
  EXPECT_TRUE(check->isChecked()) << "checks are the program's own";
}

TEST_F(Windows, WindowListNamesTheChildren) {
  Menu window(main, "mnuWindow", "&Window"), first(window, "mnuTile", "Tile");
  window.SetWindowList(true);
  Child& one = main.Add("fish & chips");
  main.Add("two");
  auto* menu = main.Widget()->findChild<QMenu*>("mnuWindow");
  for (int times = 0; times < 2; ++times) menu->popup(QPoint(0, 0)), menu->close();
  ASSERT_EQ(menu->actions().size(), 4) << "the list doesn't pile up";
  EXPECT_TRUE(menu->actions()[1]->isSeparator());
  EXPECT_EQ(menu->actions()[2]->text(), "&1 fish && chips");
  EXPECT_TRUE(menu->actions()[3]->isChecked());
  menu->actions()[2]->trigger();
  EXPECT_EQ(main.ActiveForm(), &one);
}

TEST_F(Windows, PanelsFollowThePaletteAndPicturesDoNot) {
  const QPalette before = QApplication::palette();
  main.top.SetBackColor(SystemColor::ButtonFace);
  main.top.PSet(5, 5, SystemColor::ButtonText);
  main.top.PSet(6, 6, RGB(9, 8, 7));
  main.left.SetBackColor(kWhite);
  PictureSurface layer(main, "layer", PictureSurface::Frame::No, PictureSurface::Kind::Layer);
  layer.Move(0, 0, 150, 150);
  layer.SetBackColor(SystemColor::ButtonFace);
  const Bitmap picture = layer.Image(), plain = main.left.Image();
  QPalette dark = before;
  dark.setColor(QPalette::Window, QColor(1, 2, 3)), dark.setColor(QPalette::Light, QColor(4, 4, 4));
  dark.setColor(QPalette::ButtonText, Qt::white);
  QApplication::setPalette(dark);
  DoEvents();
  EXPECT_EQ(main.top.Point(0, 0), RGB(1, 2, 3));
  EXPECT_EQ(main.top.Point(5, 5), kWhite);
  EXPECT_EQ(main.top.Point(6, 6), RGB(9, 8, 7));
  EXPECT_TRUE(layer.Image() == picture && main.left.Image() == plain);
  EXPECT_GT(Split(ToColor(ToPixel(SystemColor::ButtonHighlight))).red, 40) << "an edge that is seen";
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zelvane
