#include "screens/Help.h"

#include <QCoreApplication>
#include <QPointer>
#include <QShortcut>

#include "core/Trap.h"
#include "screens/HelpViewer.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

struct Page {
  int number;
  const char16_t* file;
  Text<> title;
  int level = 1;
};

// In reading order. The manual is built into the program's resources, so that it cannot go missing; the help
// file path of the program's state is kept for those who deliver a help file of their own beside the program.
constexpr Page pages[] = {
    {HelpTopics::Welcome, u"index.html", Words::Manual::welcome, 0},
    {HelpTopics::FirstSteps, u"first-steps.html", Words::Manual::firstSteps},
    {HelpTopics::WorkedExample, u"worked-example.html", Words::Manual::workedExample},
    {HelpTopics::Screens, u"screens.html", Words::Manual::screens, 0},
    {HelpTopics::MainScreen, u"main-screen.html", Words::Manual::mainScreen},
    {HelpTopics::DataEditor, u"data-editor.html", Words::Manual::dataEditor},
    {HelpTopics::ExpandedData, u"expanded-data.html", Words::Manual::expandedData},
    {HelpTopics::AddMeasurements, u"add-measurements.html", Words::Manual::addMeasurements},
    {HelpTopics::ChartScreen, u"chart-screen.html", Words::Manual::chartScreen},
    {HelpTopics::Notes, u"notes.html", Words::Manual::notes},
    {HelpTopics::Recalculate, u"recalculate.html", Words::Manual::recalculate},
    {HelpTopics::Compare, u"compare.html", Words::Manual::compare},
    {HelpTopics::Units, u"units.html", Words::Manual::units},
    {HelpTopics::RestoreDeleted, u"restore-deleted.html", Words::Manual::restoreDeleted},
    {HelpTopics::Sharing, u"sharing.html", Words::Manual::sharing},
    {HelpTopics::Configuration, u"configuration.html", Words::Manual::configuration},
    {HelpTopics::About, u"about.html", Words::Manual::about},
    {HelpTopics::Keys, u"keys.html", Words::Manual::keys},
    {HelpTopics::Figures, u"figures.html", Words::Manual::figures, 0},
    {HelpTopics::XBarChart, u"xbar-chart.html", Words::Manual::xBarChart},
    {HelpTopics::RChart, u"r-chart.html", Words::Manual::rChart},
    {HelpTopics::Capability, u"capability.html", Words::Manual::capability},
    {HelpTopics::RuleOne, u"rule-one.html", Words::Manual::ruleOne},
    {HelpTopics::RuleTwo, u"rule-two.html", Words::Manual::ruleTwo},
    {HelpTopics::RuleThree, u"rule-three.html", Words::Manual::ruleThree},
    {HelpTopics::RuleFour, u"rule-four.html", Words::Manual::ruleFour},
    {HelpTopics::ProcessStates, u"process-states.html", Words::Manual::processStates},
    {HelpTopics::WhenToRecalculate, u"when-to-recalculate.html", Words::Manual::whenToRecalculate},
    {HelpTopics::ChanceMarks, u"chance-marks.html", Words::Manual::chanceMarks},
    {HelpTopics::LookingAfter, u"looking-after.html", Words::Manual::lookingAfter, 0},
    {HelpTopics::Backup, u"backup.html", Words::Manual::backup},
    {HelpTopics::AccessLibraries, u"access-libraries.html", Words::Manual::accessLibraries},
    {HelpTopics::CommandLine, u"command-line.html", Words::Manual::commandLine},
    {HelpTopics::Glossary, u"glossary.html", Words::Manual::glossary, 0},
};

QList<HelpTopic> Topics() {
  QList<HelpTopic> topics;
  for (const Page& page : pages) {
    topics.push_back(
        {page.number, page.title(), QUrl(u"qrc:/manual/"_s + QString::fromUtf16(page.file)), page.level});
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
