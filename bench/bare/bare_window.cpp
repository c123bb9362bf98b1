// An empty main window with six menus: the least that a program of this kind can start with.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  for (const char* title : {"&File", "&Edit", "&Image", "Effec&ts", "&Window", "&Help"}) {
    window.menuBar()->addMenu(title)->addAction("Entry");
  }
  window.resize(640, 452);
  window.show();
  return QApplication::exec();
}
