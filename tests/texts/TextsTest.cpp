// How texts are looked up and filled, and that the program's sources take every text from here.
#include "texts/Texts.h"

#include <gtest/gtest.h>

#include "tests/support/Sources.h"
#include "texts/UnitWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

TEST(Texts, LooksUpByTheSecondPartAlone) {
  for (const QStringView found : {u"Error Message;106", u";106", u"x; 106 ", u"x;106;105"})
    EXPECT_EQ(LoadResText(found), u"Error Message"_s) << found.toString().toStdString();
  EXPECT_EQ(LoadResText(u";107"), u" with error: "_s) << "blanks are part of a text";
  for (const QStringView fails : {u"", u"106", u"Error Message;", u"x;y;106", u"x;-106", u"x;99999999999"})
    EXPECT_EQ(LoadResText(fails), QString()) << fails.toString().toStdString();
}

TEST(Texts, AValueThatLooksLikeAPlaceStaysAsItIs) {
  EXPECT_EQ(Words::Editor::isNotANumber(u"%2"_s, u"%1"_s), u"%2: \"%1\" is not a number."_s);
  EXPECT_EQ(Words::Units::place(2, 7), u"Unit 2 of 7"_s);
}

TEST(Texts, EveryReferenceInTheSourcesIsInTheTable) {
  static const QRegularExpression reference(uR"re("[^"\n]*;(\d{3})")re"_s);
  int found = 0;
  ForEachSource({u"app"_s, u"charts"_s, u"cli"_s, u"core"_s, u"data"_s, u"library"_s, u"platform"_s,
                 u"screens"_s, u"texts"_s},
                [&](const QString& path, const QString& source) {
                  for (const auto& match : reference.globalMatch(source)) {
                    ++found;
                    EXPECT_FALSE(LoadResText(u";"_s + match.captured(1)).isEmpty())
                        << path.toStdString() << ": " << match.captured().toStdString();
                  }
                });
  EXPECT_GT(found, 10) << "the sources were not found";
}

// A literal of two words and more that is no reference, or one with a letter in a call that shows it.
QStringList TextsIn(QString source) {
  static const QRegularExpression noText(uR"re(^\s*//.*$|uR"\(.*?\)"|'"')re"_s,
                                         QRegularExpression::MultilineOption);
  static const QRegularExpression joint(uR"re("\s*u")re"_s);
  static const QRegularExpression shown(
      uR"re((?:set(?:Text|ToolTip|WindowTitle|Title|Accessible\w+|PlaceholderText)|Title|Q(?:Label|GroupBox|)re"
      uR"re((?:Push|Radio)Button|CheckBox)|add(?:Item|Action|Button|Row)|Show\w*Message)\(u"[^"]*\p{L}{2}[^"]*")re"_s);
  static const QRegularExpression words(
      uR"re(u"(?:[^"\\\n]|\\.)*\p{L}{2} (?:[^"\\\n]|\\.)*\p{L}{2}(?:[^"\\\n]|\\.)*")re"_s);
  static const QRegularExpression reference(uR"re(;\d{3}"$)re"_s);
  source.remove(noText).replace(joint, {});
  QStringList texts;
  for (const QRegularExpression& kind : {shown, words}) {
    for (const auto& match : kind.globalMatch(source)) {
      if (!reference.match(match.captured()).hasMatch()) texts << match.captured();
    }
  }
  return texts;
}

TEST(Texts, NoneStandsOutsideThisRoom) {
  // What is no text although it looks like one.
  static const QRegularExpression allowed(
      u"^u\" ?(SELECT|DELETE|INSERT|CREATE|UPDATE|VACUUM|PRAGMA|CAST.* "
      u"AS|INTEGER|TEXT|WHERE|AND|Deleted|DeletedAt|Entry|"
      u"BEGIN|CLOSE|DECLARE|DROP|FETCH|IF|LOCK|ORDER|PERFORM) "  // SQL
      u"|Data Set\"$"                                            // names on a recorded page
      u"|^u\"(M[Mm]{2} |yyyy-)"                                  // forms of date and time
      u"|^u\"<t(able|r)[ >]"                                     // markup
      u"|DejaVu Sans"                                            // a font
      u"|Orvane Labs"_s);                                        // a key of the settings
  const int count = ForEachSource({u"app"_s, u"charts"_s, u"cli"_s, u"core"_s, u"data"_s, u"library"_s,
                                   u"platform/ui"_s, u"screens"_s, u"verify"_s},
                                  [&](const QString& path, const QString& source) {
                                    for (const QString& text : TextsIn(source)) {
                                      EXPECT_TRUE(allowed.match(text).hasMatch())
                                          << path.toStdString() << ": " << text.toStdString();
                                    }
                                  });
  EXPECT_GT(count, 50) << "the sources were not found";
  EXPECT_EQ(
      TextsIn(u"label->setText(u\"All\"_s); f(u\"two \"\n  u\"words\"); g(u\"one\", u\"Open it;123\");"_s),
      (QStringList{u"setText(u\"All\""_s, u"u\"two words\""_s}));
}

}  // namespace
