// The steps of starting that belong to no screen: paths, settings, the configured database; and the states of
// a record editor's commands.
#pragma once

#include <QString>

#include "platform/ado/Recordset.h"

namespace StartUp {

// Names the key of the settings, which can be read and written from then on.
void UseSettings();

// Sets the development flag, the help file's path and the key of the settings, and reads them. False where
// they cannot be read, after the "Fatal Error" box: the program then has to end.
bool ReadSettings(const QString& applicationFolder);

// Clears the working flags, and attaches the database for this run or of the settings, or tells the user that
// there is none.
void AttachConfiguredDatabase();

}  // namespace StartUp

namespace QCGlobalFunctions {

// Which of a record editor's commands a recordset allows.
struct MenuButtonStates {
  bool currentRecord = false;  // the commands that act on the current record
  bool firstAndPrevious = false;
  bool nextAndLast = false;
};

MenuButtonStates UpdateMenuButtonStates(const Recordset& recordset);

}  // namespace QCGlobalFunctions
