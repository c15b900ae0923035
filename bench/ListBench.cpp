// Measures the main window with a library of 50,000 data sets:
// - the filter for each key that is typed, the painting of the list included, in milliseconds
// - scrolling by a page, likewise
// - from the end of the documented waits to the filled list, against the command `status` of the same library
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QScrollBar>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>

#include "bench/Bench.h"
#include "bench/SkippingClock.h"
#include "core/Globals.h"
#include "screens/MainList.h"
#include "screens/frmMain.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int dataSets = 50'000;

double Milliseconds(const std::function<void()>& act) {
  QElapsedTimer timer;
  timer.start();
  act();
  return double(timer.nsecsElapsed()) / 1e6;
}

void Press(QWidget& widget, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QCoreApplication::sendEvent(&widget, &press);
}

void MakeLibrary(const QString& path) {
  Library::Create(path);
  Connection connection;
  connection.OpenWith(path);
  Transaction transaction(connection);
  QSqlQuery insert(connection.Database());
  insert.prepare(
      u"INSERT INTO StatData (Description, \"Values\", LastModified, NominalSpecLimit, UpperSpecLimit, "
      "LowerSpecLimit, HiFlier, LoFlier, XBarUCL, XBarLCL, XBarMean, RBarUCL, RBarLCL, RBarMean, "
      "SubGroupSize, SensitivityValue, DetectionPeriod, UnitOfMeasurement) "
      "VALUES (?, ?, '2026-01-01 00:00:00', 12.5, 12.6, 12.4, 13, 12, 0, 0, 0, 0, 0, 0, 5, 2, 1, 'MM')"_s);
  for (int i = 0; i < dataSets; ++i) {
    insert.bindValue(0, u"Line %1, station %2, bore %3 diameter"_s.arg(i % 7).arg(i % 41).arg(i));
    insert.bindValue(1, QString::fromStdString(Bench::Values(125, static_cast<unsigned>(i))));
    if (!insert.exec()) throw std::runtime_error("the library cannot be filled");
  }
  transaction.Commit();
}

double Status(const QString& path) {
  return Milliseconds([&] {
    QProcess status;
    status.setStandardOutputFile(QProcess::nullDevice());
    status.start(QStringLiteral(KESTREL_PROGRAM), {u"status"_s, path});
    if (!status.waitForFinished(-1) || status.exitCode() != 0) throw std::runtime_error("status failed");
  });
}

void Print(const char* what, std::vector<double> times) {
  std::ranges::sort(times);
  std::printf("%-42s median %.1f ms, longest %.1f ms\n", what, times[times.size() / 2], times.back());
}

void MeasureFilter(const frmMain& main) {
  auto& box = *main.findChild<QLineEdit*>(u"txtFind"_s);
  std::vector<double> times;
  const auto key = [&](const std::function<void()>& press) {
    times.push_back(Milliseconds([&] {
      press();
      QCoreApplication::processEvents();
    }));
  };
  for (const QString& text : {u"bore 4711"_s, u"station 12 diameter"_s, u"x"_s}) {
    for (const QChar c : text) key([&] { Press(box, Qt::Key_A, c); });
    while (!box.text().isEmpty()) key([&] { Press(box, Qt::Key_Backspace); });
  }
  Print("filter, for each key", times);
}

void MeasureScrolling(const frmMain& main) {
  QScrollBar& bar = *main.findChild<MainList*>(u"ListView1"_s)->verticalScrollBar();
  std::vector<double> times;
  for (int page = 0; page < 200; ++page)
    times.push_back(Milliseconds([&] {
      bar.setValue(bar.value() + bar.pageStep());
      QCoreApplication::processEvents();
    }));
  Print("scrolling by a page", times);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("DISPLAY")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"bench.kestrel"_s);
  MakeLibrary(path);

  MemoryRegistry registry;
  SkippingClock clock;
  ProgramState state;
  state.registry = &registry;
  state.clock = &clock;
  state.gDatabaseForThisRun = path;
  InstallGlobals(&state);
  double status = 1e9, filled = 1e9;
  {
    frmMain main(
        {.chart = [] {}, .editor = [] {}, .configuration = [] {}, .about = [] {}, .measurements = [] {}});
    main.show();
    if (!main.Form_Load()) return 1;
    auto* initTimer = main.findChild<QTimer*>(u"InitTimer"_s);
    for (int repetition = 0; repetition < 3; ++repetition) {
      status = std::min(status, Status(path));
      filled = std::min(filled, Milliseconds([&] { QMetaObject::invokeMethod(initTimer, "timeout"); }));
      main.EnableLoadTimer();
    }
    initTimer->stop();
    MeasureFilter(main);
    MeasureScrolling(main);
  }
  std::printf("%-42s %6.2f  (%.0f ms / %.0f ms)\n", "filling the list / status", filled / status, filled,
              status);
  InstallGlobals(nullptr);
  return 0;
}
