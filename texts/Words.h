// The texts that have a name and no number, by theme: those of the desktop. Those of one room or theme alone
// have a file of their own, such as CommandWords.h.
#pragma once

#include "texts/Texts.h"

namespace Words {

inline constexpr Text<> ok{u"&OK"};
inline constexpr Text<> yes{u"&Yes"};
inline constexpr Text<> no{u"&No"};
inline constexpr Text<> cancel{u"&Cancel"};
inline constexpr Text<> information{u"Information"};
inline constexpr Text<> error{u"Error"};
inline constexpr QStringView systemMessage =
    u"System Message";  // where the title is the same in any language
inline constexpr Text<1> noSuchDataSet{u"There is no data set with ID %1."};
inline constexpr Text<> noDatabaseOpen{u"No database is open."};
inline constexpr Text<2> apostrophe{
    u"%1\r\n\r\nThe apostrophe (') in \"%2\" is the cause: no name with one can be looked up. Leave it out, "
    u"or "
    u"write \u2019 in its place."};
inline constexpr Text<1> settingsUnread{u"The settings in %1 cannot be read. The defaults are in use."};
inline constexpr Text<1> settingsUnwritten{u"The settings in %1 cannot be written."};

// The states of a process, and what each says of it.
namespace State {
inline constexpr Text<> notEvaluated{u"Not evaluated"};
inline constexpr Text<> chaos{u"Chaos"};
inline constexpr Text<> brinkOfChaos{u"Brink of chaos"};
inline constexpr Text<> threshold{u"Threshold"};
inline constexpr Text<> ideal{u"Ideal"};
inline constexpr Text<> notEvaluatedMeans{u"nothing to judge yet"};
inline constexpr Text<> chaosMeans{u"out of control and not capable (Cpk below 1)"};
inline constexpr Text<> brinkOfChaosMeans{u"out of control, though capable (Cpk 1 or more)"};
inline constexpr Text<> thresholdMeans{u"in control, but not capable (Cpk below 1)"};
inline constexpr Text<> idealMeans{u"in control and capable (Cpk 1 or more)"};
inline constexpr Text<> lampOff{u"Off"};
inline constexpr Text<> lampStop{u"Stop: out of control"};
inline constexpr Text<> lampGo{u"Go: in control"};
}  // namespace State

// The detection rules in the few words that fit below a chart.
namespace Rule {
inline constexpr Text<> one{u"1 beyond a limit"};
inline constexpr Text<> two{u"2 two of three beyond 2 sigma"};
inline constexpr Text<> three{u"3 four of five beyond 1 sigma"};
inline constexpr Text<> four{u"4 eight on one side"};
}  // namespace Rule

// The names of the figures, where a screen or the page shows them beside their values.
namespace Figure {
inline constexpr Text<> cpk{u"Cpk"};
inline constexpr Text<> samples{u"Samples"};
inline constexpr Text<> sampleQty{u"Sample Qty"};
inline constexpr Text<> subgroupSize{u"Subgroup Size"};
inline constexpr Text<> subGroupSize{u"Sub Group Size"};
inline constexpr Text<> min{u"Min"};
inline constexpr Text<> max{u"Max"};
inline constexpr Text<> stdDev{u"Std. Dev"};
inline constexpr Text<> usl{u"USL"};
inline constexpr Text<> lsl{u"LSL"};
inline constexpr Text<> nominal{u"Nominal"};
inline constexpr Text<> upperSpecLimit{u"Upper Spec Limit"};
inline constexpr Text<> lowerSpecLimit{u"Lower Spec Limit"};
inline constexpr Text<> ucl{u"UCL"};
inline constexpr Text<> lcl{u"LCL"};
inline constexpr Text<> mean{u"Mean"};
inline constexpr Text<> lastModified{u"Last Modified"};
inline constexpr Text<> count{u"Count"};
inline constexpr Text<> sample{u"Sample"};
}  // namespace Figure

// The main window, and the choice of a database.
namespace Main {
inline constexpr Text<> dataSets{u"Data sets"};
inline constexpr Text<> newDatabase{u"New Database"};
inline constexpr Text<> contents{u"Contents"};
inline constexpr Text<> about{u"About"};
inline constexpr Text<> viewChart{u"&View Chart"};
inline constexpr Text<> editData{u"&Edit Data"};
inline constexpr Text<> deleteData{u"&Delete Data"};
inline constexpr Text<> noDataSets{u"No data sets yet.\nChoose Stat Data, Add."};
inline constexpr Text<> nothingFits{u"No data set fits what is asked for above.\nEscape shows all."};
inline constexpr Text<> find{u"&Find:"};
inline constexpr Text<> findTip{u"Show only the descriptions with these words in them (Ctrl+F)"};
inline constexpr Text<> onlyOutOfControl{u"Only &out of control"};
inline constexpr Text<> sortTip{
    u"Click to sort, once more to turn the order, and again for the library's own"};
inline constexpr Text<> sortBy{u"&Sort By"};
inline constexpr Text<> libraryOrder{u"Order of the Library"};
inline constexpr Text<1> countIdeal{u"%1 ideal"};
inline constexpr Text<1> countThreshold{u"%1 threshold"};
inline constexpr Text<1> countBrinkOfChaos{u"%1 brink of chaos"};
inline constexpr Text<1> countChaos{u"%1 chaos"};
inline constexpr Text<1> countNotEvaluated{u"%1 not evaluated"};
inline constexpr Text<> countComma{u", "};
inline constexpr Text<3> shown{u"%1 (%2 of %3 shown)"};
inline constexpr Text<1> severalSelected{
    u"%1 selected: Ctrl+M compares two, Ctrl+Space adds the row with the frame"};
inline constexpr Text<> oneAtATime{
    u"This command is for one data set. Select one alone, with a click or with Up or Down."};
inline constexpr Text<> compare{u"&Compare…"};
inline constexpr Text<> allFiles{u"All Files (*)"};
inline constexpr Text<> libraries{u"Kestrel Libraries (*.kestrel *.db)"};
inline constexpr Text<> newLibraries{u"Kestrel Libraries (*.mdb *.kestrel *.db)"};
inline constexpr Text<> accessFiles{u"Access Database Files(*.mdb)"};
inline constexpr Text<> databaseNotMade{u"The new database could not be made"};
inline constexpr Text<1> copying{u"Copying %1 ..."};
inline constexpr Text<5> copied{
    u"The copy %1 has all of %2:\r\n\r\n%3 data sets with %4 samples, and %5 units of measurement."};
inline constexpr Text<2> openTheCopy{
    u"%1 is a Microsoft Access file, and a copy of it for Kestrel exists already:\r\n\r\n%2\r\n\r\n"
    u"The Access file stays as it is.\r\n\r\nDo you wish to open the copy?"};
inline constexpr Text<2> makeACopy{
    u"%1 is a Microsoft Access file. Kestrel works with a copy of it, which will be made beside "
    u"it:\r\n\r\n%2\r\n\r\nThe Access file stays as it is.\r\n\r\nDo you wish to make the copy and open it?"};
}  // namespace Main

// The data editor.
namespace Editor {
inline constexpr Text<> addData{u"Add Data"};
inline constexpr Text<> editData{u"Edit Data"};
inline constexpr Text<> mustBeEntered{u"* must be entered"};
inline constexpr Text<> description{u"&Description:"};
inline constexpr Text<> editUnits{u"&Edit Units…"};
inline constexpr Text<> specLimits{u"Specification and flier limits"};
inline constexpr Text<> upperLimit{u"Upper l&imit"};
inline constexpr Text<> nominal{u"&Nominal"};
inline constexpr Text<> lowerLimit{u"L&ower limit"};
inline constexpr Text<> highFlier{u"&High flier"};
inline constexpr Text<> lowFlier{u"Low &flier"};
inline constexpr Text<> discardFliers{u"Discard fliers on save"};
inline constexpr Text<> discardFliersTip{u"Remove the values that do not lie between the flier limits"};
inline constexpr Text<> controlLimits{u"Control limits"};
inline constexpr Text<> xBarUCL{u"&X-bar UCL"};
inline constexpr Text<> xBarMean{u"X-&bar mean"};
inline constexpr Text<> xBarLCL{u"X-bar &LCL"};
inline constexpr Text<> rangeUCL{u"&Range UCL"};
inline constexpr Text<> rangeMean{u"R&ange mean"};
inline constexpr Text<> rangeLCL{u"Ran&ge LCL"};
inline constexpr Text<> chartSetup{u"Chart setup"};
inline constexpr Text<> subgroupSize{u"Subgroup si&ze:"};
inline constexpr Text<> maxSamples{u"Max Samples"};
inline constexpr Text<> rawData{u"Raw data"};
inline constexpr Text<> values{u"&Values, one on each line:"};
inline constexpr Text<> largerView{u"Larger vie&w…"};
inline constexpr Text<> expandedTitle{u"Raw Data"};
inline constexpr Text<> expandedValues{u"Raw data, one value on each line:"};

inline constexpr Text<> dataSetNotFound{u"error attempting to get the current data for the item select"};
inline constexpr Text<> descriptionStays{
    u"An existing data set keeps its description: Save will not keep this change. Stat Data, Rename... in "
    u"the "
    u"main window gives it another."};
inline constexpr Text<> limitsAreCalculated{
    u"The control limits of a new data set are always calculated: these are not saved."};
inline constexpr Text<> noUnits{u"There are no units of measurement yet. Edit Units… makes one."};
inline constexpr Text<2> writeThePoint{u"%1: write the decimal point, %2."};
inline constexpr Text<1> notANumber{u"%1: this is not a number."};
inline constexpr Text<2> tooFine{
    u"%1: no more than %2 decimals are shown. A smaller unit of measurement shows them all."};
inline constexpr Text<2> isNotANumber{u"%1: \"%2\" is not a number."};
inline constexpr Text<2> isNotANumberWithComma{
    u"%1: \"%2\" is not a number. Decimals are written with a point."};
inline constexpr Text<1> limitMissing{
    u"%1: to keep the control limits, none of the four may be missing or 0."};
inline constexpr Text<> descriptionToFillIn{u"Description: to be filled in."};
inline constexpr Text<> unitToChoose{u"Unit of measurement: choose one, or make one with Edit Units."};
inline constexpr Text<1> numberToFillIn{u"%1: a number is to be filled in."};
inline constexpr Text<> subGroupToChoose{u"Subgroup size: choose one."};
inline constexpr Text<> specLimitsCross{u"Upper limit: it has to lie above the lower limit."};
inline constexpr Text<1> tooManySamples{u"Max Samples: no more than %1 samples can be saved."};
inline constexpr Text<> noSamplesKept{u"Max Samples: nothing is left to save."};
inline constexpr Text<> allAreFliers{u"No value lies between the flier limits: nothing is left to save."};
inline constexpr Text<3> specLimitsAreOne{
    u"The spec limits %1 and %2 are one with %3 decimals. A smaller unit of measurement keeps them apart."};
inline constexpr Text<> specLimitsTooFarApart{u"The spec limits are too far apart."};
}  // namespace Editor

// What is said of a column of raw values.
namespace RawData {
inline constexpr Text<> noValues{u"No values yet. Enter one on each line, or paste a column."};
inline constexpr Text<> oneValue{u"1 value"};
inline constexpr Text<1> values{u"%1 values"};
inline constexpr Text<2> tooMany{u"%1: no more than %2 can be saved."};
inline constexpr Text<2> oneSubgroup{u"%1: 1 subgroup of %2"};
inline constexpr Text<3> subgroups{u"%1: %2 subgroups of %3"};
inline constexpr Text<2> leftOver{u"%1, %2 left over."};
inline constexpr Text<4> pointsMissing{u"%1 %2; %3 are needed for a chart: %4."};
inline constexpr Text<> oneSampleMakes{u"1 sample makes"};
inline constexpr Text<1> samplesMake{u"%1 samples make"};
inline constexpr Text<> onePoint{u"1 point"};
inline constexpr Text<1> manyPoints{u"%1 points"};
inline constexpr Text<> oneMore{u"1 more sample"};
inline constexpr Text<1> manyMore{u"%1 more samples"};
inline constexpr Text<1> halfAComma{u"Line %1: no number stands on one side of a comma."};
inline constexpr Text<2> notANumber{u"Line %1 is not a number: %2"};
inline constexpr Text<2> severalValues{
    u"Line %1 is more than one value: %2. A decimal is written with a point."};
inline constexpr Text<2> severalCells{u"Line %1 has several cells: %2. Which hold the values?"};
inline constexpr Text<2> unclear{u"Line %1 is unclear: %2"};
inline constexpr Text<2> unclearLines{u"%1 lines cannot be read as they stand. %2"};
inline constexpr Text<2> beyondFliers{u"Line %1 does not lie between the flier limits: %2"};
inline constexpr Text<3> tooFine{
    u"Line %1 has more than the %3 decimals that are shown: %2. A smaller unit shows them all."};
inline constexpr Text<2> tenfold{u"Line %1 is ten times its neighbours: %2"};
inline constexpr Text<1> oneNewValue{u"1 new value, %1 in all"};
inline constexpr Text<2> newValues{u"%1 new values, %2 in all"};
inline constexpr Text<1> goToLine{u"Go to line %1 (&0)"};
inline constexpr Text<> commaWasRead{u"1 comma was read as a decimal point."};
inline constexpr Text<1> commasWereRead{u"%1 commas were read as decimal points."};

// The readings that are offered for what is unclear.
inline constexpr Text<> moreReadings{u"More readings"};
inline constexpr Text<> chooseReading{u"Choose a reading"};
inline constexpr Text<> readDecimalComma{u"Read 1 comma as a decimal point"};
inline constexpr Text<1> readDecimalCommas{u"Read %1 commas as decimal points"};
inline constexpr Text<1> readCommasAndPoints{
    u"Read %1 numbers with decimal commas, and points between thousands"};
inline constexpr Text<> readThousand{u"Read 1 number with thousands"};
inline constexpr Text<1> readThousands{u"Read %1 numbers with thousands"};
inline constexpr Text<> readPlainNumber{u"Read 1 number"};
inline constexpr Text<1> readPlainNumbers{u"Read %1 numbers"};
inline constexpr Text<2> withoutUnit{u"%1, without %2"};
inline constexpr Text<> separateAtComma{u"Separate 1 line at commas"};
inline constexpr Text<1> separateAtCommas{u"Separate %1 lines at commas"};
inline constexpr Text<> separateAtBlank{u"Separate 1 line at blanks"};
inline constexpr Text<1> separateAtBlanks{u"Separate %1 lines at blanks"};
inline constexpr Text<2> takeColumn{u"Take column %1: %2 numbers"};
inline constexpr Text<3> takeNamedColumn{u"Take column %1, %2: %3 numbers"};
inline constexpr Text<1> takeAllCells{u"Take all %1 numbers, row by row"};
inline constexpr Text<1> leaveOutCell{u"%1 (leave out 1 cell)"};
inline constexpr Text<2> leaveOutCells{u"%1 (leave out %2 cells)"};
inline constexpr Text<> leaveOutLine{u"Leave out 1 line that is no number"};
inline constexpr Text<1> leaveOutLines{u"Leave out %1 lines that are no numbers"};
}  // namespace RawData

// Adding measurements to a data set.
namespace Adding {
inline constexpr Text<> title{u"Add Measurements"};
inline constexpr Text<> command{u"Add &Measurements…"};
inline constexpr Text<2> dataSet{u"%1 [%2]"};
inline constexpr Text<> limitsStay{u"The control limits stay as they are."};
inline constexpr Text<> limitsAreOpen{
    u"No control limits are kept yet: they are calculated from all points, and kept with the values added as "
    u"soon as they have a width."};
inline constexpr Text<2> limitsAreKept{u"The control limits, %1 to %2, are kept from now on."};
inline constexpr Text<1> preliminary{
    u"The control limits are preliminary: they rest on %1 points at most, fewer than 20. Recalculate them "
    u"when there are more."};
inline constexpr Text<1> withoutWidth{
    u"With %1 decimals the control limits have no width: they are not kept, but calculated from all points "
    u"until they have one."};
inline constexpr Text<2> restOnFew{
    u"The control limits rest on the first %1 points only, and there are %2 by now. Recalculate them, unless "
    u"you chose "
    u"these."};
inline constexpr Text<> newValues{u"&New values, one on each line:"};
inline constexpr Text<> add{u"&Add"};
inline constexpr Text<> addTip{u"Put the values behind those of the data set and save (Ctrl+Enter)"};
inline constexpr Text<> close{u"&Close"};
inline constexpr Text<1> added{u"Added: %1"};
inline constexpr Text<> inControl{u"In control"};
inline constexpr Text<2> outOfControl{u"Out of control at point %1: rule %2"};
inline constexpr Text<> notEvaluated{u"No points yet"};
inline constexpr Text<1> withThem{u"With these values: %1"};
}  // namespace Adding

// What the data editor asks and tells when it saves.
namespace Saving {
inline constexpr Text<4> oneValueOrSeveral{
    u"Line %1 holds %2. Is that one value, %3?\r\n\r\nYes: one value, %3.\r\nNo: several values, %4."};
inline constexpr Text<1> orThousands{
    u"Is %1 meant? Cancel, and choose the reading with thousands below the values."};
inline constexpr Text<5> oneValueOrSeveralEach{
    u"%5 lines hold such a value, line %1 first: %2. Is each of them one value, as %3?\r\n\r\n"
    u"Yes: one value, %3.\r\nNo: several values, %4."};
inline constexpr Text<2> commaBetween{u"%1, %2"};
inline constexpr Text<2> andBetween{u"%1 and %2"};
inline constexpr Text<> listComma{u", "};
inline constexpr Text<2> andMore{u"%1 and %2 more"};
inline constexpr Text<2> sampleAt{u"%1 (value %2)"};
inline constexpr Text<2> oneFlier{u"1 sample does not lie between the flier limits %1 and %2:"};
inline constexpr Text<3> fliers{u"%1 samples do not lie between the flier limits %2 and %3:"};
inline constexpr Text<> subgroupsShift{
    u"The values behind a discarded one move up: other values meet in a subgroup from there on."};
inline constexpr Text<> discardThem{u"Discard and save?"};
inline constexpr Text<4> lastAreDropped{u"These are the last %1 of %2 values: %3. The first %4 stay."};
inline constexpr Text<1> noneIsDropped{u"Without the fliers there are %1 values, which all stay."};
inline constexpr Text<> specLimits{u"The specification limits"};
inline constexpr Text<> flierLimits{u"The flier limits"};
inline constexpr Text<> averageLimits{u"The X-bar control limits"};
inline constexpr Text<> rangeLimits{u"The range control limits"};
inline constexpr Text<5> farFromSamples{
    u"%1 %2 to %3 lie far from all the values, which lie between %4 and %5."};
inline constexpr Text<3> wrongWayRound{u"%1 are the wrong way round: lower %2, upper %3."};
inline constexpr Text<4> meanOutside{u"%1 do not enclose their mean: mean %2, limits %3 to %4."};
inline constexpr Text<2> limitsOfOtherSize{
    u"The control limits were made for subgroups of %1, and the subgroup size is now %2."};
inline constexpr Text<> isReadAgain{
    u"A restart is not needed: the library is read again at once, and the new data set is ready."};
inline constexpr Text<3> keptAs{u"%1: %2 is kept as %3."};
inline constexpr Text<2> limitsLeaveTheirPoints{
    u"The control limits come from points %1 to %2. \"Calculate Control Limits on Save\" is ticked: saving "
    u"calculates them anew, from all points. Afterwards, Recalculate on the chart screen can make them from "
    u"these points again.\r\n\r\nSave?"};
inline constexpr Text<> lowerRangeLimitOfZero{
    u"A lower range limit of 0, which is right for subgroups of up to six, cannot be kept by this screen. "
    u"Tick \"Calculate Control Limits on Save\" and save; afterwards, Recalculate on the chart screen can "
    u"make the limits from chosen points again. Add Measurements and the command line's append keep the "
    u"limits as they are."};
inline constexpr Text<> saveAllTheSame{u"Save all the same?"};
inline constexpr Text<4> limitsWere{u"The X-bar control limits were %1 to %2, and are now %3 to %4."};
inline constexpr Text<4> rangeLimitsWere{u"The range control limits were %1 to %2, and are now %3 to %4."};
}  // namespace Saving

namespace About {
inline constexpr Text<1> title{u"About %1"};
inline constexpr Text<1> version{u"Version %1"};
inline constexpr Text<> systemInfo{u"&System Info..."};
inline constexpr Text<> noSystemInfo{u"System Information Is Unavailable At This Time"};
}  // namespace About

// The window of the manual, and the manual's topics.
namespace Manual {
inline constexpr Text<> contents{u"Contents"};
inline constexpr Text<> contentsTip{u"Show or hide the contents"};
inline constexpr Text<> back{u"Back"};
inline constexpr Text<> backTip{u"Back to the page before (Alt+Left)"};
inline constexpr Text<> search{u"Search"};
inline constexpr Text<> searchTip{u"Search the manual (Ctrl+F)"};
inline constexpr Text<> searchBox{u"Search the manual"};
inline constexpr Text<> results{u"Search results"};
inline constexpr Text<> nothingFound{u"Nothing found."};
inline constexpr Text<> close{u"Close"};
inline constexpr Text<> closeTip{u"Close the help window (Escape)"};
inline constexpr Text<> noSuchTopic{u"No such topic"};
inline constexpr Text<1> noTopicNumber{u"The manual has no topic number %1."};
inline constexpr Text<> pageNotFound{u"Page not found"};
inline constexpr Text<1> pageMissing{u"The manual's page \"%1\" is missing."};

inline constexpr Text<> welcome{u"Welcome to Kestrel"};
inline constexpr Text<> firstSteps{u"First steps"};
inline constexpr Text<> workedExample{u"A worked example: piston rings"};
inline constexpr Text<> screens{u"The screens"};
inline constexpr Text<> mainScreen{u"The main window"};
inline constexpr Text<> dataEditor{u"The data editor"};
inline constexpr Text<> addMeasurements{u"Adding measurements"};
inline constexpr Text<> expandedData{u"Expanded raw data"};
inline constexpr Text<> chartScreen{u"The chart screen"};
inline constexpr Text<> recalculate{u"Recalculating limits"};
inline constexpr Text<> notes{u"Times, lots and notes"};
inline constexpr Text<> units{u"Units of measurement"};
inline constexpr Text<> configuration{u"Configuration"};
inline constexpr Text<> compare{u"Comparing two"};
inline constexpr Text<> restoreDeleted{u"Bringing back what was deleted"};
inline constexpr Text<> sharing{u"Working on one library with others"};
inline constexpr Text<> about{u"The about box"};
inline constexpr Text<> keys{u"Keys"};
inline constexpr Text<> figures{u"What the figures mean"};
inline constexpr Text<> xBarChart{u"The X-bar chart"};
inline constexpr Text<> rChart{u"The R chart"};
inline constexpr Text<> capability{u"Capability: Cpk"};
inline constexpr Text<> ruleOne{u"Detection rule one"};
inline constexpr Text<> ruleTwo{u"Detection rule two"};
inline constexpr Text<> ruleThree{u"Detection rule three"};
inline constexpr Text<> ruleFour{u"Detection rule four"};
inline constexpr Text<> processStates{u"The four process states"};
inline constexpr Text<> whenToRecalculate{u"When to recalculate limits"};
inline constexpr Text<> chanceMarks{u"Marks that come by chance"};
inline constexpr Text<> lookingAfter{u"Looking after your data"};
inline constexpr Text<> backup{u"Backups"};
inline constexpr Text<> accessLibraries{u"Taking over an old Access library"};
inline constexpr Text<> commandLine{u"The command line"};
inline constexpr Text<> glossary{u"Glossary"};
}  // namespace Manual

}  // namespace Words
