#pragma once

#include <gtest/gtest.h>

#include <QDialog>
#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "document/window/frmPaint.h"
#include "shell/state/State.h"
#include "surface/forms/windows/Menu.h"

/// A run of the whole program with no settings and a new data file, driven by real events.
class Session : public testing::Test {
 protected:
  Session();
  ~Session() override;

  /// Starts the program with that command line.
  void Start(const std::string& tail = "");
  /// A picture file in the session's folder; the name's ending tells its format.
  std::string MakePicture(const std::string& name, const QImage& picture) const;
  std::string PathOf(const std::string& name) const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }

  /// Pointer events on the picture of the active document, in units of its view.
  void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton);
  void MoveTo(int x, int y, Qt::MouseButtons held = Qt::LeftButton);
  void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton);
  void Click(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    Press(x, y, button), Release(x, y, button);
  }
  void Drag(int x1, int y1, int x2, int y2, Qt::MouseButton button = Qt::LeftButton);
  /// Left click in the middle of a control.
  static void ClickOn(const zelvane::Control& control);

  /// Runs `step` and answers the messages that come up while it does, in turn, each with the button of that
  /// caption (without its ampersand). Returns the texts of the messages.
  std::vector<std::string> Answering(std::vector<std::string> answers, const std::function<void()>& step);

  /// While it's set, dialogs are the test's own business.
  bool expects_dialogs_ = false;

  static zelvane::frmPaint& Document();
  static QImage Picture(const zelvane::Canvas& layer);
  /// What holds all pixels that differ, of pictures of one size.
  static QRect Difference(const QImage& a, const QImage& b);
  static void ZoomTo(int multiple);
  static QRect PlaceOf(const auto& thing) {
    return QRectF(thing.Left(), thing.Top(), thing.Width(), thing.Height()).toRect();
  }

 private:
  QTemporaryDir folder_;
  /// Ends a message that nobody waits for, which would hang the session.
  QTimer unexpected_;
};
