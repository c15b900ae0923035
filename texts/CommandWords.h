// What the command line says: its help, and what the commands tell, warn of and refuse. What is refused of a
// CSV file stands in CsvWords.h, of a value in NumberWords.h.
#pragma once

#include "texts/Texts.h"

// The command line as a whole, and the words that no command takes.
namespace Words::Usage {

inline constexpr Text<> programs{
    u"kestrel: statistical process control for measured characteristics\n\n"
    u"  kestrel [FILE]         the desktop program; --new-library or --sample-library in place of FILE\n"
    u"                         makes a library first\n"};
inline constexpr Text<> helpAndStatus{
    u"\nkestrel help COMMAND tells more. kestrel --version gives the version.\n"
    u"Exit status: 0 fine; 1 out of control (--check) or a difference (verify); 2 wrong usage or bad\n"
    u"input; 3 a file cannot be read or written.\n"};
inline constexpr Text<1> version{u"kestrel %1"};
inline constexpr Text<2> bounds{u", %1 to %2"};
inline constexpr Text<1> standard{u" (%1)"};

inline constexpr Text<1> noCommand{u"there is no command \"%1\"; kestrel help lists the commands"};
inline constexpr Text<1> noCommandAndNoFile{
    u"there is no command and no file \"%1\"; kestrel help lists the commands"};
inline constexpr Text<1> noSuchOption{u"unknown option \"%1\"; kestrel help lists the commands"};
inline constexpr Text<1> noHelp{u"there is no command \"%1\"; kestrel help lists them"};

inline constexpr Text<1> unknownOption{u"unknown option \"%1\""};
inline constexpr Text<1> optionMissing{u"the option --%1 is missing"};
inline constexpr Text<1> takesNoValue{u"the option --%1 takes no value"};
inline constexpr Text<1> givenTwice{u"the option --%1 is given twice"};
inline constexpr Text<1> needsValue{u"the option --%1 needs a value"};
inline constexpr Text<1> missing{u"%1 is missing"};
inline constexpr Text<1> unexpected{u"unexpected word \"%1\""};
inline constexpr Text<3> isNot{u"--%1: \"%2\" is not %3"};
inline constexpr Text<> number{u"a number"};
inline constexpr Text<2> wholeNumber{u"a whole number from %1 to %2"};
inline constexpr Text<1> oneOf{u"one of %1"};

inline constexpr Text<1> complaint{u"kestrel: %1"};
inline constexpr Text<1> warning{u"kestrel: warning: %1"};
inline constexpr Text<> inputUnread{u"standard input cannot be read"};
inline constexpr Text<> outputUnwritten{u"standard output cannot be written"};
inline constexpr Text<> writtenNotTold{u"it was written, but standard output cannot tell so"};
inline constexpr Text<> notUtf8{u"a word of the command is not valid UTF-8"};
inline constexpr Text<> noDisplay{
    u"there is no display for the desktop program; kestrel help lists the commands"};

}  // namespace Words::Usage

// The commands: what each is for, its operands and options, and what it says.
namespace Words::Command {

inline constexpr Text<> newLibraryFile{u"the library's file"};
inline constexpr Text<> libraryFile{u"a file, or postgresql://[USER@]HOST[:PORT]/DATABASE"};
inline constexpr Text<> descriptionOption{u"the data set's name"};
inline constexpr Text<> outOption{u"the folder; it is made where it does not exist"};
inline constexpr Text<> uslOption{u"the upper specification limit"};
inline constexpr Text<> lslOption{u"the lower specification limit"};
inline constexpr Text<> subGroupOption{u"samples per subgroup"};
inline constexpr Text<> sensitivityOption{
    u"low: detection rules 1 and 4; medium: 1, 2 and 4; high: all four"};
inline constexpr Text<> periodOption{u"long: every point is judged; short: the last eight"};
inline constexpr Text<> decimalOption{u"the decimal mark of the values, where they leave it open"};
inline constexpr Text<> separatorOption{u"what stands between values or columns"};
inline constexpr Text<2> limitsReversed{u"the lower specification limit %1 is not below the upper one %2"};
inline constexpr Text<> inControl{u"in control"};
inline constexpr Text<1> ruleBroken{u"out of control, rule %1"};

inline constexpr Text<> newPurpose{u"makes an empty library"};
inline constexpr Text<> newDetails{u"An existing file, or library on a server, is never overwritten.\n"};

inline constexpr Text<> importPurpose{u"adds a data set from one column of a CSV file"};
inline constexpr Text<> importDetails{
    u"The control limits are calculated from the data and kept, once they have a width. Where a value\n"
    u"may be read in two ways, or the first line as a heading or a value, the answer names the options that "
    u"say "
    u"which.\n"
    u"Times are ISO 8601 or dates of one reading (23/04/2026 10:15, not 03/04/2026), without an offset\n"
    u"those of this place; neighbours of one time and lot are taken for samples taken together.\n"};
inline constexpr Text<> timeColumnOption{u"the column with the times of the samples"};
inline constexpr Text<> lotColumnOption{u"the column with their lots"};
inline constexpr Text<> csvFile{u"the CSV file"};
inline constexpr Text<> nominalOption{u"the nominal value, within the specification limits"};
inline constexpr Text<> unitOption{u"the unit of measurement, which may stand behind each value"};
inline constexpr Text<> columnOption{u"the column, by its number from 1 or its heading"};
inline constexpr Text<> headingOption{u"the first line is the heading, though it may be read as a value"};
inline constexpr Text<> noHeadingOption{u"the first line is no heading"};
inline constexpr Text<> headingOrNone{
    u"the first line is a heading (--heading) or it is none (--no-heading)"};
inline constexpr Text<1> emptyName{u"%1: the description is empty"};
inline constexpr Text<1> nameOnLines{
    u"%1: the description holds a tab, a line break or another control character; leave it out"};
inline constexpr Text<4> keptWithDecimals{u"--%1 %2 is kept with %3 decimals, as %4"};
inline constexpr Text<3> nominalOutside{
    u"the nominal value %1 does not lie within the specification limits %2 to %3"};
inline constexpr Text<3> limitsAreOne{u"the specification limits %1 and %2 are one with %3 decimals"};

inline constexpr Text<> appendPurpose{u"adds values to a data set"};
inline constexpr Text<> appendDetails{
    u"Without values on the line they are read from standard input. Kept control limits stay as they are;\n"
    u"where none are kept yet they are calculated from all points, and kept once they have a width.\n"};
inline constexpr Text<> recalculateOption{u"calculates the control limits anew, from all points"};
inline constexpr Text<> timeOption{
    u"when the values were taken, if not now, as 2026-04-23T10:15 or with an offset behind"};
inline constexpr Text<> lotOption{u"the lot that they are of"};
inline constexpr Text<1> wrongTime{u"--time: %1"};
inline constexpr Text<1> wrongLot{u"--lot: %1"};
inline constexpr Text<> nothingToAppend{u"there are no values to append"};
inline constexpr Text<> oneValue{u"1 value"};
inline constexpr Text<1> values{u"%1 values"};
inline constexpr Text<4> added{u"%1: %2 added, %3 in all, %4 plot points"};
inline constexpr Text<1> leftOver{u" and %1 left over"};
inline constexpr Text<> noPoints{u"no points yet"};
inline constexpr Text<> noLimits{u"; no limits are kept yet, for they need two points"};
inline constexpr Text<1> noWidth{u"; no limits are kept yet, for with %1 decimals they have no width"};
inline constexpr Text<2> limitsAreKept{u"; the limits, %1 to %2, are kept from now on"};
inline constexpr Text<1> preliminary{
    u"; the limits are preliminary, with fewer than %1 points: append --recalculate renews them"};
inline constexpr Text<1> restOnFew{
    u"; the limits rest on the first %1 points: append --recalculate renews them"};
inline constexpr Text<2> moreDecimals{
    u"the values have %1 decimals, of which %2 are shown and judged: a smaller unit would keep them all"};

inline constexpr Text<> convertPurpose{u"makes a library from an Access file"};
inline constexpr Text<> convertDetails{
    u"The Access file is only read; an existing file is never overwritten.\n"};
inline constexpr Text<> accessFile{u"the Access file"};
inline constexpr Text<> converting{u"converting"};
inline constexpr Text<4> converted{
    u"%1: %2 data sets, %3 samples, %4 units\n"
    u"Compare these counts with Access: its files have no checksum. No reader can see a digit that was "
    u"changed\n"
    u"within a text, a number that became empty, or texts that changed places.\n"};

inline constexpr Text<> statusPurpose{u"shows the state of every data set"};
inline constexpr Text<> jsonOption{u"an array with one object per data set"};
inline constexpr Text<> checkOption{u"exit status 1 when a data set is out of control"};
inline constexpr Text<> dataDescription{u"Data description"};
inline constexpr Text<> state{u"State"};
inline constexpr Text<> controlled{u"In control"};
inline constexpr Text<> isControlled{u"yes"};
inline constexpr Text<1> isNotControlled{u"NO, rule %1"};
inline constexpr Text<> subgroupSize{u"n"};
inline constexpr Text<> unit{u"Unit"};
inline constexpr Text<> noDataSets{u"The library holds no data sets."};

inline constexpr Text<> reportPurpose{u"writes the page of charts"};
inline constexpr Text<> reportDetails{
    u"One file for each data set, or for those named. It is named after the data set: a blank becomes "
    u"\"_\".\n"
    u"Where the description holds anything but letters, digits, blanks and -+=()[], a code made of it "
    u"stands\n"
    u"behind the name. So a data set keeps its file's name, and no two have the same. --points and --last "
    u"show a\n"
    u"part of the charts, in a file of its own (NAME.40-80.pdf, NAME.last-50.pdf); --since and --until the "
    u"points\n"
    u"of these days, both included (NAME.since-2026-10-01.until-2026-10-31.pdf), not those without a time. "
    u"Limits,\n"
    u"verdict and summary stay those of all points. A data set that has none of these points is refused and "
    u"has no\n"
    u"page number; of a whole library those without a point in the days are only counted and named.\n"};
inline constexpr Text<> pointsValue{u"A-B"};
inline constexpr Text<> pointsOption{u"show only the points from A to B"};
inline constexpr Text<> lastOption{u"show only so many points, the last ones"};
inline constexpr Text<> dayValue{u"DATE"};
inline constexpr Text<> sinceOption{
    u"show only the points from this day on, such as 2026-10-01 or 1.10.2026"};
inline constexpr Text<> untilOption{u"show only the points up to this day, its end included"};
inline constexpr Text<2> notADay{
    u"--%1: \"%2\" is not a day such as 2026-10-31; days are shown as a whole, without a time"};
inline constexpr Text<2> wrongDay{u"--%1: %2"};
inline constexpr Text<1> oneWithoutPage{u"no page for a data set without a point in that period: %1"};
inline constexpr Text<2> withoutPages{u"no page for %1 data sets without a point in that period: %2"};
inline constexpr Text<2> andMore{u"%1 and %2 more"};
inline constexpr Text<2> daysReversed{u"--since %1 is after --until %2"};
inline constexpr Text<> daysOrPoints{u"--since and --until cannot be given with --points or --last"};
inline constexpr Text<> dateOption{u"put the day into the files' names"};
inline constexpr Text<> pointsOrLast{u"--points and --last cannot both be given"};
inline constexpr Text<1> notPoints{u"--points: \"%1\" is not a stretch of points such as 40-80"};
inline constexpr Text<2> noSuchPoints{u"there is no point %1, the last one is %2"};
inline constexpr Text<> formatOption{u"pdf, png or svg"};
inline constexpr Text<> fitOption{u"value axes that fit the points, in place of the standard scale"};
inline constexpr Text<> exportPurpose{u"writes data sets and their results as .csf files"};
inline constexpr Text<> exportDetails{
    u"With --csv the files have a heading and a line for each sample: its number, value, time, lot, point\n"
    u"and note.\n"};
inline constexpr Text<> csvOption{u"writes .csv files instead, with when and why beside the samples"};
inline constexpr Text<3> unplaced{
    u"%1: of runs %2 and of notes %3 have lost their samples; status --json lists them"};
inline constexpr Text<1> noFolder{u"%1: the folder cannot be made"};
inline constexpr Text<> writing{u"writing"};

inline constexpr Text<> statsPurpose{u"statistics of values on standard input, as JSON"};
inline constexpr Text<> startOption{u"the first plot point that the limits are calculated from"};
inline constexpr Text<> stopOption{u"the last one"};
inline constexpr Text<> limitsOption{u"limits to keep; 0 has one calculated"};
inline constexpr Text<> precisionOption{
    u"decimals of the texts and of the rules' judgement, in place of the data's own"};
inline constexpr Text<> reverseOption{u"the values are given newest first"};
inline constexpr Text<> bothSpecLimits{u"--usl and --lsl belong together"};
inline constexpr Text<1> sixLimits{u"--limits takes six numbers: %1"};
inline constexpr Text<1> limitIsNoNumber{u"--limits: \"%1\" is not a number"};

inline constexpr Text<1> convertsToFiles{u"convert makes a file; then \"kestrel copy\" brings that to %1"};
inline constexpr Text<> verifyPurpose{u"checks the program's own figures"};
inline constexpr Text<> verifyDetails{
    u"Compares with certified, published and independently calculated figures on this machine. Exit\n"
    u"status 1 when anything differs.\n"};
inline constexpr Text<> figuresOption{u"an object with every figure, expected and found"};
inline constexpr Text<> addressValue{u"ADDRESS"};
inline constexpr Text<> verifyServerOption{
    u"save and load in that database as well; what stands there stays as it is"};
inline constexpr Text<> pdfOption{u"a report for the file of records as well"};
inline constexpr Text<> copyPurpose{u"copies a whole library"};
inline constexpr Text<> copyFrom{u"the library to copy"};
inline constexpr Text<> copyTo{u"the name of the copy"};
inline constexpr Text<> copyDetails{
    u"With all IDs, dates and deleted data sets, between files and servers. What stands at TO is never\n"
    u"overwritten.\n"};

inline constexpr Text<> renamePurpose{u"gives a data set another name"};
inline constexpr Text<> oldName{u"its name until now"};
inline constexpr Text<> newName{u"the name that it is to have"};
inline constexpr Text<> renameDetails{
    u"A name that another data set has, in capital or small letters, is refused. Scripts that append under\n"
    u"the old name are told the new one.\n"};

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
inline constexpr Text<2> restoredAs{u"%1: restored as %2"};
inline constexpr Text<1> purged{u"%1: removed for good"};

inline constexpr Text<> watchPurpose{u"tells when the state of a data set changes"};
inline constexpr Text<> execOption{u"is run by the shell for each change, one after the other"};
inline constexpr Text<> watchDetails{
    u"One line each, until stopped: time, description, state, verdict, Cpk, with tabs between. CMD finds "
    u"them\n"
    u"in KESTREL_LIBRARY, KESTREL_ID, KESTREL_DESCRIPTION, KESTREL_STATE, KESTREL_STATE_BEFORE,\n"
    u"KESTREL_IN_CONTROL and KESTREL_CPK.\n"};
inline constexpr Text<> deleted{u"deleted"};

}  // namespace Words::Command
