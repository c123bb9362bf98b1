#include <gtest/gtest.h>

#include <QListView>
#include <QTest>
#include <string>
#include <vector>

#include "surface/forms/controls/ListBox.h"
#include "surface/forms/windows/Form.h"

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

}  // namespace
}  // namespace zelvane
