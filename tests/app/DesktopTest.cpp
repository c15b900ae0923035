// The desktop program from its start to its end: which screen each command opens, with which help, and what
// becomes of the file that it was started with.
#include "app/Desktop.h"

#include <QMessageBox>
#include <QTextBlock>
#include <QTextBrowser>

#include "screens/frmMain.h"
#include "tests/support/Program.h"
#include "tests/support/StoredValue.h"
#include "tests/support/Widgets.h"

namespace {

// What a person does, one step after the other, each as soon as its window stands on top of all others. A
// step that is not ready yet says so and is tried again.
struct Step {
  QString window;
  std::function<bool(QWidget&)> act;
};
std::deque<Step> steps;

void Watch() {
  QTimer::singleShot(5, qApp, [] {
    Watch();  // first: the step may open a modal window
    QWidget* window = QApplication::activeModalWidget();
    for (QWidget* top : QApplication::topLevelWidgets())
      if (!window && qobject_cast<frmMain*>(top)) window = top;
    if (!window || steps.empty()) return;
    const QString name = window->objectName();
    if (name != steps.front().window && name == u"MessageBox")
      qFatal("nobody expects: %s", qPrintable(window->property("text").toString()));
    if (name != steps.front().window) return;
    const Step step = steps.front();
    steps.pop_front();
    if (!step.act(*window)) steps.push_front(step);
  });
}

class DesktopTest : public ProgramTest {
 protected:
  DesktopTest() {
    library = Path(u"plant"_s);
    for (const auto& name : {u"configured"_s, u"plant"_s}) EXPECT_EQ(RunIn(u"new @"_s + name).status, 0);
    EXPECT_EQ(Import({}, QByteArray("10.1\n9.9\n10.3\n").repeated(5)).status, 0);
    qputenv("KESTREL_SETTINGS", Path(u"settings.json"_s).toUtf8());
    qputenv("XDG_RUNTIME_DIR", Path(u"session"_s).toUtf8());
    QDir().mkdir(Path(u"session"_s));
    qputenv("TMPDIR", folder_.path().toUtf8());
    FileRegistry registry;
    StoreValue(registry, u"Software\\Orvane Labs\\Kestrel"_s, u"DatabaseName"_s,
               Path(u"configured"_s).toUtf8());
  }

  // A second start, from outside of the session.
  bool StartAgain() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"XDG_RUNTIME_DIR"_s);
    second.setProcessEnvironment(environment);
    second.setWorkingDirectory(Path(u"session"_s));
    second.start(QStringLiteral(KESTREL_PROGRAM), {u"../configured"_s});
    return true;
  }

  static bool Close(QWidget& window) { return window.close(); }
  static std::function<bool(QWidget&)> Trigger(const char* command) {
    return [command](QWidget& form) {
      Get<QAction>(form, command).trigger();
      return true;
    };
  }
  static bool HelpIsTheChartScreens(QWidget& charts) {
    QTest::keyClick(&charts, Qt::Key_F1);
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* page = window->findChild<QTextBrowser*>(u"Page"_s); page && window->isVisible())
        return page->document()->firstBlock().text() == u"The chart screen";
    return false;
  }

  QProcess second;
};

TEST_F(DesktopTest, EachCommandOpensItsScreenAndClosingEndsTheProgram) {
  const auto loaded = [](QWidget& main) {
    return Get<QAction>(main, "Toolbar1_1").isEnabled() &&
           TextOf(main, "StatusBar1_1") == u"Current Database: plant (DB Rev. 2.0)";
  };
  const auto handedOver = [this](QWidget& main) {
    return TextOf(main, "StatusBar1_1") == u"Current Database: configured (DB Rev. 2.0)" &&
           second.state() == QProcess::NotRunning;
  };
  const auto confirm = [](QWidget& question) {
    QTest::keyClick(&question, Qt::Key_Return);
    return true;
  };
  const auto told = [&](QWidget& box) {
    EXPECT_TRUE(dynamic_cast<QMessageBox&>(box).text().startsWith(u"Kestrel failed with error:"_s));
    return confirm(box);
  };
  const QString main = u"frmMain"_s, charts = u"StatGraphics"_s;
  steps = {{main, loaded},
           {main, Trigger("Toolbar1_2_2")},
           {u"DataEditor"_s, Close},
           {main, Trigger("Toolbar1_3_1")},
           {u"frmConfigure"_s, Close},
           {main, Trigger("Toolbar1_4_2")},
           {u"frmAbout"_s, Close},
           {main, Trigger("Toolbar1_1")},
           {charts, HelpIsTheChartScreens},
           {charts, Trigger("Toolbar1_4")},
           {u"RecalcScreen"_s, Close},
           {charts, [](QWidget&) -> bool { throw Error(u"planted"_s); }},  // told, and the program goes on
           {u"MessageBox"_s, told},
           {charts, [this](QWidget&) { return StartAgain(); }},
           {main, handedOver},
           {main, [](QWidget& window) { return window.close() || true; }},
           {u"MessageBox"_s, confirm}};
  qAddPreRoutine(Watch);
  QDir::setCurrent(folder_.path());  // the file is given as in a terminal
  int argc = 1;
  char name[] = "kestrel";
  char* argv[] = {name, nullptr};
  EXPECT_EQ(RunDesktop(argc, argv, u"plant"_s), 0);
  EXPECT_TRUE(steps.empty());
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
  const QByteArray settings = Read(Path(u"settings.json"_s));
  EXPECT_TRUE(settings.contains("configured") && !settings.contains("plant")) << "for this run only";
}

}  // namespace
