// What the commands that look after a library say.
#pragma once

#include "texts/Texts.h"

namespace Words::Keeping {

inline constexpr Text<> copyPurpose{u"copies a whole library"};
inline constexpr Text<> copyFrom{u"the library to copy"};
inline constexpr Text<> copyTo{u"the name of the copy"};
inline constexpr Text<> copyDetails{
    u"With all IDs, dates and deleted data sets. An existing file is never overwritten.\n"};

inline constexpr Text<> restorePurpose{u"lists deleted data sets, or brings some back"};
inline constexpr Text<> restoreDetails{
    u"Without a description or --id the deleted data sets are listed, newest first: when, ID, samples,\n"
    u"description. Of several deleted under one name the newest is meant. What comes back has its old ID.\n"};
inline constexpr Text<> idOption{u"the one that had this ID"};
inline constexpr Text<> asOption{u"another name, where its own is in use again"};
inline constexpr Text<> purgeOption{u"removes them for good instead"};
inline constexpr Text<> nothingDeleted{u"The library holds no deleted data sets."};
inline constexpr Text<4> deletedLine{u"%1  %2  %3  %4"};
inline constexpr Text<> nothingChosen{u"name a deleted data set, by its description or with --id"};
inline constexpr Text<> oneNameForMany{u"--as names one data set"};
inline constexpr Text<2> noDeleted{u"%1 holds no deleted data set \"%2\""};
inline constexpr Text<2> noDeletedId{u"%1 holds no deleted data set with the ID %2"};
inline constexpr Text<1> restored{u"%1: restored"};
inline constexpr Text<1> purged{u"%1: removed for good"};

inline constexpr Text<> watchPurpose{u"tells when the state of a data set changes"};
inline constexpr Text<> execOption{u"is run by the shell for each change, one after the other"};
inline constexpr Text<> watchDetails{
    u"One line each, until stopped: time, description, state, verdict, Cpk, with tabs between. CMD finds "
    u"them\n"
    u"in KESTREL_LIBRARY, KESTREL_ID, KESTREL_DESCRIPTION, KESTREL_STATE, KESTREL_STATE_BEFORE,\n"
    u"KESTREL_IN_CONTROL and KESTREL_CPK.\n"};
inline constexpr Text<> deleted{u"deleted"};
inline constexpr Text<> inControl{u"in control"};
inline constexpr Text<1> ruleBroken{u"out of control, rule %1"};

inline constexpr Text<> writtenNotTold{u"it was written, but standard output cannot tell so"};

}  // namespace Words::Keeping
