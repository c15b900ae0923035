// Reading genuine Access files: every value of the valid ones, and which others are refused, and how.
#include <QTemporaryDir>

#include "tests/access/AccessFiles.h"
#include "tests/support/Cases.h"

using namespace Qt::StringLiterals;
using namespace AccessFiles;

TEST(JetFile, FindsTablesAndColumnsWithoutCase) {
  const auto file = Open(Bytes(u"plant.mdb"_s));
  const JetTable units = file->Table(u"UNITS"_s);
  ASSERT_NE(units.Column(u"deleted"_s), nullptr);
  EXPECT_EQ(units.Column(u"deleted"_s)->type, JetType::YesNo);
  JetRows rows = file->Rows(units, {u"NAME"_s});
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Values().at(0), QVariant(u"mm"_s));
  EXPECT_THROW(file->Rows(units, {u"Name"_s, u"Price"_s}), JetError);
  EXPECT_THROW(file->Table(u"Orders"_s), JetError);
}

// Access's own tables use every type, layout and flag that it knows.
TEST(JetFile, ReadsTheTablesOfAccessItself) {
  for (const auto& [name, json] : Valid()) {
    const auto file = Open(Bytes(name));
    for (const QString& table : {u"MSysObjects"_s, u"MSysACEs"_s, u"MSysQueries"_s, u"MSysRelationships"_s})
      EXPECT_NO_THROW(ReadTable(*file, table)) << name.toStdString();
  }
}

TEST(JetFile, RefusesByName) {
  const QByteArray plant = Bytes(u"plant.mdb"_s);
  const auto changed = [&](const QByteArray& bytes, qsizetype at, char mask) {
    QByteArray copy = bytes;
    copy[at] = static_cast<char>(copy[at] ^ mask);
    return copy;
  };
  QByteArray garbage = plant.left(JetPages::pageSize);
  for (quint32 i = 0; i < 39 * JetPages::pageSize; ++i) garbage += static_cast<char>(i * i / 7);
  const QByteArray accdb = Bytes(u"plant.accdb.z"_s);
  constexpr qsizetype typeOfStatData = 0xE977;  // in Access's own list of tables
  ExpectRefusals({{u"of Access 97"_s, Bytes(u"jet3.mdb"_s)},
                  {u"of an unknown version"_s, changed(plant, 0x14, 1 ^ 9)},
                  {u"the same, a newer one"_s, changed(accdb, 0x14, 2 ^ 1)},
                  {u"with a password"_s, changed(plant, 0x42, 1)},
                  {u"encrypted"_s, changed(accdb, 0x3E, 1)},
                  {u"damaged"_s, changed(plant, 0x3E, 1)},
                  {u"with a linked table"_s, changed(plant, typeOfStatData, 1 ^ 6)},
                  {u"with one linked over ODBC"_s, changed(plant, typeOfStatData, 1 ^ 4)},
                  {u"of something else"_s, changed(plant, 4, 1)},
                  {u"garbage"_s, garbage},
                  {u"empty"_s, {}},
                  {u"cut off"_s, plant.left(162792)},
                  {u"cut off early"_s, plant.left(100)}},
                 ReadingRefused);
}

TEST(JetFile, RecognisesAccessFilesByContent) {
  QTemporaryDir folder;
  EXPECT_TRUE(JetFile::IsAccessFile(Path(u"plant.mdb"_s)));
  EXPECT_TRUE(JetFile::IsAccessFile(Path(u"jet3.mdb"_s)));
  EXPECT_TRUE(JetPages::IsAccessHeader(Bytes(u"plant.accdb.z"_s)));
  EXPECT_FALSE(JetFile::IsAccessFile(Path(u"plant.json"_s)));
  EXPECT_FALSE(JetFile::IsAccessFile(folder.path()));
  EXPECT_THROW(JetFile(folder.filePath(u"missing.mdb"_s)), JetError);
}

TEST(JetValues, TextIsPlainOrCompressed) {
  using namespace std::string_literals;
  const auto text = [](const std::string& bytes) { return JetValues::Text(bytes).toStdString(); };
  const std::string compressed = "\xFF\xFE";
  EXPECT_EQ(text("a\0\xB5\x03"s), "aε");
  EXPECT_EQ(text(compressed + "a\xB5"), "aµ");
  EXPECT_EQ(text(compressed + "a\0\xB5\x03\xB6\x03\0b"s), "aεζb");
  EXPECT_EQ(text(compressed + "\0\x35\xD8\x07\xDF"s), "𝜇") << "a surrogate pair";
  EXPECT_EQ(text(compressed), "");
  // A byte too few or a switch for nothing: a digit was lost.
  for (const std::string& odd :
       {"a\0b"s, compressed + "\0\xB5"s, compressed + "12\0"s, compressed + "1\0\0002"s})
    EXPECT_THROW(text(odd), JetError);
}

TEST(JetValues, DatesAreRoundedToSecondsAndCountBackBefore1900) {
  for (const auto& one : Cases(u"jet_dates.json"_s, u"days, what is stored"_s))
    EXPECT_EQ(JetValues::DateTime(one[0].toDouble()), one[1].toString()) << one[0].toDouble();
  for (const double outside : {-657435.0, 2958466.0, 1e300, -HUGE_VAL, std::nan("")})
    EXPECT_THROW(JetValues::DateTime(outside), JetError) << outside;
}
