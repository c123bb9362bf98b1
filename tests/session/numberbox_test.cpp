#include "ui/NumberBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <string>

namespace zelvane {
namespace {

class Window : public Control {
 public:
  Window() : Control(nullptr, "window", new QWidget) {
    widget_->resize(300, 200);
    widget_->show();
    widget_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget_));
  }
};

/// A box in a window, and another one for the keyboard to go to.
class NumberBoxes : public testing::Test {
 protected:
  NumberBoxes() {
    window_.SetScaleMode(Scale::Pixels);
    box_.Move(0, 0, 100, 19);
    other_.Move(0, 40, 100, 19);
    other_.SetFocus();
  }

  void Make(const std::string& format, const std::string& value, bool positive_only = false) {
    box_.SetFormat(format);
    box_.SetPositiveOnly(positive_only);
    box_.SetValue(value);
    heard_.clear();
    box_.OnChange = [this] { heard_ += QString::number(box_.Value()).toStdString() + " "; };
  }
  void Limit(double lowest, double highest) {
    box_.SetMaxValue(highest);
    box_.SetMinValue(lowest);
    box_.SetUseMaxMinValues(true);
  }
  QLineEdit& Entry() { return *qobject_cast<QLineEdit*>(box_.Entry().Widget()); }
  std::string Text() { return Entry().text().toStdString(); }
  std::string Selected() { return Entry().selectedText().toStdString(); }
  void Type(const char* text) { QTest::keyClicks(&Entry(), text); }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&Entry(), key, modifiers);
  }
  /// In the box alone, in place of what stood there.
  std::string Typed(const char* text) {
    box_.SetFocus();
    Entry().clear();
    Type(text);
    return Text();
  }
  void Turn(int eighths_of_degrees) {
    QWheelEvent event({50, 9}, Entry().mapToGlobal(QPointF(50, 9)), {}, {0, eighths_of_degrees}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Entry(), &event);
  }
  bool IsRight() { return Entry().alignment().testFlag(Qt::AlignRight); }

  Window window_;
  NumberBox box_{window_, "box"};
  NumberBox other_{window_, "other"};
  std::string heard_;
};

TEST_F(NumberBoxes, ShowTheMaskWithoutTheKeyboardAndTheBareNumberWithIt) {
  EXPECT_EQ(Text(), "0.00");
  Make("###,##0.00;(##,###.00)", "-1234.5");
  std::string order;
  box_.OnGotFocus = [&] { order += "got " + Text() + " "; };
  box_.OnLostFocus = [&] { order += "lost " + Text(); };
  for (const bool has_keyboard : {false, true, false}) {
    (has_keyboard ? box_ : other_).SetFocus();
    EXPECT_EQ(box_.GotFocus(), has_keyboard);
    EXPECT_EQ(Text(), has_keyboard ? "-1234.50" : "(1,234.50)");
    EXPECT_EQ(Selected(), has_keyboard ? Text() : "");
    EXPECT_EQ(IsRight(), !has_keyboard);
  }
  EXPECT_EQ(order, "got -1234.50 lost (1,234.50)");
  EXPECT_EQ(heard_, "") << "showing it another way is no change";
}

TEST_F(NumberBoxes, TellEachChangeOfTheNumber) {
  Make("##0 pixel(s)", "10", true);
  Limit(1, 100);
  box_.SetFocus();
  Type("250");
  other_.SetFocus();
  EXPECT_EQ(Text(), "100 pixel(s)");
  box_.SetFocus();
  Key(Qt::Key_Delete);
  EXPECT_EQ(box_.Value(), 0);
  other_.SetFocus();
  EXPECT_EQ(Text(), "1 pixel(s)");
  box_.SetFocus();
  Type("01");
  EXPECT_EQ(heard_, "2 25 250 100 0 1 0 1 ");
  box_.SetValue(7.0), box_.SetValue(7.0);
  EXPECT_EQ(heard_, "2 25 250 100 0 1 0 1 7 7 ");
  Make("#,##0", "1");
  box_.SetValue(1234.0);
  EXPECT_EQ(heard_, "1234 1234 ") << "where groups part the digits";
  box_.Highlight();
  EXPECT_EQ(Selected(), "1234");
  EXPECT_EQ(heard_, "1234 1234 1234 ");
}

TEST_F(NumberBoxes, TakeOnlyKeysThatMakeANumber) {
  Make("##0.00", "0");
  EXPECT_EQ(Typed("1a.2b.3 -"), "1.23");
  EXPECT_EQ(Typed("-5"), "-5");
  EXPECT_EQ(Typed("5-"), "5");
  EXPECT_EQ(Typed("1234567"), "123456") << "as long as the mask";
  Key(Qt::Key_A, Qt::ControlModifier);
  Type(".");
  EXPECT_EQ(Text(), ".") << "a full box is replaced where all is selected";
  box_.SetFormat("##0");
  EXPECT_EQ(Typed("1.2345"), "123");
  box_.SetPositiveOnly(true);
  EXPECT_EQ(Typed("-12"), "12");
}

TEST_F(NumberBoxes, PassKeysOnThatTheyAccept) {
  Make("##0", "0");
  std::string keys;
  box_.OnKeyDown = [&](int16_t code, int16_t) { keys += "d" + std::to_string(code) + " "; };
  box_.OnKeyPress = [&](int16_t& ascii) {
    keys += "p" + std::to_string(ascii) + " ";
    ascii = ascii == '7' ? '8' : 0;
  };
  box_.OnKeyUp = [&](int16_t code, int16_t) { keys += "u" + std::to_string(code) + " "; };
  box_.SetFocus();
  Type("7x6");
  EXPECT_EQ(Text(), "8");
  Key(Qt::Key_Return);
  EXPECT_EQ(keys, "d55 p55 u55 d88 u88 d54 p54 u54 d13 u13 ");
}

TEST_F(NumberBoxes, CopyCutAndPasteTheWholeText) {
  Make("##0 %", "50", true);
  box_.SetFocus();
  Entry().setSelection(0, 1);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "50");
  Key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Text(), "");
  for (const char* text : {"-12 apples", "-12 apples", "12 %"}) {
    QApplication::clipboard()->setText(text);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Selected(), "12 %");
  }
  EXPECT_EQ(heard_, "0 12 ");
}

/// Undoing, which would bring unfiltered text back, is left to the menu.
TEST_F(NumberBoxes, FilterWhateverElseBringsText) {
  Make("###0", "0");
  Typed("");
  const auto send = [this](auto&& event) {
    event.ignore();
    QApplication::sendEvent(&Entry(), &event);
    return event.isAccepted();
  };
  QApplication::clipboard()->setText("1 a-2");
  Key(Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(Text(), "12");
  QInputMethodEvent composed;
  composed.setCommitString("b3");
  send(composed);
  EXPECT_EQ(Text(), "123");
  QMimeData dragged;
  dragged.setText("x9\n8");
  send(QDragEnterEvent({99, 9}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier));
  send(QDropEvent({99, 9}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier));
  EXPECT_EQ(Text(), "1239") << "and no more than there is room for";
  EXPECT_FALSE(send(QKeyEvent(QEvent::ShortcutOverride, Qt::Key_Z, Qt::ControlModifier)));
  EXPECT_TRUE(send(QKeyEvent(QEvent::ShortcutOverride, Qt::Key_C, Qt::ControlModifier)));
}

TEST_F(NumberBoxes, StepByOneBetweenTheLimits) {
  Make("##0 %", "98", true);
  Limit(0, 100);
  box_.SetFocus();
  for (int i = 0; i < 3; ++i) Key(Qt::Key_Up);
  EXPECT_EQ(Selected(), "100");
  Key(Qt::Key_Down);
  EXPECT_EQ(heard_, "99 100 99 ");
  Typed("0");
  Key(Qt::Key_Down);
  EXPECT_EQ(Text(), "0") << "not 1, the number without its sign";
  other_.SetFocus();
  Turn(60);
  EXPECT_FALSE(box_.GotFocus()) << "half a notch";
  Turn(60), Turn(240), Turn(-120);
  EXPECT_TRUE(box_.GotFocus());
  EXPECT_EQ(Text(), "2");
}

TEST_F(NumberBoxes, ALockedBoxRefusesAllKeys) {
  Make("##0 %", "50");
  box_.SetLocked(true);
  box_.SetFocus();
  EXPECT_TRUE(IsRight());
  QApplication::clipboard()->setText("9");
  Type("7");
  for (const auto key : {Qt::Key_X, Qt::Key_V}) Key(key, Qt::ControlModifier);
  for (const auto key : {Qt::Key_Backspace, Qt::Key_Up}) Key(key);
  Key(Qt::Key_Insert, Qt::ShiftModifier), Turn(120);
  other_.SetFocus();
  EXPECT_EQ(Text(), "50 %");
  EXPECT_EQ(heard_, "");
}

TEST_F(NumberBoxes, LimitsGiveWayToEachOtherAndReachTheValue) {
  Make("##0", "50");
  box_.SetMaxValue(100);
  box_.SetMinValue(200);
  EXPECT_EQ(box_.MinValue(), 100);
  box_.SetMaxValue(20);
  EXPECT_EQ(box_.MaxValue(), 999999.99);
  EXPECT_EQ(box_.Value(), 50);
  box_.SetUseMaxMinValues(true);
  EXPECT_EQ(box_.Value(), 100);
  box_.SetMinValue(0);
  box_.SetMaxValue(30);
  EXPECT_EQ(Text(), "30");
  EXPECT_EQ(heard_, "100 30 ");
}

TEST_F(NumberBoxes, APressSelectsAllAndTheNextPlacesTheCaret) {
  Make("##0", "123");
  for (const char* selected : {"123", ""}) {
    QTest::mouseClick(&Entry(), Qt::LeftButton, {}, QPoint(80, 9));
    EXPECT_EQ(Selected(), selected);
  }
}

TEST_F(NumberBoxes, AreTheirEntryAndAtLeast19PixelsHigh) {
  window_.SetScaleMode(Scale::Twips);
  box_.Move(0, 0, 375, 100);
  EXPECT_EQ(box_.Height(), 285);
  EXPECT_EQ(Entry().size(), QSize(25, 19));
  box_.SetEnabled(false);
  EXPECT_FALSE(Entry().isEnabled());
  box_.SetBackColor("&H000000FF&");
  EXPECT_EQ(Entry().palette().color(QPalette::Base), QColor(255, 0, 0));
}

}  // namespace
}  // namespace zelvane
