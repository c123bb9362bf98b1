#include "session/Session.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTest>

#include "shell/Main.h"
#include "shell/MainForm.h"
#include "shell/state/Settings.h"
#include "surface/forms/windows/Application.h"
#include "tools/OptionBars.h"
#include "ui/MessageBox.h"

using namespace zelvane;

namespace {

/// Units start behind the frame of the view.
void SendToPicture(QEvent::Type type, int x, int y, Qt::MouseButton button, Qt::MouseButtons held) {
  QWidget* view = ActiveDocument()->PaintArea.Widget();
  const QPoint at(x + 1, y + 1);
  QMouseEvent event(type, at, view->mapToGlobal(at), button, held, Qt::NoModifier);
  QApplication::sendEvent(view, &event);
}

}  // namespace

Session::Session() {
  ResetState();
  for (const char* own : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
    QDir(qEnvironmentVariable(own)).removeRecursively();
  WriteSetting("ShowSplashScreen", "0");
  QObject::connect(&unexpected_, &QTimer::timeout, [this] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (expects_dialogs_ || !dialog) return;
    ADD_FAILURE() << "unexpected dialog: " << dialog->windowTitle().toStdString();
    dialog->reject();
  });
  unexpected_.start(100);
  // The end of the run before has stopped every loop to come, those of messages too, until one begins anew.
  QTimer::singleShot(0, &QCoreApplication::quit);
  QCoreApplication::exec();
}

Session::~Session() {
  for (Form* form : std::vector<Form*>(Forms()))
    if (auto* document = dynamic_cast<ImageDocument*>(form)) document->SetDirtyFalse();
  DestroyForms();
}

void Session::Start(const std::string& tail) {
  DestroyForms();  // a run that came before ends here
  ASSERT_EQ(Main(tail), StartResult::Running);
  DoEvents();
}

std::string Session::MakePicture(const std::string& name, const QImage& picture) const {
  const std::string path = PathOf(name);
  EXPECT_TRUE(picture.save(QString::fromStdString(path))) << path;
  return path;
}

void Session::Press(int x, int y, Qt::MouseButton button) {
  SendToPicture(QEvent::MouseButtonPress, x, y, button, button);
}
void Session::MoveTo(int x, int y, Qt::MouseButtons held) {
  SendToPicture(QEvent::MouseMove, x, y, Qt::NoButton, held);
}
void Session::Release(int x, int y, Qt::MouseButton button) {
  SendToPicture(QEvent::MouseButtonRelease, x, y, button, Qt::NoButton);
}

void Session::Drag(int x1, int y1, int x2, int y2, Qt::MouseButton button) {
  Press(x1, y1, button);
  MoveTo(x2, y2, button);
  Release(x2, y2, button);
}

void Session::ClickOn(const Control& control) {
  QTest::mouseClick(control.Widget(), Qt::LeftButton);
  DoEvents();
}

std::vector<std::string> Session::Answering(std::vector<std::string> answers,
                                            const std::function<void()>& step) {
  std::vector<std::string> texts;
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    if (!MessageBox.IsLoaded() || !MessageBox->Visible()) return;
    texts.push_back(MessageBox->MsgText.Caption());
    const std::string wanted = texts.size() > answers.size() ? "none" : answers[texts.size() - 1];
    for (int i = 0; i < MessageBox->MsgButton.Count(); ++i) {
      auto* button = static_cast<QPushButton*>(MessageBox->MsgButton[i].Widget());
      if (button->text().remove('&').toStdString() == wanted) return button->click();
    }
    MessageBox->Unload();
  });
  answer.start(1);
  expects_dialogs_ = true;
  step();
  DoEvents();
  expects_dialogs_ = false;
  return texts;
}

frmPaint& Session::Document() {
  return dynamic_cast<frmPaint&>(*ActiveDocument());
}

QImage Session::Picture(const Canvas& layer) {
  QImage picture(layer.ScaleWidth(), layer.ScaleHeight(), QImage::Format_RGB32);
  for (int y = 0; y < picture.height(); ++y)
    std::copy_n(layer.Image().Row(y), picture.width(), reinterpret_cast<Pixel*>(picture.scanLine(y)));
  return picture;
}

QRect Session::Difference(const QImage& a, const QImage& b) {
  EXPECT_EQ(a.size(), b.size());
  QRect found;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) found |= QRect(x, y, 1, 1);
  return found;
}

void Session::ZoomTo(int multiple) {
  frmControls->comboZoom.SetListIndex(multiple - 1);
}
