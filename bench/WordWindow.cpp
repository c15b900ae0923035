// The baseline of the start: a main window with one word in it, since any text needs the fonts read.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(896, 560);
  window.setCentralWidget(new QLabel(QStringLiteral("Word"), &window));
  window.show();
  return QApplication::exec();
}
