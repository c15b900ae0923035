#include "app/Desktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWindow>

#include "core/Globals.h"
#include "core/StartUp.h"
#include "core/Trap.h"
#include "platform/ado/ServerAddress.h"
#include "platform/registry/Registry.h"
#include "platform/system/SingleInstance.h"
#include "platform/ui/Contrast.h"
#include "platform/ui/Icons.h"
#include "platform/ui/QtFileDialog.h"
#include "platform/ui/QtMessageBox.h"
#include "screens/AddMeasurements.h"
#include "screens/CompareChoice.h"
#include "screens/CompareForm.h"
#include "screens/DataEditor.h"
#include "screens/Help.h"
#include "screens/RecalcScreen.h"
#include "screens/RenameForm.h"
#include "screens/RestoreForm.h"
#include "screens/StatGraphics.h"
#include "screens/frmAbout.h"
#include "screens/frmConfigure.h"
#include "screens/frmMain.h"
#include "screens/frmUnits.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

template <class Form>
void ShowModal() {
  Form(QApplication::activeWindow()).exec();
}

void ShowChartScreen(PagePrinting& printing) {
  StatGraphics({.openRecalcScreen =
                    [](QWidget* parent, const CDataPtr& data, std::optional<PointRange> stretch) {
                      RecalcScreen(parent, data, stretch).exec();
                    },
                .openAddMeasurements = [](QWidget* parent) { AddMeasurements(parent).exec(); },
                .openEditor =
                    [](QWidget* parent, int sample) {
                      Globals().gAddMode = false;
                      DataEditor editor(parent);
                      editor.ShowSample(sample);
                      editor.exec();
                    },
                .callUpHelp = CallUpHelp,
                .helpTopic = HelpTopics::ChartScreen},
               printing, QApplication::activeWindow())
      .exec();
}

void ShowComparison(PagePrinting& printing, qint32 one, qint32 other) {
  if (other == 0) {
    CompareChoice choice(one, QApplication::activeWindow());
    if (choice.exec() == QDialog::Accepted) other = choice.Chosen();
  }
  if (other != 0) CompareForm(one, other, printing, QApplication::activeWindow()).exec();
}

// The user sees the window before the program turns to the database. Where the window does not come to the
// screen soon, the program goes on without it.
void ShowPainted(QWidget& window) {
  window.show();
  QElapsedTimer waiting;
  waiting.start();
  while (!window.windowHandle()->isExposed() && waiting.elapsed() < 200) QCoreApplication::processEvents();
}

// An error that a slot leaves through would end the program somewhere in an event loop: it is told instead.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    return Trap(u"Kestrel"_s, false, [&] { return QApplication::notify(receiver, event); });
  }
};

// Gives the keyboard back to the window that was under a closed one: without a window manager nobody else
// does.
class Reactivation : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Hide || event->spontaneous()) return false;
    const auto* closed = qobject_cast<QWidget*>(watched);
    if (closed && (closed->windowType() == Qt::Dialog || closed->windowType() == Qt::Window)) {
      QWidget* below = closed->parentWidget() ? closed->parentWidget() : QApplication::activeModalWidget();
      if (below) below->activateWindow();
    }
    return false;
  }
};

// Fusion with hints, links, selected and disabled texts that can be read, with boxes and circles to tick that
// show on dark windows too, and without its little pictures, which exist in a few small sizes only and blur
// on fine screens: boxes have none on their buttons; the arrow of a bar that does not fit and the cross that
// empties a line are drawn. (Reading one of these, shown or not, loads the readers of all kinds of pictures
// when the program starts.)
class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle() : QProxyStyle(u"Fusion"_s) {}
  using QProxyStyle::polish;
  void polish(QPalette& palette) override {
    QProxyStyle::polish(palette);
    palette = Contrast::WithReadableHints(palette);
  }
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0
                                                       : QProxyStyle::styleHint(hint, option, widget, data);
  }
  // Fusion draws them in a darker shade of the window.
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (!isBox || !button || button->palette.color(QPalette::Window).lightness() > 127)
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    QStyleOptionButton bright = *button;
    bright.palette.setColor(QPalette::Window, button->palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &bright, painter, widget);
  }
  QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
    switch (which) {
      case SP_ToolBarHorizontalExtensionButton:
        return SymbolIcon(Symbol::More);
      case SP_LineEditClearButton:
        return SymbolIcon(Symbol::Close);
      default:
        return QProxyStyle::standardIcon(which, option, widget);
    }
  }
};

QtMessageBox MakeMessageBoxes() {
  return QtMessageBox({Words::ok(), Words::yes(), Words::no(), Words::cancel()});
}

// Installs the state and the presenters of boxes for as long as it lives.
class Installation {
 public:
  Installation() {
    state_.registry = &registry_;
    state_.clock = &clock_;
    InstallGlobals(&state_);
    MessageBox::Install(&messageBoxes_);
    FileDialog::Install(&fileDialogs_);
  }
  ~Installation() {
    FileDialog::Install(nullptr);
    MessageBox::Install(nullptr);
    InstallGlobals(nullptr);
  }
  Installation(const Installation&) = delete;
  Installation& operator=(const Installation&) = delete;

 private:
  QtMessageBox messageBoxes_ = MakeMessageBoxes();
  QtFileDialog fileDialogs_;
  FileRegistry registry_;
  SystemClock clock_;
  ProgramState state_;
};

// What a second start tells the first: the library or the request (none for an empty one), and by what right
// it may come to the front.
constexpr char activationToken[] = "XDG_ACTIVATION_TOKEN";

int HandOver(const SingleInstance& instance, const QString& library) {
  if (instance.HandOver(library.toUtf8() + '\0' + qgetenv(activationToken))) return 0;
  MakeMessageBoxes().Show({Words::Sharing::noAnswer(), LoadResText(u"Kestrel;108"),
                           MessageBox::Icon::Exclamation, MessageBox::Buttons::Ok});
  return 3;
}

void TakeOver(frmMain& main, const QByteArray& message) {
  const QList<QByteArray> parts = message.split('\0');
  if (parts.size() > 1 && !parts[1].isEmpty()) qputenv(activationToken, parts[1]);
  main.ShowLibrary(QString::fromUtf8(parts[0]));
}

}  // namespace

int RunDesktop(int& argc, char** argv, const QString& libraryForThisRun) {
  QApplication::setOrganizationName(u"Orvane Labs"_s);
  QApplication::setStyle(new ProgramStyle);
  Application application(argc, argv);
  // Closing the main window ends the program, whatever help windows are still open.
  QApplication::setQuitOnLastWindowClosed(false);
  SingleInstance instance;
  const bool isRequest = frmMain::IsRequest(libraryForThisRun);
  const bool isLibrary = !isRequest && !libraryForThisRun.isEmpty();
  const bool isFile = isLibrary && !ServerAddress::IsOne(libraryForThisRun);
  const QString library = isFile ? QFileInfo(libraryForThisRun).absoluteFilePath() : libraryForThisRun;
  if (instance.PrevInstance()) return HandOver(instance, library);

  Reactivation reactivation;
  application.installEventFilter(&reactivation);
  const Installation installation;
  if (isLibrary) Globals().gDatabaseForThisRun = library;
  StartUp::UseSettings();  // the main window knows its place before it is seen
  PagePrinting printing;
  frmMain main({.chart = [&printing] { ShowChartScreen(printing); },
                .editor = ShowModal<DataEditor>,
                .configuration = ShowModal<frmConfigure>,
                .about = ShowModal<frmAbout>,
                .measurements = ShowModal<AddMeasurements>,
                .restore = ShowModal<RestoreForm>,
                .rename = ShowModal<RenameForm>,
                .units = ShowModal<frmUnits>,
                .compare = [&printing](qint32 one, qint32 other) { ShowComparison(printing, one, other); }});
  QObject::connect(&main, &frmMain::Unloaded, &application, [] { QCoreApplication::exit(); });
  ShowPainted(main);
  if (!main.Form_Load()) return 1;
  if (isRequest) main.ShowLibrary(library);
  instance.Listen([&main](const QByteArray& message) { TakeOver(main, message); });
  return QApplication::exec();
}
