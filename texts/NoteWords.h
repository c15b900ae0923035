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
inline constexpr Text<1> noTimes{
    u"no point has a time, and so none is in the period %1; append and Add Measurements give their values "
    u"one, import does with --time-column"};
inline constexpr Text<3> noPoints{
    u"no point was taken in the period %1; the points that have a time were taken from %2 to %3"};
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
inline constexpr Text<1> more{u"and %1 more: see the points on the chart screen, or status --json"};
inline constexpr Text<3> hover{u"Note %1 (%2): %3"};

inline constexpr Text<> command{u"&Note…"};
inline constexpr Text<> title{u"Note on a Point"};
inline constexpr Text<1> heading{u"Point %1"};
inline constexpr Text<> choosePoint{
    u"Choose a point first: put the mouse on it, or go to it with Page Down, Page Up or F3. Then press N."};
inline constexpr Text<> which{
    u"Which note of the point (save or undo what you typed before you change to another)"};
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

// Runs and notes that have lost their samples.
namespace Unplaced {
inline constexpr Text<1> onPage{
    u"No longer on a sample: %1. The chart screen lists them all (key U), and so does status --json."};
inline constexpr Text<2> both{u"%1, %2"};
inline constexpr Text<> oneRun{u"1 run"};
inline constexpr Text<1> runs{u"%1 runs"};
inline constexpr Text<> oneNote{u"1 note"};
inline constexpr Text<1> notes{u"%1 notes"};

inline constexpr Text<> command{u"&Unplaced Runs and Notes…"};
inline constexpr Text<> title{u"Unplaced Runs and Notes"};
inline constexpr Text<> why{
    u"The samples of these runs and notes are gone: removed, or changed by a program that does not know of "
    u"them. They stay listed here until you remove them, and a note can be put on another point."};
inline constexpr Text<> none{u"Every run and every note has its samples."};
inline constexpr Text<> kind{u"What"};
inline constexpr Text<> run{u"Run"};
inline constexpr Text<> note{u"Note"};
inline constexpr Text<> when{u"When"};
inline constexpr Text<> samples{u"Samples"};
inline constexpr Text<1> was{u"was %1"};
inline constexpr Text<> about{u"Lot or note"};
inline constexpr Text<> whole{u"The whole note"};
inline constexpr Text<1> place{u"&Put on Point %1"};
inline constexpr Text<> placeSomewhere{u"&Put on a Point"};
inline constexpr Text<> placeTip{
    u"Put the selected note on the point that was chosen on the chart before this window was opened"};
inline constexpr Text<1> placed{u"The note is on point %1 now."};
inline constexpr Text<2> taken{
    u"Point %1 has the note \u201c%2\u201d. Put this one on another point, or add its text to that one."};
inline constexpr Text<> gone{u"This note, or the point's samples, have changed in the library meanwhile."};
inline constexpr Text<> remove{u"&Remove"};
inline constexpr Text<> removeTip{u"Remove what is selected (Del); you are asked first"};
inline constexpr Text<> removeAll{u"Remove &All"};
inline constexpr Text<> removeAllTip{u"Remove everything in this list; you are asked first"};
inline constexpr Text<1> confirm{u"Remove %1 from the library? This cannot be undone."};
inline constexpr Text<> close{u"Close"};
}  // namespace Unplaced

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
