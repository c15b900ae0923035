// A library: where data sets live. Opened, read, written, appended to and given units; today it is a file.
//
// Every failure is an Error; one that the engine's refusal of the values brings about is bad input. Nothing
// is shown, and nothing outside is changed. One thread at a time works with a library.
#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "data/CData.h"
#include "platform/ado/Connection.h"

class Library {
 public:
  // Gets what a user should know although nothing failed: that no backup could be made.
  using News = std::function<void(const QString& text)>;

  // Makes an empty library; never overwrites a file.
  static void Create(const QString& place);

  // Opens whatever is there, and proves that it is a database.
  explicit Library(const QString& place, const QString& provider = Connection::JetProvider);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  // Opens it for work: of an accepted revision, whole, and guarded. The Error names the place.
  static std::unique_ptr<Library> Open(const QString& place, const News& news);

  // The revision that it gives itself (the last row's): null for none, or for one too short to be one.
  QString Revision();

  // Checks the file; has the first change preceded by a backup.
  void Guard(const News& news);

  const QString& Place() const { return place_; }
  Connection& Database() { return connection_; }

  // What became of one row: a data set with its statistics, or why there is none.
  struct Row {
    CDataPtr data;
    std::optional<Error> failure;
    bool refusedByEngine = false;
  };

  // Gives every row, in the table's order; `take` says whether to go on. Other programs may write meanwhile.
  void ReadEach(const std::function<bool(const Row& row)>& take);

  // The same at once, calculated on all of the machine's cores.
  std::vector<Row> ReadAll();

  // The data set of that description, without statistics; null where there is none.
  CDataPtr Find(const QString& description);

  // Writes a data set in one transaction; true where that made a new row. Existing rows keep their
  // description. A row that is no longer as the data set was read from or written to it is a conflict.
  bool Save(CData& data, const QDateTime& now);

  // Adds a new data set, and its unit where that is not offered yet. The description must not be taken.
  void Add(CData& data, const QDateTime& now);

  // Puts values behind those of the data set, whose kept limits stay. Gives it with its statistics.
  CDataPtr Append(const QString& description, const QStringList& values, const QDateTime& now);

  // Offers a unit of measurement, unless it is offered already.
  void AddUnit(const QString& name);

 private:
  using RawRows = std::vector<QVariantList>;
  RawRows Select(const QString& clause = {}, const QVariantList& values = {});
  QVariantList Written(qint64 id);
  void Insert(CData& data, const QDateTime& now);
  void Update(CData& data, const QDateTime& now);
  void RequireRowAsKnown(const CData& data);

  QString place_;
  Connection connection_;
};
