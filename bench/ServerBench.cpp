// Measures a library on a server, each against a baseline in the same run; the address of an empty database
// is its only word (scripts/bench-server):
// - reading 5,000 data sets of 500 values against reading the rows by the driver and one bare pass over them
// - appending one value against a bare UPDATE of the same row in a transaction
// - from the end of the documented waits to the first rows of the main window's list; and with ten times as
//   many data sets
// - from the end of an append by another program to the changed row there
#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <vector>

#include "bench/Bench.h"
#include "bench/SkippingClock.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "library/Tables.h"
#include "screens/MainList.h"
#include "screens/frmMain.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int dataSets = 5000;
constexpr int manyDataSets = 50'000;  // whose first rows are measured as well
constexpr int subGroupSize = 5;

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
    data.SetSubGroupSize(subGroupSize);
    data.SetSensitivityValue(2);
    data.SetDetectionPeriod(1);
    data.SetDelimitedInputString(QString::fromStdString(Bench::Values(500, static_cast<unsigned>(i))));
    library.Save(data, QDateTime::currentDateTime());
  }
  transaction.Commit();
}

// More of the same under other names.
void FillUp(Connection& connection) {
  QStringList columns;
  for (const Column& column : Tables::StatData().columns)
    if (column.unit != Column::Unit::None) columns << column.Quoted();
  for (int from = dataSets; from < manyDataSets; from += dataSets) {
    const QString copies =
        u"INSERT INTO StatData (Description, LastModified, %1) "
        "SELECT Description || ' of %2', LastModified, %1 FROM StatData WHERE ID <= %3"_s;
    connection.Execute(copies.arg(columns.join(u", "_s)).arg(from).arg(dataSets));
    const QString names =
        u"INSERT INTO StatDataName (NameKey, ID) SELECT Description, ID FROM StatData WHERE ID > %1"_s;
    connection.Execute(names.arg(from));
  }
  connection.Execute(u"ANALYZE"_s);
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

// Lets events run until it holds.
void Await(const char* what, const std::function<bool()>& holds) {
  constexpr int mostMilliseconds = 30'000;
  QTimer wakes;  // else no event may come
  wakes.start(100);
  for (const QDeadlineTimer end(mostMilliseconds); !holds();) {
    if (end.hasExpired()) throw std::runtime_error(std::string("waited in vain for ") + what);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

// What the main window takes to show the first rows of the list, and the row that somebody has appended to.
void MeasureScreen(Library& others, int count) {
  frmMain window({});
  window.show();
  GlobalFunctions::AttachDatabase({});
  const auto& list = *window.findChild<MainList*>(u"ListView1"_s);
  auto* load = window.findChild<QTimer*>(u"InitTimer"_s);
  QElapsedTimer since;
  double first = 0;
  QObject::connect(&list, &MainList::Arranged, &window, [&] {
    if (first == 0 && list.Rows().Total() > 0) first = static_cast<double>(since.nsecsElapsed()) / 1e6;
  });
  since.start();
  QMetaObject::invokeMethod(load, "timeout");  // the end of the wait for it
  std::printf("%-46s %6.1f ms (all rows: %.1f)\n", "from the waits' end to the first rows", first,
              static_cast<double>(since.nsecsElapsed()) / 1e6);
  if (list.Rows().Total() != count) throw std::runtime_error("the list is not whole");
  std::vector<double> milliseconds;
  for (int i = 0; i < 21; ++i) {
    const auto shown = [&] { return list.model()->index(0, MainListModel::Samples).data().toString(); };
    const QString before = shown();
    others.Append(NameOf(0), QStringList(subGroupSize, u"12.5"_s), QDateTime::currentDateTime());
    milliseconds.push_back(1e3 * Seconds([&] {
                             Await("the changed row", [&] { return shown() != before; });
                             list.viewport()->repaint();
                           }));
  }
  std::ranges::sort(milliseconds);
  std::printf("%-46s %6.1f ms (median; longest %.1f)\n", "from the append's end to the changed row",
              milliseconds[milliseconds.size() / 2], milliseconds.back());
}

void MeasureAll(const QString& address) {
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
  SkippingClock clock;
  ProgramState state;
  state.registry = &registry;
  state.clock = &clock;
  InstallGlobals(&state);
  state.gDatabaseForThisRun = address;
  MeasureScreen(*library, dataSets);
  FillUp(library->Database());
  std::printf("with %d data sets:\n", manyDataSets);
  MeasureScreen(*library, manyDataSets);
  InstallGlobals(nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  std::setvbuf(stdout, nullptr, _IOLBF, 0);  // each line as it is measured
  QApplication application(argc, argv);
  if (argc != 2) return 2;
  try {
    MeasureAll(QString::fromLocal8Bit(argv[1]));
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
