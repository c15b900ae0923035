// The words of the chart screen, of printing, and of the recalculation.
#pragma once

#include "texts/Texts.h"

namespace Words {

namespace Chart {
inline constexpr Text<> whatYesDoes{
    u"Yes saves the new control limits, No discards them, Cancel goes back to the chart."};
inline constexpr Text<> controlCharts{u"Control Charts"};
inline constexpr Text<> keys{
    u"Arrow keys select a graph, Enter zooms it; Page Up and Page Down explain the points of a chart, with "
    u"Shift "
    u"they select several."};
inline constexpr Text<2> average{u"Average %1: %2"};
inline constexpr Text<2> range{u"Range %1: %2"};
inline constexpr Text<1> samples{u"Samples: %1"};
inline constexpr Text<> rangeOutside{u"Beyond a limit of the range chart"};
inline constexpr Text<> fitScale{u"&Fit scale"};
inline constexpr Text<> fitScaleTip{u"Draw the control charts on a scale that shows their variation"};
inline constexpr Text<> flatScale{u"The control limits fill less than a fifth of this scale."};
inline constexpr Text<> drawFitted{u"Fi&t the scale"};
inline constexpr Text<> alwaysFitted{
    u"The scale is fitted: the standard scale ends at ten million, below these limits."};
inline constexpr Text<1> withRecalculate{u"%1 The button for it is Recalculate, above."};
inline constexpr Text<> exportTitle{u"Export chart to .csf file"};
inline constexpr Text<> csfFiles{u"csf Files (*.csf)"};
inline constexpr Text<> fileName{u"Chart"};
inline constexpr Text<> noPrinter{u"No printer is installed on this system."};
inline constexpr Text<> printToFile{
    u"No printer is installed on this system. Do you wish to print to a PDF file instead?"};
inline constexpr Text<> printToFileTitle{u"Print to PDF file"};
inline constexpr Text<> pdfFiles{u"PDF Files (*.pdf)"};
inline constexpr Text<2> printRejected{
    u"%1 has not taken the page: %2. Look at the printer, or choose another with Print, Printer Setup."};
inline constexpr Text<> savePageAs{u"Save Page &As…"};
inline constexpr Text<> limitsNotSaved{u"The new control limits are not saved yet: Save keeps them."};
inline constexpr Text<1> pageWritten{u"The page is in %1"};
inline constexpr Text<> savePageTitle{u"Save the page of charts"};
inline constexpr Text<> pageFiles{u"PDF Files (*.pdf);;PNG Pictures (*.png);;SVG Drawings (*.svg)"};
}  // namespace Chart

// The marks of the chart in a list, and the way through them.
namespace Marks {
inline constexpr Text<> title{u"Marked points"};
inline constexpr Text<> ranges{u"Ranges"};
inline constexpr Text<> lookHere{u"look here first"};
inline constexpr Text<1> range{u"Range %1"};
inline constexpr Text<1> rule{u"Rule %1"};
inline constexpr Text<1> average{u"Average %1"};
inline constexpr Text<> next{u"Ne&xt mark"};
inline constexpr Text<> nextTip{u"Go to the next marked point (F3)"};
inline constexpr Text<> previous{u"Pre&vious"};
inline constexpr Text<> previousEntry{u"Pre&vious mark"};
inline constexpr Text<> previousTip{u"Go to the previous marked point (Shift+F3)"};
inline constexpr Text<> edit{u"Ed&it the Point's Samples"};
inline constexpr Text<> choosePoint{
    u"Choose a point first: put the mouse on it, or press Page Down on a chart that is selected."};
}  // namespace Marks

// The stretch of points that the charts show.
namespace Points {
inline constexpr Text<> command{u"&Points From To…"};
inline constexpr Text<> from{u"P&oints"};
inline constexpr Text<> to{u"to"};
inline constexpr Text<> fromTip{u"The first point. Dragging the mouse over a chart sets both."};
inline constexpr Text<> toTip{u"The last point. Dragging the mouse over a chart sets both."};
inline constexpr Text<> show{u"Sho&w only these"};
inline constexpr Text<> showTip{u"Show these points only; limits and verdict stay those of all points"};
inline constexpr Text<> all{u"&All points"};
inline constexpr Text<> allTip{u"Show all points again"};
}  // namespace Points

// Two data sets beside each other.
namespace Compare {
inline constexpr Text<> title{u"Compare two data sets"};
inline constexpr Text<> sameScale{u"&Same scale"};
inline constexpr Text<> sameScaleTip{u"Draw the charts of both on one scale"};
inline constexpr Text<> unitsDiffer{u"The units of measurement differ: each chart has a scale of its own"};
inline constexpr Text<1> with{u"Compare \"%1\" &with:"};
inline constexpr Text<> accept{u"Com&pare"};
inline constexpr Text<> acceptTip{u"Show both on one page"};
inline constexpr Text<> noOther{u"There is no other data set to compare it with."};
inline constexpr Text<1> onlyTwo{u"%1 data sets are selected. Two can be compared."};
inline constexpr Text<1> tooFewPoints{u"\"%1\" has fewer than 8 points."};
}  // namespace Compare

// From data set to data set.
namespace Neighbour {
inline constexpr Text<> next{u"Next data set"};
inline constexpr Text<> nextTip{u"Show the next data set of the list (Ctrl+Page Down)"};
inline constexpr Text<> previous{u"Previous data set"};
inline constexpr Text<> previousTip{u"Show the previous data set of the list (Ctrl+Page Up)"};
inline constexpr Text<1> oneSkipped{u"%1 was skipped: it has fewer than 8 points."};
inline constexpr Text<1> skipped{u"%1 data sets were skipped: they have fewer than 8 points."};
}  // namespace Neighbour

namespace Recalculate {
inline constexpr Text<> all{u"All"};
inline constexpr Text<> allTip{u"Calculate the limits from all points"};
inline constexpr Text<> range{u"Range"};
inline constexpr Text<> rangeTip{u"Calculate the limits from the points of the range"};
inline constexpr Text<> cancel{u"Cancel"};
inline constexpr Text<> cancelTip{u"Keep the limits as they are"};
inline constexpr Text<> dataRange{u"Data Range"};
inline constexpr Text<> startPoint{u"Start Point:"};
inline constexpr Text<> endPoint{u"End Point:"};
inline constexpr Text<> drag{u"Drag the mouse over the chart to choose the points."};
inline constexpr Text<> leaveOut{
    u"To leave out a point in the middle, choose the points before or behind it, or remove its samples in "
    u"the "
    u"data editor."};
inline constexpr Text<> notNumeric{u"Not a valid numerical value"};
inline constexpr Text<> invalidRange{u"Invalid range"};
inline constexpr Text<1> withoutWidth{
    u"Limits from these points have no width with %1 decimals. They are not kept: once the data set is "
    u"saved, "
    u"they are calculated from all points."};
}  // namespace Recalculate

}  // namespace Words
