// Builds the main window: its toolbar, list, summary panel, status bar, pop-up menu and timers.
#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QProgressBar>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>
#include <utility>

#include "core/Globals.h"
#include "core/Settings.h"
#include "platform/ui/ButtonBar.h"
#include "screens/Controls.h"
#include "screens/DatabaseChoice.h"
#include "screens/Help.h"
#include "screens/Indicators.h"
#include "screens/ListFilter.h"
#include "screens/MainList.h"
#include "screens/ScrollingPage.h"
#include "screens/ServerForm.h"
#include "screens/StartPage.h"
#include "screens/StatSummary.h"
#include "screens/frmMain.h"
#include "texts/SharingWords.h"
#include "texts/StartWords.h"
#include "texts/Texts.h"
#include "texts/UnitWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

void NameTimer(QTimer& timer, const QString& name, int milliseconds, QObject* form) {
  timer.setObjectName(name);
  timer.setInterval(milliseconds);
  timer.setParent(form);
}

// Tells in a menu which key does the same; the list itself takes the key.
void ShowKey(QAction* action, const QKeySequence& key) {
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
}

// Its text may be longer than the panel is wide: then the library's name is what stays of it, a tool tip has
// all, and the window stays as it is.
class PanelLabel : public QLabel {
 public:
  explicit PanelLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft, Shown());
  }
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ToolTip) setToolTip(Shown() == text() ? QString() : PlainToolTip(text()));
    return QLabel::event(event);
  }

 private:
  QString Shown() const {
    const QString caption = LoadResText(u"Current Database: ;299");
    const int room = contentsRect().width();
    if (!text().startsWith(caption) || fontMetrics().horizontalAdvance(text()) <= room)
      return fontMetrics().elidedText(text(), Qt::ElideMiddle, room);
    return fontMetrics().elidedText(text().sliced(caption.size()), Qt::ElideRight, room);
  }
};

}  // namespace

frmMain::frmMain(Screens screens, QWidget* parent) : QMainWindow(parent), screens_(std::move(screens)) {
  setObjectName(u"frmMain"_s);
  setWindowTitle(LoadResText(u"Kestrel;108"));
  ListView1 = Named(new MainList(this), u"ListView1"_s);
  ListView1->setAccessibleName(Words::Main::dataSets());
  filter_ = new ListFilter(ListView1, this);
  BuildToolbar();
  BuildMenu();
  BuildStatusBar();

  auto* body = new QWidget(this);
  auto* layout = new QHBoxLayout(body);
  auto* page = new QWidget(body);
  auto* list = new QVBoxLayout(page);
  list->setContentsMargins(0, 0, 0, 0);
  list->addWidget(filter_);
  list->addWidget(ListView1, 1);
  pages_ = new QStackedWidget(body);
  pages_->addWidget(page);
  layout->addWidget(pages_, 1);
  layout->addWidget(BuildSummaryPanel());
  setCentralWidget(body);
  filter_->PutBeforeList();
  ListView1->setFocus();
  ListView1->SetColumnWidths(Settings::Read(Settings::mainListColumns));
  const QByteArray lastPlace = Settings::Read(Settings::mainWindowPlace).toLatin1();
  const int em = fontMetrics().height();
  if (!restoreGeometry(QByteArray::fromBase64(lastPlace)))  // which keeps it on the screens that there are
    resize(QSize(em * 64, em * 40).boundedTo(RoomFor(*this)));

  NameTimer(InitTimer, u"InitTimer"_s, 1000, this);
  NameTimer(FillTimer, u"FillTimer"_s, fillMilliseconds, this);
  NameTimer(ClockTimer, u"ClockTimer"_s, 500, this);
  NameTimer(ExitTimer, u"ExitTimer"_s, 500, this);
  NameTimer(WatchTimer, u"WatchTimer"_s, watchMilliseconds, this);
  NameTimer(HandOverTimer, u"HandOverTimer"_s, 100, this);
  NameTimer(NewsTimer, u"NewsTimer"_s, 10'000, this);
  connect(&InitTimer, &QTimer::timeout, this, &frmMain::InitTimer_Timer);
  connect(&FillTimer, &QTimer::timeout, this, &frmMain::ShowRowsRead);
  connect(&ClockTimer, &QTimer::timeout, this, &frmMain::ClockTimer_Timer);
  connect(&ExitTimer, &QTimer::timeout, this, &frmMain::ExitTimer_Timer);
  connect(&WatchTimer, &QTimer::timeout, this, &frmMain::ReadLibraryNews);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [this] {
    if (phase_ != Phase::Idle || InitTimer.isActive() || !Globals().gDatabaseOpen) return;
    Globals().gUnread.library.isEmpty() ? ReloadLibrary() : ReopenLibrary();
  });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_, &ListFilter::Find);
  connect(&HandOverTimer, &QTimer::timeout, this, &frmMain::HandOverTimer_Timer);
  connect(&NewsTimer, &QTimer::timeout, this, [this] {
    NewsTimer.stop();
    ShowPanelText();
  });
  connect(ListView1, &MainList::ItemClick, this, &frmMain::ItemClick);
  connect(ListView1, &MainList::SelectedOthers, this, [this] {
    UpdateToolbarStates();
    if (phase_ == Phase::Idle) ShowPanelText();
  });
  connect(ListView1, &MainList::RowActivated, this, &frmMain::DoubleClickAction);
  connect(ListView1, &MainList::DeletePressed, mnuDelete, &QAction::trigger);
  connect(ListView1, &MainList::MenuRequested, MyMenu, [this](const QPoint& place) { MyMenu->popup(place); });
  InstallHelpKey(this, HelpTopics::MainScreen);
  Globals().mainScreen = this;
  UpdateToolbarStates();
}

frmMain::~frmMain() { Globals().mainScreen = nullptr; }

void frmMain::BuildToolbar() {
  Toolbar1 = new ButtonBar(u"Toolbar1"_s, this);
  Toolbar1->setWindowTitle(LoadResText(u"Tools;233"));
  const auto button = [this](QStringView caption, QStringView toolTip, Symbol symbol) {
    return Toolbar1->AddButton(LoadResText(caption), LoadResText(toolTip), symbol);
  };
  const auto entry = [this](int of, const QString& caption, Symbol symbol, auto command) {
    QAction* action = Toolbar1->AddEntry(of, caption, symbol);
    connect(action, &QAction::triggered, this, command);
    return action;
  };
  connect(button(u"View Chart;236", u"View the selected chart;237", Symbol::Chart), &QAction::triggered, this,
          &frmMain::ViewChart);

  button(u"Stat Data;238", u"Modify Data;239", Symbol::Data);
  entry(DataButton, LoadResText(u"Add;240"), Symbol::Add, &frmMain::AddData)->setShortcut(QKeySequence::New);
  entry(DataButton, LoadResText(u"Edit;241"), Symbol::Edit, &frmMain::EditData)
      ->setShortcut(Qt::CTRL | Qt::Key_E);
  ShowKey(entry(DataButton, LoadResText(u"Delete;242"), Symbol::Delete, &frmMain::DeleteData),
          QKeySequence::Delete);
  entry(DataButton, Words::Adding::command(), Symbol::Add, &frmMain::AddMeasurements);
  entry(DataButton, Words::Sharing::restoreEntry(), Symbol::Back, &frmMain::RestoreDeleted);
  entry(DataButton, Words::Renaming::entry(), Symbol::Edit, &frmMain::Rename)->setShortcut(Qt::Key_F2);
  entry(DataButton, Words::Main::compare(), Symbol::Chart, &frmMain::Compare)
      ->setShortcut(Qt::CTRL | Qt::Key_M);

  button(u"Tools;233", u"System Utilities;234", Symbol::Tools);
  entry(ToolsButton, LoadResText(u"Configuration;235"), Symbol::Settings,
        [this] { screens_.configuration(); });
  entry(ToolsButton, LoadResText(u"Database Connection;255"), Symbol::Database, [this] {
    Attach(DatabaseChoice::ChooseExisting());
  })->setShortcut(QKeySequence::Open);
  entry(ToolsButton, Words::Main::newDatabase(), Symbol::New,
        [this] { Attach(DatabaseChoice::CreateNew()); });
  entry(ToolsButton, Words::Start::sampleEntry(), Symbol::Chart,
        [this] { Attach(DatabaseChoice::CreateSamples()); });
  entry(ToolsButton, Words::Server::entry(), Symbol::Database, [this] { Attach(ServerForm::Ask(this)); });
  entry(ToolsButton, Words::Units::entry(), Symbol::Edit, [this] { screens_.units(); });

  button(u"Help;219", u"Application Help;220", Symbol::Help);
  entry(HelpButton, Words::Main::contents(), Symbol::Contents, [] { CallUpHelp(HelpTopics::Contents); });
  entry(HelpButton, Words::Main::about(), Symbol::About, [this] { screens_.about(); });

  connect(button(u"Exit;243", u"Exit the application;244", Symbol::Exit), &QAction::triggered, this,
          [this] { ExitTimer.start(); });
  addToolBar(Toolbar1);
}

void frmMain::BuildMenu() {
  MyMenu = Named(new QMenu(this), u"MyMenu"_s);
  const auto item = [this](const QString& name, const QString& caption, Symbol symbol, auto command,
                           const QKeySequence& key = {}) {
    QAction* action = MyMenu->addAction(SymbolIcon(symbol), caption);
    action->setObjectName(name);
    ShowKey(action, key);
    connect(action, &QAction::triggered, this, command);
    return action;
  };
  menuView = item(u"menuView"_s, Words::Main::viewChart(), Symbol::Chart, &frmMain::ViewChart);
  MyMenu->addSeparator()->setObjectName(u"mnuSpace"_s);
  mnuEdit = item(u"mnuEdit"_s, Words::Main::editData(), Symbol::Edit, &frmMain::EditData,
                 Toolbar1->Entry(DataButton, 2)->shortcut());
  mnuAddMeasurements =
      item(u"mnuAddMeasurements"_s, Words::Adding::command(), Symbol::Add, &frmMain::AddMeasurements);
  mnuDelete = item(u"mnuDelete"_s, Words::Main::deleteData(), Symbol::Delete, &frmMain::DeleteData,
                   QKeySequence::Delete);
  mnuRename = item(u"mnuRename"_s, Words::Renaming::menuEntry(), Symbol::Edit, &frmMain::Rename,
                   Toolbar1->Entry(DataButton, 6)->shortcut());
  mnuCompare = item(u"mnuCompare"_s, Words::Main::compare(), Symbol::Chart, &frmMain::Compare,
                    Toolbar1->Entry(DataButton, 7)->shortcut());
  BuildSortMenu();
}

// What a click on a column does, by the keyboard.
void frmMain::BuildSortMenu() {
  QMenu* menu = Named(MyMenu->addMenu(Words::Main::sortBy()), u"mnuSort"_s);
  Mnemonics mnemonics;
  const auto item = [&](const QString& caption, int column) {
    QAction* action = menu->addAction(mnemonics.Mark(caption));
    action->setObjectName(u"mnuSort_%1"_s.arg(column));
    connect(action, &QAction::triggered, this, [this, column] {
      const QHeaderView& header = *ListView1->header();
      const bool turns =
          header.sortIndicatorSection() == column && header.sortIndicatorOrder() == Qt::AscendingOrder;
      ListView1->header()->setSortIndicator(column, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
    });
  };
  item(Words::Main::libraryOrder(), -1);
  item(Words::Sharing::state(), MainListModel::State);
  item(LoadResText(u"Data Description;186"), MainListModel::Description);
  item(Words::Figure::cpk(), MainListModel::Cpk);
  item(Words::Figure::samples(), MainListModel::Samples);
  item(Words::Figure::lastModified(), MainListModel::LastModified);
}

void frmMain::ShowStartPage(bool shown) {
  QWidget* page = pages_->widget(1);
  if (shown == (page != nullptr)) return;
  if (page) {
    pages_->removeWidget(page);
    page->deleteLater();  // one of its buttons may have been pressed
    return ListView1->setFocus();
  }
  auto* start = new StartPage({.makeNew = [this] { Attach(DatabaseChoice::CreateNew()); },
                               .open = [this] { Attach(DatabaseChoice::ChooseExisting()); },
                               .samples = [this] { Attach(DatabaseChoice::CreateSamples()); },
                               .attach = [this](const QString& path) { Attach(path); }},
                              pages_);
  pages_->setCurrentIndex(pages_->addWidget(new ScrollingPage(start, pages_)));
  start->setFocus();
}

QWidget* frmMain::BuildSummaryPanel() {
  auto* panel = new QWidget(this);
  Image1 = Named(new QLabel(panel), u"Image1"_s);
  Image1->setAlignment(Qt::AlignCenter);
  const int em = fontMetrics().height();
  Image1->setFixedHeight(em * 6);
  if (screen()->availableSize().height() < em * 27) Image1->hide();  // the figures need the room
  ProcessStateIndicator1 = Named(new ProcessStateIndicator(panel), u"ProcessStateIndicator1"_s);
  ProcessStateIndicator1->SetCaption(LoadResText(u"ProcessControlIndicator;268"));
  StatSummary1 = Named(new StatSummary(panel), u"StatSummary1"_s);

  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(Image1);
  layout->addWidget(ProcessStateIndicator1);
  layout->addWidget(StatSummary1);
  layout->addStretch(1);
  auto* area = new ScrollingPage(panel, this);
  area->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  return area;
}

void frmMain::ShowPicture() {
  const QIcon icon(u":/kestrel.svg"_s);
  QApplication::setWindowIcon(icon);
  Image1->setPixmap(icon.pixmap(QSize(Image1->height(), Image1->height()), devicePixelRatio()));
}

void frmMain::BuildStatusBar() {
  auto* StatusBar1 = statusBar();
  StatusBar1->setObjectName(u"StatusBar1"_s);
  panel1_ = Named(new PanelLabel(StatusBar1), u"StatusBar1_1"_s);
  panel1_->setContentsMargins(fontMetrics().height() / 2, 0, fontMetrics().height(), 0);
  panel2_ = Named(new QLabel(StatusBar1), u"StatusBar1_2"_s);
  panel2_->setTextFormat(Qt::PlainText);
  panel2_->setMinimumWidth(fontMetrics().horizontalAdvance(u"Mmm 00, 0000     00:00:00 AM     "_s));
  StatusBar1->addWidget(panel1_, 1);
  StatusBar1->addPermanentWidget(panel2_);

  // Over the right 0.6 of the first panel.
  ccrpProgressBar1 = Named(new QProgressBar(panel1_), u"ccrpProgressBar1"_s);
  ccrpProgressBar1->setAccessibleName(LoadResText(u"Reading Database:;190"));
  auto* layout = new QHBoxLayout(panel1_);
  layout->setContentsMargins(0, 2, 0, 0);
  layout->addStretch(4);
  layout->addWidget(ccrpProgressBar1, 6);
  ccrpProgressBar1->hide();
}
