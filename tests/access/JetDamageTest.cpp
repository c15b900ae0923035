// Damaged Access files: refused with the table named, and never read with anything missing, repeated or
// shortened.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/access/AccessFiles.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

namespace {

// plant.mdb, and where things are in it.
class JetDamage : public testing::Test {
 protected:
  quint32 Map() const { return table_.ownedPages; }
  QVariant Text(size_t row) const { return contents_.at(u"StatData"_s).at(row).at(u"Values"_s); }
  qsizetype LongFieldAt(size_t row) const { return AccessFiles::LongFieldAt(plant_, Text(row)); }
  // The page of the map's one bitmap, and the first page that it shows.
  qsizetype BitmapAt() const { return PageAt(Get<quint32>(plant_, RecordAt(plant_, Map()) + 1)) + 4; }
  quint32 FirstPage() const {
    for (quint32 bit = 0;; ++bit) {
      if ((plant_[BitmapAt() + bit / 8] >> (bit % 8) & 1) != 0) return bit;
    }
  }

  const QByteArray plant_ = Bytes(u"plant.mdb"_s);
  const Contents contents_ = ReadAll(plant_);
  const JetTable table_ = Open(plant_)->Table(u"StatData"_s);
  const qsizetype definition_ = PageAt(table_.page);
};

constexpr size_t longest = 7;  // the row of 9,000 values, a chain over many pages
constexpr size_t shorter = 5;

}  // namespace

TEST_F(JetDamage, IsRefusedWithTheTableNamed) {
  const qsizetype map = RecordAt(plant_, Map());
  const qsizetype field = LongFieldAt(longest);
  const auto chain = Get<quint32>(plant_, field + 4);
  const qsizetype record = RecordAt(plant_, chain);
  const auto secondOfChain = Get<quint32>(plant_, record);
  const qsizetype second = RecordAt(plant_, secondOfChain);
  const quint32 firstPage = FirstPage();
  const qsizetype page = PageAt(firstPage);
  const qsizetype firstRow = RecordAt(plant_, firstPage << 8);
  const qsizetype columnsAt = definition_ + 63 + 12 * qsizetype{Get<quint32>(plant_, definition_ + 51)};
  using Change = std::function<void(QByteArray&)>;
  const std::vector<std::pair<const char*, Change>> changes = {
      {"a row count too high", [&](QByteArray& b) { Put<quint32>(b, definition_ + 16, 13); }},
      {"a row count too low", [&](QByteArray& b) { Put<quint32>(b, definition_ + 16, 11); }},
      {"an absurd column count", [&](QByteArray& b) { Put<quint16>(b, definition_ + 45, 0xFFFF); }},
      {"an absurd index count", [&](QByteArray& b) { Put<quint32>(b, definition_ + 51, 0xFFFFFFFF); }},
      {"a long text among the fixed data", [&](QByteArray& b) { b[columnsAt + 2 * 25 + 15] = 3; }},
      {"a definition that goes on in itself", [&](QByteArray& b) { Put(b, definition_ + 4, table_.page); }},
      {"a map without the pages", [&](QByteArray& b) { b[BitmapAt() + firstPage / 8] = 0; }},
      {"a map of pages behind the end", [&](QByteArray& b) { b[BitmapAt() + 4000] = 1; }},
      {"a map of other tables' pages", [&](QByteArray& b) { b[BitmapAt() + 2] = 2; }},
      {"a map that shows to itself", [&](QByteArray& b) { Put(b, map + 1, Map() >> 8); }},
      {"a map of an unknown kind", [&](QByteArray& b) { b[map] = 2; }},
      {"a page of another table", [&](QByteArray& b) { Put<quint32>(b, page + 4, table_.page + 1); }},
      {"an absurd record count", [&](QByteArray& b) { Put<quint16>(b, page + 12, 0xFFFF); }},
      {"a record before its page's slots", [&](QByteArray& b) { Put<quint16>(b, page + 14, 3); }},
      {"a row that is marked deleted",
       [&](QByteArray& b) { b[page + 15] = static_cast<char>(b[page + 15] | 0x80); }},
      {"a row with more columns", [&](QByteArray& b) { Put<quint16>(b, firstRow, 24); }},
      // Row 0 ends with its page: three bytes of null mask, behind the number and the offsets of three
      // columns.
      {"a long text said to be Null",
       [&](QByteArray& b) { b[page + 4093] = static_cast<char>(b[page + 4093] & ~4); }},
      {"a column that starts too late",
       [&](QByteArray& b) {
         Put<quint16>(b, page + 4085, static_cast<quint16>(Get<quint16>(b, page + 4085) + 2));
       }},
      {"a long text longer than the file", [&](QByteArray& b) { Put<quint32>(b, field, 0x3FFFFFFF); }},
      {"a long text declared shorter",
       [&](QByteArray& b) { Put<quint32>(b, field, Get<quint32>(b, field) - 2); }},
      {"a long text said to be one record",
       [&](QByteArray& b) { Put<quint32>(b, field, Get<quint32>(b, field) | 0x40000000); }},
      {"a chain that ends early", [&](QByteArray& b) { Put<quint32>(b, record, 0); }},
      {"a chain that points at itself", [&](QByteArray& b) { Put(b, record, chain); }},
      {"a chain that skips a piece", [&](QByteArray& b) { Put(b, record, Get<quint32>(b, second)); }},
      {"a chain into the table's own page", [&](QByteArray& b) { Put(b, field + 4, firstPage << 8); }},
      {"a chain that leaves the file", [&](QByteArray& b) { Put(b, record, 0x00FFFF00u); }},
      {"two rows with one text",
       [&](QByteArray& b) {
         const qsizetype other = LongFieldAt(shorter);
         b.replace(other, 8, b.mid(field, 8));
       }},
  };
  for (const auto& [what, change] : changes) {
    QByteArray damaged = plant_;
    change(damaged);
    EXPECT_EQ(Refusal(damaged).rfind("The table \"StatData\" is damaged", 0), 0U)
        << what << ": \"" << Refusal(damaged) << '"';
  }
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
    EXPECT_NE(Refusal(damaged), "") << target;
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
  Contents expected = contents_;
  for (Row& row : expected[u"StatData"_s]) row.erase(name);
  EXPECT_EQ(Dump(ReadAll(file)), Dump(expected));
}

TEST_F(JetDamage, CutFileIsRefusedOrWhole) {
  int whole = 0;
  const std::string dump = Dump(contents_);
  for (qsizetype size = 0; size < plant_.size(); size += 512) {
    try {
      EXPECT_EQ(Dump(ReadAll(plant_.left(size))), dump) << size;
      ++whole;
    } catch (const JetError&) {
    }
  }
  EXPECT_LT(whole, 10) << "only the last pages can be of no account";
}

// One byte or a few: no row may be missing, and no long text may come back shortened.
TEST_F(JetDamage, MutantsAreRefusedOrWhole) {
  std::mt19937 random(20030211);
  const auto draw = [&](qsizetype below) {
    return std::uniform_int_distribution<qsizetype>(0, below - 1)(random);
  };
  int refused = 0;
  for (int i = 0; i < 2000; ++i) {
    QByteArray mutant = plant_;
    for (auto changes = 1 + draw(3); changes > 0; --changes) {
      // Half of the changes at the start of a page, where the structures are.
      const qsizetype page = draw(plant_.size() / JetPages::pageSize) * JetPages::pageSize;
      mutant[page + draw(i % 2 == 0 ? 48 : JetPages::pageSize)] = static_cast<char>(draw(256));
    }
    try {
      const Contents read = ReadAll(mutant);
      const auto statData = read.find(u"StatData"_s);
      if (statData == read.end()) continue;  // its name or its flags in the catalog were hit
      ASSERT_EQ(statData->second.size(), contents_.at(u"StatData"_s).size()) << i;
      for (size_t row = 0; row < statData->second.size(); ++row) {
        const auto values = statData->second[row].find(u"Values"_s);
        if (values == statData->second[row].end() || Text(row).toString().size() <= 1024) continue;
        EXPECT_EQ(values->second.toString().size(), Text(row).toString().size()) << i << " row " << row;
      }
    } catch (const JetError&) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 200);
}
