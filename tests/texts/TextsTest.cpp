// How texts are looked up, and that every text reference in the program finds its text.
#include "texts/Texts.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

TEST(Texts, LooksUpByTheSecondPartAlone) {
  for (const QStringView found : {u"Error Message;106", u";106", u"x; 106 ", u"x;106;105"})
    EXPECT_EQ(LoadResText(found), u"Error Message"_s) << found.toString().toStdString();
  EXPECT_EQ(LoadResText(u";107"), u" with error: "_s) << "blanks are part of a text";
  for (const QStringView fails : {u"", u"106", u"Error Message;", u"x;y;106", u"x;-106", u"x;99999999999"})
    EXPECT_EQ(LoadResText(fails), QString()) << fails.toString().toStdString();
}

TEST(Texts, EveryReferenceInTheSourcesIsInTheTable) {
  static const QRegularExpression reference(uR"re("[^"\n]*;(\d{3})")re"_s);
  int found = 0;
  for (const QString& room : {u"/app"_s, u"/charts"_s, u"/cli"_s, u"/core"_s, u"/data"_s, u"/platform"_s,
                              u"/screens"_s, u"/texts"_s}) {
    QDirIterator files(QStringLiteral(KESTREL_SOURCES) + room, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      auto matches = reference.globalMatch(QString::fromUtf8(file.readAll()));
      while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        ++found;
        EXPECT_FALSE(LoadResText(u";"_s + match.captured(1)).isEmpty())
            << file.fileName().toStdString() << ": " << match.captured().toStdString();
      }
    }
  }
  EXPECT_GT(found, 10) << "the sources were not found";
}

}  // namespace
