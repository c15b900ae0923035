// Reads every include of the program's sources: a room uses only what stands below it.
#include <gtest/gtest.h>

#include "tests/support/Cases.h"
#include "tests/support/Sources.h"

namespace {

// Lowest first: a room uses the rooms before it, but for those that know nothing of each other.
const QStringList rooms = {u"engine"_s, u"platform"_s, u"texts"_s,   u"data"_s, u"library"_s, u"charts"_s,
                           u"verify"_s, u"core"_s,     u"screens"_s, u"cli"_s,  u"app"_s};
const QMap<QString, QStringList> strangers = {
    {u"core"_s, {u"verify"_s}}, {u"screens"_s, {u"verify"_s}}, {u"cli"_s, {u"core"_s, u"screens"_s}}};

// What a part of platform uses besides itself.
const QMap<QString, QStringList> platformUses = {{u"access"_s, {u"error"_s}},
                                                 {u"ado"_s, {u"error"_s}},
                                                 {u"language"_s, {u"error"_s, u"engine"_s}},
                                                 {u"system"_s, {u"error"_s}}};

QString Part(const QString& path, int number) { return path.section(u'/', number, number); }

bool HasWindows(const QString& source) {
  return source.startsWith(u"screens/") || source.startsWith(u"app/") || source.startsWith(u"platform/ui/");
}

// Whether the file `source` may include `used`.
bool MayInclude(const QString& source, const QString& used) {
  const QString room = Part(source, 0);
  if (used.startsWith(u'Q')) {
    const bool isWidget = QFile::exists(QStringLiteral(KESTREL_QT_WIDGETS "/") + used);
    return room != u"engine" && (!isWidget || HasWindows(source));
  }
  const QString usedRoom = Part(used, 0);
  if (!rooms.contains(usedRoom)) return true;  // not one of ours
  if (room == u"platform") {
    const QString part = usedRoom == u"platform" ? Part(used, 1) : usedRoom;
    return part == Part(source, 1) || platformUses.value(Part(source, 1)).contains(part);
  }
  return !strangers.value(room).contains(usedRoom) && rooms.indexOf(usedRoom) <= rooms.indexOf(room);
}

TEST(Architecture, IncludesPointDown) {
  static const QRegularExpression include(u"^#include [<\"]([^>\"]+)[>\"]"_s,
                                          QRegularExpression::MultilineOption);
  const int count = ForEachSource(rooms, [&](const QString& path, const QString& source) {
    for (const auto& match : include.globalMatch(source))
      EXPECT_TRUE(MayInclude(path, match.captured(1)))
          << path.toStdString() << " uses " << match.captured(1).toStdString();
  });
  ASSERT_GT(count, 100);
}

// What the test above would let pass if its rules were wrong.
TEST(Architecture, PlantedIncludesAreRefused) {
  for (const auto& one : Cases(u"includes.json"_s, u"refused: the file, what it includes"_s))
    EXPECT_FALSE(MayInclude(one[0].toString(), one[1].toString()))
        << one[0].toString().toStdString() << " " << one[1].toString().toStdString();
  EXPECT_TRUE(MayInclude(u"screens/frmMain.cpp"_s, u"QWidget"_s));
  EXPECT_TRUE(MayInclude(u"platform/language/Conversions.cpp"_s, u"engine/Parse.h"_s));
  EXPECT_TRUE(MayInclude(u"cli/Console.cpp"_s, u"verify/Verification.h"_s));
}

TEST(Architecture, FilesStayReadable) {
  ForEachSource(rooms, [](const QString& path, const QString& source) {
    EXPECT_LE(source.count(u'\n'), 400) << path.toStdString();
  });
}

}  // namespace
