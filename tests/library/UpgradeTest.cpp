// Libraries as each earlier layout left them: they open, tell the same figures and are worked with.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "data/Statistics.h"
#include "library/Library.h"

using namespace Qt::StringLiterals;

namespace {

class UpgradeTest : public testing::TestWithParam<int> {};

TEST_P(UpgradeTest, ALibraryOfAnEarlierLayoutIsALibrary) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"plant.kestrel"_s);
  ASSERT_TRUE(
      QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/upgrades/layout-%1.kestrel").arg(GetParam()), path));
  const auto library = Library::Open(path, [](const QString& text) { FAIL() << text.toStdString(); });
  const QDateTime now{QDate(2026, 11, 24), QTime(8, 0)};

  const CDataPtr rings = library->Read(1)->data;
  EXPECT_EQ(rings->Description(), u"Piston ring ø"_s);
  EXPECT_EQ(rings->SampleQty(), 130);
  EXPECT_EQ(rings->CPKValue(), 1.67);
  EXPECT_EQ(rings->XBarUCL(), 74.0143);
  EXPECT_EQ(library->Append(u"PISTON RING Ø"_s, QStringList(5, u"74.002"_s), now).data->SampleQty(), 135);

  if (GetParam() == 0) library->Delete(2, now);
  const std::vector<Library::Deleted> deleted = library->DeletedDataSets();
  ASSERT_EQ(deleted.size(), 1U);
  library->Restore(deleted[0]);
  const CDataPtr pins = library->Read(2)->data;
  EXPECT_EQ(pins->Description(), u"Pin's diameter"_s);
  EXPECT_EQ(pins->UnitOfMeasurement(), u"µm"_s);
  EXPECT_EQ(pins->SampleQty(), 70);
  EXPECT_EQ(pins->CPKValue(), 6.69);
  pins->SetUpperSpecLimit(10.25);
  EXPECT_EQ(library->Save(*pins, now).outcome, Library::Saved::Outcome::Written);
  EXPECT_EQ(library->ReadAll().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Layouts, UpgradeTest, testing::Values(0, 1));

}  // namespace
