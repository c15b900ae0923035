// The named texts of working on one library with others: what they changed, what a save meets, what was
// deleted, and a second start of the program.
#pragma once

#include "texts/Texts.h"

namespace Words::Sharing {

// A second start.
inline constexpr Text<> noAnswer{
    u"Kestrel is running already, but does not answer. Close it, or end its process, and try again."};
inline constexpr Text<1> opensLater{u"%1 opens when the window in front is closed."};
inline constexpr Text<1> notOpened{u"%1 was not opened: there are changes that are not saved."};

// What others changed, in one line; %1 is the time.
inline constexpr Text<1> updated{u"updated %1"};
inline constexpr Text<1> changedWhileOpen{
    u"%1: somebody else changed this data set. What you have entered stays; Save takes in what was changed, "
    u"F5 shows it."};
inline constexpr Text<1> changedBeneath{
    u"%1: somebody else changed this data set. Your new limits stay; Save takes in what was changed."};
inline constexpr Text<1> deletedWhileOpen{u"%1: somebody else deleted this data set."};
inline constexpr Text<1> unitChangedWhileOpen{
    u"%1: somebody else changed this unit. What you have entered stays; Refresh list shows theirs."};
inline constexpr Text<1> unitDeletedWhileOpen{u"%1: somebody else deleted this unit."};
inline constexpr Text<1> deletedByOthers{u"Somebody else deleted \"%1\"."};
inline constexpr Text<1> unreadable{u"The library cannot be read at present: %1"};
inline constexpr Text<2> unreadableWhileOpen{u"%1: this data set can no longer be read. %2"};
inline constexpr Text<> readAgain{
    u"The library's file was another one or could not be read. It has been read again."};
inline constexpr Text<1> saved{u"saved %1"};
inline constexpr Text<2> savedAndTakenIn{u"saved %1. %2"};

// What could not be read when the library was loaded.
inline constexpr Text<1> nothingRead{u"The data sets could not be read:\n%1"};
inline constexpr Text<2> notAllRead{u"%1  –  not every data set could be read: %2"};

// A conflict.
inline constexpr Text<> conflictTitle{u"Changed by somebody else"};
inline constexpr Text<1> conflict{
    u"Somebody else has changed \"%1\" since you opened it, and so have you. Nothing has been written yet. "
    u"Which version is to stand?"};
inline constexpr Text<> subject{u"Changed by both"};
inline constexpr Text<> mine{u"Yours"};
inline constexpr Text<> theirs{u"In the library"};
inline constexpr Text<> takeTheirs{u"Take &theirs"};
inline constexpr Text<> takeTheirsTip{u"Show what stands in the library; what you entered is lost"};
inline constexpr Text<> keepMine{u"&Keep mine"};
inline constexpr Text<> keepMineTip{
    u"Write what you entered in place of theirs; what else they changed stays as it is"};
inline constexpr Text<> cancel{u"&Cancel"};
inline constexpr Text<> cancelTip{u"Write nothing; what you entered stays on the screen"};
inline constexpr Text<1> samples{u"%1 samples"};
inline constexpr Text<2> sample{u"no. %1: %2"};
inline constexpr Text<1> andMore{u"and %1 more"};
inline constexpr Text<2> figure{u"%1: %2"};
inline constexpr Text<> highFlier{u"High flier"};
inline constexpr Text<> lowFlier{u"Low flier"};
inline constexpr Text<> xBarUCL{u"X-bar UCL"};
inline constexpr Text<> xBarMean{u"X-bar mean"};
inline constexpr Text<> xBarLCL{u"X-bar LCL"};
inline constexpr Text<> rangeUCL{u"Range UCL"};
inline constexpr Text<> rangeMean{u"Range mean"};
inline constexpr Text<> rangeLCL{u"Range LCL"};
inline constexpr Text<> unitDescription{u"the description"};
inline constexpr Text<1> unitConflict{
    u"Somebody else has changed the unit \"%1\" since it was read, and so have you. Nothing has been written "
    u"yet. Which version is to stand?"};
inline constexpr Text<1> addAgain{
    u"Somebody else has deleted \"%1\" since you opened it. Nothing has been written. Do you wish to add it "
    u"as a new data set?"};
inline constexpr Text<1> addUnitAgain{
    u"Somebody else has deleted the unit \"%1\" since it was read. Nothing has been written. Do you wish to "
    u"add it as a new unit?"};
inline constexpr Text<1> nameIsTaken{
    u"Somebody else has added another data set named \"%1\" meanwhile. Nothing has been written."};

// Deleted data sets.
inline constexpr Text<> restoreEntry{u"Restore Deleted..."};
inline constexpr Text<> canBeRestored{u"It is kept aside: Stat Data, Restore Deleted lists it."};
inline constexpr Text<> restoreTitle{u"Restore deleted data sets"};
inline constexpr Text<> deletedDataSets{u"&Deleted data sets:"};
inline constexpr Text<> deletedAt{u"Deleted"};
inline constexpr Text<> state{u"State"};
inline constexpr Text<> notReadable{u"cannot be read"};
inline constexpr Text<> restoreAs{u"Restore &as:"};
inline constexpr Text<> restore{u"&Restore"};
inline constexpr Text<> restoreTip{
    u"Put the data set back into the list, with its number and all its values"};
inline constexpr Text<> close{u"&Close"};
inline constexpr Text<> nothingDeleted{u"Nothing is kept here: no data set of this library was deleted."};
inline constexpr Text<> nameTakenHere{
    u"There is a data set of that name. Enter another name to restore it under."};
inline constexpr Text<1> restored{u"\"%1\" is back in the list."};

}  // namespace Words::Sharing

// Another name for a data set.
namespace Words::Renaming {
inline constexpr Text<> entry{u"Rename..."};
inline constexpr Text<> menuEntry{u"&Rename..."};
inline constexpr Text<> title{u"Rename data set"};
inline constexpr Text<> newName{u"&New description:"};
inline constexpr Text<> scripts{
    u"Scripts and gauges that add to this data set by its description need the new one as well."};
inline constexpr Text<> rename{u"&Rename"};
inline constexpr Text<> renameTip{u"Give the data set this description, here and for everybody else"};
inline constexpr Text<> isEmpty{u"A data set needs a description."};
inline constexpr Text<1> isTaken{u"Another data set is named \"%1\" already. Enter another description."};
}  // namespace Words::Renaming
