// Configuration, about box and help, driven as a person drives them, and the manual's own soundness.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

#include "core/RegistryFunctions.h"
#include "platform/ui/HelpViewer.h"
#include "screens/Help.h"
#include "screens/frmAbout.h"
#include "screens/frmConfigure.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QString keyPath = uR"(Software\Orvane Labs\Kestrel)"_s;

template <class Control>
Control* Find(const QWidget& form, const QString& name) {
  auto* control = form.findChild<Control*>(name);
  EXPECT_TRUE(control) << name.toStdString();
  return control;
}

void Click(const QWidget& form, const QString& name) {
  QTest::mouseClick(Find<QAbstractButton>(form, name), Qt::LeftButton);
}

// A store whose writes fail on demand although its keys can be made.
class FailingRegistry : public MemoryRegistry {
 public:
  bool fails = false;
  int RegSetValueEx(Key key, const QString& name, Type type, const QByteArray& data) override {
    return fails ? WriteFault : MemoryRegistry::RegSetValueEx(key, name, type, data);
  }
};

TEST(Configure, AcceptStoresAndStaysOpenForMore) {
  TestProgram program;
  FailingRegistry registry;
  program.state.registry = &registry;
  program.state.gSetup.RegistryKeyPath = keyPath;
  program.state.gSetup.ListviewDoubleClickViewsChart = true;
  program.state.gSettingsSaved = true;
  const auto stored = [] {
    return RegistryFunctions::GetKeyValue(keyPath, u"ListviewDoubleClickViewsChart"_s, 4);
  };
  frmConfigure form;
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  auto* accept = Find<QPushButton>(form, u"cmdAccept"_s);
  EXPECT_FALSE(program.state.gSettingsSaved);
  EXPECT_TRUE(Find<QRadioButton>(form, u"optionViewChart"_s)->isChecked());
  EXPECT_FALSE(accept->isEnabled());
  for (const bool edit : {true, false}) {
    QTest::keyClick(&form, edit ? Qt::Key_E : Qt::Key_V, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return accept->isEnabled(); }));
    program.boxes.Expect();
    Click(form, u"cmdAccept"_s);
    const MessageBox::Request box = program.boxes.Take();
    EXPECT_EQ(box.text, u"Registry settings saved"_s);
    EXPECT_EQ(box.title, u"System Message"_s);
    EXPECT_EQ(box.icon, MessageBox::Icon::Information);
    EXPECT_EQ(stored(), edit ? u"0"_s : u"1"_s);
    EXPECT_EQ(program.state.gSetup.ListviewDoubleClickViewsChart, !edit);
    EXPECT_TRUE(program.state.gSettingsSaved);
    EXPECT_FALSE(accept->isEnabled());
    EXPECT_TRUE(form.isVisible());
  }
  registry.fails = true;
  program.state.gSettingsSaved = false;
  Click(form, u"optionEditSelection"_s);
  program.boxes.Expect();
  Click(form, u"cmdAccept"_s);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"RegistryFunctions::SetKeyValue"_s));
  EXPECT_TRUE(accept->isEnabled());
  EXPECT_FALSE(program.state.gSettingsSaved);
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(stored(), u"1"_s) << "dropped without asking";
}

class AboutTest : public testing::Test {
 protected:
  void Store(const QString& path, const QString& name, const QByteArray& data,
             Registry::Type type = Registry::String) {
    Registry::Key key = 0;
    program.registry.RegCreateKeyEx(path, Registry::KeyWrite, key);
    program.registry.RegSetValueEx(key, name, type, data);
    program.registry.RegCloseKey(key);
  }
  // What the button starts; a box is expected where nothing could be started.
  QStringList Started(bool startable = true) {
    QStringList started;
    frmAbout form(nullptr, [&](const QString& path) {
      started.append(path);
      return startable;
    });
    form.show();
    Click(form, u"cmdSysInfo"_s);
    return started;
  }
  void ExpectUnavailable() {
    const MessageBox::Request box = program.boxes.Take();
    EXPECT_EQ(box.text, u"System Information Is Unavailable At This Time"_s);
    EXPECT_EQ(box.icon, MessageBox::Icon::None);
    EXPECT_EQ(box.buttons, MessageBox::Buttons::Ok);
  }

  const QString direct = uR"(SOFTWARE\Microsoft\Shared Tools\MSINFO)"_s;
  const QString location = uR"(SOFTWARE\Microsoft\Shared Tools Location)"_s;
  TestProgram program;
};

TEST_F(AboutTest, ShowsTitleVersionAndNotice) {
  QCoreApplication::setApplicationVersion(u"1.02.30"_s);
  frmAbout form;
  form.show();
  EXPECT_EQ(form.windowTitle(), u"About Kestrel"_s);
  EXPECT_EQ(Find<QLabel>(form, u"lblTitle"_s)->text(), u"Kestrel"_s);
  EXPECT_EQ(Find<QLabel>(form, u"lblVersion"_s)->text(), u"Version 1.2.30"_s);
  EXPECT_EQ(Find<QLabel>(form, u"lblDescription"_s)->text(),
            u"Kestrel - SPC control charting solution for the quality system novice"_s);
  EXPECT_TRUE(Find<QLabel>(form, u"lblDisclaimer"_s)->text().contains(u"without warranty"_s));
  Click(form, u"cmdOK"_s);
  EXPECT_FALSE(form.isVisible());
}

TEST_F(AboutTest, StartsTheToolThatTheStoreNames) {
  program.boxes.Expect();
  EXPECT_EQ(Started(), QStringList());  // nothing is known
  ExpectUnavailable();
  Store(location, u"MSINFO"_s, QFile::encodeName(program.folder.path()));
  program.boxes.Expect();
  EXPECT_EQ(Started(), QStringList());  // the folder is known, the tool is not in it
  ExpectUnavailable();

  QFile tool(program.Path(u"MSINFO32.EXE"_s));
  ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
  EXPECT_EQ(Started(), QStringList{QDir::toNativeSeparators(tool.fileName())});

  Store(direct, u"PATH"_s, QByteArray("/tools/info\0", 12));  // comes first, and without its closing zero
  EXPECT_EQ(Started(), QStringList{u"/tools/info"_s});
  program.boxes.Expect();
  Started(false);
  ExpectUnavailable();
}

TEST_F(AboutTest, NumbersReadAsHexadecimalText) {
  Store(direct, u"Flags"_s, QByteArray("\x1f\x02\x00\x00", 4), Registry::Dword);
  QString text;
  EXPECT_TRUE(frmAbout::GetKeyValue(direct, u"Flags"_s, text));
  EXPECT_EQ(text, u"&h21F"_s);
  EXPECT_FALSE(frmAbout::GetKeyValue(direct, u"Absent"_s, text));
  EXPECT_FALSE(frmAbout::GetKeyValue(u"No\\Such"_s, u"PATH"_s, text));
}

HelpViewer* OpenHelp() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* help = qobject_cast<HelpViewer*>(window);
    if (help && help->isVisible()) return help;
  }
  return nullptr;
}

QString Heading(const HelpViewer& help) {
  return Find<QTextBrowser>(help, u"Page"_s)->document()->firstBlock().text();
}

TEST(Help, EveryTopicHasItsPage) {
  CallUpHelp(HelpTopics::Contents);
  ASSERT_TRUE(OpenHelp());
  auto* contents = Find<QTreeWidget>(*OpenHelp(), u"Contents"_s);
  for (QTreeWidgetItemIterator item(contents); *item; ++item) {
    contents->setCurrentItem(*item);
    EXPECT_EQ(Heading(*OpenHelp()), (*item)->text(0));
  }
  OpenHelp()->close();

  CallUpHelp(9999);
  EXPECT_EQ(Heading(*OpenHelp()), u"No such topic"_s);
  CallUpHelp(HelpTopics::Glossary);
  EXPECT_EQ(Heading(*OpenHelp()), u"Glossary"_s);
  ASSERT_TRUE(QTest::qWaitForWindowActive(OpenHelp()));
  QTest::keyClick(OpenHelp(), Qt::Key_Escape);
  EXPECT_FALSE(OpenHelp());
}

TEST(Help, F1WorksWhileAModalScreenIsOpen) {
  TestProgram program;
  frmConfigure form;
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  QTest::keyClick(Find<QWidget>(form, u"optionViewChart"_s), Qt::Key_F1);
  ASSERT_TRUE(OpenHelp());
  EXPECT_EQ(Heading(*OpenHelp()), u"Configuration"_s);
  // A blocked window would not take the click on its "Contents" button.
  QTest::mouseClick(OpenHelp()->windowHandle(), Qt::LeftButton, {}, QPoint(20, 12));
  EXPECT_TRUE(Find<QTreeWidget>(*OpenHelp(), u"Contents"_s)->isVisible());
  OpenHelp()->close();
}

TEST(Help, SearchFindsPagesThatHoldEveryWord) {
  CallUpHelp(HelpTopics::Contents);
  HelpViewer& help = *OpenHelp();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&help));
  QTest::keyClick(&help, Qt::Key_F, Qt::ControlModifier);
  auto* search = Find<QLineEdit>(help, u"Search"_s);
  auto* results = Find<QListWidget>(help, u"Results"_s);
  QTest::keyClicks(search, u"EIGHT successive"_s);
  ASSERT_EQ(results->count(), 1);
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(Heading(help), u"Detection rule four"_s);
  QTest::keyClick(&help, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Heading(help), u"Welcome to Kestrel"_s);
  search->setText(u"qqqq"_s);
  EXPECT_EQ(results->item(0)->text(), u"Nothing found."_s);
  help.close();
}

TEST(Manual, EveryLinkAndPictureResolves) {
  const QDir manual(u":/manual"_s);
  const QRegularExpression reference(uR"re((?:href|src)="([^"]+)")re"_s);
  const QStringList pages = manual.entryList({u"*.html"_s});
  EXPECT_GT(pages.size(), 20);
  for (const QString& name : pages) {
    QFile page(manual.filePath(name));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    for (auto matches = reference.globalMatch(QString::fromUtf8(page.readAll())); matches.hasNext();) {
      const QString target = matches.next().captured(1);
      EXPECT_TRUE(manual.exists(target)) << name.toStdString() << " refers to " << target.toStdString();
      if (target.endsWith(u".png"_s)) {
        EXPECT_TRUE(manual.exists(QString(target).replace(u".png"_s, u"@2x.png"_s))) << target.toStdString();
      }
    }
  }
}

}  // namespace
