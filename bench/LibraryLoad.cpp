// Loading a library of 5,000 data sets of 500 values, in time and in memory.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>
#include <stdexcept>

#include "bench/Bench.h"
#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int dataSets = 5000;

// The library, made on first use, and a program state that has it open.
class BenchLibrary {
 public:
  BenchLibrary() : path_(folder_.filePath(u"bench.kestrel"_s)) {
    state_.registry = &registry_;
    state_.clock = &clock_;
    InstallGlobals(&state_);
    Library::Create(path_);
    if (!GlobalFunctions::OpenDatabaseConnection(false, path_))
      throw std::runtime_error("the library does not open");
    Fill();
  }
  ~BenchLibrary() { InstallGlobals(nullptr); }

  QSqlDatabase Database() const { return state_.gLibrary->Database().Database(); }
  void Load() const {
    if (!DataObjectFunctions::InitializeCDataCollection())
      throw std::runtime_error("the library does not load");
  }

 private:
  void Fill() const {
    Transaction transaction(state_.gLibrary->Database());
    QSqlQuery insert(Database());
    insert.prepare(
        u"INSERT INTO StatData (Description, \"Values\", LastModified, NominalSpecLimit, UpperSpecLimit, "
        "LowerSpecLimit, HiFlier, LoFlier, XBarUCL, XBarLCL, XBarMean, RBarUCL, RBarLCL, RBarMean, "
        "SubGroupSize, "
        "SensitivityValue, DetectionPeriod, UnitOfMeasurement) "
        "VALUES (?, ?, '2026-01-01 00:00:00', 12.5, 12.6, 12.4, 13, 12, 0, 0, 0, 0, 0, 0, 5, 2, 1, 'MM')"_s);
    for (int i = 0; i < dataSets; ++i) {
      insert.bindValue(0, u"DATA SET %1"_s.arg(i));
      insert.bindValue(1, QString::fromStdString(Bench::Values(500, static_cast<unsigned>(i))));
      if (!insert.exec()) throw std::runtime_error("the library cannot be filled");
    }
    transaction.Commit();
  }

  QTemporaryDir folder_;
  QString path_;
  MemoryRegistry registry_;
  SystemClock clock_;
  ProgramState state_;
};

BenchLibrary& TheLibrary() {
  static BenchLibrary library;
  return library;
}

void ReadRowsAndBarePass(benchmark::State& state) {
  const QSqlDatabase database = TheLibrary().Database();
  for ([[maybe_unused]] auto _ : state) {
    QSqlQuery rows(database);
    rows.setForwardOnly(true);
    rows.exec(u"SELECT * FROM StatData"_s);
    const int columns = 19;
    const int values = 2;
    std::string text;
    while (rows.next()) {
      for (int column = 0; column < columns; ++column) {
        const QVariant value = rows.value(column);
        if (column == values) text = value.toString().toStdString();
      }
      benchmark::DoNotOptimize(Bench::BarePass(text));
    }
  }
}
BENCHMARK(ReadRowsAndBarePass)->Unit(benchmark::kMillisecond)->Repetitions(7);

void LoadLibrary(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) TheLibrary().Load();
}
BENCHMARK(LoadLibrary)->Unit(benchmark::kMillisecond)->Repetitions(7);

// A line of /proc/self/status, in bytes.
double StatusBytes(const QByteArray& name) {
  QFile status(u"/proc/self/status"_s);
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith(name + ':')) return line.simplified().split(' ')[1].toDouble() * 1024;
  }
  return 0;
}

}  // namespace

Bench::MemoryUse Bench::MeasureLoad() {
  const BenchLibrary& library = TheLibrary();
  MemoryUse use;
  for (int i = 0; i < dataSets; ++i)
    use.text += static_cast<double>(Values(500, static_cast<unsigned>(i)).size());
  malloc_trim(0);
  const double before = StatusBytes("VmRSS");
  QFile reset(u"/proc/self/clear_refs"_s);  // "5" sets the peak back to what is held now
  if (!reset.open(QIODevice::WriteOnly) || reset.write("5") != 1)
    throw std::runtime_error("no peak to measure");
  reset.close();
  library.Load();
  use.peak = StatusBytes("VmHWM") - before;
  return use;
}
