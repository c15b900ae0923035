// Measures a library on a server, each against a baseline in the same run; the address of an empty database
// is its only word (scripts/bench-server):
// - reading 5,000 data sets of 500 values against reading the rows by the driver and one bare pass over them
// - appending one value against a bare UPDATE of the same row in a transaction
// - from the end of an append by another program to the changed row of the main window
#include <QApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <vector>

#include "bench/Bench.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "screens/MainList.h"
#include "screens/frmMain.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int dataSets = 5000;

QString NameOf(int number) { return u"DATA SET %1"_s.arg(number); }

void Fill(Library& library) {
  Transaction transaction(library.Database());
  for (int i = 0; i < dataSets; ++i) {
    CData data;
    data.SetFollowsItsDecimals(true);
    data.SetDescription(NameOf(i));
    data.SetUpperSpecLimit(12.6);
    data.SetLowerSpecLimit(12.4);
    data.SetNominalSpecLimit(12.5);
    data.SetSubGroupSize(5);
    data.SetSensitivityValue(2);
    data.SetDetectionPeriod(1);
    data.SetDelimitedInputString(QString::fromStdString(Bench::Values(500, static_cast<unsigned>(i))));
    library.Save(data, QDateTime::currentDateTime());
  }
  transaction.Commit();
}

double Seconds(const std::function<void()>& what) {
  QElapsedTimer since;
  since.start();
  what();
  return static_cast<double>(since.nsecsElapsed()) / 1e9;
}

// By turns, so that a busy machine burdens both; the median of each counts.
struct Pair {
  double measured, baseline;
};
Pair Medians(int times, const std::function<void()>& measured, const std::function<void()>& baseline) {
  std::vector<double> one, other;
  for (int i = 0; i < times; ++i) {
    one.push_back(Seconds(measured));
    other.push_back(Seconds(baseline));
  }
  std::ranges::sort(one);
  std::ranges::sort(other);
  return {one[one.size() / 2], other[other.size() / 2]};
}

void Print(const char* what, const Pair& pair) {
  std::printf("%-46s %6.2f  (%.2f ms against %.2f)\n", what, pair.measured / pair.baseline,
              pair.measured * 1e3, pair.baseline * 1e3);
}

void ReadRows(QSqlDatabase database) {
  QSqlQuery rows(database);
  rows.exec(u"SELECT * FROM StatData"_s);
  const int columns = 19, values = 2;
  std::string text;
  double sum = 0;
  while (rows.next()) {
    for (int column = 0; column < columns; ++column) {
      const QVariant value = rows.value(column);
      if (column == values) text = value.toString().toStdString();
    }
    sum += Bench::BarePass(text);
  }
  if (sum == 0) throw std::runtime_error("nothing was read");
}

void UpdateRow(QSqlDatabase database, qint64 id, const QString& values) {
  database.transaction();
  QSqlQuery update(database);
  update.prepare(u"UPDATE StatData SET LastModified = ?, \"values\" = ? WHERE ID = ?"_s);
  update.addBindValue(u"2026-01-01 00:00:00"_s);
  update.addBindValue(values);
  update.addBindValue(id);
  if (!update.exec() || !database.commit()) throw std::runtime_error("the row is not written");
}

// What the list shows of the samples, in milliseconds after each append.
void MeasureScreen(Library& others) {
  frmMain window({});
  window.show();
  GlobalFunctions::AttachDatabase({});
  auto* list = window.findChild<MainList*>(u"ListView1"_s);
  const auto wait = [](const std::function<bool()>& holds) {
    while (!holds()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  };
  wait([&] {
    return list->Rows().Total() == dataSets && window.findChild<QTimer*>(u"WatchTimer"_s)->isActive();
  });
  std::vector<double> milliseconds;
  for (int i = 0; i < 21; ++i) {
    const auto shown = [&] { return list->model()->index(0, MainListModel::Samples).data().toString(); };
    const QString before = shown();
    others.Append(NameOf(0), {u"12.5"_s}, QDateTime::currentDateTime());
    milliseconds.push_back(1e3 * Seconds([&] {
                             wait([&] { return shown() != before; });
                             list->viewport()->repaint();
                           }));
  }
  std::ranges::sort(milliseconds);
  std::printf("%-46s %6.1f ms (median; longest %.1f)\n", "from the append's end to the changed row",
              milliseconds[milliseconds.size() / 2], milliseconds.back());
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc != 2) return 2;
  const QString address = QString::fromLocal8Bit(argv[1]);
  Library::Create(address);
  const auto library = Library::Open(address, {});
  Fill(*library);

  Print("load / rows by the driver and a bare pass",
        Medians(
            5, [&] { library->ReadEach([](const Library::Row& row) { return row.data != nullptr; }); },
            [&] { ReadRows(library->Database().Database()); }));
  const QString values = QString::fromStdString(Bench::Values(500, 0));
  Print("append / UPDATE in a transaction",
        Medians(
            201, [&] { library->Append(NameOf(1), {u"12.5"_s}, QDateTime::currentDateTime()); },
            [&] { UpdateRow(library->Database().Database(), 3, values); }));

  MemoryRegistry registry;
  SystemClock clock;
  ProgramState state;
  state.registry = &registry;
  state.clock = &clock;
  InstallGlobals(&state);
  state.gDatabaseForThisRun = address;
  MeasureScreen(*library);
  InstallGlobals(nullptr);
  return 0;
}
