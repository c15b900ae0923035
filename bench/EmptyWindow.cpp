// The baseline of the start: an empty main window.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(896, 560);
  window.show();
  return QApplication::exec();
}
