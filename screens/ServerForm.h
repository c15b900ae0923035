// Asks for a library on a server: by its parts or by its address, and tries it where that is wanted.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

class ServerForm : public QDialog {
  Q_OBJECT
 public:
  // Begins with the address of the present library, if that is on a server.
  explicit ServerForm(QWidget* parent = nullptr);

  // Gives the address that was chosen; empty where the user cancelled.
  static QString Ask(QWidget* parent);

 private:
  void BuildControls();
  QLineEdit* Field(const QString& name, const QString& keyword);
  void ShowParts();
  void ShowAddress();
  bool Test();  // whether a library can be opened there; says so
  void Open();

  QLineEdit* txtAddress = nullptr;
  QLabel* lblAnswer = nullptr;
  QPushButton* cmdOpen = nullptr;
};
