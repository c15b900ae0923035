// The named texts about numbers and times as people write them: what is refused, and what settles it.
#pragma once

#include "texts/Texts.h"

namespace Words::Numbers {

inline constexpr Text<2> isNone{u"value %1 (\"%2\") is not a number"};
inline constexpr Text<2> isNoneWithComma{u"value %1 (\"%2\") is not a number with a decimal comma"};
inline constexpr Text<1> oneOrSeveral{
    u"\"%1\" may be one value or several: write thousands without a blank, values on lines of their own"};
inline constexpr Text<3> onlyWith{u"\"%1\" is %2 only with %3"};
inline constexpr Text<2> mayBe{u"\"%1\" may be %2"};
inline constexpr Text<2> reading{u"%1 (%2)"};
inline constexpr Text<2> orElse{u"%1 or %2"};
inline constexpr Text<2> both{u"%1 and %2"};
inline constexpr Text<2> andMore{u"%1 and %2 more"};

inline constexpr Text<> decimalPoint{u"--decimal point"};
inline constexpr Text<> decimalComma{u"--decimal comma"};
inline constexpr Text<> separatorComma{u"--separator comma"};
inline constexpr Text<> separatorSemicolon{u"--separator semicolon"};
inline constexpr Text<> separatorTab{u"--separator tab"};
inline constexpr Text<> pointAndSemicolon{u"--decimal point --separator semicolon"};

}  // namespace Words::Numbers

namespace Words::Times {

inline constexpr Text<> lotOfLines{u"a lot is a text of one line, without control characters"};
inline constexpr Text<2> longLot{u"the lot has %1 characters; it may have up to %2"};
inline constexpr Text<1> isNone{u"\"%1\" is not a time; write it as 2026-04-23T10:15"};
inline constexpr Text<1> shortYear{u"\"%1\" may be several days; write the year with four digits"};
inline constexpr Text<3> twoReadings{u"\"%1\" may be %2 or %3; write it as one of these"};
inline constexpr Text<1> isSkipped{u"\"%1\" is not a time here: the clock was put forward over it"};

}  // namespace Words::Times
