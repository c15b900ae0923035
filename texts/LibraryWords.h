// The named texts of the room library: why a library, a row, a value or an Access file is refused.
#pragma once

#include "texts/Texts.h"

namespace Words {

// Libraries: what is refused of a file, a row or a value.
namespace Library {
inline constexpr Text<2> dataSet{u"Data set \"%1\" (ID %2)"};
inline constexpr Text<3> refusedValues{u"%1: data set \"%2\": %3"};
inline constexpr Text<2> tooManySamples{u"%1 samples are too many: a data set holds at most %2"};
inline constexpr Text<1> isAccessFile{u"%1 is an Access file; \"kestrel convert\" makes a library from it"};
inline constexpr Text<> noLibrary{u"it is not a library (it has no revision that is 2.0 or later)"};
inline constexpr Text<1> noMinorRevision{u"The revision %1 has no minor number."};
inline constexpr Text<2> alreadyThere{u"%1 has a data set \"%2\" already"};
inline constexpr Text<2> notThere{u"%1 has no data set \"%2\""};
inline constexpr Text<3> wasRenamed{u"%1 has no data set \"%2\" any more: it was renamed \"%3\""};
inline constexpr Text<1> noName{u"%1: a data set needs a name"};
inline constexpr Text<2> bothChanged{
    u"The data set \"%1\" was changed by somebody else since it was read. Nothing was written, since both "
    u"have changed %2. Open the library again to see it as it is now."};
inline constexpr Text<1> deletedMeanwhile{
    u"The data set \"%1\" was deleted by somebody else since it was read. Nothing was written. Open the "
    u"library again to see what it holds now."};
inline constexpr Text<2> noBackup{u"No backup of %1 could be made. The change goes on without one.\r\n%2"};
inline constexpr Text<3> hasBackup{
    u"%1. Its newest backup is %2 (%3): rename the damaged file, then copy the backup to its name."};
inline constexpr Text<1> isNull{u"%1 is Null."};
inline constexpr Text<1> isNoNumber{u"%1 is no number."};
inline constexpr Text<> nameTooLong{u"the name is too long: no backup could have one beside it"};
inline constexpr Text<1> notCopied{u"%1: the file cannot be copied"};
inline constexpr Text<> laterLayout{u"a later version of the program has changed this library; use that one"};
inline constexpr Text<2> idTaken{
    u"%1 has another data set with the ID %2; the deleted one cannot be brought back"};
inline constexpr Text<2> deletedAlready{
    u"%1: the data set with the ID %2 is gone; somebody else deleted it already"};
inline constexpr Text<2> noLongerKept{
    u"%1: \"%2\" is no longer kept aside; somebody else has restored or purged it"};
inline constexpr Text<2> notKept{
    u"%1: the data set with the ID %2 was not kept as it was written; nothing was changed"};
inline constexpr Text<1> isOnServer{
    u"%1: this makes a library file; \"kestrel copy\" then brings it to a server"};
inline constexpr Text<2> nameOnServer{u"%1 on %2"};
inline constexpr Text<> noLibraryInDatabase{
    u"there is no library in this database yet; \"kestrel new\" or \"kestrel copy\" makes one"};
inline constexpr Text<1> isThere{u"%1: there is a library already"};
inline constexpr Text<2> sameName{
    u"%1: two data sets have the same name \"%2\", which a server does not take; rename one of them"};
inline constexpr Text<1> andMore{u"and %1 more"};
}  // namespace Library

// What a save takes in of what others have written, or both have changed.
namespace Merge {
inline constexpr Text<> oneValueAdded{u"1 value was added meanwhile."};
inline constexpr Text<1> valuesAdded{u"%1 values were added meanwhile."};
inline constexpr Text<1> othersChanged{u"Somebody else changed %1 meanwhile."};
inline constexpr Text<1> renamed{u"Somebody else renamed it \"%1\" meanwhile."};
inline constexpr Text<> values{u"the values"};
inline constexpr Text<> controlLimits{u"the control limits or the subgroup size"};
inline constexpr Text<> specLimits{u"the specification limits or the nominal value"};
inline constexpr Text<> fliers{u"the flier limits"};
inline constexpr Text<> sensitivity{u"the sensitivity"};
inline constexpr Text<> detectionPeriod{u"the detection period"};
inline constexpr Text<> unit{u"the unit of measurement"};
}  // namespace Merge

// Taking over an Access file.
namespace Access {
inline constexpr Text<> noOrdinaryFile{u"it is not an ordinary file"};
inline constexpr Text<> noCharacter{u"the text holds something that is no character"};
inline constexpr Text<> noValue{u"the value is missing"};
inline constexpr Text<> noNumber{u"the value is no number"};
inline constexpr Text<> wrongType{u"the column has a type that a library cannot take over"};
inline constexpr Text<> sameID{u"another row has the same ID"};
inline constexpr Text<2> column{u"column \"%1\": %2"};
inline constexpr Text<3> row{u"The table \"%1\" cannot be taken over at row %2: %3."};
inline constexpr Text<> changedWhileRead{
    u"The file was changed while it was read. Close it in Access first."};
inline constexpr Text<1> noRevision{u"%1: the table \"DBRevision\" names no revision."};
}  // namespace Access

}  // namespace Words
