// The about box: title, version, description and legal notice, and the way to the System Information tool.
#pragma once

#include <QDialog>
#include <functional>

#include "screens/LibraryView.h"

class QGridLayout;

class frmAbout : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Starts a program by its path; false when it could not be started.
  using ProgramStarter = std::function<bool(const QString& path)>;

  explicit frmAbout(QWidget* parent = nullptr, ProgramStarter startProgram = StartProgram);

  static bool StartProgram(const QString& path);

  // One value of the settings store as text: a string as it is, a 32-bit number as hexadecimal text beginning
  // "&h".
  static bool GetKeyValue(const QString& keyName, const QString& valueName, QString& text);

 private:
  void BuildControls();
  void AddButtons(QGridLayout* grid);
  void StartSysInfo();

  ProgramStarter startProgram_;
};
