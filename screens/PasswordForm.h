// Asks for the password of a server's user. It is kept in memory for the connections of this run, and nowhere
// else.
#pragma once

#include <QDialog>

class QLineEdit;

class PasswordForm : public QDialog {
  Q_OBJECT
 public:
  // Why one is wanted: for the connection to that address. False where the user gives none.
  static bool Ask(QWidget* parent, const QString& address, const QString& why);

 private:
  PasswordForm(QWidget* parent, const QString& why);

  QLineEdit* txtPassword = nullptr;
};
