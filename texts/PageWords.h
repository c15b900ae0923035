// The words of the page of charts: its lines, the verdict, the capability.
#pragma once

#include "texts/Texts.h"

namespace Words {

// The page of charts, on paper and in files.
namespace Page {
inline constexpr Text<> average{u" AVERAGE"};
inline constexpr Text<> range{u" RANGE"};
inline constexpr Text<> histogram{u" HISTOGRAM"};
inline constexpr Text<> tooFewToPlot{u"NOT ENOUGH  DATA"};
inline constexpr Text<> tooFewToSumUp{u"NOT ENOUGH DATA"};
inline constexpr Text<3> limits{u"LCL=%1, Mean=%2, UCL=%3"};
inline constexpr Text<2> limitsShort{u"LCL=%1, UCL=%2"};
inline constexpr Text<1> rules{u"Rules:  %1"};
// The rules where there is little room for their words.
inline constexpr Text<> ruleOne{u"1 = limit"};
inline constexpr Text<> ruleTwo{u"2 = 2 of 3 > 2\u03c3"};
inline constexpr Text<> ruleThree{u"3 = 4 of 5 > 1\u03c3"};
inline constexpr Text<> ruleFour{u"4 = 8 on a side"};
inline constexpr Text<> ruleOneShort{u"1=limit"};
inline constexpr Text<> ruleTwoShort{u"2=2/3>2\u03c3"};
inline constexpr Text<> ruleThreeShort{u"3=4/5>1\u03c3"};
inline constexpr Text<> ruleFourShort{u"4=8 on a side"};
inline constexpr Text<> beyondStandardScale{u"Scales fitted: the standard scale ends at 10,000,000"};
inline constexpr Text<> flat{u"Limits fill less than a fifth of a scale: a fitted page shows more"};
inline constexpr Text<> fitted{u"fitted scale"};
inline constexpr Text<2> partShort{u"points %1 to %2"};
inline constexpr Text<3> part{u"points %1 to %2 of %3"};
inline constexpr Text<> individuals{u"individuals"};
inline constexpr Text<> movingRange{u"moving range"};
inline constexpr Text<> limitsReversed{u"The lower control limit stands above the upper one."};
inline constexpr Text<1> rangesOutside{u"Beyond a limit:  %1"};
inline constexpr Text<> cpkFromRanges{u"Cpk from R-bar / d2"};
inline constexpr Text<> cpkFromMovingRanges{u"Cpk from R-bar / d2 (moving ranges of two)"};
inline constexpr Text<2> number{u"Page %1 of %2"};
inline constexpr Text<1> unit{u"Unit: %1"};
inline constexpr Text<1> samples{u"Samples: %1"};
inline constexpr Text<1> subgroupSize{u"Subgroup size: %1"};
inline constexpr Text<1> printed{u"Printed: %1"};
inline constexpr Text<3> listTooShort{u"Subscript out of range: %1 has %2 of %3 elements"};
inline constexpr Text<> notPainted{u"The page cannot be painted."};
inline constexpr Text<> notPaintedToTheEnd{u"The page could not be painted completely."};
inline constexpr Text<2> noPicture{u"no picture of %1 by %2"};
inline constexpr Text<> notCoded{u"the picture cannot be coded"};
inline constexpr Text<1> unknownFormat{u"%1: the name of a page's file ends in .pdf, .png or .svg"};
}  // namespace Page

// What the page says of the process in a line, and what that rests on.
namespace Verdict {
inline constexpr Text<> inControl{u"IN CONTROL"};
inline constexpr Text<> notInControl{u"NOT IN CONTROL"};
inline constexpr Text<> limitsReversed{u"LIMITS STAND THE WRONG WAY ROUND: recalculate"};
inline constexpr Text<2> because{u"%1: %2"};
inline constexpr Text<2> ruleAt{u"rule %1 at %2"};
inline constexpr Text<2> andMore{u"%1 and %2 more"};
inline constexpr Text<2> alsoRules{u"%1; also %2"};
inline constexpr Text<1> rules{u"rules %1"};
inline constexpr Text<1> capable{u"capable (Cpk %1)"};
inline constexpr Text<1> notCapable{u"not capable (Cpk %1)"};
inline constexpr Text<> notJudged{u"capability not judged"};
inline constexpr Text<1> notJudgedFor{u"capability not judged: %1"};
inline constexpr Text<1> rangesAt{u"ranges beyond their limits at %1"};
inline constexpr Text<1> rangesAtShort{u"ranges outside at %1"};
inline constexpr Text<> rangesOutside{u"ranges outside"};
inline constexpr Text<3> rulesInForce{u"Rules in force: %1 (%2 sensitivity, %3)"};
inline constexpr Text<1> rulesInForceShort{u"Rules in force: %1"};
inline constexpr Text<> low{u"low"};
inline constexpr Text<> medium{u"medium"};
inline constexpr Text<> high{u"high"};
inline constexpr Text<> longTerm{u"long term: all points"};
inline constexpr Text<> shortTerm{u"short term: the last eight points"};
inline constexpr Text<> limitsFromAll{u"Limits calculated from all points"};
inline constexpr Text<2> limitsFromPoints{u"Limits calculated from points %1 to %2"};
inline constexpr Text<> limitsKept{u"Limits kept as stored"};
inline constexpr Text<1> library{u"Library: %1"};
// What limits rest on, behind the numbers of the rules, in few words.
inline constexpr Text<1> shortFromAll{u"Rules %1, limits of all points"};
inline constexpr Text<3> shortFromPoints{u"Rules %1, limits of points %2 to %3"};
inline constexpr Text<1> shortKept{u"Rules %1, limits kept"};
}  // namespace Verdict

// The page of two data sets.
namespace Comparison {
inline constexpr Text<> one{u"A"};
inline constexpr Text<> other{u"B"};
inline constexpr Text<2> both{u"%1 and %2"};
inline constexpr Text<2> named{u"%1   %2"};
inline constexpr Text<2> graph{u"%1 \u00b7%2"};
inline constexpr Text<> sameScale{u"A and B on the same scale"};
inline constexpr Text<> ownScales{u"A and B each on a scale of its own"};
inline constexpr Text<2> unitsDiffer{u"Units differ (%1, %2): a scale each"};
inline constexpr Text<> unitsDifferShort{u"Units differ: a scale each"};
inline constexpr Text<> noUnit{u"none"};
inline constexpr Text<> percent{u"% of the samples"};
inline constexpr Text<> legend{u"A: bars    B: line"};
inline constexpr Text<2> limitOf{u"%1 %2"};
inline constexpr Text<> unit{u"Unit"};
inline constexpr Text<> outside{u"Outside spec."};
}  // namespace Comparison

// The block of capability on the page.
namespace Capability {
inline constexpr Text<> cp{u"Cp"};
inline constexpr Text<> pp{u"Pp"};
inline constexpr Text<> ppk{u"Ppk"};
inline constexpr Text<> sigmaFromRanges{u"Sigma within (R-bar / d2)"};
inline constexpr Text<> sigmaFromMovingRanges{u"Sigma within (MR-bar / d2)"};
inline constexpr Text<> sigmaWithin{u"Sigma within"};
inline constexpr Text<> sigmaOverall{u"Sigma overall (n \u2212 1)"};
inline constexpr Text<> sigmaOverallShort{u"Sigma overall"};
inline constexpr Text<> outside{u"Outside spec. limits"};
inline constexpr Text<> outsideShort{u"Outside"};
inline constexpr Text<> expected{u"Expected outside"};
inline constexpr Text<> expectedShort{u"Expected"};
inline constexpr Text<2> countedOf{u"%1 of %2"};
inline constexpr Text<1> percent{u"%1 %"};
inline constexpr Text<1> below{u"below %1 %"};
inline constexpr Text<> notGiven{u"none given"};
inline constexpr Text<> noSpecification{u"no specification"};
inline constexpr Text<> limitsReversed{u"USL is not above LSL"};
inline constexpr Text<> noVariation{u"no variation"};
inline constexpr Text<> none{u"none"};
inline constexpr Text<> nominalShort{u"Nom."};
inline constexpr Text<> subgroupShort{u"Subgroup"};
inline constexpr Text<> modifiedShort{u"Modified"};
inline constexpr Text<> caution{u"caution: not in control"};
inline constexpr Text<> cautionShort{u"not in control"};
inline constexpr Text<> cautionRanges{u"caution: ranges outside"};
inline constexpr Text<> cautionRangesShort{u"ranges outside"};
inline constexpr Text<> cautionShortest{u"caution"};
}  // namespace Capability

}  // namespace Words
