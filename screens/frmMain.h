// The main window: the list of data sets with the summary of the selected one, and the way to every other
// screen.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

#include "core/CollectionWatch.h"
#include "core/MainScreen.h"
#include "data/CData.h"

class ButtonBar;
class ListFilter;
class MainList;
class ProcessStateIndicator;
class QAction;
class QLabel;
class QMenu;
class QProgressBar;
class QStackedWidget;
class StatSummary;

class frmMain : public QMainWindow, public MainScreen {
  Q_OBJECT
 public:
  // The screens that it opens; each returns when its screen has closed.
  struct Screens {
    std::function<void()> chart, editor, configuration, about, measurements;
    std::function<void()> restore = {}, rename = {}, units = {};
    std::function<void(qint32 one, qint32 other)> compare = {};  // no other: it asks for one
  };

  explicit frmMain(Screens screens, QWidget* parent = nullptr);
  ~frmMain() override;

  // Reads the settings, attaches the database and starts the load timer. False: the program has to end.
  bool Form_Load();

  // Reads the library again (F5), at once and without a progress display, and selects the data set that was
  // added since, or else the one that was selected.
  void ReloadLibrary();

  // Comes to the front and attaches that library for this run (an empty path: keeps its own), once the forms
  // of the present one have closed. These ask first where something would be lost; who stays keeps the
  // library. In place of a path one of the requests: its menu entry is carried out then.
  void ShowLibrary(const QString& path);
  static constexpr QStringView newLibrary = u"--new-library", sampleLibrary = u"--sample-library";
  static bool IsRequest(const QString& word) { return word == newLibrary || word == sampleLibrary; }

  void SetDatabasePanelText(const QString& text) override;
  void EnableLoadTimer() override;
  void ReadLibraryNews() override;
  void SetupMainFormDisplay() override;
  void AddListRow(const CData& dataSet) override;
  void UpdateListRow(const CData& dataSet) override;
  void SelectListRow(qint32 id) override;
  void RemoveListRow(qint32 id) override;
  bool AskPassword(const QString& address, const QString& why) override;
  std::vector<qint32> ListedIDs() const override;

 Q_SIGNALS:
  void Unloaded();  // the window has closed, the database too: the program ends

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // While Loading, the commands that need the collection or change it rest; while Announcing, the rows are
  // in, and only the pauses of the progress display are still to come.
  enum class Phase { Idle, Loading, Announcing };

  static constexpr int watchMilliseconds = 400;  // how often it looks whether others have changed the library
  static constexpr int fillMilliseconds = 200;   // how often it shows the rows that are read meanwhile
  static constexpr int retryMilliseconds = 5000;  // the same where it cannot be opened

  enum ToolbarButton { ViewButton = 1, DataButton, ToolsButton, HelpButton, ExitButton };

  void BuildToolbar();
  QWidget* BuildSummaryPanel();
  void BuildStatusBar();
  void BuildMenu();
  void BuildSortMenu();
  void ShowStartPage(bool shown);
  void ShowPicture();

  void InitTimer_Timer();
  void ClockTimer_Timer();
  void ExitTimer_Timer();
  bool ReadCollection();
  void ProcessMainListData();
  void PopulateMainList();
  void ShowRowsRead();
  void ShowHint();

  void ItemClick(const QString& description);
  void FollowList();  // as if the row that is current in the list had been clicked
  void MakeCurrent(qint32 id);
  CDataPtr CurrentDataSet();  // null where there is none any more, after telling the user
  CDataPtr OneSelected();     // the same for a command, and null where not exactly one is selected
  void ShowCurrentSummary();
  void ClearSummary();
  void UpdateToolbarStates();

  void ViewChart();
  void AddData();
  void EditData();
  void DeleteData();
  void Rename();
  void AddMeasurements();
  void Compare();
  void DoubleClickAction();
  void Attach(const QString& chosenPath);
  void RestoreDeleted();
  void ShowLibraryNews(const CollectionWatch::News& news);
  void ShowNewRows(const CollectionWatch::News& news);
  void ReopenLibrary();
  QString PanelText() const;   // the first panel's, while there is no news
  QString HandedOver() const;  // as the user knows it
  void HandOverTimer_Timer();
  void AttachForThisRun(const QString& chosenPath);
  void ShowNews(const QString& news);  // in the first panel, for a while
  void ShowPanelText();
  void Unload();
  void KeepLooks() const;  // place, size and columns, for the next start

  Screens screens_;
  bool IsClosing = false;
  bool InitComplete = false;
  Phase phase_ = Phase::Idle;
  QString databasePanelText_;
  QString added_;  // the description of a new data set that has no ID before the library is read again

  std::unique_ptr<CollectionWatch> watch_;  // of the library that the collection was read from
  QString handedOver_;                      // the library, or the request, of a start
  bool isClosingForm_ = false;

  QTimer InitTimer;
  QTimer FillTimer;
  QTimer ClockTimer;
  QTimer ExitTimer;
  QTimer WatchTimer;
  QTimer HandOverTimer;
  QTimer NewsTimer;
  ButtonBar* Toolbar1 = nullptr;
  MainList* ListView1 = nullptr;
  ListFilter* filter_ = nullptr;
  QStackedWidget* pages_ = nullptr;  // the list, or else the start page
  ProcessStateIndicator* ProcessStateIndicator1 = nullptr;
  StatSummary* StatSummary1 = nullptr;
  QLabel* Image1 = nullptr;
  QLabel* panel1_ = nullptr;
  QLabel* panel2_ = nullptr;
  QProgressBar* ccrpProgressBar1 = nullptr;
  QMenu* MyMenu = nullptr;
  QAction* menuView = nullptr;
  QAction* mnuEdit = nullptr;
  QAction* mnuDelete = nullptr;
  QAction* mnuAddMeasurements = nullptr;
  QAction* mnuRename = nullptr;
  QAction* mnuCompare = nullptr;
};
