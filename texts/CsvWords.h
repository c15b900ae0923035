// What is refused of a CSV file, or asked about it.
#pragma once

#include "texts/Texts.h"

namespace Words::Csv {

inline constexpr Text<1> notText{u"%1 is not a text file"};
inline constexpr Text<4> uneven{
    u"%1 line %2 has %3 columns, the first line has %4; --separator or --decimal may settle it"};
inline constexpr Text<3> severalColumns{u"%1 has %2 columns (%3); name one with --column"};
inline constexpr Text<4> columnsOrOne{
    u"%1 has %2 columns (%3); name one with --column, or say %4 where it is only one"};
inline constexpr Text<3> oneHeadingTwice{u"%1 has %2 columns \"%3\"; choose by number"};
inline constexpr Text<3> noSuchColumn{u"%1 has no column \"%2\" (its first line is: %3)"};
inline constexpr Text<2> openQuote{u"%1 line %2: a quote is not closed"};
inline constexpr Text<1> noValues{u"%1 holds no values"};
inline constexpr Text<3> unitOrColumns{
    u"%1 line %2: \"%3\" may be one value with a unit (--separator semicolon) or several columns "
    u"(--separator comma)"};
inline constexpr Text<3> headingOrColumns{
    u"%1 line %2: \"%3\" may be the heading of one column, or of several (--separator comma)"};
inline constexpr Text<3> headingOrFault{
    u"%1 line %2: \"%3\" is not a number; if it is the heading, --column \"%3\" says so"};
inline constexpr Text<4> headingOrValue{
    u"%1 line %2: \"%3\" may be a heading (%4 says so) or a value (--no-heading says so)"};
inline constexpr Text<> headingOption{u"--heading"};
inline constexpr Text<1> columnOption{u"--column \"%1\""};

inline constexpr Text<3> line{u"%1 line %2: %3"};
inline constexpr Text<3> place{u"%1 line %2, column %3"};
inline constexpr Text<4> placeWithHeading{u"%1 line %2, column %3 (%4)"};
inline constexpr Text<1> noNumber{u"%1: there is no number"};
inline constexpr Text<2> isNone{u"%1: \"%2\" is not a number"};
inline constexpr Text<2> isNoneWithPoint{u"%1: \"%2\" is not a number with a decimal point"};
inline constexpr Text<2> isNoneWithComma{u"%1: \"%2\" is not a number with a decimal comma"};
inline constexpr Text<> orDecimalComma{u"; if the comma is decimal, --decimal comma says so"};
inline constexpr Text<1> ifUnit{u"; if \"%1\" is its unit, --unit \"%1\" says so"};
inline constexpr Text<5> bothMarks{
    u"%1: \"%2\" in line %3 has a decimal comma, \"%4\" in line %5 a decimal point"};

inline constexpr Text<1> severalValues{u"%1 values"};
inline constexpr Text<> onLinesOfTheirOwn{u"each on a line of its own"};
inline constexpr Text<> noValue{u"no value"};
inline constexpr Text<> asColumns{u"several columns"};

}  // namespace Words::Csv
