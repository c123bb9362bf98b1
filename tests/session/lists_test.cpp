#include <gtest/gtest.h>

#include <QListView>
#include <QTest>
#include <string>
#include <vector>

#include "surface/forms/controls/ComboBox.h"
#include "surface/forms/controls/ListBox.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/windows/Form.h"
#include "ui/NumberBox.h"

namespace zelvane {
namespace {

class Lists : public testing::Test {
 protected:
  Lists() : form_("form") {
    form_.Show();
    form_.Widget()->resize(300, 200);
    form_.Widget()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form_.Widget()));
  }
  Form form_;
};

TEST_F(Lists, TellOfEachChoiceByThePersonAndOfNoOther) {
  ListBox list(form_, "list");
  list.Move(0, 0, 300, 150);
  std::vector<std::string> names = {"apple", "Ähre", "bean", "two\nlines", "Birch", "\xFF"};
  list.SetItems(names);
  std::string heard;
  list.OnClick = [&] { heard += list.Text() + ' '; };
  list.OnDblClick = [&] { heard += "double "; };
  auto& view = *static_cast<QListView*>(list.Widget());
  const auto at = [&](int row) { return view.visualRect(view.model()->index(row, 0)).center(); };
  const auto told = [&] { return std::exchange(heard, {}); };

  list.SetListIndex(5), list.SetListIndex(9);
  EXPECT_EQ(list.Text(), "\xFF");
  list.SetItems(names), list.SetFocus();
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(told(), "");
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);  // where there is no row to copy
  QTest::keyClick(&view, Qt::Key_Down);
  EXPECT_EQ(told(), "apple ") << "the first key chooses the first row";
  for (const char key : std::string("bi")) QTest::keyClick(&view, key);
  EXPECT_EQ(told(), "bean Birch ");
  QTest::qWait(QApplication::keyboardInputInterval() + 50);
  for (const char key : std::string("bbb")) QTest::keyClick(&view, key);
  EXPECT_EQ(told(), "bean Birch bean ") << "goes round those that begin so";

  for (const auto held : {Qt::NoModifier, Qt::ControlModifier})
    QTest::mouseClick(view.viewport(), Qt::LeftButton, held, at(2));
  EXPECT_EQ(told(), "bean bean ");
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, at(2));
  EXPECT_EQ(told(), "double ");
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(20, 149));
  EXPECT_EQ(told(), "") << "below the rows";
  EXPECT_EQ(at(3).y() - at(2).y(), at(4).y() - at(3).y()) << "a row is a line";

  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Escape ? "\x1b" : "\r");
    static_cast<QObject&>(view).event(&event);
    EXPECT_FALSE(event.isAccepted()) << "the window's";
  }
}

TEST_F(Lists, ABoxWithAListKeepsWhatIsTypedAsItIs) {
  ComboBox box(form_, "box", ComboBox::Style::DropDown);
  TextBox other(form_, "other");
  std::string heard;
  box.OnChange = [&] { heard += box.Text() + ' '; };
  box.OnClick = [&] { heard += "click "; };
  const auto told = [&] { return std::exchange(heard, {}); };
  box.AddItem("beam"), box.AddItem("two");
  box.SetFocus();
  for (const char key : std::string("Be")) QTest::keyClick(box.Widget(), key);
  EXPECT_EQ(told(), "B Be ");
  box.AddItem("Be");
  QTest::keyClick(box.Widget(), Qt::Key_Return);
  other.SetFocus();
  EXPECT_EQ(told(), "") << "leaving a text that stands in the list chooses nothing";
  EXPECT_EQ(box.ListCount(), 3);
  EXPECT_EQ(box.ListIndex(), -1);
  box.SetListIndex(1), box.SetText("x"), box.SetText("x"), box.SetListIndex(1);
  EXPECT_EQ(told(), "two click x two click ");
  for (const std::string& text : {std::string(10'000, 'n'), std::string("\xFF\n\xC3.bmp")}) {
    box.SetText(text);
    EXPECT_EQ(box.Text(), text);
  }
  told(), box.Clear();
  EXPECT_EQ(told(), " ");
  box.AddItem("first");
  EXPECT_EQ(box.Text() + told(), "") << "nothing is chosen until somebody does";
}

TEST_F(Lists, TabComesToWhatIsAStop) {
  TextBox first(form_, "first");
  ScrollBar bar(form_, "bar", ScrollBar::Direction::Horizontal);
  NumberBox number(form_, "number");
  bar.SetMax(9), number.SetTabStop(false);
  const auto next_has_focus = [&](const Control& control) {
    first.SetFocus();
    QTest::keyClick(first.Widget(), Qt::Key_Tab);
    return control.HasFocus();
  };
  EXPECT_TRUE(next_has_focus(first));
  number.SetTabStop(true);
  EXPECT_TRUE(next_has_focus(number));
  bar.SetTabStop(true);
  EXPECT_TRUE(next_has_focus(bar));
  QTest::keyClick(bar.Widget(), Qt::Key_Right);
  EXPECT_EQ(bar.Value(), 1);
}

}  // namespace
}  // namespace zelvane
