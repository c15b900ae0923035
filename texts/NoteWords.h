// The words of what is known of points besides their values: times, lots and notes.
#pragma once

#include "texts/Texts.h"

namespace Words {

// A stretch of days.
namespace Period {
inline constexpr Text<1> since{u"since %1"};
inline constexpr Text<1> until{u"until %1"};
inline constexpr Text<2> between{u"%1 to %2"};
inline constexpr Text<2> withOthers{u"%1 (and %2 points between of other days or without a time)"};
inline constexpr Text<1> head{u"Period: %1"};
inline constexpr Text<1> noPoints{
    u"no point has a time in the period %1; append and Add Measurements give their values one, import does "
    u"with "
    u"--time-column"};
inline constexpr Text<> thisMonth{u"This &month"};
inline constexpr Text<> thisMonthTip{u"Show the points of this month"};
inline constexpr Text<> lastMonth{u"&Last month"};
inline constexpr Text<> lastMonthTip{u"Show the points of the month before"};
inline constexpr Text<1> noneInMonth{u"No point has a time in the period %1."};
}  // namespace Period

// Notes on points, on the page and on the chart screen.
namespace Note {
inline constexpr Text<1> point{u"point %1"};
inline constexpr Text<1> noted{u"noted %1"};
inline constexpr Text<1> lot{u"lot %1"};
inline constexpr Text<2> line{u"%1: %2"};
inline constexpr Text<1> noPointYet{u"sample %1, no point yet"};
inline constexpr Text<> unplaced{u"no longer on a sample"};
inline constexpr Text<1> unplacedValue{u"no longer on a sample (was %1)"};
inline constexpr Text<> oneSample{u"1 sample"};
inline constexpr Text<1> samples{u"%1 samples"};
inline constexpr Text<1> more{u"and %1 more: see the points on the chart screen, or status --json"};
inline constexpr Text<3> hover{u"Note %1 (%2): %3"};

inline constexpr Text<> command{u"&Note…"};
inline constexpr Text<> title{u"Note on a Point"};
inline constexpr Text<1> heading{u"Point %1"};
inline constexpr Text<> caption{u"&Note:"};
inline constexpr Text<1> writtenBy{u"Written by %1."};
inline constexpr Text<2> theirs{
    u"%1 has changed this note meanwhile: \u201c%2\u201d Save puts yours in its place; Cancel leaves "
    u"theirs."};
inline constexpr Text<> theirsRemoved{
    u"Somebody has removed this note meanwhile. Save writes yours anew; Cancel leaves it so."};
inline constexpr Text<> gone{
    u"This point's samples have been removed from the library meanwhile. Copy the text to keep it."};
inline constexpr Text<> save{u"&Save"};
inline constexpr Text<> saveTip{u"Keep the note with the point's samples (Ctrl+Enter)"};
inline constexpr Text<> remove{u"&Remove"};
inline constexpr Text<> removeTip{u"Take the note away"};
inline constexpr Text<> cancel{u"Cancel"};
inline constexpr Text<1> saved{u"Noted at %1."};
}  // namespace Note

// What the axis of the points shows.
namespace AxisChoice {
inline constexpr Text<> numbers{u"Numbers"};
inline constexpr Text<> times{u"Times"};
inline constexpr Text<> lots{u"Lots"};
inline constexpr Text<> tip{u"What stands along the axis of the points (T)"};
inline constexpr Text<> time{u"Time"};
inline constexpr Text<> lot{u"Lot"};
}  // namespace AxisChoice

}  // namespace Words
