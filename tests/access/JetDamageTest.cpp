// Damaged Access files: refused with the table named, and never read with anything missing, repeated or
// shortened.
#include <QRegularExpression>

#include "tests/access/AccessFiles.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

namespace {

// plant.mdb, and where things are in it.
class JetDamage : public testing::Test {
 protected:
  static QString Text(const QJsonObject& contents, int row) {
    return contents[u"StatData"_s][row][u"Values"_s].toString();
  }
  qsizetype LongFieldAt(int row) const { return AccessFiles::LongFieldAt(plant_, Text(contents_, row)); }
  const QByteArray plant_ = Bytes(u"plant.mdb"_s);
  const QJsonObject contents_ = ReadAll(plant_);
  const JetTable table_ = Open(plant_)->Table(u"StatData"_s);
  const qsizetype definition_ = PageAt(table_.page);
};

constexpr int longest = 7;  // the row of 9,000 values, a chain over many pages
constexpr int shorter = 5;

}  // namespace

TEST_F(JetDamage, IsRefusedWithTheTableNamed) {
  const qsizetype map = RecordAt(plant_, table_.ownedPages);
  const qsizetype bitmap = PageAt(Get<quint32>(plant_, map + 1)) + 4;
  const qsizetype field = LongFieldAt(longest);
  const auto chain = Get<quint32>(plant_, field + 4);
  const qsizetype record = RecordAt(plant_, chain);
  const qsizetype second = RecordAt(plant_, Get<quint32>(plant_, record));
  const qsizetype page = PageAt(firstPageOfPlant);
  const qsizetype firstRow = RecordAt(plant_, firstRowOfPlant);
  const qsizetype columnsAt = definition_ + 63 + 12 * qsizetype{Get<quint32>(plant_, definition_ + 51)};
  struct Change {
    const char* what;
    qsizetype at;
    int bytes;
    quint64 value;
  };
  const Change changes[] = {
      {"a row count too high", definition_ + 16, 4, 13},
      {"a row count too low", definition_ + 16, 4, 11},
      {"an absurd column count", definition_ + 45, 2, 0xFFFF},
      {"an absurd index count", definition_ + 51, 4, 0xFFFFFFFF},
      {"a long text among the fixed data", columnsAt + 2 * 25 + 15, 1, 3},
      {"a definition that goes on in itself", definition_ + 4, 4, table_.page},
      {"a map without the pages", bitmap + firstPageOfPlant / 8, 1, 0},
      {"a map of pages behind the end", bitmap + 4000, 1, 1},
      {"a map of other tables' pages", bitmap + 2, 1, 2},
      {"a map that shows to itself", map + 1, 4, table_.ownedPages >> 8},
      {"a map of an unknown kind", map, 1, 2},
      {"a page of another table", page + 4, 4, table_.page + 1},
      {"an absurd record count", page + 12, 2, 0xFFFF},
      {"a record before its page's slots", page + 14, 2, 3},
      {"a row that is marked deleted", page + 15, 1, Get<quint8>(plant_, page + 15) | 0x80U},
      {"a row with more columns", firstRow, 2, 24},
      // Row 0 ends with its page: three bytes of null mask, behind the number and the offsets of three
      // columns.
      {"a long text said to be Null", page + 4093, 1, Get<quint8>(plant_, page + 4093) & ~4U},
      {"a column that starts too late", page + 4085, 2, Get<quint16>(plant_, page + 4085) + 2U},
      {"data that no column has", page + 4083, 2, Get<quint16>(plant_, page + 4083) - 2U},
      {"a long text longer than the file", field, 4, 0x3FFFFFFF},
      {"a long text declared shorter", field, 4, Get<quint32>(plant_, field) - 2},
      {"a long text said to be one record", field, 4, Get<quint32>(plant_, field) | 0x40000000},
      {"two rows with one text", LongFieldAt(shorter), 8, Get<quint64>(plant_, field)},
      {"a chain that ends early", record, 4, 0},
      {"a chain that points at itself", record, 4, chain},
      {"a chain that skips a piece", record, 4, Get<quint32>(plant_, second)},
      {"a chain into the table's own page", field + 4, 4, firstRowOfPlant},
      {"a chain that leaves the file", record, 4, 0x00FFFF00},
  };
  Damaged files;
  for (const auto& [what, at, bytes, value] : changes) {
    const QByteArray number(reinterpret_cast<const char*>(&value), bytes);
    files.emplace_back(QString::fromLatin1(what), QByteArray(plant_).replace(at, bytes, number));
  }
  ExpectRefusals(files, ReadingRefused);
}

// The one row read twice would hide that the other is lost: the number of rows stays right.
TEST_F(JetDamage, MovedRowsMustBeWhereTheyAreMarked) {
  const QByteArray file = Bytes(u"moved_rows.mdb"_s);
  const quint32 owner = Open(file)->Table(u"StatData"_s).page;
  std::vector<qsizetype> moved;
  quint32 ordinary = 0;
  for (quint32 page = 1; PageAt(page) < file.size(); ++page) {
    if (file[PageAt(page)] != 1 || Get<quint32>(file, PageAt(page) + 4) != owner) continue;
    for (quint32 slot = 0; slot < Get<quint16>(file, PageAt(page) + 12); ++slot) {
      const auto flags = Get<quint16>(file, PageAt(page) + 14 + 2 * slot) & 0xC000;
      if (flags == 0x4000) moved.push_back(RecordAt(file, page << 8 | slot));
      if (flags == 0 && ordinary == 0) ordinary = page << 8 | slot;
    }
  }
  ASSERT_EQ(moved.size(), 18U);
  for (const quint32 target : {ordinary, Get<quint32>(file, moved[1]), 0x00000001u, 0x0FFFFF00u}) {
    QByteArray damaged = file;
    Put(damaged, moved[0], target);
    EXPECT_NE(ReadingRefused(damaged), u"taken") << target;
  }
}

TEST_F(JetDamage, ColumnDeletedSinceLeavesAGap) {
  QByteArray file = plant_;
  const quint16 count = Get<quint16>(file, definition_ + 45);
  const qsizetype columnsAt = definition_ + 63 + 12 * qsizetype{Get<quint32>(file, definition_ + 51)};
  qsizetype nameAt = columnsAt + 25 * count;
  constexpr int gone = 17;  // DetectionPeriod; nine of the others stand behind it in the rows, or before
  for (int i = 0; i < gone; ++i) nameAt += 2 + Get<quint16>(file, nameAt);
  const QString name = table_.columns[gone].name;
  file.remove(nameAt, 2 + Get<quint16>(file, nameAt)).remove(columnsAt + 25 * gone, 25);
  file.insert(definition_ + JetPages::pageSize - (plant_.size() - file.size()), plant_.size() - file.size(),
              '\0');
  Put<quint16>(file, definition_ + 45, count - 1);
  const QRegularExpression field(u"\"%1\": -?\\d+, "_s.arg(name));
  const QString json = QString::fromUtf8(Bytes(u"plant.json"_s)).remove(field);
  EXPECT_EQ(Dump(ReadAll(file)), Dump(QJsonDocument::fromJson(json.toUtf8()).object()));
}
