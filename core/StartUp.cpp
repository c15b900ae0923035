#include "core/StartUp.h"

#include <QDir>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/RegistryFunctions.h"
#include "platform/ui/MessageBox.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace StartUp {

void UseSettings() { Globals().gSetup.RegistryKeyPath = u"Software\\Orvane Labs\\Kestrel"_s; }

bool ReadSettings(const QString& applicationFolder) {
  ProgramState& state = Globals();
  state.gRunningInDevelopment = qEnvironmentVariableIsSet("KESTREL_DEVELOPMENT");
  state.gHelpFilePath = applicationFolder + QDir::toNativeSeparators(u"/Help/KESTREL.chm"_s);
  UseSettings();
  if (QCGlobalFunctions::GetRegistrySettings()) return true;
  MessageBox::Show({LoadResText(u"Registry could not be read;254"), LoadResText(u"Fatal Error;200"),
                    MessageBox::Icon::Critical, MessageBox::Buttons::Ok});
  return false;
}

void AttachConfiguredDatabase() {
  ProgramState& state = Globals();
  state.gDatabaseOpen = false;
  state.gAddMode = false;
  state.gCurrentDataID = 0;
  state.gLimitsRecalculated = false;
  state.gSettingsSaved = false;
  if (state.mainScreen)
    state.mainScreen->SetDatabasePanelText(LoadResText(u"Current Database: ;299") +
                                           LoadResText(u"<none>;295"));
  if (!state.gDatabaseForThisRun.isEmpty() || !state.gSetup.DatabaseName.isEmpty())
    return GlobalFunctions::AttachDatabase({});
  // Behind the box that says why there is no library stand the ways to one.
  if (state.mainScreen) state.mainScreen->SetupMainFormDisplay();
  MessageBox::Show({LoadResText(u"Error opening database:;304"), Words::systemMessage.toString(),
                    MessageBox::Icon::Information, MessageBox::Buttons::Ok});
}

}  // namespace StartUp

QCGlobalFunctions::MenuButtonStates QCGlobalFunctions::UpdateMenuButtonStates(const Recordset& recordset) {
  MenuButtonStates states;
  if (recordset.GetState() != Recordset::Opened) return states;
  const qint64 count = recordset.RecordCount();
  states.currentRecord = count >= 1;
  states.firstAndPrevious = count > 1 && !recordset.BOF();
  states.nextAndLast = count > 1 && !recordset.EndOfFile();
  return states;
}
