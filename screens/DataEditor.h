// The data editor: adds a data set or edits the selected one.
#pragma once

#include <QDialog>
#include <QTimer>

#include "data/CData.h"
#include "screens/EditorFields.h"
#include "screens/LibraryView.h"

class ButtonBar;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class RawDataBox;
class RawDataNotes;

class DataEditor : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Adds where Globals().gAddMode, else edits the data set Globals().gCurrentDataID.
  explicit DataEditor(QWidget* parent = nullptr);

  // Accepted when a data set was added: the library has to be read again. Rejected at once where the data set
  // to edit could not be had.
  int exec() override;
  void ShowSample(qsizetype number);  // selected and in view as the editor opens; counted from 1
  void LibraryChanged() override;
  void reject() override;  // Close and Escape: asks first where something would be lost

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum ToolbarButton { SaveButton = 1, TemplateButton, PasteButton, CloseButton };

  // What the page looks like (DataEditorLayout.cpp).
  void BuildControls();
  void BuildToolbar();
  QLayout* BuildHead();
  QGroupBox* BuildSpecLimits();
  QGroupBox* BuildControlLimits();
  QGroupBox* BuildChartSetup();
  QLayout* BuildSizes(QWidget* group);
  void BuildSensitivity(QWidget* group);
  QGroupBox* BuildRawData();
  void AddNumberBoxes(QGridLayout* grid, int group);
  void SetTabOrder();

  void ConnectControls();
  bool LoadDataSet();
  void SetUp();
  void ShowUnits(const QStringList& names);
  void FollowUnits();
  void OpenUnits();
  void OpenExpandedView();
  bool SaveSelect();
  void ShowStored(const EditorFields& fields);
  void ReadAgain();
  void GoTo(const QString& controlName);
  void MonitorChanges();

  EditorFields ReadFields() const;
  void ShowFields(const EditorFields& fields);
  void FieldChanged();
  void UpdateNotes();  // the live line, the number of samples, units beside numbers, the hint
  QString Hint(const EditorFields& fields) const;
  void SelectUnit(const QString& name);

  CDataPtr edited_;  // the collection's object; null when adding
  bool isLoaded_ = false;
  bool isSetUp_ = false;
  bool descriptionChanged_ = false;
  QString loadedDescription_;
  EditorFields loaded_;  // as last shown or saved
  QString reason_;       // why the last save stopped without a message
  QStringList listedUnits_;
  QString news_;  // what others have done to the data set

  ButtonBar* Toolbar1 = nullptr;
  QLineEdit* txtDescription = nullptr;
  QComboBox* comboUnits = nullptr;
  QPushButton* cmdUnits = nullptr;
  QList<QLineEdit*> numberBoxes_;  // in the order of NumberBoxes()
  QList<QLabel*> unitLabels_;
  QCheckBox* checkDiscardFliers = nullptr;
  QCheckBox* checkCalculateControlLimitsOnSave = nullptr;
  QComboBox* comboSubGroup = nullptr;
  QLineEdit* txtMaxSamples = nullptr;
  QCheckBox* checkUseAllSamples = nullptr;
  QListWidget* lstSensitivity = nullptr;
  QRadioButton* optionLongTermDetection = nullptr;
  QRadioButton* optionShortTermDetection = nullptr;
  RawDataBox* txtRawData = nullptr;
  QPushButton* cmdRawData = nullptr;
  RawDataNotes* notes_ = nullptr;
  QLabel* lblHint = nullptr;
  QTimer ChangeMonitorTimer{this};
  QTimer NotesTimer{this};
};
