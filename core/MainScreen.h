// What core needs of the main screen; the screen itself hands it in. Without one (the command line) nothing
// is shown.
#pragma once

#include <QString>
#include <vector>

class CData;

class MainScreen {
 public:
  virtual ~MainScreen() = default;
  virtual void SetDatabasePanelText(const QString& text) = 0;  // the status bar's first panel
  virtual void EnableLoadTimer() = 0;                 // InitTimer: (re)reads the library one second later
  virtual void ReadLibraryNews() = 0;                 // what others have changed meanwhile
  virtual void SetupMainFormDisplay() = 0;            // captions, tool tips and states of the commands
  virtual void AddListRow(const CData& data) = 0;     // icon from ProcessState, Description, ID
  virtual void UpdateListRow(const CData& data) = 0;  // the row with the same ID: icon, refresh, summary
  virtual void SelectListRow(qint32 id) = 0;          // makes that data set the current one
  virtual void RemoveListRow(qint32 id) = 0;          // every row with that ID
  // Has the connections to that server know the password; false where the user gave none.
  virtual bool AskPassword(const QString& address, const QString& why) = 0;
  virtual std::vector<qint32> ListedIDs() const = 0;  // as the list shows them, filtered and sorted
};
