// CSV columns as spreadsheets of several languages write them: what is read is what was meant, or it is
// refused.
#include <gtest/gtest.h>

#include "cli/CsvColumn.h"
#include "platform/error/Error.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;

namespace {

const QString fileName = u"data.csv"_s;

// Joined by blanks, each with what stands beside it.
QString Joined(const std::vector<CsvSample>& samples) {
  QStringList words;
  for (const CsvSample& sample : samples) words << (QStringList(sample.value) + sample.beside).join(u'/');
  return words.join(u' ');
}

// The values, or the refusal without the file's name.
std::string Read(const QByteArray& text, const CsvOptions& options = {}) {
  try {
    return Joined(ParseCsvColumn(text, fileName, options)).toStdString();
  } catch (const InputError& error) {
    EXPECT_TRUE(ErrorText(error).startsWith(fileName)) << ErrorText(error).toStdString();
    return ErrorText(error).mid(fileName.size() + 1).toStdString();
  }
}

CsvOptions Named(const QString& column) { return {column, {}, {}}; }

TEST(CsvColumn, SeparatorsAndHeadings) {
  const QByteArray quoted = "\"Length; left; mm\",Count\n10,5\n11,6\n";
  EXPECT_EQ(Read(quoted, Named(u"count"_s)), "5 6");
  EXPECT_EQ(Read(quoted, Named(u"1"_s)), "10 11");
  EXPECT_EQ(Read(quoted), "has 2 columns (Length; left; mm, Count); name one with --column");
  EXPECT_EQ(Read("sep=;\nW;x\n12,3;1\n", Named(u"W"_s)), "12.3");
  EXPECT_EQ(Read("x\ty\n1;2\t3,5\n", Named(u"y"_s)), "3.5");
  EXPECT_EQ(Read("3;1;2\n9;8;7\n", Named(u"2"_s)), "1 8") << "the second column, not the one headed 2";
  EXPECT_EQ(Read("2023;2024\n9;8\n", Named(u"2024"_s)), "8") << "chosen by name it is a heading";
  EXPECT_EQ(
      Read("part;2024\n9;8\n", Named(u"2"_s)),
      "line 1: \"2024\" may be a heading (--column \"2024\" says so) or a value (--no-heading says so)");
  EXPECT_EQ(Read("2024\n9\n8\n", {{}, {}, {{5, 15}}}), Read("part;2024\n9;8\n", Named(u"2"_s)));
  EXPECT_EQ(Read("2024;Zeit\n2095;08:00\n2101;08:01\n", {u"1"_s, {}, {{1800, 2400}}}),
            Read("part;2024\n9;8\n", Named(u"2"_s)));
  EXPECT_EQ(Read(";w\n1;8\n2;9\n", Named(u"1"_s)), "1 2");
  EXPECT_EQ(Read("w;w\n1;8\n", Named(u"W"_s)), "has 2 columns \"W\"; choose by number");
  EXPECT_EQ(Read("w\n5\n\n6\n\n"), "5 6");
  EXPECT_EQ(Read("w;v\n5;1\n;1\n6;1\n", Named(u"w"_s)), "line 3, column 1 (w): there is no number");
  EXPECT_EQ(Read(QByteArray("a\0b\n", 4)), "is not a text file");
  EXPECT_EQ(Read("\"5\"\" pipe\";n\n7;1\n", Named(u"5\" pipe"_s)), "7");
  EXPECT_EQ(Read("L\xE4nge\n1\x92"
                 "234.5\n",
                 Named(u"L\u00E4nge"_s)),
            "1234.5")
      << "of an older code page";
  EXPECT_EQ(Read("\"t\",\"p\",\"c; n\"\n\"08:00\",\"7.5\",\"1; x\"\n", Named(u"2"_s)), "7.5");
}

TEST(CsvColumn, WhatStandsBesideIsReadAsItIs) {
  const auto beside = [](const QString& column, const QStringList& others) {
    CsvOptions options = Named(column);
    options.beside = others;
    return options;
  };
  const QByteArray text = "Taken;w;\"Lot; no\"\n1.4.2026;5,5;\"a \"\"b\"\"\"\n\n;6;\n2;7,5;c\n";
  EXPECT_EQ(Read(text, beside(u"w"_s, {u"lot; no"_s, u"1"_s})), "5.5/a \"b\"/1.4.2026 6// 7.5/c/2");
  EXPECT_EQ(Read("2024;t\n2023;8\n", beside(u"1"_s, {u"t"_s})), "2023/8") << "a heading is named";
  EXPECT_EQ(Read(text, beside(u"w"_s, {u"when"_s})),
            "has no column \"when\" (its first line is: Taken, w, Lot; no)");
  EXPECT_EQ(Read("5\n6\n", beside({}, {u"2"_s})), "has no column \"2\" (its first line is: 5)");
}

TEST(CsvColumn, WhatIsAmbiguousIsRefusedWithItsReadings) {
  const QByteArray bare = "12,3\n12,4\n";
  EXPECT_EQ(Read(bare),
            "has 2 columns (12, 3); name one with --column, or say --decimal comma where it is only one");
  EXPECT_EQ(Read(bare, Named(u"1"_s)),
            "line 1: \"12,3\" may be 12 (--separator comma) or 12.3 (--decimal comma)");
  EXPECT_EQ(Read(bare, {{}, {Decimal::Comma, {}}, {}}), "12.3 12.4");
  EXPECT_EQ(Read(bare, {u"1"_s, {{}, u','}, {}}), "12 12");
  EXPECT_EQ(Read("w\n" + bare),
            "line 2: \"12,3\" may be 12.3 (--decimal comma) or several columns (--separator comma)");
  for (const char* line :
       {"10,5 mm", "10,5 m3", "23,372.42 mm", "0,02502 /min", "1,234,567 mm H2O", "10,5 -", "10,5 cm\u00B3"})
    EXPECT_EQ(Read(line, Named(u"1"_s))
                  .rfind("line 1: \"" + std::string(line) + "\" may be one value with a unit", 0),
              0U);
  EXPECT_EQ(Read("10,08:00\n11,2024-01-05\n12,ok\n", Named(u"1"_s)), "10 11 12");
  EXPECT_EQ(Read("Length, mm\n10,5\n", Named(u"Length"_s)),
            "line 1: \"Length, mm\" may be the heading of one column, or of several (--separator comma)");
  EXPECT_EQ(
      Read("14.916,91\n", Named(u"1"_s)),
      "line 1: \"14.916,91\" may be 14.916 (--separator comma --decimal point), 14916 (--separator comma "
      "--decimal comma) or 14916.91 (--decimal comma)");
  EXPECT_EQ(Read("Ann;10,5\nBo;10,6\n", Named(u"2"_s)),
            "line 1: \"10,5\" may be 10.5 (--separator semicolon) or 5 (--separator comma)");
  const QByteArray commas = "w;x\n1,234;1\n2,345;2\n", points = "w\n1.234\n12\n";
  EXPECT_EQ(Read(commas, Named(u"w"_s)),
            "line 2: \"1,234\" may be 1234 (--decimal point) or 1.234 (--decimal comma)");
  EXPECT_EQ(Read(commas, {u"w"_s, {Decimal::Comma, {}}, {}}), "1.234 2.345");
  EXPECT_EQ(Read(points), "line 2: \"1.234\" may be 1.234 (--decimal point) or 1234 (--decimal comma)");
  EXPECT_EQ(Read(points, {{}, {}, {{0, 20}}}), Read(points)) << "12 may speak for thousands";
  EXPECT_EQ(Read("1.234\n1.235\n", {{}, {}, {{0, 20}}}), "1.234 1.235")
      << "thousands are out of the question";
  EXPECT_EQ(Read("1.234\n1.235\n", {{}, {}, {{0, 2000}}}).find("line 1: \"1.234\" may be"), 0U);
  EXPECT_EQ(Read("w;x\n1.000,5;1\n1.234;2\n", Named(u"w"_s)), "1000.5 1234") << "the first line tells";
  EXPECT_EQ(
      Read("w;x\n12,5;1\n12.7;2\n", Named(u"w"_s)),
      "line 3, column 1 (w): \"12,5\" in line 2 has a decimal comma, \"12.7\" in line 3 a decimal point");
}

TEST(CsvColumn, NothingIsJoinedOrLostWithoutAWord) {
  const CsvOptions near{{}, {}, {{90, 110}}}, large{{}, {}, {{1000, 2000}}}, wide{{}, {}, {{0, 2000}}};
  EXPECT_EQ(Read("100 101 102\n", near),
            "line 1: \"100 101 102\" may be 100101102 (--separator semicolon) or 3 values (each on a line of "
            "its own)");
  EXPECT_EQ(
      Read("w;v\n99 101.5;1\n", Named(u"w"_s)),
      "line 2: \"99 101.5\" may be 99101.5 (--separator semicolon) or 2 values (each on a line of its own)");
  EXPECT_EQ(Read("1 234.5\n", large), "1234.5") << "neither side is a value expected";
  EXPECT_EQ(Read("1 234.5\n", wide).find("line 1: \"1 234.5\" may be 1234.5 (--separator semicolon) or 2"),
            0U);
  EXPECT_EQ(Read("1 234.5\n", {{}, {{}, u';'}, {}}), "1234.5");
  for (const QByteArray& text : {QByteArray("n,w\nA,1\n\"B,2\nC,3\n"), QByteArray("n,w\nA,1\n\"B,2\n\"C,3\n"),
                                 QByteArray("\nw\n\"5\n6\n"), QByteArray("w;n\n1;\"\"\n2;\"x\n3;y\n")})
    EXPECT_EQ(Read(text, Named(text.contains("w\n\"") ? QString() : u"w"_s)), "line 3: a quote is not closed")
        << text.toStdString();
  for (const char* value : {"'10.5", "<0.5", "~5", "(5.2 mm)", "O.5", "x1"})
    EXPECT_EQ(Read(value + QByteArray("\n10.6\n"))
                  .find("line 1: \"" + std::string(value) + "\" is not a number; if it is the heading"),
              0U);
  EXPECT_EQ(Read("x1\n10.6\n", Named(u"X1"_s)), "10.6");
  for (const QByteArray& text : {QByteArray(), QByteArray("w\n"), QByteArray("\n\n")})
    EXPECT_EQ(Read(text), "holds no values");
  EXPECT_EQ(Read("5\n\uFF11\uFF12\n", wide), "line 2, column 1: \"\uFF11\uFF12\" is not a number");
}

TEST(CsvColumn, AUnitIsReadWhereItWasNamed) {
  CsvOptions comma{{}, {Decimal::Comma, {}}, {}, u"1/min"_s}, semicolon{{}, {{}, u';'}, {}, u"mm"_s};
  for (const char* line :
       {"10,5 1/min", "10,5 10^3/h", "10,5 3 mm", "10,525\u00B0C", "Ann,10,5 mm", "10,5 mm,x"}) {
    EXPECT_NE(Read(line, Named(u"1"_s)).find("\" may be one value with a unit"), std::string::npos) << line;
    EXPECT_EQ(Read(line, comma).find("10."), std::string(line) == "10,5 1/min" ? 0 : std::string::npos)
        << line;
  }
  EXPECT_EQ(
      Read("10,5 1/min\n10\n11,51/min\n", comma),
      "line 3, column 1: \"11,51/min\" is not a number with a decimal comma; if \"/min\" is its unit, --unit "
      "\"/min\" says so");
  EXPECT_EQ(Read("100\n120 mm\n", semicolon).find("line 1: \"100\" may be a heading"), 0U);
  EXPECT_EQ(Read("23,372.42 mm\n7mm\n", semicolon), "23372.42 7");
  EXPECT_EQ(Read("\"10,5 mm\"\n\"10,6 cm\"\n", semicolon),
            "line 2, column 1: \"10,6 cm\" is not a number; if \"cm\" is its unit, --unit \"cm\" says so");
  EXPECT_EQ(Read("id,count,length\n1,10,5 mm\n", Named(u"count"_s)), "10") << "the headings tell";
  EXPECT_EQ(
      Read("\u00D8 12,5 mm\n"),
      "has 2 columns (\u00D8 12, 5 mm); name one with --column, or say --decimal comma where it is only one");
  EXPECT_EQ(
      Read("12,345\n", {{}, {Decimal::Point, {}}, {}}),
      "has 2 columns (12, 345); name one with --column, or say --separator semicolon where it is only one");
}

TEST(CsvColumn, WhatMayBeAHeadingOrAValueIsAskedFor) {
  CsvOptions range{{}, {}, {{2000, 2050}}}, value = range, small{{}, {}, {{-1, 6}}};
  value.heading = false;
  const QByteArray year = "2024\n2020.5\n2023.25\n";
  const std::string either =
      "line 1: \"2024\" may be a heading (--column \"2024\" says so) or a value (--no-heading";
  EXPECT_EQ(Read(year, range).find(either), 0U);
  EXPECT_EQ(Read("5.1\n2020\n2023\n30000\n", range).find("line 1: \"5.1\" may be a heading"), 0U);
  EXPECT_EQ(Read(year, value), "2024 2020.5 2023.25");
  // What --column takes for a place cannot name a heading.
  CsvOptions headed = Named(u"2"_s);
  EXPECT_EQ(Read("No;1\n1;101.5\n2;99.5\n", headed),
            "line 1: \"1\" may be a heading (--heading says so) or a value (--no-heading says so)");
  headed.heading = true;
  EXPECT_EQ(Read("No;1\n1;101.5\n2;99.5\n", headed), "101.5 99.5");
  EXPECT_EQ(Read("\"10.05\"\n\"10,011\"\n", {{}, {}, {{9.7, 10.4}}}).find("line 2: \"10,011\""), 0U);
  range.column = u"1"_s;
  EXPECT_EQ(Read("2024;2025\n2020,5;1\n2023,25;2\n", range).find(either), 0U);
  EXPECT_EQ(Read("n;2024;2025\nA;2020;2019\nB;2021;2031\n", Named(u"2"_s)).find(either), 0U);
  EXPECT_EQ(Read("2024\n2'020\n2'023\n", range).find(either), 0U);
  EXPECT_EQ(Read("2024\n2020\n2023.5\n", range), "2024 2020 2023.5");
  EXPECT_EQ(Read("1;990\n2;1'010\n3;1'020\n", Named(u"2"_s)), "990 1010 1020") << "too short for thousands";
  EXPECT_EQ(Read("08:00;O'Neil;0,4\n08:01;B2;0,5\n", Named(u"3"_s)), "0.4 0.5") << "no heading above times";
  for (const char* text :
       {"ca. 5", "abt 5.3", "abt -.3", "NaN", "-inf", "n.d.", "n/a", "OK", "#DIV/0!", "?", "2024-05"}) {
    const std::string hint =
        "\" is not a number; if it is the heading, --column \"" + std::string(text) + "\" says so";
    EXPECT_NE(Read(text + QByteArray("\n5.5\n"), small).find(hint), std::string::npos) << text;
    small.column = QString::fromUtf8(text);
    EXPECT_EQ(Read(text + QByteArray("\n5.5\n"), small), "5.5") << text;
    small.column.clear();
  }
  EXPECT_NE(Read("61.5;Mean\n42.5;1\n", Named(u"2"_s)).find("\"Mean\" is not a number; if it is the head"),
            std::string::npos);
  EXPECT_EQ(Read("5.1;x\n4,991;y\n", {u"1"_s, {}, {{0, 9}}}),
            "line 2: \"4,991\" may be 4991 (--decimal point) or 4.991 (--decimal comma)");
  for (const char* heading : {"kV", "Na", "mm", "Bore 12", "%"})
    EXPECT_EQ(Read(heading + QByteArray("\n5.5\n"), small), "5.5") << heading;
}

}  // namespace
