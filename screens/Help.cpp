#include "screens/Help.h"

#include <QCoreApplication>
#include <QPointer>
#include <QShortcut>

#include "core/Trap.h"
#include "platform/ui/HelpViewer.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

namespace {

struct Page {
  int number;
  const char16_t* file;
  const char16_t* title;
  int level = 1;
};

// In reading order. The manual is built into the program's resources, so that it cannot go missing; the help
// file path of the program's state is kept for those who deliver a help file of their own beside the program.
constexpr Page pages[] = {
    {HelpTopics::Welcome, u"index.html", u"Welcome to Kestrel", 0},
    {HelpTopics::FirstSteps, u"first-steps.html", u"First steps"},
    {HelpTopics::WorkedExample, u"worked-example.html", u"A worked example: piston rings"},
    {HelpTopics::Screens, u"screens.html", u"The screens", 0},
    {HelpTopics::MainScreen, u"main-screen.html", u"The main window"},
    {HelpTopics::DataEditor, u"data-editor.html", u"The data editor"},
    {HelpTopics::ExpandedData, u"expanded-data.html", u"Expanded raw data"},
    {HelpTopics::ChartScreen, u"chart-screen.html", u"The chart screen"},
    {HelpTopics::Recalculate, u"recalculate.html", u"Recalculating limits"},
    {HelpTopics::Units, u"units.html", u"Units of measurement"},
    {HelpTopics::Configuration, u"configuration.html", u"Configuration"},
    {HelpTopics::About, u"about.html", u"The about box"},
    {HelpTopics::Figures, u"figures.html", u"What the figures mean", 0},
    {HelpTopics::XBarChart, u"xbar-chart.html", u"The X-bar chart"},
    {HelpTopics::RChart, u"r-chart.html", u"The R chart"},
    {HelpTopics::Capability, u"capability.html", u"Capability: Cpk"},
    {HelpTopics::RuleOne, u"rule-one.html", u"Detection rule one"},
    {HelpTopics::RuleTwo, u"rule-two.html", u"Detection rule two"},
    {HelpTopics::RuleThree, u"rule-three.html", u"Detection rule three"},
    {HelpTopics::RuleFour, u"rule-four.html", u"Detection rule four"},
    {HelpTopics::ProcessStates, u"process-states.html", u"The four process states"},
    {HelpTopics::WhenToRecalculate, u"when-to-recalculate.html", u"When to recalculate limits"},
    {HelpTopics::ChanceMarks, u"chance-marks.html", u"Marks that come by chance"},
    {HelpTopics::LookingAfter, u"looking-after.html", u"Looking after your data", 0},
    {HelpTopics::Backup, u"backup.html", u"Backups"},
    {HelpTopics::AccessLibraries, u"access-libraries.html", u"Taking over an old Access library"},
    {HelpTopics::CommandLine, u"command-line.html", u"The command line"},
    {HelpTopics::Glossary, u"glossary.html", u"Glossary", 0},
};

QList<HelpTopic> Topics() {
  QList<HelpTopic> topics;
  for (const Page& page : pages) {
    topics.push_back({page.number, QString::fromUtf16(page.title),
                      QUrl(u"qrc:/manual/"_s + QString::fromUtf16(page.file)), page.level});
  }
  return topics;
}

// The two help windows live as long as the application, so that each is made once and keeps its place.
HelpViewer* MakeWindow(bool withContents) {
  auto* window =
      new HelpViewer(LoadResText(u"Kestrel;108") + u" "_s + LoadResText(u"Help;219"), Topics(), withContents);
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, window, &QObject::deleteLater);
  return window;
}

}  // namespace

void CallUpHelp(qint32 context) {
  Trap(u"GlobalFunctions::CallUpHelp"_s, [context] {
    static QPointer<HelpViewer> contents, second;
    QPointer<HelpViewer>& window = context == HelpTopics::Contents ? contents : second;
    if (!window) window = MakeWindow(context == HelpTopics::Contents);
    context == HelpTopics::Contents ? window->ShowContents() : window->ShowTopic(context);
  });
}

void InstallHelpKey(QWidget* form, qint32 context) {
  QObject::connect(new QShortcut(Qt::Key_F1, form), &QShortcut::activated, form,
                   [context] { CallUpHelp(context); });
}
