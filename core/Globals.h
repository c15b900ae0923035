// The program-wide state. The program object in app owns it; everything else reaches it through Globals().
#pragma once

#include <QString>
#include <map>
#include <memory>
#include <vector>

#include "core/MainScreen.h"
#include "data/CData.h"
#include "library/Library.h"
#include "platform/registry/Registry.h"
#include "platform/system/Clock.h"

// The settings in use while the program runs.
class clsSetup {
 public:
  QString RegistryKeyPath;
  bool ListviewDoubleClickViewsChart =
      false;             // a double-click in the main list opens the chart, else the editor
  QString DatabaseName;  // full path of the database file in use
};

// What of the open library could not be read, and why.
struct Unread {
  QString library;                 // nothing more can be; what has been read before is still shown
  std::map<qint64, QString> rows;  // single data sets, by their IDs

  QString Text() const;  // a line for each of the first ones; empty where all was read
  bool operator==(const Unread&) const = default;
};

struct ProgramState {
  std::shared_ptr<Library> gLibrary;  // the one open database; a load that is overtaken holds on to its own
  bool gDatabaseOpen = false;         // AttachDatabase opened gLibrary
  bool gUsingODBC = false;            // its provider is not Jet
  QString gDatabaseForThisRun;  // attached at the start in place of the settings' one, which it leaves alone
  clsSetup gSetup;              // the settings object
  std::vector<CDataPtr> gDataCollection;  // every data set, in load order; searched linearly
  quint32 gCollectionEmptied = 0;         // how often; a load that finds it changed has been overtaken
  QString gHelpFilePath;
  bool gRunningInDevelopment = false;
  bool gAddMode = false;  // the data editor adds (else edits)
  Unread gUnread;
  qint32 gCurrentDataID = 0;         // the data set selected on the main list
  bool gLimitsRecalculated = false;  // set by the recalculate screen, read by the chart screen
  bool gSettingsSaved = false;       // set by the configuration screen
  QString gRawDataText;              // shared by the data editor and its expanded view

  MainScreen* mainScreen = nullptr;  // not owned; null for the command line
  Registry* registry = nullptr;      // not owned; the settings store
  Clock* clock = nullptr;            // not owned
};

// The state in force; an error in the program (an exception) where none has been installed.
ProgramState& Globals();

// Globals().gLibrary, and its connection; both throw Error where none is open.
std::shared_ptr<Library> CurrentLibrary();
Connection& CurrentConnection();

// Installs the state that Globals() gives from now on (null for none) and returns the one before.
ProgramState* InstallGlobals(ProgramState* state);
