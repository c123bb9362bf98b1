#include "ui/MessageBox.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QTest>

#include "session/Session.h"
#include "shell/MainForm.h"
#include "surface/forms/windows/Application.h"
#include "ui/MsgBoxEnhanced.h"

using namespace zelvane;

namespace {

struct Messages : Session {
  Messages() { expects_dialogs_ = true; }
  ~Messages() override { MessageObject = {}; }

  /// The answer to a message in which `act` is done once it has the keyboard.
  static int16_t Answer(int buttons, const std::function<void()>& act, const std::string& text = "text") {
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
      if (!MessageBox.IsLoaded() || !MessageBox->IsActive()) return;
      look.stop();
      act();
    });
    look.start(1);
    MessageObject.SetSoundBeep(false);
    return MsgBox(text, buttons);
  }
  static int16_t Keyed(int buttons, std::initializer_list<Qt::Key> keys) {
    return Answer(buttons, [&] {
      for (const Qt::Key key : keys) QTest::keyClick(QApplication::focusWidget(), key);
    });
  }
};

TEST_F(Messages, AnswersByKeyAndPointer) {
  Start();
  for (int set = kOkOnly; set <= kRetryCancel; ++set) {
    int i = 0;
    for (const MsgBoxButton& button : ButtonsOfSet(set)) {
      EXPECT_EQ(Answer(set, [&] { ClickOn(MessageBox->MsgButton[i]); }), button.code);
      EXPECT_EQ(Keyed(set + 256 * i++, {Qt::Key_Return}), button.code) << "the default";
    }
    EXPECT_EQ(Keyed(set, {Qt::Key_Escape}), kAnswerCancel);
    EXPECT_EQ(Answer(set, [] { MessageBox->Widget()->close(); }), kAnswerCancel);
    EXPECT_EQ(Answer(set, [] { QTest::mouseClick(MessageBox->ControlBoxUp.Widget(), Qt::LeftButton); }),
              kAnswerCancel);
  }
  EXPECT_EQ(Keyed(kYesNoCancel, {Qt::Key_Tab, Qt::Key_Return}), kAnswerNo);
  EXPECT_EQ(Keyed(kYesNoCancel, {Qt::Key_Left, Qt::Key_Space}), kAnswerCancel) << "round the corner";
  EXPECT_EQ(Keyed(kYesNoCancel, {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}), kAnswerNo);
  EXPECT_EQ(Keyed(kAbortRetryIgnore, {Qt::Key_I}), kAnswerIgnore);
  // One button more than the set has is no default; a set that there isn't has no buttons.
  Answer(kOkOnly + kThirdIsDefault, [] {
    EXPECT_FALSE(MessageBox->MsgButton[0].Default());
    MessageBox->Unload();
  });
  const auto escape = [] {
    EXPECT_FALSE(MessageBox->MsgButton[0].Visible());
    QTest::keyClick(MessageBox->Widget(), Qt::Key_Escape);
  };
  EXPECT_EQ(Answer(9, escape), kAnswerCancel);
}

TEST_F(Messages, KeysHeldFromElsewhereAnswerNothing) {
  Start();
  const auto keys = [] {
    QWidget* button = QApplication::focusWidget();
    QTest::keyRelease(button, Qt::Key_Escape);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Y, Qt::Key_Escape}) {
      QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, "", true);
      QApplication::sendEvent(button, &repeated);
      QTest::keyRelease(button, key);
    }
    ASSERT_TRUE(MessageBox.IsLoaded());
    QTest::keyClick(button, Qt::Key_N);
  };
  EXPECT_EQ(Answer(kYesNo, keys), kAnswerNo);
}

TEST_F(Messages, LooksAndPlace) {
  Start();
  MessageObject.SetDefaultTitle("Title");
  const std::string text = "Two\r\n" + std::string(100000, 'w');
  const auto look = [&] {
    MessageWindow& box = *MessageBox;
    const QWidget& window = *box.Widget();
    EXPECT_EQ(window.windowTitle(), "Title");
    EXPECT_EQ(box.MsgText.Widget()->property("text").toString().toStdString(), "Two\n" + text.substr(5));
    EXPECT_TRUE(box.MsgButton[1].HasFocus());
    EXPECT_TRUE(QApplication::primaryScreen()->geometry().contains(window.geometry()));
    EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(window.geometry().center().x(), MainForm->Widget()->frameGeometry().center().x());
    EXPECT_EQ(box.Background.GetPixel(0, 0), kWhite);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), text);
    // The heading is painted when its looks change, and not before.
    const Bitmap heading = box.TopHeading.Image();
    box.Timer2.OnTimer();
    EXPECT_EQ(box.TopHeading.Image().Row(0), heading.Row(0));
    QApplication::setActiveWindow(MainForm->Widget());
    box.Timer2.OnTimer();
    EXPECT_NE(box.TopHeading.GetPixel(0, 0), ToColor(heading.Row(0)[0]));
    box.Unload();
  };
  Answer(kYesNo + kQuestionIcon + kSecondIsDefault, look, text);
}

TEST_F(Messages, CountDown) {
  Start();
  MessageObject.SetTimerSeconds(3);
  int16_t ticks = 0;
  // Not the clock's seconds: the box counts its ticks.
  const auto tick = [&] {
    for (; MessageBox.IsLoaded(); ++ticks) MessageBox->Timer1.OnTimer();
  };
  EXPECT_EQ(Answer(kOkCancel, tick), kNoAnswer);
  EXPECT_EQ(ticks, 3);
}

TEST_F(Messages, ASecondWaitsForTheFirst) {
  Start();
  const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
  int16_t second = kNoAnswer;
  const auto ask_again = [&] {
    QTimer::singleShot(0, [&] {
      EXPECT_EQ(MessageBox->MsgText.Caption(), "first");
      press(Qt::Key_Y);
    });
    second = Answer(
        kYesNo, [&] { press(Qt::Key_N); }, "second");
  };
  EXPECT_EQ(Answer(kYesNo, ask_again, "first"), kAnswerYes);
  EXPECT_EQ(second, kAnswerNo);
}

TEST_F(Messages, WithoutWaitingAndWithoutOwner) {
  EXPECT_EQ(MessageObject.DefaultTitle(), "") << "not yet set up";
  MessageObject.SetStartUpPosition(kCentredOnWindow);
  Answer(kOkOnly, [] {
    EXPECT_EQ(MessageBox->Caption(), "Message");
    MessageBox->Unload();
  });
  EXPECT_EQ(MessageObject.StartUpPosition(), kCentredOnScreen);
  Start();
  MessageObject.SetModal(false);
  EXPECT_EQ(MsgBox("stays up", kOkOnly), kNoAnswer);
  EXPECT_TRUE(MessageBox->Visible());
  EXPECT_EQ(MsgBox("takes its place", kOkOnly), kNoAnswer);
  EXPECT_EQ(MessageBox->MsgText.Caption(), "takes its place");
  // It goes with the program; what is told after that has the looks of the class.
  MainForm->Unload();
  EXPECT_FALSE(MessageBox.IsLoaded());
  EXPECT_EQ(MessageObject.DefaultTitle(), "");
  EXPECT_TRUE(MessageObject.Modal());
}

}  // namespace
