// What becomes of a row that two have changed, unit by unit.
#include "library/Merge.h"

#include "tests/library/LibraryFixture.h"
#include "tests/support/Cases.h"

using Unit = Column::Unit;

namespace {

class MergeTest : public testing::Test {
 protected:
  // The row of a data set with these values and a row of limits that are kept.
  static QVariantList Row(const QString& values = u"1,2,3,4,"_s) {
    return {7,    u"SHAFT"_s, values, u"2024-01-01 00:00:00"_s,
            2.50, 5.0,        0.0,    9,
            -9,   6.0,        -1.0,   2.5,
            3.0,  0.0,        1.0,    1,
            1,    1,          u"MM"_s};
  }
  static qsizetype At(QStringView column) { return Tables::StatData().IndexOf(column); }
  static QVariantList With(QVariantList row, QStringView column, const QVariant& value) {
    row[At(column)] = value;
    return row;
  }
  static CData Loaded(const QVariantList& row) { return Merge::AsLoaded(row, {}); }

  static QString Values(const QString& base, const QString& mine, const QString& theirs) {
    CData data = Loaded(Row(base));
    data.SetDelimitedInputString(mine);
    const Merge::Result merged = Merge::Of(data, Row(theirs));
    return merged.conflicts.empty() ? merged.row[At(u"Values")].toString() : u"conflict"_s;
  }
};

TEST_F(MergeTest, Values) {
  // What two have measured alike stands there twice; of the same samples the row's own text stays.
  for (const auto& one : Cases(u"merge.json"_s, u"values: as read, mine, theirs, merged"_s))
    EXPECT_EQ(Values(one[0].toString(), one[1].toString(), one[2].toString()), one[3].toString())
        << QJsonDocument(one.toArray()).toJson().toStdString();
  CData data = Loaded(Row());
  data.SetDelimitedInputString(u"9,"_s + u"1,"_s.repeated(20000));
  EXPECT_THROW(Merge::Of(data, Row(u"1,2,3,4,"_s + u"1,"_s.repeated(20000))), InputError);
}

// Where each sample of the merged row comes from in the row as it stood.
TEST_F(MergeTest, SamplesAreFollowedThroughBothChanges) {
  for (const auto& one :
       Cases(u"merge.json"_s, u"origins: as read, mine, theirs, what the editor knows, the origins, why"_s)) {
    CData mine = Loaded(Row(one[0].toString()));
    mine.SetDelimitedInputString(one[1].toString());
    mine.SetSampleOrigins(Numbers<qint32>(one[3]));
    const QVariantList theirs = Row(one[2].toString());
    EXPECT_EQ(Merge::OriginsOf(mine, theirs, Merge::Of(mine, theirs, true).row), Numbers<qint32>(one[4]))
        << one[5].toString().toStdString();
  }
}

// A field that only one has changed is that one's, and its neighbours keep every digit.
TEST_F(MergeTest, EachUnitOnItsOwn) {
  const std::vector<std::pair<QString, QVariant>> theirChanges = {
      {u"UpperSpecLimit"_s, 6.0},   {u"HiFlier"_s, 8.0},
      {u"XBarUCL"_s, 5.5},          {u"SubGroupSize"_s, 2},
      {u"SensitivityValue"_s, 2},   {u"DetectionPeriod"_s, 0},
      {u"Values"_s, u"4,3,2,1,"_s}, {u"UnitOfMeasurement"_s, u"INCH"_s}};
  const QVariantList base = With(Row(), u"NominalSpecLimit", 2.123456789);
  for (const auto& [column, value] : theirChanges) {
    SCOPED_TRACE(column.toStdString());
    const QVariantList theirs = With(base, column, value);
    CData mine = Loaded(base);
    EXPECT_EQ(Merge::Of(mine, theirs).row, theirs) << "nothing of mine";
    EXPECT_EQ(Merge::Of(mine, theirs).takenIn.size(), 1U);
    Tables::StatData().columns[std::size_t(At(column))].read(value, column, mine);
    EXPECT_EQ(Merge::Of(mine, base).row[At(column)], value) << "mine alone";
    EXPECT_EQ(Merge::Of(mine, base).row[At(u"NominalSpecLimit")], 2.123456789);
    EXPECT_TRUE(Merge::Of(mine, theirs).conflicts.empty()) << "both the same";
    for (const auto& [other, otherValue] : theirChanges) {
      const bool sameUnit = Tables::StatData().columns[std::size_t(At(other))].unit ==
                            Tables::StatData().columns[std::size_t(At(column))].unit;
      if (sameUnit) continue;
      const Merge::Result merged = Merge::Of(mine, With(base, other, otherValue));
      EXPECT_TRUE(merged.conflicts.empty()) << other.toStdString();
      EXPECT_EQ(merged.row, With(With(base, other, otherValue), column, value)) << other.toStdString();
    }
  }
}

TEST_F(MergeTest, BothDifferentlyIsAConflictUnlessOneDecides) {
  CData mine = Loaded(Row());
  mine.SetUpperSpecLimit(6);
  mine.SetSensitivityValue(2);
  // The other end of the same unit counts as well.
  const QVariantList theirs = With(With(Row(), u"LowerSpecLimit", -2.0), u"DetectionPeriod", 0);
  EXPECT_EQ(Merge::Of(mine, theirs).conflicts, std::vector<Unit>{Unit::SpecLimits});
  const Merge::Result decided = Merge::Of(mine, theirs, true);
  EXPECT_TRUE(decided.conflicts.empty());
  EXPECT_EQ(decided.row[At(u"UpperSpecLimit")], 6);
  EXPECT_EQ(decided.row[At(u"LowerSpecLimit")], 0) << "the unit is mine as a whole";
  EXPECT_EQ(decided.row[At(u"DetectionPeriod")], 0) << "what is no conflict stays theirs";
}

TEST_F(MergeTest, LimitsOfAllPointsAreCalculatedAgain) {
  CData mine = Loaded(Row());
  QCGlobalFunctions::ClearControlLimits(mine);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(mine));
  const QVariantList theirs = With(Row(u"1,2,3,4,5,6,7,8,"_s), u"XBarUCL", 5.0);
  const Merge::Result merged = Merge::Of(mine, theirs);
  EXPECT_TRUE(merged.conflicts.empty());
  EXPECT_EQ(merged.valuesAdded, 4);
  EXPECT_EQ(merged.row[At(u"XBarMean")], 4.5) << "of all eight";
  mine.SetXBarUCL(7);  // typed, not calculated
  EXPECT_EQ(Merge::Of(mine, theirs).conflicts, std::vector<Unit>{Unit::ControlLimits});
  mine.SetSubGroupSize(2);
  QCGlobalFunctions::ClearControlLimits(mine);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(mine));
  EXPECT_EQ(Merge::Of(mine, With(Row(), u"SubGroupSize", 4)).conflicts,
            std::vector<Unit>{Unit::ControlLimits})
      << "calculated, but for another size";

  // Kept limits that come out as they were are calculated again as well, but not where they were left alone.
  CData kept = Loaded(merged.row);
  const QVariantList longer = With(merged.row, u"Values", u"1,2,3,4,5,6,7,8,9,"_s);
  EXPECT_EQ(Merge::Of(kept, longer).row, longer);
  QCGlobalFunctions::ClearControlLimits(kept);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(kept));
  EXPECT_EQ(Merge::Of(kept, merged.row).row, merged.row);
  EXPECT_EQ(Merge::Of(kept, longer).row[At(u"XBarMean")], 5);
}

// Limits of 0 are calculated at each load: that is no change of mine.
TEST_F(MergeTest, WhatLoadingMadeOfTheRowIsNoChange) {
  QVariantList row = With(Row(), u"UpperSpecLimit", 5.00004);
  for (const QStringView column : {u"XBarUCL", u"XBarLCL", u"XBarMean", u"RBarUCL", u"RBarMean"})
    row[At(column)] = 0.0;
  row[At(u"SensitivityValue")] = QVariant();
  CData mine = Loaded(row);
  EXPECT_NE(mine.XBarMean(), 0);
  EXPECT_EQ(Merge::Of(mine, row).row, row);
  // A limit shown in the decimals of fine values stays in full where these values go.
  row = With(Row(u"1.00001,2,3,4,"_s), u"XBarUCL", 5.12345678);
  mine = Loaded(row);
  mine.SetXBarUCL(mine.XBarUCL());
  mine.SetDelimitedInputString(u"1,2,3,4,"_s);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(mine));
  EXPECT_EQ(Merge::Of(mine, row).row[At(u"XBarUCL")], 5.12345678);
}

// Limits that the row leaves open are kept by a save that asked for them, and by no other.
TEST_F(MergeTest, OpenLimitsAreKeptOnRequestIfTheyCanBe) {
  for (const auto& one :
       Cases(u"merge.json"_s, u"open limits: as read, theirs, the row's limit, the mean kept"_s)) {
    const QString base = one[0].toString();
    const double limit = one[2].toDouble(), mean = one[3].toDouble();
    SCOPED_TRACE(base.toStdString());
    QVariantList row = With(Row(base), u"SubGroupSize", 2);
    for (const QStringView column : {u"XBarMean", u"RBarUCL", u"RBarMean"}) row[At(column)] = 0.0;
    for (const QStringView column : {u"XBarUCL", u"XBarLCL"}) row[At(column)] = limit;
    CData mine = Loaded(row);
    const QVariantList present = With(row, u"Values", one[1].toString());
    EXPECT_EQ(Merge::Of(mine, present).row, present);
    QCGlobalFunctions::ClearControlLimits(mine);
    ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(mine));
    const QVariantList merged = Merge::Of(mine, present).row;
    EXPECT_EQ(merged[At(u"XBarMean")], mean);
    EXPECT_EQ(merged[At(u"XBarUCL")].toDouble() > merged[At(u"XBarLCL")].toDouble(), mean != 0);
    mine = Loaded(row);
    mine.SetSubGroupSize(1);
    EXPECT_EQ(Merge::Of(mine, row).row, With(row, u"SubGroupSize", 1)) << "the size alone asks for no limits";
  }
}

// The engine takes 1 to 20 in a subgroup; a row that holds more was nobody's choice here.
TEST_F(MergeTest, WhatDoesNotGoTogetherIsAConflict) {
  CData mine = Loaded(Row());
  mine.SetUnitOfMeasurement(u"INCH"_s);
  EXPECT_EQ(Merge::Of(mine, With(Row(), u"Values", u"1,2,x,"_s)).conflicts,
            std::vector<Unit>{Unit::UnitOfMeasurement});
}

}  // namespace
