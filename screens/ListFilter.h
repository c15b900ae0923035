// What stands above the main list: how many data sets are in which state, and what the list is to show of
// them.
#pragma once

#include <QWidget>

class MainList;
class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;

class ListFilter : public QWidget {
  Q_OBJECT
 public:
  ListFilter(MainList* list, QWidget* parent);

  void Find();           // puts the keyboard into the box
  void ShowAll();        // filters nothing
  void PutBeforeList();  // for Tab, once the window has its layout

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Apply();
  void ShowCounts();

  MainList* list_;
  QGridLayout* layout_;
  QLineEdit* txtFind = nullptr;
  QCheckBox* checkOutOfControl = nullptr;
  QLabel* lblCounts = nullptr;
  bool isWide_ = false;
  bool isChanging_ = false;  // both at once
};
