// The text table is complete and exact, and every text reference in the program finds its text.
#include "core/Texts.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString TextNumber(int number) { return LoadResText(QString(u"x;"_s + QString::number(number))); }

TEST(Texts, HasEveryNumberAndNoOther) {
  const std::vector<std::pair<int, int>> ranges = {{101, 108}, {110, 122}, {150, 178}, {181, 181},
                                                   {185, 186}, {190, 201}, {203, 248}, {250, 255},
                                                   {262, 269}, {293, 304}};
  for (int number = 90; number <= 320; ++number) {
    const bool expected = std::ranges::any_of(
        ranges, [&](const auto& range) { return range.first <= number && number <= range.second; });
    EXPECT_EQ(TextNumber(number).isEmpty(), !expected) << number;
  }
}

TEST(Texts, KeepsBlanksAndSpellings) {
  const std::vector<std::pair<int, QString>> texts = {
      {107, u" with error: "_s},
      {160, u" samples have been discarded because they exceed flier limits. "_s},
      {161, u"Only "_s},
      {162, u" samples are remaining."_s},
      {163, u"There must be at least "_s},
      {164, u" number of valid data samples to process"_s},
      {168, u"Data values could not be validated. Ensure at least "_s},
      {169, u" data points exist and no non-numeric values have been entered."_s},
      {170, u"Error attempting to save data: "_s},
      {171, u" samples will be discarded upon save. Continue?"_s},
      {178, u"Failed to setup data object with error: "_s},
      {193, u" Red Flag Limits "_s},
      {203, u"error attempting to get the current data for the item selected: "_s},
      {245, u" Listview Settings "_s},
      {299, u"Current Database: "_s},
      {300, u"DB Rev. "_s},
      {158, u"Medium (Detection Rules 1,2, and 4)"_s},
      {262, u"No rule violations. The process is in control."_s},
      {267, u"DETECTION RULE UNKNOWN. Invalid rule violation."_s},
      {268, u"Process Control Indicator"_s},
  };
  for (const auto& [number, text] : texts) EXPECT_EQ(TextNumber(number), text) << number;

  EXPECT_TRUE(TextNumber(177).endsWith(u"Any area with an aterisk must be entered."_s));
  EXPECT_TRUE(TextNumber(174).contains(u"labeled 'Calculate Limits On Save' is"_s));
  EXPECT_TRUE(TextNumber(205).startsWith(u"Data was saved to the database, but the application"_s));
  EXPECT_TRUE(TextNumber(225).startsWith(u"There are not enough data points"_s));
  EXPECT_TRUE(TextNumber(265).endsWith(u"the central line. "_s));
  EXPECT_TRUE(TextNumber(266).endsWith(u"the central line."_s));
  EXPECT_TRUE(TextNumber(304).contains(u"select Tools->Connection (click"_s));
}

TEST(Texts, LooksUpByTheSecondPartAlone) {
  EXPECT_EQ(LoadResText(u"Error Message;106"), u"Error Message"_s);
  EXPECT_EQ(LoadResText(u"anything at all;106"), u"Error Message"_s);
  EXPECT_EQ(LoadResText(u";106"), u"Error Message"_s);
  EXPECT_EQ(LoadResText(u"x; 106 "), u"Error Message"_s);
  EXPECT_EQ(LoadResText(u"x;106;105"), u"Error Message"_s);
}

TEST(Texts, GivesNothingForAReferenceThatFails) {
  for (const QStringView reference : {u"", u"106", u"Error Message", u"Error Message;", u"x;y;106", u"x;999",
                                      u"x;-106", u"x;99999999999"}) {
    EXPECT_EQ(LoadResText(reference), QString()) << reference.toString().toStdString();
  }
}

TEST(Texts, EveryReferenceInTheSourcesIsInTheTable) {
  static const QRegularExpression reference(uR"re("[^"\n]*;(\d{3})")re"_s);
  int found = 0;
  for (const QString& room :
       {u"/app"_s, u"/charts"_s, u"/core"_s, u"/platform"_s, u"/screens"_s, u"/stats"_s}) {
    QDirIterator files(QStringLiteral(KESTREL_SOURCES) + room, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      auto matches = reference.globalMatch(QString::fromUtf8(file.readAll()));
      while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        ++found;
        EXPECT_FALSE(TextNumber(match.captured(1).toInt()).isEmpty())
            << file.fileName().toStdString() << ": " << match.captured().toStdString();
      }
    }
  }
  EXPECT_GT(found, 10) << "the sources were not found";
}

}  // namespace
