// A main window that shows a picture file in a scroll area: the least that a program with a document can do.
#include <QApplication>
#include <QImage>
#include <QImageReader>
#include <QMainWindow>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>

namespace {

class Picture : public QWidget {
 public:
  explicit Picture(QImage image) : image_(std::move(image)) { setFixedSize(image_.size()); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter(this).drawImage(event->rect(), image_, event->rect());
  }

 private:
  QImage image_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 2) return 2;
  QImageReader reader(QString::fromLocal8Bit(argv[1]));
  const QImage image = reader.read();
  if (image.isNull()) return 1;
  QMainWindow window;
  for (const char* title : {"&File", "&Edit", "&Image", "Effec&ts", "&Window", "&Help"}) {
    window.menuBar()->addMenu(title)->addAction("Entry");
  }
  auto* area = new QScrollArea;
  area->setWidget(new Picture(image.convertToFormat(QImage::Format_RGB32)));
  window.setCentralWidget(area);
  window.resize(640, 452);
  window.show();
  return QApplication::exec();
}
