#include "effects/frame/EffectProgram.h"

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <cstdio>
#include <string>

#include "effects/frame/CommandLine.h"
#include "effects/frame/EffectWindow.h"
#include "surface/raster/FailingStep.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/PictureFile.h"

/// The icon is in a library, from which it has to be fetched; outside any namespace, as the toolkit asks.
static void RegisterIcon() {
  Q_INIT_RESOURCE(icon);
}

namespace zelvane {
namespace {

constexpr int kDone = 0, kFailed = 1, kMistaken = 2;

int Complain(const std::string& program, const std::string& text, int status) {
  std::fprintf(stderr, "%s: %s\n", program.c_str(), text.c_str());
  return status;
}

std::string CantRead(const std::string& path) {
  return path + " can't be read as a picture.";
}

/// A file that holds more than a bitmap can stays as it is.
int ApplyToFile(const Effect& effect, const Order& order, const std::string& program) {
  const auto picture = LoadPicture(order.path);
  if (!picture) return Complain(program, CantRead(order.path), kFailed);
  if (picture->file.whole_as != WrittenKind::Bitmap)
    return Complain(program, order.path + " is no Windows bitmap, or has transparency that would be lost.",
                    kFailed);
  std::string reason = "there isn't enough memory";
  Attempt([&] {
    Work work;
    WriteTarget target(order.path);
    target.known = picture->file.stamp;
    reason = SavePicture(effect.apply(*picture, order.values, work), target).reason;
  });
  if (reason.empty()) return kDone;
  return Complain(program, order.path + " stays as it was: " + reason, kFailed);
}

int ShowWindow(const Effect& effect, const std::string& path, int argc, char** argv) {
  const QApplication toolkit(argc, argv);
  QApplication::setApplicationName("Zelvane");
  QApplication::setDesktopFileName("zelvane");
  RegisterIcon();
  QApplication::setWindowIcon(QIcon(":/zelvane.svg"));  // the main program's, of which effects are a part
  auto picture = LoadPicture(path);
  if (!picture) {
    QMessageBox::critical(nullptr, QString::fromStdString(effect.title),
                          QString::fromStdString(CantRead(path)));
    return kFailed;
  }
  const FileStamp stamp = picture->file.stamp;
  EffectWindow window(effect, std::move(*picture), [&](const Bitmap& result) {
    WriteTarget target(path);
    target.known = stamp;
    return SavePicture(result, target).reason;
  });
  if (window.exec() != QDialog::Accepted) DeleteFile(path);
  return kDone;
}

}  // namespace

int RunEffectProgram(const Effect& effect, int argc, char** argv) {
  SurviveFileSizeLimit();
  const std::string program = argc > 0 ? NameOf(argv[0]) : effect.title;
  const Order order = ReadCommandLine(effect, {argv + std::min(argc, 1), argv + argc});
  switch (order.kind) {
    case Order::Kind::Help:
      std::fputs(UsageOf(effect, program).c_str(), stdout);
      return kDone;
    case Order::Kind::Mistaken:
      return Complain(program, order.mistake + " (--help tells more)", kMistaken);
    case Order::Kind::Apply:
      return ApplyToFile(effect, order, program);
    case Order::Kind::Window:
      break;
  }
  return ShowWindow(effect, order.path, argc, argv);
}

}  // namespace zelvane
