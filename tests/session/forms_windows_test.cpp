#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "surface/forms/controls/Label.h"
#include "surface/forms/controls/TextBox.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/windows/Application.h"
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
    SetWidth(800 * kTwips);
    SetHeight(600 * kTwips);
    left.SetWidth(50);
    top.SetHeight(30);
    bottom.SetHeight(40);
    left.SetAlign(Align::Left);
    top.SetAlign(Align::Top);
    bottom.SetAlign(Align::Bottom);
  }
  Child& Add(const std::string& caption) {
    auto* child = new Child(*this, caption);
    child->Show();
    return *child;
  }
  QMdiArea& Area() { return *Widget()->findChild<QMdiArea*>(); }
  PictureSurface left{*this, "Left"}, top{*this, "Top"}, bottom{*this, "Bottom"};
};

class Windows : public ::testing::Test {
 protected:
  void SetUp() override {
    Child::destroyed = 0;
    main.Show();
    DoEvents();
  }
  void TearDown() override { DestroyForms(); }
  Main& main = *new Main;
};

bool IsListed(const Form* form) {
  return std::find(Forms().begin(), Forms().end(), form) != Forms().end();
}

TEST_F(Windows, RefusedUnloadKeepsTheForm) {
  Child& child = main.Add("picture");
  bool refuse = true;
  UnloadModes told = kUnloadByCode;
  int gone = 0;
  child.OnQueryUnload = [&](bool& cancel, UnloadModes mode) { cancel = refuse, told = mode; };
  child.OnUnload = [&] { ++gone; };
  child.Frame().close();
  EXPECT_EQ(told, kUnloadByUser);
  EXPECT_TRUE(IsListed(&child) && child.Frame().isVisible());
  EXPECT_FALSE(child.Unload());
  EXPECT_EQ(told, kUnloadByCode);
  EXPECT_FALSE(main.Unload()) << "the main window takes a child along that doesn't want to";
  EXPECT_EQ(gone, 0);

  refuse = false;
  EXPECT_TRUE(child.Unload());
  EXPECT_FALSE(IsListed(&child));
  EXPECT_TRUE(child.Unload()) << "a second time does no harm";
  EXPECT_EQ(gone, 1);
  EXPECT_EQ(Child::destroyed, 0);
  DoEvents();
  EXPECT_EQ(Child::destroyed, 1);
}

TEST_F(Windows, FormOutlivesTheHandlerThatUnloadsIt) {
  Child& child = main.Add("picture");
  int destroyed_within = -1, asked = 0;
  child.OnQueryUnload = [&](bool&, UnloadModes) {
    ++asked;
    EXPECT_FALSE(child.Unload()) << "asked while it is being asked";
  };
  child.OnKeyDown = [&](int16_t, int16_t) {
    child.Unload();
    QTest::qWait(1);
    destroyed_within = Child::destroyed;
  };
  QTest::keyClick(child.Widget(), Qt::Key_F2);
  EXPECT_EQ(destroyed_within, 0);
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
  EXPECT_EQ(&*tool, &tool.Load());
  DestroyForms();
  EXPECT_NO_THROW(tool->Tag()) << "another run";
}

/// The form stays, the program goes on.
TEST_F(Windows, AHandlerThatFailsIsSkippedAndWantOfMemoryIsToldOnceAPress) {
  int told = 0, asked = 0;
  OnMemoryShort = [&] { ++told, throw std::bad_alloc(); };
  Child& child = main.Add("picture");
  child.OnQueryUnload = [&](bool&, UnloadModes) { ++asked, throw std::bad_alloc(); };
  child.OnKeyDown = [](auto...) { throw std::runtime_error("any other"); };
  QTest::keyClick(child.Widget(), Qt::Key_A);
  DoEvents();
  EXPECT_EQ(told, 0);
  child.Frame().close();
  child.Frame().close();
  DoEvents();
  EXPECT_EQ(told, 1) << "of many failures";
  EXPECT_EQ(asked, 2);
  EXPECT_TRUE(IsListed(&child)) << "nobody has agreed to its end";
  QTest::keyClick(child.Widget(), Qt::Key_A);
  Defer([] { throw SurfaceTooLarge("deferred"); });
  DoEvents();
  DoEvents();
  EXPECT_EQ(told, 2) << "another act of the person";
  OnMemoryShort = nullptr;
  child.OnQueryUnload = nullptr;
}

TEST_F(Windows, NumbersFollowTheWindow) {
  main.SetMinimumSize(400 * kTwips, 300 * kTwips);
  Single seen = 0, panel = 0;
  main.OnResize = [&] { seen = main.Width(), panel = main.top.Width(); };
  main.Widget()->resize(700, 500);
  EXPECT_EQ(seen, 700 * kTwips);
  EXPECT_EQ(panel, 700);
  EXPECT_EQ(main.ScaleWidth(), 650);
  main.left.SetVisible(false);
  EXPECT_EQ(main.ScaleWidth(), 700);
  main.SetWidth(10);
  EXPECT_EQ(main.Width(), 400 * kTwips);

  Form dialog("Dialog");
  dialog.SetWidth(301);
  EXPECT_EQ(dialog.Width(), 301) << "a written number stays while it rounds to the same pixel";
  EXPECT_EQ(dialog.ScaleWidth(), 20);
}

TEST_F(Windows, PanelsLieAroundTheChildren) {
  const QWidget& top = *main.top.Widget();
  EXPECT_EQ(top.geometry(), QRect(0, 0, 800, 30));
  const int height = top.parentWidget()->height();
  EXPECT_EQ(main.bottom.Widget()->geometry(), QRect(0, height - 40, 800, 40));
  EXPECT_EQ(main.left.Widget()->geometry(), QRect(0, 30, 50, height - 70));
  EXPECT_EQ(main.Area().geometry(), QRect(50, 30, 750, height - 70));
  main.bottom.SetHeight(60);
  EXPECT_EQ(main.Area().geometry(), QRect(50, 30, 750, height - 90));
}

TEST_F(Windows, NewChildrenStandApartWithinTheRoom) {
  Child& first = main.Add("first");
  Child& second = main.Add("second");
  EXPECT_NE(second.Frame().pos(), first.Frame().pos());
  EXPECT_TRUE(main.Area().viewport()->rect().contains(second.Frame().geometry()));
}

TEST_F(Windows, ChildrenFollowTheRoomUntilThePersonSizesThem) {
  auto* child = new Child(main, "picture");
  child->Fit(500 * kTwips, 5000 * kTwips);
  child->Show();
  const auto fills = [&] {
    return child->Frame().geometry().bottom() == main.Area().viewport()->height() - 1;
  };
  EXPECT_TRUE(child->Width() == 500 * kTwips && fills());
  main.SetHeight(700 * kTwips);
  EXPECT_TRUE(fills()) << "the window manager has spoken late";
  child->Fit(600 * kTwips, 100 * kTwips);
  EXPECT_TRUE(child->Width() == 600 * kTwips && fills()) << "only grows";
  child->SetWindowState(kMaximised);
  child->SetWindowState(kNormal);
  main.SetHeight(650 * kTwips);
  EXPECT_TRUE(fills()) << "what the program did isn't the person's";

  child->Frame().resize(300, 200);
  const QRect chosen = child->Frame().geometry();
  main.SetHeight(700 * kTwips);
  child->Fit(700 * kTwips, 100 * kTwips);
  EXPECT_EQ(child->Frame().geometry(), chosen);

  auto* moved = new Child(main, "moved");
  moved->Fit(500 * kTwips, 5000 * kTwips);
  moved->Show();
  moved->Frame().move(400, 300);
  const QRect left = moved->Frame().geometry();
  main.SetHeight(650 * kTwips);
  EXPECT_EQ(moved->Frame().geometry(), left);
}

TEST_F(Windows, CaptionsHaveRoomOrLoseTheirBeginning) {
  const std::string caption = "a picture of a rather long name.png - 100%";
  auto* child = new Child(main, caption);
  child->Fit(32 * kTwips, 32 * kTwips);
  child->Show();
  EXPECT_EQ(child->Frame().windowTitle().toStdString(), caption);
  child->Frame().resize(child->Frame().width() - 80, 200);
  const QString title = child->Frame().windowTitle();
  EXPECT_TRUE(title.startsWith(QChar(0x2026)) && title.endsWith(".png - 100%")) << title.toStdString();
  child->SetWindowState(kMaximised);
  EXPECT_EQ(main.Widget()->windowTitle(), " Zelvane");
  const auto* named = QAccessible::queryAccessibleInterface(&child->Frame());
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
  EXPECT_EQ(QApplication::focusWidget(), main.Widget());
  QTest::keyClick(main.Widget(), Qt::Key_F2);
  EXPECT_EQ(keys, 1);
  QTest::mouseClick(label.Widget(), Qt::LeftButton);
  EXPECT_FALSE(label.HasFocus());
  label.SetTakesKeys(true);
  QTest::mouseClick(label.Widget(), Qt::LeftButton);
  EXPECT_TRUE(label.HasFocus());
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
  Child& first = main.Add("first");
  Child& second = main.Add("second");
  Child& third = main.Add("third");
  EXPECT_EQ(changes, 3);
  first.OnActivate = [&] { ++activations; };
  first.Activate();
  first.Activate();
  EXPECT_EQ(activations, 1);
  QTest::mouseClick(main.left.Widget(), Qt::LeftButton);
  main.top.Widget()->setFocusPolicy(Qt::StrongFocus);
  main.top.SetFocus();
  EXPECT_EQ(main.ActiveForm(), &first);
  first.Unload();
  EXPECT_EQ(main.ActiveForm(), &third) << "the one that was active before";
  third.Unload();
  second.Unload();
  EXPECT_EQ(main.ActiveForm(), nullptr);
  EXPECT_EQ(changes, 7);
}

TEST_F(Windows, ArrangedChildrenFillTheArea) {
  std::vector<Child*> children;
  for (int count = 1; count <= 5; ++count) {
    children.push_back(&main.Add("picture"));
    for (const int16_t arrangement : {kTileHorizontal, kTileVertical}) {
      main.Arrange(arrangement);
      int covered = 0;
      for (Child* one : children) {
        const QRect place = one->Frame().geometry();
        covered += place.width() * place.height();
        for (Child* other : children) {
          EXPECT_TRUE(one == other || !place.intersects(other->Frame().geometry()));
        }
        if (count <= 3 && arrangement == kTileHorizontal) {
          EXPECT_EQ(place.width(), main.Area().viewport()->width());
        }
      }
      EXPECT_EQ(covered, main.Area().viewport()->width() * main.Area().viewport()->height());
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
  Child& child = main.Add("picture");
  Child& other = main.Add("other");
  const QRect place = other.Frame().geometry();
  other.SetWindowState(kMaximised);
  EXPECT_EQ(other.WindowState(), kMaximised);
  EXPECT_EQ(other.Width(), main.Area().viewport()->width() * kTwips);
  other.SetWindowState(kNormal);
  EXPECT_EQ(other.Frame().geometry(), place);
  EXPECT_EQ(other.Frame().windowTitle(), "other");
  other.SetWindowState(kMinimised);
  EXPECT_EQ(other.WindowState(), kMinimised);
  EXPECT_EQ(main.ActiveForm(), &child) << "the next one";
  other.Activate();
  EXPECT_EQ(other.WindowState(), kNormal);
  EXPECT_EQ(main.ActiveForm(), &other);

  Form early("Early");
  early.SetWindowState(kMaximised);
  early.Show();
  EXPECT_TRUE(early.Widget()->isMaximized());
}

TEST_F(Windows, DisabledFormTakesNoInput) {
  Child& child = main.Add("picture");
  int keys = 0;
  child.OnKeyDown = [&](int16_t, int16_t) { ++keys; };
  main.SetEnabled(false);
  QTest::keyClick(child.Widget(), Qt::Key_F2);
  main.Widget()->close();
  EXPECT_EQ(keys, 0);
  EXPECT_TRUE(IsListed(&main));

  Form owned("Owned", &main);
  main.SetEnabled(true);
  main.SetEnabled(false);
  EXPECT_TRUE(owned.Widget()->isEnabled());
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
  EXPECT_TRUE(Forms().empty());
}

TEST_F(Windows, MenusShowWhatIsEnabledAndShortcutsActAnyway) {
  Menu edit(main, "mnuEdit", "&Edit"), cut(edit, "mnuCut", "Cut && go", "Ctrl+T");
  int opened = 0, cuts = 0;
  edit.OnClick = [&] { ++opened; };
  cut.OnClick = [&] { ++cuts; };
  const auto press = [&] { QTest::keyClick(main.Widget(), Qt::Key_T, Qt::ControlModifier); };
  main.Activate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(main.Widget()));
  cut.SetEnabled(false);
  EXPECT_FALSE(main.Widget()->findChild<QAction*>("mnuCut")->isEnabled());
  main.Widget()->findChild<QMenu*>("mnuEdit")->popup(QPoint(0, 0));
  EXPECT_EQ(opened, 1);
  main.Widget()->findChild<QMenu*>("mnuEdit")->close();
  edit.SetEnabled(false);
  press();
  EXPECT_EQ(cuts, 1) << "disabled, with the menu round it";
  cut.SetVisible(false);
  edit.SetVisible(false);
  press();
  EXPECT_EQ(cuts, 2) << "hidden";
  main.SetEnabled(false);
  press();
  EXPECT_EQ(cuts, 2);
}

TEST_F(Windows, ChecksAreTheProgramsOwn) {
  Menu view(main, "mnuView", "&View"), grid(view, "mnuGrid", "Grid");
  auto* entry = main.Widget()->findChild<QAction*>("mnuGrid");
  EXPECT_FALSE(entry->isCheckable());
  grid.SetChecked(true);
  entry->trigger();
  EXPECT_TRUE(entry->isChecked());
}

TEST_F(Windows, WindowListNamesTheChildren) {
  Menu window(main, "mnuWindow", "&Window"), first(window, "mnuTile", "Tile");
  window.SetWindowList(true);
  Child& one = main.Add("fish & chips");
  main.Add("two");
  auto* menu = main.Widget()->findChild<QMenu*>("mnuWindow");
  for (int times = 0; times < 2; ++times) {
    menu->popup(QPoint(0, 0));
    ASSERT_EQ(menu->actions().size(), 4) << "the list doesn't pile up";
    menu->close();
  }
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
  dark.setColor(QPalette::Window, QColor(1, 2, 3));
  dark.setColor(QPalette::ButtonText, Qt::white);
  dark.setColor(QPalette::Light, QColor(4, 4, 4));
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
