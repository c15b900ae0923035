// The words of the units of measurement, and of the bar that leads through their records.
#pragma once

#include "texts/Texts.h"

namespace Words {

namespace Units {
inline constexpr Text<> entry{u"Units of Measurement…"};
inline constexpr Text<1> saved{u"%1 is saved."};
inline constexpr Text<> noneShown{u"No unit is shown. Refresh list shows the units, Add makes a new one."};
inline constexpr Text<> none{u"There are no units yet. Add makes the first one."};
inline constexpr Text<> nameStays{
    u"The name of a unit stays, since data sets refer to it; its description can be changed. Add makes a new "
    u"unit."};
inline constexpr Text<1> usedByOne{u"The data set \"%1\" uses it, and keeps it."};
inline constexpr Text<2> usedBySeveral{u"%1 data sets use it, \"%2\" among them, and keep it."};
inline constexpr Text<> newUnit{u"New unit"};
inline constexpr Text<2> place{u"Unit %1 of %2"};
}  // namespace Units

namespace Record {
inline constexpr Text<> add{u"&Add"};
inline constexpr Text<> addTip{u"Add a new record"};
inline constexpr Text<> save{u"&Save"};
inline constexpr Text<> saveTip{u"Save the changes to this record"};
inline constexpr Text<> remove{u"&Delete"};
inline constexpr Text<> removeTip{u"Delete this record"};
inline constexpr Text<> refresh{u"&Refresh list"};
inline constexpr Text<> refreshTip{u"Read the list again and show its first record"};
inline constexpr Text<> first{u"&First"};
inline constexpr Text<> firstTip{u"Go to the first record"};
inline constexpr Text<> previous{u"&Previous"};
inline constexpr Text<> previousTip{u"Go to the previous record"};
inline constexpr Text<> next{u"&Next"};
inline constexpr Text<> nextTip{u"Go to the next record"};
inline constexpr Text<> last{u"&Last"};
inline constexpr Text<> lastTip{u"Go to the last record"};
inline constexpr Text<> help{u"&Help"};
inline constexpr Text<> helpTip{u"Application help"};
inline constexpr Text<> exit{u"E&xit"};
inline constexpr Text<> exitTip{u"Close this screen"};
}  // namespace Record

}  // namespace Words
