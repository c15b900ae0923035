// The text table is complete and exact, and every text reference in the program finds its text.
#include "core/Texts.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString TextNumber(int number) { return LoadResText(QString(u"x;"_s + QString::number(number))); }

TEST(Texts, KeepsBlanksAndSpellings) {
  const std::vector<std::pair<int, QString>> texts = {
      {107, u" with error: "_s},
      {160, u" samples have been discarded because they exceed flier limits. "_s},
      {161, u"Only "_s},
      {164, u" number of valid data samples to process"_s},
      {178, u"Failed to setup data object with error: "_s},
      {193, u" Red Flag Limits "_s},
      {158, u"Medium (Detection Rules 1,2, and 4)"_s},
      {267, u"DETECTION RULE UNKNOWN. Invalid rule violation."_s},
  };
  for (const auto& [number, text] : texts) EXPECT_EQ(TextNumber(number), text) << number;
  EXPECT_TRUE(TextNumber(177).endsWith(u"Any area with an aterisk must be entered."_s));
  EXPECT_TRUE(TextNumber(265).endsWith(u"the central line. "_s));
  EXPECT_TRUE(TextNumber(304).contains(u"select Tools->Connection (click"_s));
}

TEST(Texts, LooksUpByTheSecondPartAlone) {
  for (const QStringView found : {u"Error Message;106", u";106", u"x; 106 ", u"x;106;105"})
    EXPECT_EQ(LoadResText(found), u"Error Message"_s) << found.toString().toStdString();
  for (const QStringView fails : {u"", u"106", u"Error Message;", u"x;y;106", u"x;-106", u"x;99999999999"})
    EXPECT_EQ(LoadResText(fails), QString()) << fails.toString().toStdString();
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
