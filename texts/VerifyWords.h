// What the program's check of itself says: what is compared, and how each comparison comes out.
#pragma once

#include "texts/Texts.h"

namespace Words::Verify {

inline constexpr Text<> certified{u"NIST's certified sets: mean and standard deviation"};
inline constexpr Text<> certifiedSource{u"NIST Statistical Reference Datasets"};
inline constexpr Text<> mean{u"mean"};
inline constexpr Text<> standardDeviation{u"standard deviation"};
inline constexpr Text<> calculation{u"calculation"};
inline constexpr Text<> present{u"present"};
inline constexpr Text<> constants{u"Chart constants"};
inline constexpr Text<> constantsSource{u"Integration of the distribution of the range of n normal values"};
inline constexpr Text<1> d2{u"d2 for n = 2 to %1"};
inline constexpr Text<1> d3{u"d3 for n = 2 to %1"};
inline constexpr Text<> library{u"Library file"};
inline constexpr Text<> libraryThere{u"Library on the server"};
inline constexpr Text<> savedAndLoaded{u"Data sets saved and loaded again"};
inline constexpr Text<> librarySource{u"The program before and after, in a temporary file"};
inline constexpr Text<> savedAndLoadedThere{u"Data sets saved on the server and loaded again"};
inline constexpr Text<> serverSource{u"The program before and after, in a schema of its own"};
inline constexpr Text<1> noFolder{u"no temporary folder can be made: %1"};

inline constexpr Text<> agrees{u"agrees"};
inline constexpr Text<> differs{u"DIFFERS"};
inline constexpr Text<3> difference{u"%1: expected \"%2\", is \"%3\""};
inline constexpr Text<1> moreDifferences{u"and %1 more"};
inline constexpr Text<1> allAgree{u"All %1 checks agree."};
inline constexpr Text<2> someDiffer{u"%1 of %2 checks DIFFER."};

inline constexpr Text<3> checked{
    u"Kestrel %1 checked itself on %2 (%3).\n"
    u"Digits that agree with the expected figures, and how many have to:\n"};
inline constexpr Text<2> digits{u"%1 of %2"};
inline constexpr Text<1> title{u"Kestrel %1: verification report"};
inline constexpr Text<> heading{u"Verification report"};
inline constexpr Text<3> checkedHere{u"Kestrel %1, checked on this machine on %2 (%3)."};
inline constexpr Text<> tableTells{
    u"The table gives the significant digits in which each calculation agrees with the expected figures, "
    u"fifteen at most, and how many have to agree."};

}  // namespace Words::Verify
