// The settings in use while the program runs.
#pragma once

#include <QString>

class clsSetup {
 public:
  QString RegistryKeyPath;
  bool ListviewDoubleClickViewsChart =
      false;             // a double-click in the main list opens the chart, else the editor
  QString DatabaseName;  // full path of the database file in use
};
