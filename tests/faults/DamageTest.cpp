// A library in which the disk has changed one bit: every command gives the right answer or says that the file
// is damaged, and a damaged file is never written to.
//
// A bit in the middle of a text or a number makes another text or number, which no reader can tell from the
// true one. There the answer has to be the right one for what now stands in that one field.
#include <QRandomGenerator>

#include "tests/faults/Command.h"

namespace {

class DamageTest : public CommandTest {
 protected:
  DamageTest() {
    const QByteArray few = QByteArray("10.5\n9.75\n10.25\n").repeated(20);
    // A chain of pages, and pages that nothing uses any more.
    const QByteArray many = QByteArray("10.125\n9.5\n").repeated(2000);
    for (const QString& name : {u"Shaft"_s, u"Bore"_s, u"Gone"_s, u"Pin"_s, u"Long"_s, u"Void"_s})
      EXPECT_EQ(Import(u"--description "_s + name, name == u"Long" || name == u"Void" ? many : few).status,
                0);
    RunSql(library, u"DELETE FROM StatData WHERE Description IN ('Gone', 'Void')"_s);
    RunSql(library, u"INSERT INTO Units (Name) VALUES ('MM')"_s);
    original = Read(library);
    rows = DataRows(library);
    status = RunIn(statusWords).output;
    EXPECT_EQ(rows.size(), 4U);
  }

  // How many fields differ; -1 for rows too few or too many.
  int DifferentFields() const {
    const std::vector<QVariantList> others = DataRows(library);
    if (others.size() != rows.size()) return -1;
    int different = 0;
    for (size_t row = 0; row < rows.size(); ++row)
      for (qsizetype column = 0; column < rows[row].size(); ++column)
        different += rows[row][column] != others[row][column];
    return different;
  }

  bool IsRefused(const ProgramRun& result) const {
    if (result.status == 0) return false;
    EXPECT_GE(result.status, 2);
    EXPECT_EQ(result.output, QString());
    EXPECT_EQ(result.error.count(u'\n'), 1) << result.error.toStdString();
    EXPECT_TRUE(result.error.contains(library)) << result.error.toStdString();
    return true;
  }

  void ReadsRightOrRefuses() {
    ProgramRun result = RunIn(statusWords);
    // A data set that cannot be read is named; the others are told.
    if (result.status != 0 && !result.output.isEmpty()) {
      EXPECT_LE(DifferentFields(), 1);
      result.output.clear();
    }
    if (IsRefused(result)) {
      ++refused;
    } else if (result.output == status) {
      ++same;
    } else {
      EXPECT_EQ(DifferentFields(), 1);
      ++otherValue;
    }
  }

  void AppendsOrLeavesAlone(const QByteArray& damaged) {
    const ProgramRun result = RunIn(u"append LIB --description Shaft 10.75");
    if (IsRefused(result)) {
      EXPECT_EQ(Read(library), damaged);
      return;
    }
    ++written;
    Values(library);  // is whole
    // What stands in the other data sets is what stood there; and in this one, with the value behind it.
    RunSql(library,
           u"UPDATE StatData SET \"Values\" = substr(\"Values\", 1, length(\"Values\") - 6), "
           "LastModified = ? WHERE Description = 'Shaft' AND \"Values\" LIKE '%10.75,'"_s,
           {rows[0][3]});
    EXPECT_LE(DifferentFields(), 1);
  }

  void Try(const QByteArray& damaged) {
    Write(u"plant.kestrel"_s, damaged);
    ReadsRightOrRefuses();
    EXPECT_EQ(Read(library), damaged);
    AppendsOrLeavesAlone(damaged);
    EXPECT_FALSE(QFile::exists(library + u"-journal"_s));
    for (const QString& name : Files().filter(u".backup"_s)) QFile::remove(Path(name));
  }

  static constexpr auto statusWords = u"status LIB --json";
  QByteArray original;
  std::vector<QVariantList> rows;
  QString status;
  int refused = 0;
  int same = 0;
  int otherValue = 0;
  int written = 0;
};

// KESTREL_FLIPS: how many bits; the long run uses more. Every second one lies at the start of a page, where
// the structure is.
TEST_F(DamageTest, AnyOneBit) {
  const int flips =
      qEnvironmentVariableIsSet("KESTREL_FLIPS") ? qEnvironmentVariableIntValue("KESTREL_FLIPS") : 300;
  QRandomGenerator random(19);
  for (int i = 0; i < flips && !HasFailure(); ++i) {
    constexpr int pageSize = 4096;
    const auto pages = static_cast<int>(original.size() / pageSize);
    const int place = random.bounded(pages) * pageSize + random.bounded(i % 2 == 0 ? pageSize : 120);
    const int bit = random.bounded(8);
    SCOPED_TRACE(u"bit %1 of byte %2"_s.arg(bit).arg(place).toStdString());
    QByteArray damaged = original;
    damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
    Try(damaged);
  }
  std::printf("%d bits: %d refused, %d right, %d another value, %d appended to\n",
              refused + same + otherValue, refused, same, otherValue, written);
}

// The structure is whole, yet nothing that needs the table can be run: neither the backup nor the change.
TEST_F(DamageTest, AnUnknownCollation) {
  const qsizetype last = original.indexOf("NOCASE") + 5;
  ASSERT_GE(last, 5);
  Try(QByteArray(original).replace(last, 1, "G"));
  EXPECT_EQ(written, 0);
}

}  // namespace
