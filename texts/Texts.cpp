#include "texts/Texts.h"

#include <QCoreApplication>
#include <QList>
#include <algorithm>
#include <array>

#include "platform/language/Conversions.h"

namespace {

struct Entry {
  qint32 number;
  QStringView text;
};

// Blanks at either end belong to the texts: callers join them with values. Odd spellings stay as users and
// their scripts know them. 101, 103, 116, 122, 193 to 195, 198, 199, 253, 293 and 294 are shown nowhere.
constexpr auto table = std::to_array<Entry>({
    {101, u"Failed to open database"},
    {102, u"Error opening database:"},
    {103, u"Application terminating"},
    {104, u"failed"},
    {105, u"Critical Error Message"},
    {106, u"Error Message"},
    {107, u" with error: "},
    {108, u"Kestrel"},
    {110, u"Data on this screen has changed. Do you wish to save these changes?"},
    {111, u"Confirmation"},
    {112, u"Failed to generate statistical data with error"},
    {113, u"Are you sure you want to delete the current Unit Of Measurement?"},
    {114, u"Failed to delete the current Unit Of Measurement"},
    {115, u"The current Unit Of Measurement has been deleted"},
    {116, u"This option is not available."},
    {117, u"The Unit Of Measurement entered already exists. Unit Of Measurement names must be unique."},
    {118, u"Units Of Measurement requires a unique name"},
    {119, u"Unit Of Measurement Configuration"},
    {120, u"Name"},
    {121, u"Description"},
    {122, u"Failed to open table"},
    {150, u"Max Samples:"},
    {151, u"Use all samples"},
    {152, u"Calculate Control Limits on Save"},
    {153, u"Sensitivity:"},
    {154, u"Long term detection"},
    {155, u"Short term detection"},
    {156, u"Unit of measurement:"},
    {157, u"Low (Detection Rules 1 and 4)"},
    {158, u"Medium (Detection Rules 1,2, and 4)"},
    {159, u"High (Detection Rules 1,2,3, and 4)"},
    {160, u" samples have been discarded because they exceed flier limits. "},
    {161, u"Only "},
    {162, u" samples are remaining."},
    {163, u"There must be at least "},
    {164, u" number of valid data samples to process"},
    {165, u"System Message"},
    {166, u"No data to process"},
    {167, u"Error formatting raw data"},
    {168, u"Data values could not be validated. Ensure at least "},
    {169, u" data points exist and no non-numeric values have been entered."},
    {170, u"Error attempting to save data: "},
    {171, u" samples will be discarded upon save. Continue?"},
    {172, u"The file description entered already exists. Please select another description or CANCEL."},
    {173, u"The sub group size must be a value greater than zero and cannot exceed 20."},
    {174,
     u"Upper and lower control limits must be entered if the checkbox labeled 'Calculate Limits On Save' is "
     u"left unchecked."},
    {175, u"The nominal value cannot exceed the spec limits."},
    {176, u"The value entered for the maximum number of samples is not a numeric value."},
    {177,
     u"The required fields for statistical calculations are not filled in correctly. Any area with an "
     u"aterisk must be entered."},
    {178, u"Failed to setup data object with error: "},
    {181, u"Are you sure you wish to quit using Kestrel?"},
    {185, u"A minimum of 8 data points are required"},
    {186, u"Data Description"},
    {190, u"Reading Database:"},
    {191, u"Database Loaded"},
    {192, u"Kestrel Configuration"},
    {193, u" Red Flag Limits "},
    {194, u"Out of Control Condition"},
    {195, u"Minimum Process State"},
    {196, u"&Accept"},
    {197, u"&Close"},
    {198, u"Failed to get 'EnableRedFlagOutOfControl' registry value"},
    {199, u"Failed to get 'RedFlagProcessStateLimit' registry value"},
    {200, u"Fatal Error"},
    {201, u"Registry settings saved"},
    {203, u"error attempting to get the current data for the item selected: "},
    {204, u"All data successfully saved."},
    {205,
     u"Data was saved to the database, but the application could not be updated. Restart the application to "
     u"load the modified data."},
    {206, u"Print"},
    {207, u"Print Options"},
    {208, u"Printer Setup"},
    {209, u"Page Setup"},
    {210, u"Save"},
    {211, u"Save Changes"},
    {212, u"Zoom In"},
    {213, u"Chart Zoom"},
    {214, u"Recalculate"},
    {215, u"Recalculate control limits"},
    {216, u"Utilities"},
    {217, u"Export"},
    {218, u"Copy"},
    {219, u"Help"},
    {220, u"Application Help"},
    {221, u"Close"},
    {222, u"Close the current screen"},
    {223, u"Zoom Out"},
    {224, u"The graphics page has been copied."},
    {225,
     u"There are not enough data points to recalculate the control limits based on a range of data. Make "
     u"sure at least five (5) data points exist before attempting this operation"},
    {226, u"Data has changed"},
    {227, u"Could not generate scaling data"},
    {228, u"Could not generate scaling data"},
    {229, u"Template"},
    {230, u"Copy limits from another item"},
    {231, u"Paste"},
    {232, u"Paste data to the raw data box"},
    {233, u"Tools"},
    {234, u"System Utilities"},
    {235, u"Configuration"},
    {236, u"View Chart"},
    {237, u"View the selected chart"},
    {238, u"Stat Data"},
    {239, u"Modify Data"},
    {240, u"Add"},
    {241, u"Edit"},
    {242, u"Delete"},
    {243, u"Exit"},
    {244, u"Exit the application"},
    {245, u" Listview Settings "},
    {246, u"Edit Selection"},
    {247, u"View Chart"},
    {248, u"Double-click action"},
    {250, u"Are you sure you want to delete the selected item"},
    {251, u"This operation cannot be undone"},
    {252, u"Selected data successfully deleted."},
    {253, u"Failed to get 'ListviewDoubleClickViewsChart' registry value"},
    {254,
     u"Some or all registry settings could not be read. This could mean that this information is missing or "
     u"corrupt. It is recommended that you reinstall the software to correct this problem. If the problem "
     u"persists, contact Orvane Labs for support. The application will now terminate."},
    {255, u"Database Connection"},
    {262, u"No rule violations. The process is in control."},
    {263,
     u"DETECTION RULE ONE: A lack of control is indicated whenever a single point falls outside the "
     u"(three-sigma) control limits."},
    {264,
     u"DETECTION RULE TWO: A lack of control is indicated whenever at least two out of three successive "
     u"values fall on the same side of, and more than two sigma units away from, the central line."},
    {265,
     u"DETECTION RULE THREE: A lack of control is indicated whenever at least four out of five successive "
     u"values fall on the same side of, and more than one sigma unit away from, the central line. "},
    {266,
     u"DETECTION RULE FOUR: A lack of control is indicated whenever at least eight successive values fall on "
     u"the same side of the central line."},
    {267, u"DETECTION RULE UNKNOWN. Invalid rule violation."},
    {268, u"Process Control Indicator"},
    {269, u"Rule Violation"},
    {293, u"Failed to get 'DatabaseName' registry value"},
    {294, u"Database:"},
    {295, u"<none>"},
    {296, u"Invalid Database Version"},
    {297, u"Current Database Version:"},
    {298, u"Required Database Version:"},
    {299, u"Current Database: "},
    {300, u"DB Rev. "},
    {301, u"Kestrel Graphics Screen - Control Charting"},
    {302, u"Kestrel - SPC control charting solution for the quality system novice"},
    {303,
     u"Kestrel is provided by Orvane Labs as it is, without warranty of any kind. Its results support the "
     u"judgement of a qualified person and do not replace it. Orvane Labs is not liable for decisions made "
     u"on the basis of these results."},
    {304,
     u"A valid database connection could not be established. From the tool bar, select Tools->Connection "
     u"(click on the down arrow for a drop-down list). A dialog will be displayed so you can open a valid "
     u"database file."},
});

static_assert(std::ranges::adjacent_find(table, std::ranges::greater_equal{}, &Entry::number) == table.end(),
              "the look-up needs the numbers ascending, each once");

}  // namespace

QString LoadResText(QStringView reference) {
  const QList<QStringView> parts = reference.split(u';');
  if (parts.size() < 2) return {};
  try {
    const qint32 number = Conversions::CLng(parts[1]);
    const auto entry = std::ranges::lower_bound(table, number, {}, &Entry::number);
    return entry != table.end() && entry->number == number ? Translated(entry->text) : QString();
  } catch (const Conversions::Failure&) {
    return {};
  }
}

QString Translated(QStringView english) {
  return QCoreApplication::translate("Kestrel", english.toUtf8().constData());
}
